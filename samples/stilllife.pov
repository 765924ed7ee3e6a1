// A still life in window light: a plain linen cloth over a table, a jug, a bowl of lemons, two pears.
// The cloth's front hangs nearly upright and fills the lower half of the picture.
#include "common.inc"

IndirectLight(1)

camera {
    perspective
    location <0.04, 0.62, -3.2>
    right x * image_width / image_height
    up y
    direction <-0.005, -0.335, 2.15>
    #if (!Draft)
        // A real lens's depth of field: sharp at the jug, soft at the wall and the hem.
        focal_point <0, 0.2, -0.22>
        aperture 0.012
        blur_samples 22
        variance 1 / 10000
        confidence 0.9
    #end
}

#declare WindowColour = <1.0, 0.93, 0.82> * Exposure;

// A tall window at the left, a little in front of the table.
light_source {
    <-2.2, 1.35, -1.45>
    color rgb WindowColour * 2.8
    area_light <0.55, 0, -0.75>, <0, 1.35, 0>, SoftSteps + 2, SoftSteps + 2
    adaptive 1
    area_illumination on
    fade_distance 2.2 fade_power 2
}
sky_sphere { pigment { color rgb <0.75, 0.85, 1.0> * 0.10 * Exposure } }

// The wall behind: limewash, lit by the window alone, darker away from it.
plane {
    -z, -1.15
    texture {
        pigment {
            bozo turbulence 0.9 octaves 5
            color_map { [0 rgb <0.135, 0.165, 0.16>] [1 rgb <0.20, 0.235, 0.22>] }
            scale 0.55
        }
        normal { bozo 0.08 turbulence 0.9 scale 0.12 }
        finish { Matte }
    }
}
// A pale screen at the right, out of sight, gives a little light back.
box { <2.2, -1, -2>, <2.25, 1.4, 0.8> pigment { rgb <0.75, 0.66, 0.55> } finish { Matte } }

// The cloth ---------------------------------------------------------------------------------------
// One sheet: v runs from the back of the table (0) over its front edge to the hem (1). The table's
// top is y = 0, its front edge z = FrontZ.

#declare HalfWidth = 1.15;
#declare FrontZ = -0.55;
#declare TopDepth = 0.95;
#declare Round = 0.03;
#declare ArcLength = Round * pi / 2;
#declare DropLength = 0.75;
#declare SheetLength = TopDepth + ArcLength + DropLength;

// How far along the sheet, measured from the edge's rounding: negative on the top.
#declare Along = function(v) { v * SheetLength - TopDepth };
#declare Around = function(s) { min(max(s, 0), ArcLength) / Round };
#declare Down = function(s) { max(s - ArcLength, 0) };
#declare OnTop = function(s) { max(-s, 0) };

// The folds of the drop: none at the edge, deepening to the hem, each of its own width.
#declare FoldShape = function(x) {
    0.62 * sin(x * 7.3 + 0.9 + 0.9 * sin(x * 2.1)) + 0.28 * sin(x * 12.9 + 2.1 + 0.7 * sin(x * 3.7))
    + 0.10 * sin(x * 24.1 + 0.4)
};
#declare FoldDepth = function(d) { 0.075 * pow(min(d / DropLength, 1), 0.85) };
#declare Fold = function(x, d) { FoldDepth(d) * FoldShape(x + 0.05 * d * sin(x * 5)) };

// The top: creases of the folded linen, faint waves towards the sides.
#declare Crease = function(back) { exp(-pow(back / 0.010, 2)) };
#declare TopLift = function(x, back) {
    0.0035 * (Crease(x - 0.62) + Crease(x + 0.58))
    + 0.003 * sin(x * 5.1 + 2.0 * back) * sin(back * 4.3 + 1.0)
    + 0.0025 * sin((x + 0.6 * back) * 11) * min(back * 4, 1)
};

#declare SheetX = function(u, v, w) { (2 * u - 1) * HalfWidth };
#declare SheetS = function(v) { Along(v) };
#declare SheetY = function(u, v, w) {
    Round * (cos(Around(SheetS(v))) - 1) - Down(SheetS(v))
    + TopLift((2 * u - 1) * HalfWidth, OnTop(SheetS(v))) * min(OnTop(SheetS(v)) * 12, 1)
    + 0.006 * Down(SheetS(v)) * sin((2 * u - 1) * 9)
};
#declare SheetZ = function(u, v, w) {
    FrontZ + OnTop(SheetS(v)) - Round * sin(Around(SheetS(v)))
    - 0.04 * Down(SheetS(v)) - Fold((2 * u - 1) * HalfWidth, Down(SheetS(v)))
};

