#include "paint/kernels/WideConvolution.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

#include "paint/kernels/Dispatch.h"
#include "paint/kernels/Transpose.h"
#include "raster/PicClass.h"

// A number-theoretic transform: Fourier's, with whole numbers modulo a prime in place of complex
// ones, so that nothing is rounded. All weights of a square come to 2^24 at most, so a sum is
// 255 * 2^24 at most: below the prime, hence itself.
//
// Numbers are multiplied after Montgomery: a product by a factor that is stored times 2^32 takes no
// division. The forward transform leaves its results in another order, from which the inverse one
// starts; the products between them go place by place.

namespace {

using Number = std::uint32_t;

constexpr Number prime = 4293918721;  // 4095 * 2^20 + 1
/// A number whose powers are all numbers but 0.
constexpr Number generator = 19;
constexpr int side = WideConvolution::side;
constexpr Number allPlaces = static_cast<Number>(side) * side;
static_assert(std::uint64_t{255} << 24 < prime);
static_assert((prime - 1) % side == 0);

constexpr Number Inverse32(Number odd) {
    Number inverse = odd;
    for (int i = 0; i < 5; ++i) {
        inverse *= 2 - odd * inverse;
    }
    return inverse;
}

constexpr Number primeInverse = Inverse32(prime);
static_assert(prime * primeInverse == 1);

constexpr Number Minus(Number a, Number b) {
    return a - b + (a < b ? prime : 0);
}

constexpr Number Plus(Number a, Number b) {
    return Minus(a, prime - b);
}

/// a * b / 2^32.
constexpr Number Times(Number a, Number b) {
    const std::uint64_t product = std::uint64_t{a} * b;
    const Number quotient = static_cast<Number>(product) * primeInverse;
    return Minus(static_cast<Number>(product >> 32),
                 static_cast<Number>(std::uint64_t{quotient} * prime >> 32));
}

constexpr Number Remainder(std::uint64_t value) {
    return static_cast<Number>(value % prime);
}

constexpr Number Power(Number base, Number exponent) {
    Number power = 1;
    for (; exponent != 0; exponent >>= 1) {
        if ((exponent & 1) != 0) {
            power = Remainder(std::uint64_t{power} * base);
        }
        base = Remainder(std::uint64_t{base} * base);
    }
    return power;
}

/// As the second factor of Times.
constexpr Number Stored(Number factor) {
    return Remainder((std::uint64_t{factor} << 32) % prime);
}

/// The powers of a number of order `side`.
struct Roots {
    explicit constexpr Roots(Number root) {
        Number power = 1;
        for (Number& value : powers) {
            value = Stored(power);
            power = Remainder(std::uint64_t{power} * root);
        }
    }

    Number powers[side / 2] = {};
};

constexpr Number forwardRoot = Power(generator, (prime - 1) / side);
constexpr Roots forwardRoots(forwardRoot);
constexpr Roots inverseRoots(Power(forwardRoot, side - 1));
static_assert(Power(forwardRoot, side / 2) == prime - 1);

// Columns are transformed, some of them together, so that they stay in the cache.

constexpr int panelColumns = 32;

void PartLoop(Number* __restrict upper, Number* __restrict lower, Number root) {
    for (int i = 0; i < panelColumns; ++i) {
        const Number a = upper[i];
        const Number b = lower[i];
        upper[i] = Plus(a, b);
        lower[i] = Times(Minus(a, b), root);
    }
}

void JoinLoop(Number* __restrict upper, Number* __restrict lower, Number root) {
    for (int i = 0; i < panelColumns; ++i) {
        const Number a = upper[i];
        const Number b = Times(lower[i], root);
        upper[i] = Plus(a, b);
        lower[i] = Minus(a, b);
    }
}

/// Goes through the rows that belong together at a distance of `span`.
template <void (*loop)(Number*, Number*, Number)>
void Pass(Number* panel, int span, const Roots& roots) {
    for (int start = 0; start < side; start += 2 * span) {
        for (int i = 0; i < span; ++i) {
            Number* const upper = panel + (start + i) * side;
            loop(upper, upper + span * side, roots.powers[i * (side / 2 / span)]);
        }
    }
}

void PartPanel(Number* panel) {
    for (int span = side / 2; span > 0; span /= 2) {
        Pass<PartLoop>(panel, span, forwardRoots);
    }
}

void JoinPanel(Number* panel) {
    for (int span = 1; span < side; span *= 2) {
        Pass<JoinLoop>(panel, span, inverseRoots);
    }
}

template <void (*transformPanel)(Number*)>
void TransformColumns(Number* block) {
    for (int column = 0; column < side; column += panelColumns) {
        ForThisProcessor<transformPanel>(block + column);
    }
}

void Turn(Number* from, Number* to) {
    constexpr std::ptrdiff_t rowBytes = side * sizeof(Number);
    static_assert(sizeof(Number) == bytesPerPixel);
    TransposePixels({reinterpret_cast<unsigned char*>(from), rowBytes},
                    {reinterpret_cast<unsigned char*>(to), rowBytes}, side, side);
}

void TransformForward(Number* block, Number* result) {
    TransformColumns<PartPanel>(block);
    Turn(block, result);
    TransformColumns<PartPanel>(result);
}

void TransformBack(Number* result, Number* block) {
    TransformColumns<JoinPanel>(result);
    Turn(result, block);
    TransformColumns<JoinPanel>(block);
}

void MultiplyLoop(Number* __restrict numbers, const Number* __restrict factors) {
    for (int i = 0; i < side; ++i) {
        numbers[i] = Times(numbers[i], factors[i]);
    }
}

}  // namespace

WideConvolution::WideConvolution(const BlurKernel& kernel)
    : half(kernel.Half()), block(allPlaces), turned(allPlaces), weights(allPlaces) {
    if (Failed()) {
        return;
    }
    // A byte at (x, y) counts for the sums from there to 2 * half places on.
    std::fill_n(block.Values(), allPlaces, Number{0});
    for (int y = -half; y <= half; ++y) {
        for (int x = -half; x <= half; ++x) {
            const auto [inner, outer] = std::minmax({std::abs(x), std::abs(y)});
            Row((y - half + side) % side)[(x - half + side) % side] = kernel.Weight(outer, inner);
        }
    }
    TransformForward(block.Values(), weights.Values());
    // The two transforms multiply by the number of places, which is taken back here.
    constexpr Number perPlace = Stored(Stored(Power(allPlaces, prime - 2)));
    for (std::size_t i = 0; i < allPlaces; ++i) {
        weights.Values()[i] = Times(weights.Values()[i], perPlace);
    }
}

bool WideConvolution::Pays(const BlurKernel& kernel, int width, int height) {
    // Measured: as long as BlurSums takes for this many products of a weight and a pixel.
    constexpr double products = 3e8;
    const double weightCount = 0.5 * (kernel.Half() + 1) * (kernel.Half() + 2);
    return kernel.Half() > 0 && kernel.Half() < side / 2 && weightCount * width * height > products;
}

void WideConvolution::Run() const {
    TransformForward(block.Values(), turned.Values());
    for (int y = 0; y < side; ++y) {
        ForThisProcessor<MultiplyLoop>(turned.Values() + y * side, weights.Values() + y * side);
    }
    TransformBack(turned.Values(), block.Values());
}
