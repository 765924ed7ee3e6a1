// A house front in the southern sun: plain plaster, a blue door and shutters, stone paving, and the
// shadow of a tree that stands behind the camera.
#include "common.inc"

IndirectLight(1)

camera {
    perspective
    location <0.9, 1.55, -7.6>
    right x * image_width / image_height
    up y
    direction <-0.02, -0.055, 1.40>
    rotate -13 * y
    translate <-1.25, 0, 0.35>
}

#declare SunColour = <1.0, 0.85, 0.66> * 2.2 * Exposure;
Sun(<-0.62, 0.74, -0.60>, SunColour, 0.16)
sky_sphere {
    pigment {
        gradient y
        color_map { [0.0 rgb <0.60, 0.76, 1.0> * 1.0 * Exposure] [0.5 rgb <0.22, 0.42, 0.95> * 0.75 * Exposure] }
        scale 2
    }
}

// The front ---------------------------------------------------------------------------------------

#declare PlasterTone = <0.74, 0.50, 0.29>;
#declare StoneTone = <0.50, 0.455, 0.385>;
#declare BlueTone = <0.075, 0.20, 0.28>;

#declare DoorLow = <1.05, 0.02, 0>;
#declare DoorHigh = <2.05, 2.25, 0>;
#declare WindowLow = <-2.55, 1.05, 0>;
#declare WindowHigh = <-1.70, 2.30, 0>;

difference {
    box { <-7, 0, 0>, <7, 3.12, 0.5> }
    box { DoorLow - <0, 1, 1>, DoorHigh + z * 0.28 }
    box { WindowLow - z, WindowHigh + z * 0.28 }
    texture {
        pigment {
            average
            pigment_map {
                [1.0 bozo turbulence 0.8 octaves 5
                    color_map { [0 rgb PlasterTone * 0.90] [1 rgb PlasterTone * 1.04] } scale 0.9]
                [0.8 granite
                    color_map { [0 rgb PlasterTone * 0.84] [0.5 rgb PlasterTone] [1 rgb PlasterTone * 1.03] }
                    scale 0.8]
            }
        }
        normal {
            average
            normal_map { [1 granite 0.07 scale 0.10] [1 bozo 0.22 turbulence 0.8 scale 0.22] }
        }
        finish { Matte }
    }
    // Damp has crept up from the paving.
    texture {
        pigment {
            gradient y turbulence 0.06 octaves 5
            color_map {
                [0.0 rgbt <0.36, 0.29, 0.21, 0.45>] [0.10 rgbt <0.36, 0.29, 0.21, 0.5>]
                [0.17 rgbt <0.40, 0.32, 0.23, 0.8>] [0.28 rgbt <0.4, 0.32, 0.23, 1>]
                [1.0 rgbt <0.4, 0.32, 0.23, 1>]
            }
            scale 4 translate -0.4 * y
        }
        finish { Matte }
    }
}

#macro Stone(Grey)
    texture {
        pigment {
            granite
            color_map { [0 rgb Grey * 0.75] [0.45 rgb Grey] [1 rgb Grey * 1.12] }
            scale 0.22
        }
        normal { granite 0.10 scale 0.06 }
        finish { Matte }
    }
#end

// Stone around the openings, a sill and a doorstep.
#macro Surround(Low, High, Wide)
    union {
        RoundedBox(<Low.x - Wide, Low.y, -0.035>, <Low.x, High.y, 0.28>, 0.008)
        RoundedBox(<High.x, Low.y, -0.035>, <High.x + Wide, High.y, 0.28>, 0.008)
        RoundedBox(<Low.x - Wide, High.y, -0.035>, <High.x + Wide, High.y + Wide * 1.15, 0.28>, 0.008)
        Stone(StoneTone)
    }
#end
Surround(DoorLow, DoorHigh, 0.15)
Surround(WindowLow, WindowHigh, 0.11)
object {
    RoundedBox(<WindowLow.x - 0.17, WindowLow.y - 0.09, -0.11>, <WindowHigh.x + 0.17, WindowLow.y, 0.28>,
               0.010)
    Stone(StoneTone * 1.04)
}
object {
    RoundedBox(<DoorLow.x - 0.24, -0.05, -0.38>, <DoorHigh.x + 0.24, 0.13, 0.3>, 0.014)
    Stone(StoneTone * 0.98)
}

// Painted wood: worn, a little chalky.
#declare BluePaint = texture {
    pigment {
        granite
        color_map { [0.0 rgb BlueTone * 0.75] [0.4 rgb BlueTone] [1.0 rgb BlueTone * 1.25 + 0.012] }
        scale <0.06, 0.7, 0.06>
    }
    finish { ambient 0 diffuse 0.82 specular 0.10 roughness 0.05 }
};

