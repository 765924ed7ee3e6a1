#include "tests/support/AnyOperation.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <optional>
#include <random>

#include "base/Progress.h"
#include "paint/Catalog.h"
#include "paint/EffectRun.h"
#include "paint/PaintClass.h"
#include "paint/Stroke.h"
#include "paint/math/Random.h"
#include "tests/support/FailingHandles.h"
#include "tests/support/Pictures.h"

namespace {

/// Numbers of any value, critical ones more often than others.
class AnyInput {
  public:
    explicit AnyInput(unsigned seed) : generator(seed) {}

    bool OneIn(unsigned count) { return generator() % count == 0; }
    int Number(int lo, int hi) {
        return lo + static_cast<int>(generator() % static_cast<unsigned>(hi - lo + 1));
    }
    std::uint32_t Bits() { return static_cast<std::uint32_t>(generator()); }

    std::uint16_t Word() {
        constexpr int notable[] = {0,   1,   2,   3,   4,      9,      10,   11,   14,    20, 23,
                                   26,  29,  44,  50,  99,     100,    101,  255,  256,   -1, -2,
                                   -50, -99, 180, 350, 0x7FFF, -32768, -100, -350, 0x4000};
        switch (Number(0, 3)) {
            case 0:
                return static_cast<std::uint16_t>(Bits());
            case 1:
                return static_cast<std::uint16_t>(notable[Bits() % std::size(notable)]);
            default:
                return static_cast<std::uint16_t>(Number(0, 100));
        }
    }
    short Short() { return static_cast<short>(Word()); }

    double Real() {
        constexpr double notable[] = {0.0,
                                      -0.0,
                                      0.5,
                                      1.0,
                                      -1.0,
                                      2.0,
                                      5e-324,
                                      1e300,
                                      -1e300,
                                      32767.5,
                                      1e9,
                                      -32769.0,
                                      std::numeric_limits<double>::infinity(),
                                      std::numeric_limits<double>::quiet_NaN()};
        switch (Number(0, 3)) {
            case 0:
                return Record<double>();
            case 1:
                return notable[Bits() % std::size(notable)];
            default:
                return Bits() / 4294967296.0 * (OneIn(4) ? 40.0 : 1.0);
        }
    }

    /// Any bytes, in pairs.
    template <typename Type>
    Type Record() {
        unsigned char bytes[(sizeof(Type) + 1) / 2 * 2];
        for (std::size_t i = 0; i < sizeof bytes; i += 2) {
            const std::uint16_t word = Word();
            std::memcpy(bytes + i, &word, sizeof word);
        }
        Type record;
        std::memcpy(&record, bytes, sizeof record);
        return record;
    }

    RGBColor16 Color() {
        const std::uint32_t bits = Bits();
        return {static_cast<std::uint16_t>(bits), static_cast<std::uint16_t>(bits >> 16),
                static_cast<std::uint16_t>(Bits())};
    }

    hostapi::Point Point() {
        const int reach = OneIn(20) ? 32767 : 150;
        return {.v = static_cast<std::int16_t>(Number(-reach, reach)),
                .h = static_cast<std::int16_t>(Number(-reach, reach))};
    }

