// Selectors called as a host calls them, over a host that serves rows.
#pragma once

#include "base/FatalError.h"
#include "base/HostServices.h"
#include "shell/Selectors.h"
#include "shell/Zandermolite.h"
#include "shell/transfer/FilterContext.h"
#include "shell/transfer/LastTexture.h"
#include "tests/support/CoreTest.h"
#include "tests/support/RowHost.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/Transfers.h"

/// Rectangles that a call must not leave behind.
constexpr hostapi::Rect someRect{1, 2, 3, 4};
/// A result before the call.
constexpr std::int16_t unwritten = 12345;

class SelectorsTest : public CoreTest {
  protected:
    SelectorsTest() {
        Log().temporaryPath = folder.Path().string();
        errorCell = 0;
        rowHost.Attach(record);
    }
    ~SelectorsTest() override {
        hostWindow = nullptr;
        errorCell = 0;
    }
    void TearDown() override {
        if (keptHandle != nullptr) {
            memory.DisposeKept(keptHandle);
        }
        CoreTest::TearDown();
    }

    std::int16_t Call(std::int16_t selector) {
        std::int16_t result = unwritten;
        DispatchSelector(selector, &record, &result);
        if (record.parameters != nullptr) {
            keptHandle = record.parameters;
        }
        return result;
    }
    std::int16_t Parameters() { return Call(1); }
    std::int16_t Start() { return Call(3); }

    // By value: the packed record has it at an address that no reference may have.
    hostapi::Handle BlockHandle() const { return record.parameters; }
    ParametersBlock& Block() { return *reinterpret_cast<ParametersBlock*>(*record.parameters); }
    std::filesystem::path File() const { return folder.Path() / "Zandermolite.tmp"; }

    void SetRectangles() {
        record.inRect = someRect;
        record.outRect = someRect;
        record.maskRect = someRect;
    }
    void ExpectEmptyRectangles() const {
        EXPECT_TRUE(IsZero(record.inRect));
        EXPECT_TRUE(IsZero(record.outRect));
        EXPECT_TRUE(IsZero(record.maskRect));
    }
    /// The texture of the temporary file stands in the image.
    void ExpectTiledImage(const HostImage& before, int rows) {
        rowHost.Finish();
        const auto pic = LoadLastTexture();
        ASSERT_NE(pic, nullptr);
        EXPECT_EQ(rowHost.image, Tiled(before, TileOf(*pic), record.filterRect, rows));
    }

    ScratchFolder folder;
    RowHost rowHost{NoiseImage({0, 0, 30, 40}, 3)};
    // The record's handle, also after a test has taken it away from the record.
    hostapi::Handle keptHandle = nullptr;
};
