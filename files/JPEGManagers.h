// Connects libjpeg to the program: its errors become thrown ids, its bytes come from a File and go
// to a sink.
//
// The ids are thrown through the library's own frames, which have unwind tables in every build.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
// After <cstdio>, whose types it uses.
#include <jpeglib.h>

#include "files/File.h"

/// Errors throw `errorId` as a std::int16_t, whatever the library's message; warnings and messages
/// are dropped.
struct JPEGErrorManager : jpeg_error_mgr {
    explicit JPEGErrorManager(std::int16_t errorId);

    std::int16_t id;
};

constexpr std::int32_t jpegBufferSize = 4096;

/// Reads the file from its position on. A file that ends too early ends in a made-up end of the
/// image, so that the library fills up the rest; one with nothing to read at all is an error.
struct JPEGFileSource : jpeg_source_mgr {
    explicit JPEGFileSource(File& sourceFile);

    File& file;
    bool atStart = true;
    /// Nothing more comes, so the file is not asked again.
    bool atEnd = false;
    JOCTET buffer[jpegBufferSize];
};

/// Where the bytes of a picture go.
class ByteSink {
  public:
    /// Whether all of them were taken.
    virtual bool Write(const void* bytes, std::int32_t count) = 0;
    /// Nothing follows. Whether all is where it belongs.
    virtual bool Finish() { return true; }

  protected:
    ~ByteSink() = default;
};

/// Appends to the file. Buffers the bytes, memory permitting: a file waits for the disk with each
/// write, and with the hundred pieces of a large texture that took forty times as long as
/// everything else.
class FileSink final : public ByteSink {
  public:
    explicit FileSink(File& sinkFile);
    bool Write(const void* bytes, std::int32_t count) override;
    bool Finish() override;

  private:
    bool WriteOut(const void* bytes, std::int32_t count);

    File& file;
    /// Null without memory.
    std::unique_ptr<std::uint8_t[]> gathered;
    std::int32_t gatheredCount = 0;
};

/// Bytes that a sink does not take are an error.
struct JPEGDestination : jpeg_destination_mgr {
    explicit JPEGDestination(ByteSink& byteSink);

    ByteSink& sink;
    JOCTET buffer[jpegBufferSize];
};
