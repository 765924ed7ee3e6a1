#include "recipe/formats/OutputFile.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "recipe/formats/FilePlaces.h"

namespace recipe {

namespace {

std::filesystem::path TemporaryNameBeside(const std::filesystem::path& target) {
    std::filesystem::path temporary = target;
    temporary += '.';
    temporary += std::to_string(ProcessId()) + ".part";
    return temporary;
}

[[noreturn]] void ThrowUnwritable(const std::filesystem::path& target, const std::string& reason) {
    throw std::runtime_error(QuotedName(target) + " cannot be written: " + reason);
}

}  // namespace

OutputFile::OutputFile(std::filesystem::path targetPath)
    : target(std::move(targetPath)), temporary(TemporaryNameBeside(target)) {
    stream = OpenFile(temporary, "wb");
    if (!stream) {
        ThrowUnwritable(target, std::strerror(errno));
    }
}

OutputFile::~OutputFile() {
    stream.reset();
    std::error_code ignored;  // after a Commit() it is not there any more
    std::filesystem::remove(temporary, ignored);
}

void OutputFile::Write(const void* bytes, std::size_t count) {
    // No bytes may come with a null pointer, which fwrite does not allow.
    if (count > 0 && std::fwrite(bytes, 1, count, stream.get()) != count) {
        Fail();
    }
}

void OutputFile::Commit() {
    // A full disk may be reported by the last flush only.
    if (std::fflush(stream.get()) != 0 || std::ferror(stream.get()) != 0) {
        Fail();
    }
    if (std::fclose(stream.release()) != 0) {
        Fail();
    }
    std::error_code error;
    std::filesystem::rename(temporary, target, error);
    if (error) {
        ThrowUnwritable(target, error.message());
    }
}

void OutputFile::Fail() const {
    ThrowUnwritable(target, std::strerror(errno));
}

}  // namespace recipe
