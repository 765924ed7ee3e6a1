// A room in the late afternoon: a bare wall, an empty canvas in an oak frame, boards on the floor.
// The camera looks square at the wall, so the canvas is an upright rectangle in the picture.
#include "common.inc"

IndirectLight(1)

// A shifted lens: the picture's plane is parallel to the wall, its middle lies below the horizon.
camera {
    perspective
    location <0.1, 1.32, -4.3>
    right x * image_width / image_height
    up y
    direction <-0.03, -0.13, 1.32>
}

#declare WallX = -2.35;      // the wall with the window, at the left
#declare SunColour = <1.0, 0.80, 0.58> * 7.0 * Exposure;
#declare SkyColour = <0.80, 0.87, 1.0> * Exposure;

Sun(<-1, 0.36, -0.41>, SunColour, 0.22)
sky_sphere { pigment { color rgb SkyColour * 1.7 } }

// The sky's light, as a soft source in the window itself: radiosity alone would be noisy, and from
// outside the glazing bars would throw a shadow for each point of the source.
light_source {
    <WallX + 0.02, 1.75, -1.80>
    color rgb SkyColour * 1.1
    area_light y * 1.9, z * 1.2, SoftSteps, SoftSteps
    adaptive 1
    fade_distance 1.6 fade_power 2
}

// Shell of the room -------------------------------------------------------------------------------

#declare WallColour = <0.60, 0.475, 0.385>;

box { <-4, -0.1, 0>, <4, 3.1, 0.2> Plaster(WallColour, 0.02) }

#declare WindowLow = <0, 0.75, -2.45>;
#declare WindowHigh = <0, 2.72, -1.15>;
difference {
    box { <WallX - 0.25, -0.1, -6>, <WallX, 3.1, 0.2> }
    box { WindowLow + x * (WallX - 1), WindowHigh + x * (WallX + 1) }
    Plaster(WallColour, 0.02)
}
// Glazing bars: two columns of three panes.
union {
    #for (I, 0, 2)
        #local Z = WindowLow.z + (WindowHigh.z - WindowLow.z) * I / 2;
        box { <WallX - 0.16, WindowLow.y, Z - 0.025>, <WallX - 0.11, WindowHigh.y, Z + 0.025> }
    #end
    #for (J, 0, 3)
        #local Y = WindowLow.y + (WindowHigh.y - WindowLow.y) * J / 3;
        box { <WallX - 0.16, Y - 0.022, WindowLow.z>, <WallX - 0.11, Y + 0.022, WindowHigh.z> }
    #end
    pigment { rgb 0.8 }
    finish { Matte }
}

box { <-4, 2.95, -6.2>, <4, 3.1, 0> pigment { rgb 0.82 } finish { Matte } }
box { <3.2, -0.1, -6.2>, <3.4, 3.1, 0> pigment { rgb <0.78, 0.75, 0.70> } finish { Matte } }
box { <-4, -0.1, -6.4>, <4, 3.1, -6.2> pigment { rgb <0.70, 0.68, 0.65> } finish { Matte } }

// Skirting boards.
union {
    box { <WallX, 0, -0.018>, <3.2, 0.11, 0> }
    cylinder { <WallX, 0.11, -0.009>, <3.2, 0.11, -0.009>, 0.009 }
    box { <WallX, 0, -6>, <WallX + 0.018, 0.11, 0> }
    cylinder { <WallX + 0.009, 0.11, -6>, <WallX + 0.009, 0.11, 0>, 0.009 }
    pigment { rgb <0.80, 0.785, 0.75> }
    finish { Satin }
}

// Oak boards, each cut from another place of the trunk.
#declare BoardSeed = seed(4711);
#declare BoardWidth = 0.155;
#for (I, floor(WallX / BoardWidth) - 1, 3.2 / BoardWidth)
    #local Z = -6 - RandomIn(BoardSeed, 0, 1.8);
    #while (Z < 0)
        #local Length = RandomIn(BoardSeed, 1.3, 2.2);
        #local Tone = RandomIn(BoardSeed, 0.78, 1.08);
        object {
            RoundedBox(<I * BoardWidth + 0.0008, -0.02, Z + 0.0008>,
                       <(I + 1) * BoardWidth - 0.0008, 0, min(Z + Length, 0.05) - 0.0008>, 0.0015)
            texture {
                Timber(<0.36, 0.225, 0.125> * Tone, <0.20, 0.115, 0.06> * Tone)
                finish {
                    ambient 0 diffuse 0.8 specular 0.12 roughness 0.02
                    reflection { 0.015, 0.20 fresnel on }
                    conserve_energy
                }
                normal { granite 0.03 scale <0.02, 0.02, 0.5> }
                translate <RandomIn(BoardSeed, -2, 2), RandomIn(BoardSeed, -0.4, 0.4),
                           RandomIn(BoardSeed, -9, 9)>
            }
            interior { ior 1.45 }
        }
        #local Z = Z + Length;
    #end