  private:
    std::mt19937 generator;
};

/// Mostly one that fails no assertion.
short AnyBrushSize(AnyInput& input) {
    return input.OneIn(8) ? input.Short() : static_cast<short>(input.Number(-1, 20));
}

template <typename ToolStroke>
void PaintAnyStroke(PaintClass& pic, AnyInput& input) {
    pic.brushSize = AnyBrushSize(input);
    pic.stampSize = input.Short();
    pic.stampOffsetH = input.Short();
    pic.stampOffsetV = input.Short();
    ToolStroke stroke(pic);
    hostapi::Point previous = input.Point();
    for (int i = input.Number(0, 3); i > 0; --i) {
        const hostapi::Point next = input.Point();
        stroke.Paint(previous, next);
        previous = next;
        pic.brushSize = AnyBrushSize(input);
    }
}

/// Sets any number, or one that the dialogs give: random words alone rarely change a pixel.
void SetAnyNumber(const Field& field, void* record, AnyInput& input) {
    if (field.type == FieldType::color || input.OneIn(4)) {
        return;
    }
    if (field.type == FieldType::real) {
        WriteNumber(field, record, input.Real());
    } else if (!field.words.empty()) {
        WriteNumber(field, record, field.words[input.Bits() % field.words.size()].value);
    } else {
        WriteNumber(field, record,
                    input.Number(static_cast<int>(field.low), static_cast<int>(field.high)));
    }
}

void RunWithAnyRecord(PaintClass& pic, const CatalogRow& row, AnyInput& input) {
    AnyRecord record(row);
    const auto bytes = input.Record<std::array<unsigned char, AnyRecord::capacity>>();
    std::memcpy(record.Data(), bytes.data(), row.recordSize);
    if (!input.OneIn(4)) {
        for (const Field& field : row.fields) {
            SetAnyNumber(field, record.Data(), input);
        }
    }
    row.run(pic, record.Data());
}

void ShiftAnywhere(PaintClass& pic, AnyInput& input) {
    if (!input.OneIn(8)) {
        pic.GetClone();
    }
    pic.ShiftBy(input.Short(), input.Short());
}

/// Mostly with a texture of the same size, else with one that may be larger or smaller.
void CombineWithAny(PaintClass& pic, AnyInput& input) {
    const bool sameSize = !input.OneIn(8);
    PaintClass other(sameSize ? pic.grX : static_cast<short>(input.Number(1, 20)),
                     sameSize ? pic.grY : static_cast<short>(input.Number(1, 20)));
    if (other.pixelMap == nullptr) {
        return;
    }
    FillWithNoise(other, input.Bits());
    const std::int32_t mode = input.OneIn(8) ? input.Record<std::int32_t>() : input.Number(1, 3);
    if (input.OneIn(2)) {
        RunCombine(pic, other, input.Short(), mode);
        return;
    }
    const CombineRecord record{input.Short(), mode, &pic, &other};
    pic.Combine(&record);
}

/// Copies or pixels, mostly few: a large texture takes long to make.
short AnyCount(AnyInput& input) {
    return static_cast<short>(input.OneIn(50) ? input.Number(-32768, 32767) : input.Number(-1, 12));
}

struct Row {
    const char* name;
    void (*run)(PaintClass& pic, AnyInput& input);
    bool keepsClone = false;
};

/// The operations that the catalogue does not have.
const Row rows[] = {
    {"Blur",
     [](PaintClass& pic, AnyInput& input) {
         bool abortFlag = false;
         pic.Blur(input.Real() * 5.0, static_cast<short>(input.Number(0, 4)), nullptr,
                  input.Short(), &abortFlag);
     }},
    {"MotionBlur",
     [](PaintClass& pic, AnyInput& input) { pic.MotionBlur(input.Short(), input.Short()); }},
    {"Sharpen", [](PaintClass& pic, AnyInput&) { pic.Sharpen(); }},
    {"AddBump", [](PaintClass& pic, AnyInput&) { pic.AddBump(); }},
    {"SmoothAlpha",
     [](PaintClass& pic, AnyInput& input) {
         ShowClass progress(input.Short());
         bool abortFlag = false;
         pic.SmoothAlpha(input.Short(), &progress, &abortFlag);
     }},
    {"Soften",
     [](PaintClass& pic, AnyInput& input) {
         ShowClass progress(input.Short());
         bool abortFlag = false;
         pic.Soften(input.Short(), &progress, &abortFlag);
     }},
    {"Skew, nearest",
     [](PaintClass& pic, AnyInput& input) {
         pic.Skew(input.OneIn(4) ? input.Record<std::int32_t>() : input.Number(0, 3), true);
     }},
    {"FillColor", [](PaintClass& pic, AnyInput& input) { pic.FillColor(input.Color()); }},
    {"Invert", [](PaintClass& pic, AnyInput&) { pic.Invert(); }},
    {"ShiftBy", ShiftAnywhere, true},
    {"RunMove",
     [](PaintClass& pic, AnyInput& input) {
         RunMove(pic, input.Record<std::int32_t>(), input.Record<std::int32_t>());
     }},
    {"Combine", CombineWithAny},
    {"RunTile",
     [](PaintClass& pic, AnyInput& input) { RunTile(pic, AnyCount(input), AnyCount(input)); }},
    {"RunResize",
     [](PaintClass& pic, AnyInput& input) { RunResize(pic, AnyCount(input), AnyCount(input)); }},
    {"DisposeCut", [](PaintClass& pic, AnyInput&) { pic.DisposeCut(); }},
    {"undo",
     [](PaintClass& pic, AnyInput&) {
         pic.SaveUndo();
         pic.SwapUndo();
     }},
    {"brush", PaintAnyStroke<BrushStroke>, true},
    {"eraser", PaintAnyStroke<EraserStroke>, true},
    {"pencil", PaintAnyStroke<PencilStroke>, true},
    {"stamp", PaintAnyStroke<StampStroke>, true},
    {"FloodFill",
     [](PaintClass& pic, AnyInput& input) {
         pic.fillTolerance = input.Short();
         pic.fillAntiAlias = static_cast<short>(input.Number(0, 1));
         pic.FloodFill(input.Point());
     }},
    {"Gradient",
     [](PaintClass& pic, AnyInput& input) {
         const hostapi::Point from = input.Point();
         hostapi::Point to = input.Point();
         if (input.OneIn(2)) {
             to.h = from.h;
         } else if (!input.OneIn(8)) {
             to.v = from.v;
         }
         pic.Gradient(from, to);
     }},
};

/// Small textures, some of them a pixel wide or high, few of them larger than most kernels.
short AnySide(AnyInput& input) {
    const int most = input.OneIn(8) ? 70 : 20;
    return static_cast<short>(input.OneIn(8) ? input.Number(1, 2) : input.Number(1, most));
}

void RunOperation(std::size_t operation, PaintClass& pic, AnyInput& input) {
    if (operation < std::size(rows)) {
        rows[operation].run(pic, input);
    } else {
        RunWithAnyRecord(pic, Catalog()[operation - std::size(rows)], input);
    }
}

bool KeepsClone(std::size_t operation) {
    return operation < std::size(rows) && rows[operation].keepsClone;
}

}  // namespace