#declare Linen = texture {
    pigment {
        bozo turbulence 0.5
        color_map { [0 rgb <0.66, 0.625, 0.565>] [1 rgb <0.70, 0.665, 0.605>] }
        scale 0.3
    }
    normal { granite 0.05 scale 0.012 }
    finish { ambient 0 diffuse 0.85 }
};
#declare Sheet = SurfaceMesh(SheetX, SheetY, SheetZ, 240, 260)
object { Sheet texture { Linen } }
// What the cloth lies on: keeps light from coming up through it.
box { <-HalfWidth, -0.9, FrontZ + 0.02>, <HalfWidth, -0.012, FrontZ + TopDepth>
      pigment { rgb 0.1 } finish { Matte } }

// The jug -----------------------------------------------------------------------------------------

#declare JugAt = <-0.24, 0.002, -0.12>;
#declare Glaze = texture {
    pigment {
        gradient y
        turbulence 0.05 octaves 4
        color_map {
            [0.00 rgb <0.42, 0.30, 0.20>] [0.055 rgb <0.44, 0.32, 0.22>]
            [0.075 rgb <0.74, 0.735, 0.70>] [1.0 rgb <0.78, 0.775, 0.745>]
        }
        scale 0.5
    }
    normal { bumps 0.03 scale <0.2, 0.012, 0.2> }
    finish { Glazed }
};
#declare JugHandle = array[8] {
    <0.03, 0.39, 0>, <0.075, 0.405, 0>, <0.126, 0.409, 0>, <0.170, 0.370, 0>, <0.175, 0.30, 0>,
    <0.150, 0.240, 0>, <0.116, 0.205, 0>, <0.08, 0.19, 0>
}
#declare JugProfile = array[16] {
    <0.03, -0.02, 0>, <0.082, 0.0, 0>, <0.092, 0.008, 0>, <0.128, 0.09, 0>, <0.142, 0.17, 0>,
    <0.126, 0.25, 0>, <0.088, 0.315, 0>, <0.070, 0.355, 0>, <0.068, 0.390, 0>, <0.080, 0.432, 0>,
    <0.086, 0.442, 0>, <0.080, 0.440, 0>, <0.062, 0.392, 0>, <0.062, 0.355, 0>, <0.08, 0.30, 0>,
    <0.08, 0.25, 0>
}
union {
    Turned(JugProfile)
    // The handle.
    object { RoundBar(JugHandle, 0.0135, 0.0130) scale <1, 1, 1.5> }
    texture { Glaze }
    interior { ior 1.5 }
    rotate 28 * y
    translate JugAt
}

// Olive twigs in the jug --------------------------------------------------------------------------

#declare OliveLeaf = array[3];
#declare OliveLeaf[0] = Leaf(0.125, 0.5, 0.3, 0.95)
#declare OliveLeaf[1] = Leaf(0.115, 0.2, 0.4, 0.9)
#declare OliveLeaf[2] = Leaf(0.13, 0.8, 0.2, 1.0)
#declare TwigSeed = seed(1905);
#macro OliveTwig(Lean, Turn, Length)
    #local Steps = 13;
    #local P = JugAt + <0, 0.36, 0>;
    #local Dir = vrotate(vrotate(y, -z * Lean * 0.6), y * Turn);
    #local Out = vrotate(x, y * Turn);
    union {
        #for (I, 1, Steps)
            #local Next = P + Dir * Length / Steps;
            #local R0 = 0.0042 * (1 - 0.8 * (I - 1) / Steps);
            #local R1 = 0.0042 * (1 - 0.8 * I / Steps);
            cone { P, R0, Next, R1 }
            sphere { Next, R1 }
            #if (I > 2)
                #local Spin = I * 90 + RandomIn(TwigSeed, -25, 25);
                #for (K, 0, 1)
                    #local Side = vaxis_rotate(vnormalize(vcross(Dir, z + 0.1 * x)), Dir, Spin + K * 180);
                    #local Toward = vnormalize(Side + Dir * RandomIn(TwigSeed, 0.5, 0.95));
                    #local Tone = RandomIn(TwigSeed, 0.8, 1.25);
                    object {
                        OliveLeaf[mod(I + K, 3)]
                        scale RandomIn(TwigSeed, 0.066, 0.092) * (1 - 0.3 * I / Steps)
                        PointAlong(Toward)
                        translate Next
                        LeafTexture(<0.115, 0.15, 0.075> * Tone)
                    }
                #end
            #end
            #local P = Next;
            #local Dir = vnormalize(Dir + Out * 0.022 * Lean / 20
                + <RandomIn(TwigSeed, -0.06, 0.06), RandomIn(TwigSeed, -0.05, 0.05),
                   RandomIn(TwigSeed, -0.06, 0.06)>);
        #end
        pigment { rgb <0.20, 0.165, 0.12> }
        finish { Matte }
    }
#end
OliveTwig(28, 8, 0.42)
OliveTwig(26, 172, 0.40)
OliveTwig(8, 250, 0.40)
OliveTwig(38, 335, 0.34)
OliveTwig(34, 205, 0.30)

// The bowl and the lemons -------------------------------------------------------------------------

