// Anything that is thrown through the library's frames reaches the caller, and no memory of the
// library's or the program's is left.
#include "tests/files/memory/JPEGMemory.h"

#include "files/JPEGDecoder.h"
#include "files/JPEGEncoder.h"
#include "files/TextureFile.h"
#include "hostapi/Suites.h"
#include "tests/files/ImageTest.h"
#include "tests/support/MemoryFile.h"

namespace {

/// Takes so many blocks of bytes; the next is refused, or throws.
class StubbornSink final : public ByteSink {
  public:
    StubbornSink(int acceptedBlocks, std::int16_t thrownId)
        : accepted(acceptedBlocks), thrown(thrownId) {}

    bool Write(const void*, std::int32_t) override {
        if (accepted-- > 0) {
            return true;
        }
        if (thrown != 0) {
            throw thrown;
        }
        return false;
    }

  private:
    int accepted;
    std::int16_t thrown;
};

class JPEGMemoryTest : public ImageTest {
  protected:
    JPEGMemoryTest() { file.SetPath("a.jpg"); }
    ~JPEGMemoryTest() override {
        EXPECT_EQ(JPEGBlocksLive(), 0);
        EXPECT_EQ(MemoryFile::OpenCount(), 0);
    }

    /// Whether the texture loads when the blocks from the nth on fail.
    bool LoadsWithFailing(int nth) {
        CountJPEGBlocks(nth);
        const bool loaded = ReadTextureImage(file) != nullptr;
        EXPECT_EQ(JPEGBlocksLive(), 0);
        EXPECT_EQ(MemoryFile::OpenCount(), 0);
        return loaded;
    }

    /// A picture of noise into the sink, with the blocks from the nth on failing. Returns the id
    /// thrown.
    static int Encode(ByteSink& sink, int nth) {
        CountJPEGBlocks(nth);
        const int id = FaultOf([&] {
            JPEGEncoder encoder({61, 120, 3});
            encoder.SetQuality(100);
            encoder.Start(sink);
            unsigned state = 1;
            for (int y = 0; y < 120; ++y) {
                std::uint8_t row[61 * 3];
                for (std::uint8_t& byte : row) {
                    state = state * 1103515245 + 12345;
                    byte = static_cast<std::uint8_t>(state >> 16);
                }
                encoder.WriteRow(row);
            }
            encoder.Finish();
        });
        EXPECT_EQ(JPEGBlocksLive(), 0);
        return id;
    }

    const MemoryFile disk;
};

TEST_F(JPEGMemoryTest, AnyBlockMayFailWhileReading) {
    for (const char* const name :
         {"baseline.jpg", "progressive.jpg", "arithmetic.jpg", "grey.jpg", "restart-rows.jpg"}) {
        SCOPED_TRACE(name);
        MemoryFile::Contents() = Fixture(name);
        EXPECT_TRUE(LoadsWithFailing(0));
        const int blocks = JPEGBlocksAsked();
        EXPECT_GE(blocks, 5);
        for (int nth = 1; nth <= blocks; ++nth) {
            EXPECT_FALSE(LoadsWithFailing(nth)) << nth;
        }
        EXPECT_TRUE(LoadsWithFailing(blocks + 1));
    }
    EXPECT_TRUE(Log().faults.empty());
}

TEST_F(JPEGMemoryTest, AnyBlockMayFailWhileWriting) {
    StubbornSink sink(1000, 0);
    EXPECT_EQ(Encode(sink, 0), 0);
    const int blocks = JPEGBlocksAsked();
    EXPECT_GE(blocks, 4);
    for (int nth = 1; nth <= blocks; ++nth) {
        EXPECT_EQ(Encode(sink, nth), 17402) << nth;
    }
}

TEST_F(JPEGMemoryTest, ASinkMayRefuseOrThrowAtAnyBlock) {
    int blocks = 0;
    for (;; ++blocks) {
        StubbornSink refusing(blocks, 0);
        const int id = Encode(refusing, 0);
        if (id == 0) {
            break;
        }
        EXPECT_EQ(id, 17402);
        // Blocks from elsewhere pass unchanged.
        StubbornSink throwing(blocks, 20002);
        EXPECT_EQ(Encode(throwing, 0), 20002);
    }
    // In the rows and at the end of the stream.
    EXPECT_GE(blocks, 3);
}

TEST_F(JPEGMemoryTest, AFileMayFailAtAnyRead) {
    MemoryFile::Contents() = Fixture("large-segment.jpg");
    static int reads;
    static int failing;
    static const auto original = fileSystem.read;
    fileSystem.read = [](void* handle, void* buffer, std::int32_t count, std::int32_t* done) {
        return ++reads != failing && original(handle, buffer, count, done);
    };
    int faults = 0;
    for (failing = 1;; ++failing, ++faults) {
        reads = 0;
        CountJPEGBlocks(0);
        const int id = FaultOf([&] { EXPECT_NE(ReadTextureImage(file), nullptr); });
        EXPECT_EQ(JPEGBlocksLive(), 0);
        EXPECT_EQ(MemoryFile::OpenCount(), 0);
        if (id == 0) {
            break;
        }
        EXPECT_EQ(id, 20002);
    }
    EXPECT_GE(faults, 30);
    EXPECT_EQ(Log().faults.size(), static_cast<std::size_t>(faults));
}

TEST_F(JPEGMemoryTest, DamagedAndTruncatedFilesLeaveNothing) {
    for (const char* const name : {"progressive-restart.jpg", "arithmetic.jpg", "cmyk.jpg"}) {
        const std::string whole = Fixture(name);
        for (std::size_t at = 0; at < whole.size(); ++at) {
            MemoryFile::Contents() = whole.substr(0, at);
            LoadsWithFailing(0);
            MemoryFile::Contents() = whole;
            MemoryFile::Contents()[at] = static_cast<char>(~whole[at]);
            LoadsWithFailing(0);
        }
    }
}

TEST_F(JPEGMemoryTest, AColorServiceMayThrow) {
    MemoryFile::Contents() = Fixture("grey.jpg");
    record.colorServices = [](hostapi::ColorServicesInfo*) -> std::int16_t {
        throw std::int16_t{20008};
    };
    CountJPEGBlocks(0);
    EXPECT_EQ(FaultOf([&] { ReadTextureImage(file); }), 20008);
}

}  // namespace
