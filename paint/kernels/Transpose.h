// Rows of pixels become columns.
#pragma once

#include <cstddef>

/// Pixels in rows.
struct PixelRows {
    unsigned char* first;
    /// From each row to the next.
    std::ptrdiff_t bytes;
};

/// Writes the pixels of `rows` rows of `columns` pixels as `columns` rows of `rows` pixels. `from`
/// is only read, and must not overlap `to`.
void TransposePixels(const PixelRows& from, const PixelRows& to, int columns, int rows);