// The door: upright boards with two battens' worth of studs.
#declare DoorBoards = 6;
union {
    #for (I, 0, DoorBoards - 1)
        #local X0 = DoorLow.x + (DoorHigh.x - DoorLow.x) * I / DoorBoards;
        #local X1 = DoorLow.x + (DoorHigh.x - DoorLow.x) * (I + 1) / DoorBoards;
        object {
            RoundedBox(<X0 + 0.002, 0.13, 0.165>, <X1 - 0.002, DoorHigh.y, 0.21>, 0.006)
            texture { BluePaint translate <I * 3.7, I * 1.3, 0> }
        }
    #end
    #for (I, 0, 2)
        #for (J, 0, DoorBoards - 1)
            sphere {
                <DoorLow.x + (DoorHigh.x - DoorLow.x) * (J + 0.5) / DoorBoards, 0.42 + I * 0.78, 0.165>,
                0.013
                pigment { rgb 0.03 } finish { Satin }
            }
        #end
    #end
    torus {
        0.055, 0.009 rotate 82 * x translate <DoorLow.x + 0.16, 1.06, 0.148>
        pigment { rgb <0.05, 0.045, 0.04> } finish { Satin }
    }
    sphere { <DoorLow.x + 0.16, 1.12, 0.158>, 0.022 pigment { rgb <0.05, 0.045, 0.04> } finish { Satin } }
}

// The window: panes in a frame, deep in the wall, and two shutters folded back.
box { WindowLow + z * 0.21, WindowHigh + z * 0.24 pigment { rgb <0.02, 0.025, 0.03> }
      finish { ambient 0 diffuse 0.5 reflection { 0.04, 0.9 fresnel on } conserve_energy }
      interior { ior 1.5 } }
#declare Bar = 0.022;
union {
    #for (I, 0, 2)
        #local X = WindowLow.x + (WindowHigh.x - WindowLow.x) * I / 2;
        box { <X - Bar * (I = 1 ? 1.2 : 1.8), WindowLow.y, 0.17>, <X + Bar * (I = 1 ? 1.2 : 1.8), WindowHigh.y, 0.22> }
    #end
    #for (J, 0, 3)
        #local Y = WindowLow.y + (WindowHigh.y - WindowLow.y) * J / 3;
        #local T = (mod(J, 3) = 0 ? 1.8 : 0.7);
        box { <WindowLow.x, Y - Bar * T, 0.175>, <WindowHigh.x, Y + Bar * T, 0.22> }
    #end
    texture { BluePaint }
}
#macro Shutter(Left, Right)
    #local Edge = 0.055;
    union {
        RoundedBox(<Left, WindowLow.y, -0.07>, <Left + Edge, WindowHigh.y, -0.037>, 0.004)
        RoundedBox(<Right - Edge, WindowLow.y, -0.07>, <Right, WindowHigh.y, -0.037>, 0.004)
        RoundedBox(<Left, WindowLow.y, -0.07>, <Right, WindowLow.y + 0.08, -0.037>, 0.004)
        RoundedBox(<Left, WindowHigh.y - 0.07, -0.07>, <Right, WindowHigh.y, -0.037>, 0.004)
        RoundedBox(<Left, (WindowLow.y + WindowHigh.y) / 2 - 0.03, -0.07>,
                   <Right, (WindowLow.y + WindowHigh.y) / 2 + 0.03, -0.037>, 0.004)
        #local Y = WindowLow.y + 0.09;
        #while (Y < WindowHigh.y - 0.08)
            box { <Left + Edge, -0.004, -0.022>, <Right - Edge, 0.004, 0.022>
                  rotate -38 * x translate <0, Y, -0.052> }
            #local Y = Y + 0.034;
        #end
        texture { BluePaint translate Left * 9 * x }
    }
#end
#declare ShutterWidth = (WindowHigh.x - WindowLow.x) / 2 + 0.04;
Shutter(WindowLow.x - 0.125 - ShutterWidth, WindowLow.x - 0.125)
Shutter(WindowHigh.x + 0.125, WindowHigh.x + 0.125 + ShutterWidth)

// Eaves: rafters' ends under two rows of half-round tiles.
#declare TileSeed = seed(77);
#declare RoofTile = difference {
    cone { <0, 0, -0.42>, 0.105, <0, 0, 0.25>, 0.085 }
    cone { <0, 0, -0.43>, 0.090, <0, 0, 0.26>, 0.070 }
    box { <-1, -1, -1>, <1, 0, 1> }
};
box { <-7, 3.10, -0.34>, <7, 3.135, 0.5> Stone(StoneTone * 0.7) rotate 0 }
#for (I, -16, 16)
    box { <-0.045, -0.10, -0.30>, <0.045, 0, 0.1> translate <I * 0.44 + 0.1, 3.11, 0>
          texture { Timber(<0.30, 0.19, 0.11>, <0.17, 0.10, 0.06>) finish { Matte } } }
