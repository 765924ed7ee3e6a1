// The base of tests of image files.
#pragma once

#include <filesystem>
#include <string>

#include "files/ImageFile.h"
#include "host/record/ColorServices.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FileSystemOverride.h"
#include "tests/support/ScratchFolder.h"

/// The bytes of a file in tests/files/jpeg, which must be there.
inline std::string Fixture(const std::string& name) {
    const std::string bytes = BytesOf(std::filesystem::path("tests/files/jpeg") / name);
    EXPECT_FALSE(bytes.empty()) << name;
    return bytes;
}

/// In a host with colour services, and with a folder to write in.
class ImageTest : public CoreTest {
  protected:
    ImageTest() { record.colorServices = ServeColor; }
    ~ImageTest() override { errorCell = 0; }

    /// The whole name in the folder, as the system writes it.
    std::string NameOf(const std::string& name) const { return (folder.Path() / name).string(); }
    std::string BytesIn(const std::string& name) const { return BytesOf(folder.Path() / name); }
    /// Makes `file` that of a new file with these bytes.
    void Put(const std::string& bytes, const std::string& name = "a.jpg") {
        WriteBytes(folder.Path() / name, bytes);
        file.SetPath(NameOf(name));
        file.type = noFileType;
    }

    ScratchFolder folder;
    FileSystemOverride system;
    ImageFile file;

  private:
    static std::int16_t HOST_CALL ServeColor(hostapi::ColorServicesInfo* info) {
        return host::ServeColor(info, {{0, 0, 0}, {255, 255, 255}, nullptr, {}, nullptr, false});
    }
};
