// Loads any bytes as a texture file; for libFuzzer.
#include <cstddef>
#include <cstdint>

#include "base/HostServices.h"
#include "files/TextureFile.h"
#include "host/record/ColorServices.h"
#include "host/record/MemorySuites.h"
#include "tests/fuzz/Require.h"
#include "tests/support/MemoryFile.h"

namespace {

std::int16_t HOST_CALL ServeColor(hostapi::ColorServicesInfo* info) {
    static const host::ColorSource nothing{};
    return host::ServeColor(info, nothing);
}

/// A host with memory and colours, which finds misuse of the one and of the other.
class Host {
  public:
    Host() {
        record.bufferProcs = suites.Buffers();
        record.handleProcs = suites.Handles();
        record.colorServices = ServeColor;
        filterRecord = &record;
    }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    ~Host() { filterRecord = nullptr; }

    bool IsClean() {
        suites.CheckAtEnd();
        return suites.FoundFaults().Lines().empty();
    }

  private:
    host::MemorySuites suites{host::MemorySettings{}};
    hostapi::FilterRecord record{};
};

/// Loads while the host exists, so that no raster outlives it.
void LoadAsTexture() {
    ImageFile file;
    file.SetPath("a.jpg");
    const auto texture = ReadTextureImage(file);
    Require(file.handle == nullptr && MemoryFile::OpenCount() == 0);
    if (texture) {
        Require(texture->grX >= 1 && texture->grX <= 512);
        Require(texture->grY >= 1 && texture->grY <= 512);
        Require(texture->GetAlpha(0, 0) == 255);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryFile disk;
    MemoryFile::Contents().assign(reinterpret_cast<const char*>(data), size);
    Host host;
    LoadAsTexture();
    Require(host.IsClean());
    return 0;
}
