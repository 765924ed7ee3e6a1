// Loading and saving a texture of 512 by 512, beside the library's plain use for the same pixels
// and settings: what djpeg and cjpeg do but for their start and their own picture format.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>
// After <cstdio>, whose types it uses.
#include <jpeglib.h>

#include "base/Platform.h"
#include "bench/CoreHost.h"
#include "files/FileDialog.h"
#include "files/TextureFile.h"
#include "paint/EffectRun.h"

namespace {

constexpr short side = 512;

std::string BenchFile() {
    return (std::filesystem::temp_directory_path() / "zandermolite-bench.jpg").string();
}

/// Gone at the end.
struct FileRemover {
    FileRemover() = default;
    FileRemover(const FileRemover&) = delete;
    FileRemover& operator=(const FileRemover&) = delete;
    ~FileRemover() { std::filesystem::remove(BenchFile()); }
};

struct Editor final : TextureFileOwner {
    void* Window() const override { return nullptr; }
    void SuspendDialogs() override {}
    void ResumeDialogs() override {}
};

/// Something that looks like a texture.
std::unique_ptr<PaintClass> Strokes() {
    platformServices.clockSeconds = [] { return std::uint32_t{1}; };
    auto texture = std::make_unique<PaintClass>(side, side);
    RunLines(*texture, LinesParams());
    return texture;
}

void SaveStrokes(const PaintClass& texture) {
    platformServices.runFileDialog = [](FileDialog& dialog) {
        BenchFile().copy(dialog.path, filePathCapacity - 1);
        dialog.path[BenchFile().size()] = '\0';
        return true;
    };
    Editor editor;
    if (!SaveTexture(&texture, editor)) {
        std::abort();
    }
}

void Save(benchmark::State& state) {
    const CoreHost host;
    const FileRemover remover;
    const auto texture = Strokes();
    for (auto _ : state) {
        SaveStrokes(*texture);
    }
}

void Load(benchmark::State& state) {
    const CoreHost host;
    const FileRemover remover;
    SaveStrokes(*Strokes());
    Editor editor;
    ImageFile file;
    file.SetPath(BenchFile());
    std::unique_ptr<PaintClass> texture;
    for (auto _ : state) {
        if (!LoadTexture(texture, editor, file)) {
            std::abort();
        }
    }
}

/// Red, green and blue, packed as the other programs have them.
std::vector<JSAMPLE> PackedStrokes() {
    const auto texture = Strokes();
    std::vector<JSAMPLE> packed;
    for (std::int32_t i = 0; i < side * side * bytesPerPixel; i += bytesPerPixel) {
        packed.insert(packed.end(), texture->Base() + i, texture->Base() + i + 3);
    }
    return packed;
}

void SavePlainly(benchmark::State& state) {
    const CoreHost host;
    const FileRemover remover;
    std::vector<JSAMPLE> pixels = PackedStrokes();
    for (auto _ : state) {
        std::FILE* const file = std::fopen(BenchFile().c_str(), "wb");
        jpeg_compress_struct info{};
        jpeg_error_mgr errors{};
        info.err = jpeg_std_error(&errors);
        jpeg_CreateCompress(&info, JPEG_LIB_VERSION, sizeof info);
        jpeg_stdio_dest(&info, file);
        info.image_width = info.image_height = side;
        info.input_components = 3;
        info.in_color_space = JCS_RGB;
        jpeg_set_defaults(&info);
        jpeg_set_quality(&info, textureQuality, TRUE);
        jpeg_start_compress(&info, TRUE);
        while (info.next_scanline < info.image_height) {
            JSAMPROW row = &pixels[info.next_scanline * side * 3];
            jpeg_write_scanlines(&info, &row, 1);
        }
        jpeg_finish_compress(&info);
        jpeg_destroy_compress(&info);
        std::fclose(file);
    }
}

void LoadPlainly(benchmark::State& state) {
    const CoreHost host;
    const FileRemover remover;
    SaveStrokes(*Strokes());
    std::vector<JSAMPLE> pixels(side * side * 3);
    for (auto _ : state) {
        std::FILE* const file = std::fopen(BenchFile().c_str(), "rb");
        jpeg_decompress_struct info{};
        jpeg_error_mgr errors{};
        info.err = jpeg_std_error(&errors);
        jpeg_CreateDecompress(&info, JPEG_LIB_VERSION, sizeof info);
        jpeg_stdio_src(&info, file);
        jpeg_read_header(&info, TRUE);
        jpeg_start_decompress(&info);
        while (info.output_scanline < info.output_height) {
            JSAMPROW row = &pixels[info.output_scanline * side * 3];
            jpeg_read_scanlines(&info, &row, 1);
        }
        jpeg_finish_decompress(&info);
        jpeg_destroy_decompress(&info);
        std::fclose(file);
        benchmark::DoNotOptimize(pixels.data());
    }
}

const bool registered = [] {
    const auto add = [](const char* name, void (*function)(benchmark::State&)) {
        benchmark::RegisterBenchmark(name, function)->Unit(benchmark::kMillisecond);
    };
    add("Saving a JPEG/fast", Save);
    add("Saving a JPEG/plain", SavePlainly);
    add("Loading a JPEG/fast", Load);
    add("Loading a JPEG/plain", LoadPlainly);
    return true;
}();

}  // namespace
