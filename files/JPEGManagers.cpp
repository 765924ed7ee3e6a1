#include "files/JPEGManagers.h"

#include <jerror.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "base/TryMake.h"

namespace {

/// More than any texture takes at the best quality.
constexpr std::int32_t gatherCapacity = 1024 * 1024;

[[noreturn]] void ThrowId(j_common_ptr info) {
    throw static_cast<const JPEGErrorManager*>(info->err)->id;
}

/// ThrowId by way of the library's own error, which it notes as the last one.
template <typename Info>
[[noreturn]] void Fail(Info* info, int message) {
    const auto common = reinterpret_cast<j_common_ptr>(info);
    common->err->msg_code = message;
    ThrowId(common);
}

void IgnoreLevel(j_common_ptr, int) {}
void IgnoreOutput(j_common_ptr) {}
void IgnoreFormat(j_common_ptr, char*) {}

JPEGFileSource& SourceOf(j_decompress_ptr info) {
    return *static_cast<JPEGFileSource*>(info->src);
}

void NoStep(j_decompress_ptr) {}

std::int32_t ReadBuffer(JPEGFileSource& source) {
    if (source.atEnd) {
        return 0;
    }
    const std::int32_t count =
        source.file.Read(source.buffer, source.file.position, sizeof source.buffer);
    source.atEnd = count == 0;
    return count;
}

std::int32_t PutEndOfImage(JPEGFileSource& source) {
    source.buffer[0] = 0xFF;
    source.buffer[1] = JPEG_EOI;
    return 2;
}

boolean FillInputBuffer(j_decompress_ptr info) {
    JPEGFileSource& source = SourceOf(info);
    std::int32_t count = ReadBuffer(source);
    if (count == 0) {
        if (source.atStart) {
            Fail(info, JERR_INPUT_EMPTY);
        }
        count = PutEndOfImage(source);
    }
    source.atStart = false;
    source.next_input_byte = source.buffer;
    source.bytes_in_buffer = static_cast<std::size_t>(count);
    return TRUE;
}

void SkipInputData(j_decompress_ptr info, long count) {
    JPEGFileSource& source = SourceOf(info);
    auto remaining = static_cast<std::size_t>(std::max(count, 0L));
    while (remaining > source.bytes_in_buffer) {
        remaining -= source.bytes_in_buffer;
        FillInputBuffer(info);
    }
    source.next_input_byte += remaining;
    source.bytes_in_buffer -= remaining;
}

JPEGDestination& DestinationOf(j_compress_ptr info) {
    return *static_cast<JPEGDestination*>(info->dest);
}

void EmptyBuffer(JPEGDestination& destination) {
    destination.next_output_byte = destination.buffer;
    destination.free_in_buffer = sizeof destination.buffer;
}

void InitDestination(j_compress_ptr info) {
    EmptyBuffer(DestinationOf(info));
}

void WriteBuffer(j_compress_ptr info, std::size_t count) {
    JPEGDestination& destination = DestinationOf(info);
    if (!destination.sink.Write(destination.buffer, static_cast<std::int32_t>(count))) {
        Fail(info, JERR_FILE_WRITE);
    }
    EmptyBuffer(destination);
}

/// The library's pointers need not stand at the end: all of the buffer counts as full.
boolean EmptyOutputBuffer(j_compress_ptr info) {
    WriteBuffer(info, sizeof DestinationOf(info).buffer);
    return TRUE;
}

void TerminateDestination(j_compress_ptr info) {
    const JPEGDestination& destination = DestinationOf(info);
    const std::size_t rest = sizeof destination.buffer - destination.free_in_buffer;
    if (rest > 0) {
        WriteBuffer(info, rest);
    }
    if (!DestinationOf(info).sink.Finish()) {
        Fail(info, JERR_FILE_WRITE);
    }
}

}  // namespace

JPEGErrorManager::JPEGErrorManager(std::int16_t errorId) : jpeg_error_mgr{}, id(errorId) {
    // For the table of messages; what would be said of them stays unsaid.
    jpeg_std_error(this);
    error_exit = ThrowId;
    emit_message = IgnoreLevel;
    output_message = IgnoreOutput;
    format_message = IgnoreFormat;
    reset_error_mgr = IgnoreOutput;
}

JPEGFileSource::JPEGFileSource(File& sourceFile) : jpeg_source_mgr{}, file(sourceFile) {
    init_source = NoStep;
    fill_input_buffer = FillInputBuffer;
    skip_input_data = SkipInputData;
    resync_to_restart = jpeg_resync_to_restart;
    term_source = NoStep;
}

FileSink::FileSink(File& sinkFile)
    : file(sinkFile), gathered(TryMakeArray<std::uint8_t>(gatherCapacity)) {}

bool FileSink::Write(const void* bytes, std::int32_t count) {
    if (!gathered || count > gatherCapacity) {
        return WriteOut(bytes, count);
    }
    if (count > gatherCapacity - gatheredCount && !Finish()) {
        return false;
    }
    std::memcpy(gathered.get() + gatheredCount, bytes, static_cast<std::size_t>(count));
    gatheredCount += count;
    return true;
}

bool FileSink::Finish() {
    return WriteOut(gathered.get(), std::exchange(gatheredCount, 0));
}

bool FileSink::WriteOut(const void* bytes, std::int32_t count) {
    return count == 0 || file.Append(bytes, count) == fileSucceeded;
}

JPEGDestination::JPEGDestination(ByteSink& byteSink) : jpeg_destination_mgr{}, sink(byteSink) {
    init_destination = InitDestination;
    empty_output_buffer = EmptyOutputBuffer;
    term_destination = TerminateDestination;
}
