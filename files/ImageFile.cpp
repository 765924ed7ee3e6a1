#include "files/ImageFile.h"

#include <algorithm>

#include "files/JPEGSupport.h"

const FileType supportedImageTypes[] = {hostapi::FourCharacters('J', 'P', 'E', 'G'),
                                        hostapi::FourCharacters('J', 'F', 'I', 'F'), jpegExtension,
                                        noFileType};

namespace {

constexpr char sourceName[] = "ImageFile";
constexpr std::int16_t openDialogId = 17100;
constexpr std::int16_t saveDialogId = 17200;

bool IsSupported(FileType type) {
    const FileType* candidate = supportedImageTypes;
    while (*candidate != noFileType && *candidate != type) {
        ++candidate;
    }
    return *candidate != noFileType;
}

/// The last four characters of a name if they begin at a dot, in upper case.
FileType ExtensionOf(const std::string& name) {
    constexpr std::size_t length = 4;
    if (name.size() < length || name[name.size() - length] != '.') {
        return noFileType;
    }
    FileType type = 0;
    for (const char character : name.substr(name.size() - length)) {
        const bool isLower = character >= 'a' && character <= 'z';
        const char upper = isLower ? static_cast<char>(character - 'a' + 'A') : character;
        type = type << 8 | static_cast<unsigned char>(upper);
    }
    return type;
}

const FileType* GivenOrSupported(const FileType* types) {
    return types != nullptr ? types : supportedImageTypes;
}

/// For its lifetime the file has the dialog as its owner, and the dialogs' floating windows are out
/// of the way. The file may outlive the dialog.
class FileDialogOver {
  public:
    FileDialogOver(File& newFile, FileDialogOwner& newOwner) : file(newFile), owner(newOwner) {
        owner.SuspendDialogs();
        file.owner = &owner;
    }
    FileDialogOver(const FileDialogOver&) = delete;
    FileDialogOver& operator=(const FileDialogOver&) = delete;
    ~FileDialogOver() {
        file.owner = nullptr;
        owner.ResumeDialogs();
    }

  private:
    File& file;
    FileDialogOwner& owner;
};

}  // namespace

std::int16_t ImageFile::ChooseImageToOpen(void* ownerWindow, const FileType* types,
                                          std::int16_t dialogId) {
    return ChooseFile(FileDialogMode::open, ownerWindow, GivenOrSupported(types),
                      dialogId > 0 ? dialogId : openDialogId);
}

std::int16_t ImageFile::ChooseImageToSave(void* ownerWindow, const FileType* types,
                                          std::int16_t dialogId) {
    return ChooseFile(FileDialogMode::save, ownerWindow, GivenOrSupported(types),
                      dialogId > 0 ? dialogId : saveDialogId);
}

std::int16_t ImageFile::ChooseImageToOpen(FileDialogOwner& dialog, const FileType* types,
                                          std::int16_t dialogId) {
    const FileDialogOver over(*this, dialog);
    return ChooseImageToOpen(dialog.Window(), types, dialogId);
}

std::int16_t ImageFile::ChooseImageToSave(FileDialogOwner& dialog, const FileType* types,
                                          std::int16_t dialogId) {
    const FileDialogOver over(*this, dialog);
    return ChooseImageToSave(dialog.Window(), types, dialogId);
}

std::int16_t ImageFile::CheckImage(int line) const {
    if (!HasName()) {
        FatalError(faultBadArgument, sourceName, line);
    }
    return IsSupportedImage() ? std::int16_t{0} : std::int16_t{imageNotSupported};
}

std::int16_t ImageFile::ReadImageInfo(ImageInfo* info) {
    const std::int16_t status = CheckImage(__LINE__);
    if (status != 0) {
        return status;
    }
    CheckError(info, faultNoWindow, sourceName, __LINE__);
    return ReadJPEGInfo(*this, *info);
}

std::int16_t ImageFile::SetImageLayout(const ImageInfo* info) {
    const std::int16_t status = CheckImage(__LINE__);
    if (status != 0) {
        return status;
    }
    CheckError(info, faultNoWindow, sourceName, __LINE__);
    const bool fits = info->planes != 0 && info->planes == PlanesOfMode(info->mode) &&
                      info->planes <= info->colBytes &&
                      info->rowBytes >= std::int64_t{info->Width()} * info->colBytes;
    if (!fits) {
        FatalError(faultBadArgument, sourceName, __LINE__);
    }
    SetJPEGLayout(*info);
    return 0;
}

std::int16_t ImageFile::ReadImagePixels(void* base) {
    const std::int16_t status = CheckImage(__LINE__);
    return status != 0 ? status : ReadJPEGPixels(*this, base);
}

std::int16_t ImageFile::WriteImagePixels(const void* base) {
    const std::int16_t status = CheckImage(__LINE__);
    return status != 0 ? status : WriteJPEG(*this, base);
}

bool ImageFile::IsSupportedImage() const {
    return IsSupported(type) || IsSupported(ExtensionOf(GetFileName()));
}