#end
box { <-4, -0.2, -6.4>, <4, -0.019, 0.2> pigment { rgb 0.02 } finish { Matte } }

// The canvas --------------------------------------------------------------------------------------

#declare CanvasLow = <-1.40, 1.10, 0>;
#declare CanvasHigh = <0.15, 2.14, 0>;
#declare FrameDepth = 0.045;

box {
    CanvasLow - z * 0.028, CanvasHigh
    texture {
        pigment { rgb <0.80, 0.79, 0.765> }
        normal { bumps 0.08 scale 0.004 }
        finish { Matte }
    }
}
#declare FrameBar = box { <0, 0, -FrameDepth>, <0.022, 1, 0> };
#declare OakFrame = texture {
    Timber(<0.50, 0.33, 0.19>, <0.32, 0.19, 0.10>) finish { Satin }
};
#declare Gap = 0.008;        // the shadow joint between canvas and frame
#declare Size = CanvasHigh - CanvasLow;
union {
    RoundedBox(<CanvasLow.x - Gap - 0.022, CanvasLow.y - Gap - 0.022, -FrameDepth>,
               <CanvasLow.x - Gap, CanvasHigh.y + Gap + 0.022, 0>, 0.002)
    RoundedBox(<CanvasHigh.x + Gap, CanvasLow.y - Gap - 0.022, -FrameDepth>,
               <CanvasHigh.x + Gap + 0.022, CanvasHigh.y + Gap + 0.022, 0>, 0.002)
    texture { OakFrame rotate 90 * x }
}
union {
    RoundedBox(<CanvasLow.x - Gap - 0.022, CanvasLow.y - Gap - 0.022, -FrameDepth>,
               <CanvasHigh.x + Gap + 0.022, CanvasLow.y - Gap, 0>, 0.002)
    RoundedBox(<CanvasLow.x - Gap - 0.022, CanvasHigh.y + Gap, -FrameDepth>,
               <CanvasHigh.x + Gap + 0.022, CanvasHigh.y + Gap + 0.022, 0>, 0.002)
    texture { OakFrame rotate 90 * y }
}

// A bench with a few things on it -----------------------------------------------------------------

#declare Walnut = texture {
    Timber(<0.30, 0.175, 0.10>, <0.15, 0.08, 0.045>)
    finish { Satin reflection { 0.005, 0.08 } }
};
#declare BenchLow = <-1.34, 0, -0.46>;
#declare BenchHigh = <0.56, 0.46, -0.08>;
object {
    RoundedBox(<BenchLow.x, BenchHigh.y - 0.045, BenchLow.z>, BenchHigh, 0.006)
    texture { Walnut rotate 90 * y }
}
#declare BenchLeg = cone { 0, 0.014, y * (BenchHigh.y - 0.04), 0.024 };
union {
    #for (I, 0, 1) #for (J, 0, 1)
        object {
            BenchLeg
            translate <(I ? BenchHigh.x - 0.12 : BenchLow.x + 0.12), 0,
                       (J ? BenchHigh.z - 0.07 : BenchLow.z + 0.07)>
        }
    #end #end
    texture { Walnut rotate 90 * x }
}
object {
    RoundedBox(<BenchLow.x + 0.1, BenchHigh.y - 0.10, BenchLow.z + 0.055>,
               <BenchHigh.x - 0.1, BenchHigh.y - 0.04, BenchLow.z + 0.075>, 0.004)
    texture { Walnut rotate 90 * y }
}

