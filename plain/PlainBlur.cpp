#include "plain/PlainBlur.h"

#include <cmath>

#include "paint/math/ExactMath.h"
#include "raster/Truncation.h"

namespace {

/// The weight of row i, column j, before the square is brought to a sum of 1.
double BellAt(int i, int j, int side, double reach) {
    const double c = (side - 1) / 2;
    const double d = std::sqrt((i - c) * (i - c) + (j - c) * (j - c));
    const double u = (1.0 / (2.0 * reach)) * d;
    return ExactPow360(-(u * u));
}

bool PlainBlurColors(PaintClass& pic, const PlainKernel& kernel, bool everywhere) {
    PicClass* const clone = pic.GetClone();
    if (clone == nullptr) {
        return false;
    }
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            clone->SetPixel(x, y, pic.GetPixel(x, y));
            if (everywhere || pic.GetAlpha(x, y) != 255) {
                const unsigned char red = PlainBlurredByte(pic, kernel, x, y, 0);
                const unsigned char green = PlainBlurredByte(pic, kernel, x, y, 1);
                const unsigned char blue = PlainBlurredByte(pic, kernel, x, y, 2);
                clone->SetRGB(x, y, red, green, blue);
            }
        }
    }
    pic.CopyFromClone();
    pic.DeleteClone();
    return true;
}

void PlainBlurAlpha(PaintClass& pic, const PlainKernel& kernel) {
    std::vector<unsigned char> plane;
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            const unsigned char alpha = pic.GetAlpha(x, y);
            plane.push_back(alpha < 255 ? PlainBlurredByte(pic, kernel, x, y, 3) : alpha);
        }
    }
    std::size_t place = 0;
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            pic.SetAlpha(x, y, plane[place++]);
        }
    }
}

}  // namespace

unsigned char PlainBlurredByte(const PicClass& pic, const PlainKernel& kernel, int x, int y,
                               int channel) {
    std::uint32_t sum = 0;
    for (int k = 0; k < kernel.side; ++k) {
        for (int j = 0; j < kernel.side; ++j) {
            const unsigned char* const pixel = pic.PixelAddressWrapped(
                static_cast<short>(x - kernel.half + j), static_cast<short>(y - kernel.half + k));
            const auto place = static_cast<std::size_t>(k * kernel.side + j);
            sum += pixel[channel] * kernel.weights[place];
        }
    }
    return static_cast<unsigned char>(sum >> 24);
}

PlainKernel MakePlainKernel(double radius) {
    const double reach = radius * 2.0;
    const short half = TruncateToShort(1.0 + reach);
    const int side = 2 * half + 1;
    double sum = 0.0;
    for (int i = 0; i < side; ++i) {
        for (int j = 0; j < side; ++j) {
            sum += BellAt(i, j, side, reach);
        }
    }
    PlainKernel kernel{half, side, {}};
    for (int i = 0; i < side; ++i) {
        for (int j = 0; j < side; ++j) {
            const double weight = 16777216.0 * (BellAt(i, j, side, reach) / sum);
            kernel.weights.push_back(std::isnan(weight) ? 0 : static_cast<std::uint32_t>(weight));
        }
    }
    return kernel;
}

bool PlainBlur(PaintClass& pic, double radius, short mode) {
    const PlainKernel kernel = MakePlainKernel(radius);
    switch (mode) {
        case 1:
            return PlainBlurColors(pic, kernel, true);
        case 2:
            PlainBlurAlpha(pic, kernel);
            return true;
        case 3:
            return PlainBlurColors(pic, kernel, false);
        default:
            return false;
    }
}

bool PlainMotionBlur(PaintClass& pic, short length, short direction) {
    if (length < 1) {
        return true;
    }
    PicClass* const clone = pic.GetClone();
    if (clone == nullptr) {
        return false;
    }
    int dx = 0;
    int dy = 0;
    if (direction >= 1 && direction <= 3) {
        dx = 1;
    }
    if (direction >= 5 && direction <= 7) {
        dx = -1;
    }
    if (direction == 7 || direction == 0 || direction == 1) {
        dy = -1;
    }
    if (direction >= 3 && direction <= 5) {
        dy = 1;
    }
    std::vector<double> w(static_cast<std::size_t>(length));
    double total = 0.0;
    for (int k = 0; k < length; ++k) {
        double& weight = w[static_cast<std::size_t>(length - 1 - k)];
        weight = static_cast<double>(k + 1) / static_cast<double>(length);
        total += weight;
    }
    for (double& weight : w) {
        weight = weight / total;
    }
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            double sums[3] = {0.0, 0.0, 0.0};
            const unsigned char* pixel = nullptr;
            for (int j = 0; j < length; ++j) {
                pixel = pic.PixelAddressWrapped(static_cast<short>(x + j * dx),
                                                static_cast<short>(y + j * dy));
                for (int c = 0; c < 3; ++c) {
                    sums[c] += pixel[c] * w[static_cast<std::size_t>(j)];
                }
            }
            const auto byteOf = [](double sum) {
                return static_cast<unsigned char>(TruncateToShort(sum));
            };
            clone->SetRGB(x, y, byteOf(sums[0]), byteOf(sums[1]), byteOf(sums[2]));
            clone->SetAlpha(x, y, pixel[3]);
        }
    }
    pic.CopyFromClone();
    pic.DeleteClone();
    return true;
}
