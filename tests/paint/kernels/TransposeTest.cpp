#include "paint/kernels/Transpose.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>
#include <vector>

#include "raster/PicClass.h"

namespace {

/// A number for each place, and room after each row that nothing writes.
struct NumberedRows {
    static constexpr int slack = 3;

    NumberedRows(int columns, int rows)
        : stride(columns + slack), pixels(static_cast<std::size_t>(stride * rows)) {
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            pixels[i] = static_cast<Pixel>(i) * 2654435761u;
        }
    }

    PixelRows Rows() {
        return {reinterpret_cast<unsigned char*>(pixels.data()),
                std::ptrdiff_t{stride} * bytesPerPixel};
    }
    Pixel At(int x, int y) const { return pixels[static_cast<std::size_t>(y * stride + x)]; }

    int stride;
    std::vector<Pixel> pixels;
};

void ExpectTransposed(int columns, int rows) {
    NumberedRows from(columns, rows);
    NumberedRows to(rows, columns);
    const NumberedRows before = to;
    TransposePixels(from.Rows(), to.Rows(), columns, rows);
    for (int x = 0; x < columns; ++x) {
        for (int y = 0; y < rows; ++y) {
            ASSERT_EQ(to.At(y, x), from.At(x, y)) << columns << " by " << rows;
        }
        for (int y = rows; y < rows + NumberedRows::slack; ++y) {
            ASSERT_EQ(to.At(y, x), before.At(y, x)) << columns << " by " << rows;
        }
    }
}

}  // namespace

TEST(Transpose, TakesEachPixelToItsPlaceAndNoOther) {
    for (int rows = 1; rows <= 20; ++rows) {
        for (int columns = 1; columns <= 20; ++columns) {
            ExpectTransposed(columns, rows);
        }
    }
    for (const auto& [columns, rows] : {std::pair{512, 16}, {511, 513}, {1, 512}, {300, 2}}) {
        ExpectTransposed(columns, rows);
    }
}