// Books, lying.
#declare BookSeed = seed(23);
#macro Book(Width, Depth, Height, Cover, Turn, Base)
    union {
        difference {
            RoundedBox(<-Width / 2, 0, -Depth / 2>, <Width / 2, Height, Depth / 2>, 0.003)
            box { <-Width, 0.004, -Depth>, <Width / 2 - 0.008, Height - 0.004, Depth> }
            pigment { rgb Cover }
            finish { Satin }
        }
        box { <-Width / 2, 0, -Depth / 2>, <Width / 2, 0.0038, Depth / 2>
              pigment { rgb Cover } finish { Satin } }
        box { <-Width / 2, Height - 0.0038, -Depth / 2>, <Width / 2, Height, Depth / 2>
              pigment { rgb Cover } finish { Satin } }
        box {
            <-Width / 2 + 0.004, 0.003, -Depth / 2 + 0.004>,
            <Width / 2 - 0.004, Height - 0.003, Depth / 2 - 0.004>
            pigment { gradient y color_map { [0 rgb <0.74, 0.69, 0.58>] [1 rgb <0.60, 0.55, 0.45>] }
                      scale 0.0025 }
            finish { Matte }
        }
        rotate 90 * y
        rotate Turn * y
        translate Base
    }
#end
#declare BooksAt = <-1.02, BenchHigh.y, -0.27>;
Book(0.22, 0.31, 0.034, <0.10, 0.16, 0.19>, -4, BooksAt)
Book(0.21, 0.29, 0.026, <0.47, 0.42, 0.34>, 3, BooksAt + y * 0.034)
Book(0.17, 0.23, 0.030, <0.44, 0.15, 0.07>, -9, BooksAt + <0.01, 0.060, 0>)

// A bowl on the books.
#declare DishProfile = array[8] {
    <0.02, -0.004, 0>, <0.028, 0, 0>, <0.045, 0.012, 0>, <0.068, 0.040, 0>, <0.072, 0.052, 0>,
    <0.066, 0.044, 0>, <0.040, 0.016, 0>, <0.0, 0.010, 0>
}
object {
    Turned(DishProfile)
    pigment { rgb <0.72, 0.70, 0.66> }
    finish { Glazed }
    interior { ior 1.5 }
    translate BooksAt + <0.0, 0.094, 0>
}

// A stoneware vase with dry branches.
#declare VaseAt = <0.36, BenchHigh.y, -0.27>;
#declare VaseProfile = array[13] {
    <0.03, -0.01, 0>, <0.055, 0.0, 0>, <0.085, 0.03, 0>, <0.112, 0.11, 0>, <0.100, 0.20, 0>,
    <0.058, 0.265, 0>, <0.036, 0.305, 0>, <0.038, 0.335, 0>, <0.046, 0.352, 0>,
    <0.041, 0.352, 0>, <0.030, 0.325, 0>, <0.028, 0.28, 0>, <0.028, 0.24, 0>
}
object {
    Turned(VaseProfile)
    texture {
        pigment {
            gradient y
            turbulence 0.03
            color_map {
                [0.0 rgb <0.33, 0.24, 0.17>] [0.30 rgb <0.33, 0.24, 0.17>]
                [0.33 rgb <0.60, 0.56, 0.50>] [1.0 rgb <0.66, 0.625, 0.565>]
            }
            scale 0.36
        }
        normal { granite 0.04 scale 0.03 }
        finish { Satin }
    }
    translate VaseAt
}

#declare TwigSeed = seed(86);
#declare SeedHead = sphere { 0, 1 scale <0.007, 0.007, 0.013> translate 0.012 * z };
#macro Branch(Lean, Turn, Length)
    #local Steps = 9;
    #local P = <0, 0.30, 0>;
    #local Dir = vrotate(y, <0, 0, Lean>);
    #local Dir = vrotate(Dir, y * Turn);
    union {
        #for (I, 1, Steps)
            #local Next = P + Dir * Length / Steps;
            #local Bent = Dir + <RandomIn(TwigSeed, -0.16, 0.16), RandomIn(TwigSeed, -0.08, 0.06),
                                 RandomIn(TwigSeed, -0.16, 0.16)>;
            #local R0 = 0.0030 * (1 - 0.75 * (I - 1) / Steps);
            #local R1 = 0.0030 * (1 - 0.75 * I / Steps);
            cone { P, R0, Next, R1 pigment { rgb <0.22, 0.145, 0.09> } finish { Matte } }
            sphere { Next, R1 pigment { rgb <0.22, 0.145, 0.09> } finish { Matte } }
            #if (I > 3)
                #for (K, 1, 4)
                    #local Side = vnormalize(Bent + <RandomIn(TwigSeed, -0.9, 0.9),
                        RandomIn(TwigSeed, -0.2, 0.9), RandomIn(TwigSeed, -0.9, 0.9)>);
                    #local At = P + (Next - P) * rand(TwigSeed);
                    #local Stalk = RandomIn(TwigSeed, 0.02, 0.055);
                    cylinder { At, At + Side * Stalk, 0.0009
                               pigment { rgb <0.30, 0.20, 0.12> } finish { Matte } }
                    object {
                        SeedHead
                        PointAlong(Side)
                        translate At + Side * Stalk
                        pigment { rgb <0.58, 0.45, 0.29> * RandomIn(TwigSeed, 0.75, 1.15) }
                        finish { Matte }
                    }
                #end
            #end
            #local P = Next;
            #local Dir = vnormalize(Bent);
        #end
        translate VaseAt
    }
