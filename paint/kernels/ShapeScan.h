// The height fields of shapes, a run of pixels at a time.
//
// PaintClass::RotateAboutCentre and ShapeCoverage define the height of a pixel: the exact path, at
// the cost of two inverse functions and a square root a pixel. The fast path rotates by two
// products and a sum. Heights change in steps: where the fast path's result is further from the
// next step than the two paths can differ, it is used; elsewhere, at few pixels, the exact path
// decides. So the heights are the same to the bit. docs/exactness.md gives the bounds.
#pragma once

#include <cstdint>

class ShapeScan {
  public:
    /// A ShapeKind, the width of the rounded edge in pixels, and the turn of all shapes in degrees,
    /// of which the whole ones count. Any other kind has no pixels.
    ShapeScan(std::int32_t newKind, double newBevel, double newTurn);

    /// Selects the shape around (newCx, newCy) with the given half width and half height, which may
    /// be negative.
    void Place(short newCx, short newCy, double newHs, double newVs);

    /// Columns or rows of pixels; none unless `first` is below `end`.
    struct Range {
        int first;
        /// Exclusive.
        int end;
    };
    /// Clips `columns` to those that can hold pixels of the shape.
    Range ReachAcross(Range columns) const;
    /// Clips `rows` to those that can hold pixels of the shape in any of `columns`.
    Range ReachDown(Range columns, Range rows) const;
    /// Clips `columns` to those that can hold pixels of the shape in row `py`.
    Range Reach(int py, Range columns) const;

    static constexpr int longestRun = 128;
    /// The height of what is not part of the shape.
    static constexpr unsigned char ground = 255;

    /// The heights of up to longestRun pixels of row py from column px on. The pixel at the centre
    /// itself has no height.
    void Read(int px, int py, int count, unsigned char* heights) const;

    /// Parameters of the fast path; positions are relative to the shape's centre.
    struct Geometry {
        double sine;
        double cosine;
        double hs;
        double vs;
        double bevel;
        /// Height over width of a round shape.
        double ratio;
        /// Steps of height a pixel.
        double steepness;
        /// Bounds of the difference between the two paths: of positions, in pixels, and of heights,
        /// in steps.
        double slack;
        double tolerance;
    };

  private:
    unsigned char HeightOf(int px, int py) const;
    bool MayHavePixels() const;
    void LimitReach(double size);

    std::int32_t kind;
    double bevel;
    double turn;
    short cx = 0;
    short cy = 0;
    double hs = 0;
    double vs = 0;
    Geometry geometry{};
    /// The distance from the centre beyond which there is no pixel.
    double radius = 0;
    /// The same for each of the shape's own axes.
    double halfWidth = 0;
    double halfHeight = 0;
    bool isEmpty = true;
    /// The fast path cannot decide anywhere: the shape is too thin, or its edge too steep.
    bool onlyDear = false;
    /// By step: 0 the top (or the hole of a ring), 1 to 255 the rounded edge, 256 the ground.
    unsigned char heightOfStep[257];
};