#end
#for (Row, 0, 4)
    #for (I, -33, 33)
        #local Tone = RandomIn(TileSeed, 0.75, 1.15);
        object {
            RoofTile
            pigment {
                granite
                color_map { [0 rgb <0.36, 0.17, 0.10> * Tone] [0.5 rgb <0.56, 0.29, 0.17> * Tone]
                            [1 rgb <0.64, 0.40, 0.27> * Tone] }
                scale 0.12 translate <I * 1.7, Row, 0>
            }
            finish { Matte }
            rotate <-17 + RandomIn(TileSeed, -0.8, 0.8), RandomIn(TileSeed, -1.2, 1.2), 0>
            translate <I * 0.205, 3.165 + Row * 0.125, -0.02 + Row * 0.40 + RandomIn(TileSeed, -0.015, 0.015)>
        }
    #end
#end
box { <-7, -0.02, -0.3>, <7, 0, 3> pigment { rgb <0.32, 0.17, 0.11> } finish { Matte }
      rotate -17 * x translate y * 3.15 }

// The paving: slabs in courses, with sand in the joints -------------------------------------------

#declare SlabSeed = seed(1234);
#declare Z = 0.1;
#while (Z > -8.5)
    #local Deep = RandomIn(SlabSeed, 0.42, 0.62);
    #local X = -7 - RandomIn(SlabSeed, 0, 0.8);
    #while (X < 7)
        #local Wide = RandomIn(SlabSeed, 0.45, 1.0);
        #local Tone = RandomIn(SlabSeed, 0.84, 1.06);
        object {
            RoundedBox(<0.007, -0.08, 0.007>, <Wide - 0.007, RandomIn(SlabSeed, -0.003, 0.003), Deep - 0.007>,
                       0.010)
            rotate <RandomIn(SlabSeed, -0.25, 0.25), 0, RandomIn(SlabSeed, -0.2, 0.2)>
            texture {
                pigment {
                    granite turbulence 0.3
                    color_map {
                        [0.0 rgb <0.30, 0.265, 0.22> * Tone] [0.4 rgb <0.41, 0.365, 0.305> * Tone]
                        [1.0 rgb <0.48, 0.435, 0.37> * Tone]
                    }
                    scale 0.35 translate <X * 5, Z * 3, Wide * 9>
                }
                normal { average normal_map { [1 granite 0.12 scale 0.07] [1 bozo 0.25 scale 0.16] } }
                finish { Matte }
            }
            translate <X, 0, Z - Deep>
        }
        #local X = X + Wide;
    #end
    #declare Z = Z - Deep;
#end
plane { y, -0.014 pigment { granite color_map { [0 rgb <0.30, 0.25, 0.18>] [1 rgb <0.44, 0.38, 0.29>] }
        scale 0.02 } normal { granite 0.4 scale 0.02 } finish { Matte } }

// Pots --------------------------------------------------------------------------------------------

#macro ClayPot(At, Size, Tone)
    lathe {
        linear_spline 12,
        <0, 0>, <0.150, 0>, <0.158, 0.01>, <0.215, 0.33>, <0.240, 0.335>, <0.246, 0.345>, <0.250, 0.40>,
        <0.244, 0.41>, <0.222, 0.41>, <0.214, 0.40>, <0.205, 0.36>, <0, 0.36>
        texture {
            pigment {
                granite
                color_map { [0 rgb <0.42, 0.21, 0.125> * Tone] [0.5 rgb <0.55, 0.275, 0.16> * Tone]
                            [1 rgb <0.63, 0.40, 0.29> * Tone] }
                scale 0.3
            }
            normal { granite 0.06 scale 0.05 }
            finish { Matte }
        }
        scale Size
        translate At
    }
    disc { At + y * 0.365 * Size, y, 0.205 * Size pigment { rgb <0.06, 0.04, 0.03> }
           normal { granite 0.8 scale 0.03 } finish { Matte } }
#end

#declare BushLeaf = array[3];
#declare BushLeaf[0] = Leaf(0.24, 0.7, 0.25, 0.9)
#declare BushLeaf[1] = Leaf(0.20, 0.3, 0.4, 0.9)
#declare BushLeaf[2] = Leaf(0.27, 1.0, 0.2, 0.85)
#declare BushSeed = seed(99);

