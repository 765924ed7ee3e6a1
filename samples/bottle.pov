// A bottle of green glass with a cork, cut out: the glass itself is partly transparent in the picture.
#include "common.inc"

global_settings { max_trace_level 20 }

camera {
    orthographic
    location <0, 0.152, -2>
    right x * 0.335 * image_width / image_height
    up y * 0.335
    direction z
}

// No background: where nothing but air is behind, the picture is transparent.
light_source {
    <-1.1, 0.75, -1.1>
    color rgb <1, 0.97, 0.92> * 1.1
    area_light x * 0.4, y * 0.6, SoftSteps, SoftSteps adaptive 1
}
light_source {
    <0.9, 0.35, -0.4>
    color rgb <0.75, 0.85, 1> * 0.5
    area_light z * 0.2, y * 0.6, SoftSteps, SoftSteps adaptive 1
}

// Panels that only reflections see: what makes glass look like glass.
union {
    box { <-1.5, -0.25, -0.9>, <-1.45, 0.75, -0.2> pigment { rgb <1.0, 0.98, 0.94> * 2.2 } }
    box { <1.25, -0.2, -0.75>, <1.30, 0.6, -0.55> pigment { rgb <0.85, 0.93, 1.0> * 1.6 } }
    finish { ambient 0 diffuse 0 emission 1 }
    no_image
    no_shadow
}

#macro Profile(Inset)
    cubic_spline 13,
    <-0.02, Inset + 0.004>, <0.0, Inset + 0.004>, <0.028, Inset + 0.002>,
    <0.058 - Inset, 0.004 + Inset>, <0.068 - Inset, 0.020 + Inset * 0.7>, <0.0685 - Inset, 0.075>,
    <0.0685 - Inset, 0.130>, <0.060 - Inset, 0.172 - Inset * 0.6>, <0.036 - Inset, 0.203 - Inset * 0.8>,
    <0.0225 - Inset, 0.228>, <0.0200 - Inset, 0.255>, <0.0205 - Inset, 0.288>, <0.0205 - Inset, 0.32>
    sturm
#end

// Seen by the eye as a body of colour, denser where the way through it is longer: the rim.
#declare Glass = texture {
    pigment {
        aoi
        color_map {
            [0.50 rgbt <0.010, 0.045, 0.035, 0.10>] [0.58 rgbt <0.018, 0.085, 0.060, 0.34>]
            [0.70 rgbt <0.04, 0.16, 0.115, 0.56>] [0.88 rgbt <0.07, 0.24, 0.165, 0.66>]
            [1.00 rgbt <0.08, 0.27, 0.185, 0.70>]
        }
    }
    finish {
        ambient 0 diffuse 0.55 specular 1.1 roughness 0.0018
        reflection { 0.03, 0.75 fresnel on }
        conserve_energy
    }
};
difference {
    lathe { Profile(0) }
    plane { -y, -0.290 }
    texture { Glass }
    interior { ior 1.5 }
}
torus {
    0.0205, 0.0048 scale <1, 1.5, 1> translate 0.283 * y
    texture { Glass }
    interior { ior 1.5 }
}
// The thick bottom gathers the light.
lathe {
    cubic_spline 6,
    <-0.02, 0.006>, <0.0, 0.016>, <0.045, 0.008>, <0.060, 0.012>, <0.064, 0.022>, <0.064, 0.03>
    sturm
    texture { pigment { rgbt <0.10, 0.36, 0.25, 0.55> } finish { ambient 0 diffuse 0.5 specular 0.6 roughness 0.01 } }
    no_shadow
}

// The cork.
cone {
    <0, 0.255, 0>, 0.0165, <0, 0.312, 0>, 0.0205
    texture {
        pigment {
            granite
            color_map { [0.0 rgb <0.16, 0.085, 0.04>] [0.22 rgb <0.44, 0.28, 0.155>] [1 rgb <0.62, 0.43, 0.27>] }
            scale <0.03, 0.015, 0.03>
        }
        normal { granite 0.35 scale 0.012 }
        finish { Matte }
    }
}
