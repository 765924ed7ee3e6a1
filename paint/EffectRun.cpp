#include "paint/EffectRun.h"

#include <cstring>
#include <limits>
#include <optional>
#include <utility>

#include "paint/Resize.h"
#include "raster/HandleArray.h"

namespace {

/// Tells whether a picture is still what it was when last asked about.
class SettledPicture {
  public:
    /// Without `isWanted`, as without memory, a picture never is.
    SettledPicture(const PicClass& newPic, bool isWanted)
        : pic(newPic),
          size(static_cast<std::size_t>(pic.grY) * static_cast<std::size_t>(pic.RowBytes())) {
        if (isWanted) {
            before.emplace(size);
            Keep();
        }
    }

    bool IsAsBefore() {
        const bool same = before.has_value() && !before->Failed() &&
                          std::memcmp(before->Values(), pic.Base(), size) == 0;
        Keep();
        return same;
    }

  private:
    void Keep() {
        if (before.has_value() && !before->Failed()) {
            std::memcpy(before->Values(), pic.Base(), size);
        }
    }

    const PicClass& pic;
    /// In bytes.
    std::size_t size;
    std::optional<HandleArray<unsigned char>> before;
};

}  // namespace

bool RunLines(PaintClass& pic, const LinesParams& params) {
    LinesParams handedOver = params;
    // The generator's 0 points down, along y, and turns the other way.
    handedOver.angle = static_cast<std::int16_t>(180 - params.angle);
    return pic.Lines(handedOver);
}

bool RunShapes(PaintClass& pic, const ShapesParams& params) {
    ShapesParams handedOver = params;
    // As in Lines, and a quarter turn: the generator adds another.
    handedOver.angle = static_cast<std::int16_t>((180 - params.angle) + 90);
    return pic.Shapes(handedOver);
}

bool RunDrops(PaintClass& pic, const DropsParams& params) {
    return pic.Drops(params);
}

void RunDividers(PaintClass& pic, const DividersParams& params) {
    pic.Dividers(params);
}

bool RunWaves(PaintClass& pic, const WavesParams& params) {
    // It returns nothing; only the texture shows that it ran.
    const bool before = std::exchange(pic.changed, false);
    pic.Waves(params);
    const bool ran = pic.changed;
    pic.changed = ran || before;
    return ran;
}

bool RunTwirls(PaintClass& pic, const TwirlsParams& params) {
    return pic.Twirls(params);
}

bool RunSkew(PaintClass& pic, const SkewParams& params, bool nearest) {
    return pic.Skew(params.direction, nearest);
}

bool RunBlur(PaintClass& pic, const BlurParams& params) {
    if (params.motion == 1) {
        return pic.MotionBlur(static_cast<short>(params.amount / 4), params.direction);
    }
    bool stopped = false;
    constexpr short allPixels = 1;
    return pic.Blur(params.amount * 0.05, allPixels, nullptr, 0, &stopped);
}

bool RunSharpen(PaintClass& pic, const SharpenParams& params) {
    // A damaged record can hold 32767 passes, for half a minute. After a few hundred no picture
    // changes.
    SettledPicture picture(pic, params.passes > FieldFor(&SharpenParams::passes).high);
    bool done = true;
    for (short pass = 0; pass < params.passes; ++pass) {
        done = pic.Sharpen() && done;
        if (done && picture.IsAsBefore()) {
            break;
        }
    }
    return done;
}

void RunNoise(PaintClass& pic, const NoiseParams& params) {
    pic.Noise(params.amount, params.mode);
}

void RunSaturation(PaintClass& pic, const SaturationParams& params) {
    pic.Saturation(params.saturation);
}

void RunBrightnessContrast(PaintClass& pic, const BrightContrParams& params) {
    pic.BrightnessContrast(params.contrast, params.brightness);
}

void RunAddColor(PaintClass& pic, const AddColorParams& params) {
    pic.AddColor(params.color, params.opacity);
}

void RunMosaic(PaintClass& pic, const MosaicParams& params) {
    pic.Mosaic(params.horizontal, params.vertical);
}

bool RunCombine(PaintClass& pic, PaintClass& other, std::int16_t amount, std::int32_t mode) {
    if (other.grX != pic.grX || other.grY != pic.grY) {
        return false;
    }
    const CombineRecord record{amount, mode, &pic, &other};
    pic.Combine(&record);
    return true;
}

namespace {

bool IsSide(int length) {
    return length >= 1 && length <= std::numeric_limits<short>::max();
}

/// Makes a texture of another size that `copy` fills from `pic`.
std::unique_ptr<PaintClass> Replacement(const PaintClass& pic, int width, int height,
                                        void (*copy)(const PicClass& from, PicClass& to)) {
    if (!IsSide(width) || !IsSide(height)) {
        return nullptr;
    }
    std::unique_ptr<PaintClass> texture =
        PaintClass::Make(static_cast<short>(width), static_cast<short>(height));
    if (!texture) {
        return nullptr;
    }
    copy(pic, *texture);
    texture->SetColors(pic.foreColor, pic.backColor);
    texture->SaveUndo();
    return texture;
}

}  // namespace

std::unique_ptr<PaintClass> RunTile(const PaintClass& pic, short horizontal, short vertical) {
    return Replacement(pic, pic.grX * horizontal, pic.grY * vertical, CopyTiled);
}

std::unique_ptr<PaintClass> RunResize(const PaintClass& pic, short width, short height) {
    return Replacement(pic, width, height, CopyResampled);
}

bool RunMove(PaintClass& pic, int right, int down) {
    if (pic.GetClone() == nullptr) {
        return false;
    }
    // Whole turns are taken off first: the operation's own positions have 16 bits.
    pic.ShiftBy(static_cast<short>(-(right % pic.grX)), static_cast<short>(-(down % pic.grY)));
    pic.DeleteClone();
    return true;
}
