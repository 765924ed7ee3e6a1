#include "recipe/formats/JpegWriter.h"

#include <new>

#include "files/TextureFile.h"

namespace recipe {

namespace {

/// Runs a step of the encoder, which fails only without memory: a full disk throws its own error.
template <typename Step>
void RunStep(Step step) {
    try {
        step();
    } catch (std::int16_t) {
        throw std::bad_alloc();
    }
}

}  // namespace

JpegWriter::JpegWriter(OutputFile& outputFile, int width, int height) : sink(outputFile) {
    RunStep([&] {
        encoder.emplace(JPEGImage{width, height, 3});
        encoder->SetQuality(textureQuality);
        encoder->Start(sink);
    });
}

void JpegWriter::WriteRow(std::span<const std::uint8_t> rgb) {
    RunStep([&] { encoder->WriteRow(rgb.data()); });
}

void JpegWriter::Finish() {
    RunStep([&] { encoder->Finish(); });
}

bool JpegWriter::Sink::Write(const void* bytes, std::int32_t count) {
    file.Write(bytes, static_cast<std::size_t>(count));
    return true;
}

}  // namespace recipe