// A clipped crown of leaves about a point, on a bare stem.
#macro Crown(Middle, Radius, Leaves, LeafLong, Tone)
    union {
        #for (I, 1, Leaves)
            #local Up = 1 - 2 * (I - 0.5) / Leaves;
            #local Turn = I * 2.39996;
            #local Out = vnormalize(<cos(Turn) * sqrt(1 - Up * Up), Up, sin(Turn) * sqrt(1 - Up * Up)>
                + <RandomIn(BushSeed, -0.15, 0.15), RandomIn(BushSeed, -0.15, 0.15), RandomIn(BushSeed, -0.15, 0.15)>);
            #local Deep = RandomIn(BushSeed, 0.55, 1.0);
            object {
                BushLeaf[mod(I, 3)]
                LeafTexture(Tone * RandomIn(BushSeed, 0.7, 1.3))
                scale LeafLong * RandomIn(BushSeed, 0.8, 1.25)
                PointAlong(vnormalize(Out + <RandomIn(BushSeed, -0.7, 0.7), RandomIn(BushSeed, -0.3, 0.6),
                                             RandomIn(BushSeed, -0.7, 0.7)>))
                translate Middle + Out * Radius * Deep
            }
        #end
    }
#end

#macro StandardTree(At, Size, Height, Radius)
    ClayPot(At, Size, 1)
    sphere_sweep {
        cubic_spline 5,
        At + <0, 0, 0>, 0.022, At + <0, 0.36 * Size, 0>, 0.020, At + <0.012, Height * 0.6, 0.01>, 0.017,
        At + <0, Height, 0>, 0.015, At + <0, Height + 0.4, 0>, 0.012
        pigment { granite color_map { [0 rgb <0.13, 0.09, 0.06>] [1 rgb <0.26, 0.20, 0.14>] } scale <0.03, 0.2, 0.03> }
        finish { Matte }
    }
    Crown(At + y * Height, Radius, 900, 0.085, <0.055, 0.115, 0.03>)
    Crown(At + y * Height, Radius * 0.72, 300, 0.085, <0.04, 0.09, 0.025>)
#end
StandardTree(<0.52, 0, -0.42>, 0.92, 1.22, 0.33)
StandardTree(<2.62, 0, -0.42>, 0.92, 1.18, 0.33)

// A low pot with rosemary under the window, and one that is empty.
ClayPot(<-2.55, 0, -0.34>, 0.82, 0.92)
ClayPot(<-2.02, 0, -0.26>, 0.55, 1.05)
#declare SprigSeed = seed(3);
union {
    #for (I, 1, 130)
        #local Turn = RandomIn(SprigSeed, 0, 360);
        #local Foot = vrotate(x * RandomIn(SprigSeed, 0, 0.11), y * Turn);
        #local Dir = vnormalize(vrotate(<RandomIn(SprigSeed, 0.05, 0.75), 1, 0>, y * (Turn + RandomIn(SprigSeed, -40, 40))));
        #local Long = RandomIn(SprigSeed, 0.16, 0.36);
        cone { Foot, 0.0035, Foot + Dir * Long, 0.001 }
        #for (K, 1, 14)
            #local P = Foot + Dir * Long * (0.15 + 0.85 * K / 14);
            #local Side = vnormalize(Dir * 0.9 + <RandomIn(SprigSeed, -1, 1), RandomIn(SprigSeed, -1, 1), RandomIn(SprigSeed, -1, 1)>);
            cone { P, 0.0028, P + Side * 0.032, 0.0012 }
        #end
    #end
    pigment { bozo color_map { [0 rgb <0.075, 0.115, 0.07>] [1 rgb <0.16, 0.21, 0.13>] } scale 0.03 }
    finish { Matte }
    translate <-2.55, 0.30, -0.34>
}

// The tree behind the camera: only its shadow is seen. Leaves on a few boughs, high up towards the sun.
#declare ShadeSeed = seed(52);
#declare ShadeAt = <-0.62, 0.74, -0.60> * 5.2 + <-2.75, 1.95, 0>;
union {
    #for (I, 1, 26)
        #local Clump = ShadeAt + <RandomIn(ShadeSeed, -1.5, 1.0), RandomIn(ShadeSeed, -0.5, 1.0), RandomIn(ShadeSeed, -0.9, 0.9)>;
        cylinder { ShadeAt - <3.2, 1.2, 0>, Clump, 0.010 }
        #for (K, 1, 55)
            object {
                BushLeaf[mod(K, 3)]
                scale RandomIn(ShadeSeed, 0.09, 0.15)
                rotate <RandomIn(ShadeSeed, 0, 360), RandomIn(ShadeSeed, 0, 360), 0>
                translate Clump + <RandomIn(ShadeSeed, -0.38, 0.38), RandomIn(ShadeSeed, -0.28, 0.28), RandomIn(ShadeSeed, -0.38, 0.38)>
            }
        #end
    #end
    pigment { rgb <0.05, 0.09, 0.03> }
    finish { Matte }
}