#end
Branch(9, 200, 0.52)
Branch(-11, 20, 0.60)
Branch(22, 150, 0.44)
Branch(24, 340, 0.50)
Branch(14, 80, 0.42)

// A rubber plant in the sun -----------------------------------------------------------------------

#declare PotAt = <1.30, 0, -0.62>;
lathe {
    linear_spline 9,
    <0, 0.0>, <0.135, 0.0>, <0.142, 0.008>, <0.185, 0.33>, <0.188, 0.34>, <0.182, 0.346>,
    <0.172, 0.346>, <0.165, 0.29>, <0, 0.29>
    texture {
        pigment { bozo turbulence 0.7 color_map { [0 rgb <0.74, 0.71, 0.67>] [1 rgb <0.80, 0.77, 0.73>] }
                  scale 0.1 }
        normal { granite 0.03 scale 0.02 }
        finish { Matte }
    }
    translate PotAt
}
disc { PotAt + y * 0.30, y, 0.168 pigment { rgb <0.045, 0.03, 0.02> } normal { granite 0.8 scale 0.03 }
       finish { Matte } }

#declare BigLeaf = array[4];
#declare BigLeaf[0] = Leaf(0.23, 0.9, 0.25, 0.85)
#declare BigLeaf[1] = Leaf(0.21, 0.6, 0.35, 0.9)
#declare BigLeaf[2] = Leaf(0.24, 1.2, 0.22, 0.8)
#declare BigLeaf[3] = Leaf(0.22, 0.35, 0.4, 0.85)
#declare PlantSeed = seed(310);
#macro RubberStem(Lean, Turn, Height, Leaves)
    #local Top = vrotate(vrotate(y * Height, z * Lean), y * Turn);
    #local Foot = <0.03 * cos(radians(Turn)), 0.29, -0.03 * sin(radians(Turn))>;
    #local Middle = Foot + Top * 0.5 + y * Height * 0.02;
    union {
        object {
            #local Stem = array[5] {
                Foot - Top * 0.3, Foot, Middle, Foot + Top, Foot + Top * 1.4
            }
            RoundBar(Stem, 0.012, 0.006)
            pigment { rgb <0.16, 0.13, 0.08> }
            finish { Matte }
        }
        #for (I, 0, Leaves - 1)
            #local T = 0.34 + 0.68 * I / (Leaves - 1);
            #local Around = Turn + I * 137.5 + RandomIn(PlantSeed, -12, 12);
            #local Up = RandomIn(PlantSeed, 0.25, 0.75) + 1.3 * pow(max(T - 0.6, 0), 1.2);
            #local Dir = vnormalize(<cos(radians(Around)), Up, sin(radians(Around))>);
            #local Long = RandomIn(PlantSeed, 0.23, 0.31) * (1 - 0.25 * pow(T, 4));
            #local Tone = RandomIn(PlantSeed, 0.75, 1.25);
            #local At = Foot + Top * T;
            cylinder { At, At + Dir * 0.05, 0.003 pigment { rgb <0.20, 0.22, 0.08> } finish { Matte } }
            object {
                BigLeaf[mod(I * 3 + Leaves, 4)]
                LeafTexture(<0.045, 0.105, 0.035> * Tone)
                scale Long
                PointAlong(Dir)
                translate At + Dir * 0.05
            }
        #end
        translate PotAt
    }
#end
RubberStem(5, 30, 1.02, 21)
RubberStem(-11, 190, 0.72, 15)
RubberStem(16, 250, 0.62, 14)