std::size_t AnyOperationCount() {
    return std::size(rows) + Catalog().size();
}

const char* AnyOperationName(std::size_t operation) {
    return operation < std::size(rows) ? rows[operation].name
                                       : Catalog()[operation - std::size(rows)].name;
}

AnyRun RunAnyOperation(unsigned seed, host::MemorySuites& memory) {
    AnyInput input(seed);
    AnyRun run{input.Bits() % AnyOperationCount(), false, false};
    const short width = AnySide(input);
    PaintClass pic(width, AnySide(input));
    FillWithNoise(pic, input.Bits());
    const RGBColor16 foreground = input.Color();
    const RGBColor16 background = input.Color();
    pic.SetColors(input.OneIn(8) ? nullptr : &foreground, input.OneIn(8) ? nullptr : &background);
    SetSeed(input.Bits());
    memory.FailAllocation(input.OneIn(8) ? input.Number(1, 3) : 0);
    {
        const FailingHandles handles(input.OneIn(8) ? input.Number(1, 8) : 0);
        try {
            RunOperation(run.operation, pic, input);
        } catch (std::int16_t id) {
            if (id != faultAssertion) {
                throw;
            }
            run.assertionFailed = true;
        }
    }
    memory.FailAllocation(0);
    run.cloneLeft = pic.clone != nullptr && !KeepsClone(run.operation) && !run.assertionFailed;
    return run;
}
