#include "tests/support/ScratchFolder.h"

#include <fstream>
#include <random>
#include <sstream>

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
    std::random_device random;
    do {
        path = fs::temp_directory_path() / ("scratch" + std::to_string(random()));
    } while (!fs::create_directory(path));
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(path, ignored);
}

std::string BytesOf(const fs::path& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
}

void WriteBytes(const fs::path& file, const std::string& bytes) {
    std::ofstream stream(file, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}