#declare BowlAt = <0.245, 0.002, -0.20>;
#declare BowlProfile = array[14] {
    <0.02, -0.01, 0>, <0.062, 0.0, 0>, <0.064, 0.010, 0>, <0.070, 0.018, 0>, <0.125, 0.055, 0>,
    <0.158, 0.098, 0>, <0.163, 0.104, 0>, <0.159, 0.106, 0>, <0.152, 0.100, 0>,
    <0.115, 0.058, 0>, <0.060, 0.026, 0>, <0.03, 0.021, 0>, <0.0, 0.020, 0>, <-0.03, 0.020, 0>
}
object {
    Turned(BowlProfile)
    texture {
        pigment { bozo turbulence 0.6 color_map { [0 rgb <0.075, 0.13, 0.17>] [1 rgb <0.11, 0.18, 0.22>] }
                  scale 0.05 }
        normal { bumps 0.03 scale <0.2, 0.01, 0.2> }
        finish { Glazed }
    }
    interior { ior 1.5 }
    translate BowlAt
}

// A lemon along x, its nipple at the positive end.
#declare LemonProfile = array[12] {
    <-0.01, -0.049, 0>, <0.0, -0.047, 0>, <0.008, -0.0445, 0>, <0.022, -0.036, 0>,
    <0.0325, -0.017, 0>, <0.0345, 0.002, 0>, <0.030, 0.021, 0>, <0.019, 0.036, 0>,
    <0.0095, 0.0430, 0>, <0.0068, 0.0485, 0>, <0.0, 0.051, 0>, <-0.01, 0.049, 0>
}
#declare Lemon = object {
    Turned(LemonProfile)
    rotate -90 * z
    texture {
        pigment {
            bozo turbulence 0.5
            color_map { [0 rgb <0.78, 0.50, 0.025>] [0.6 rgb <0.83, 0.57, 0.04>] [1 rgb <0.80, 0.60, 0.07>] }
            scale 0.04
        }
        normal { bumps 0.22 scale 0.0026 }
        finish { ambient 0 diffuse 0.8 specular 0.28 roughness 0.018 }
    }
}
object { Lemon rotate <0, 25, 8> translate BowlAt + <-0.055, 0.085, -0.05> }
object { Lemon rotate <40, -50, -5> translate BowlAt + <0.045, 0.083, -0.055> }
object { Lemon rotate <80, 100, 12> translate BowlAt + <0.065, 0.088, 0.035> }
object { Lemon rotate <10, 170, -10> translate BowlAt + <-0.030, 0.088, 0.045> }
object { Lemon rotate <20, 35, 18> translate BowlAt + <0.008, 0.125, -0.012> }
object { Lemon rotate <20, -28, 2> translate <-0.055, 0.0365, -0.40> }

// Two pears, one lying.
#declare PearStalk = array[6] {
    <0, 0.09, 0>, <0, 0.105, 0>, <0, 0.118, 0>, <0.003, 0.134, 0>, <0.010, 0.149, 0>,
    <0.018, 0.160, 0>
}
#declare PearProfile = array[14] {
    <-0.01, 0.004, 0>, <0.0, 0.005, 0>, <0.010, 0.001, 0>, <0.028, 0.006, 0>, <0.041, 0.030, 0>,
    <0.0425, 0.045, 0>, <0.037, 0.066, 0>, <0.026, 0.086, 0>, <0.0205, 0.102, 0>,
    <0.0165, 0.114, 0>, <0.009, 0.1205, 0>, <0.003, 0.120, 0>, <0.0, 0.118, 0>, <-0.01, 0.118, 0>
}
#declare Pear = union {
    object {
        Turned(PearProfile)
        texture {
            pigment {
                gradient x
                turbulence 0.35
                color_map {
                    [0.0 rgb <0.40, 0.13, 0.045>] [0.35 rgb <0.46, 0.30, 0.07>]
                    [0.7 rgb <0.42, 0.40, 0.09>] [1.0 rgb <0.38, 0.40, 0.10>]
                }
                scale 0.1 translate -0.05 * x
            }
            finish { ambient 0 diffuse 0.8 specular 0.16 roughness 0.03 }
        }
        texture {
            pigment { granite color_map { [0.0 rgbt <0.25, 0.17, 0.06, 0.35>] [0.22 rgbt <0.3, 0.2, 0.07, 1>]
                      [1 rgbt <0.3, 0.2, 0.07, 1>] } scale 0.012 }
            finish { Matte }
        }
    }
    object {
        RoundBar(PearStalk, 0.0028, 0.0026)
        pigment { rgb <0.16, 0.10, 0.05> }
        finish { Matte }
    }
}
object { Pear rotate <0, 150, -4> translate <0.035, 0.001, -0.31> }
object { Pear rotate <0, 40, 0> rotate <0, 0, -80> rotate -32 * y translate <0.42, 0.041, -0.40> }
