// Pictures in files, whatever their format; JPEGSupport has the only one there is.
#pragma once

#include "files/File.h"
#include "files/ImageInfo.h"

/// The dialog over which a file dialog stands.
class FileDialogOwner {
  public:
    /// HWND, or null.
    virtual void* Window() const = 0;
    /// Hides the dialogs' floating windows until they are resumed.
    virtual void SuspendDialogs() = 0;
    virtual void ResumeDialogs() = 0;

  protected:
    ~FileDialogOwner() = default;
};

/// Type codes of files that can be read and written; ends with 0.
extern const FileType supportedImageTypes[];

/// Operations return a status, 0 for success: imageNotSupported for a name of no supported type, or
/// those of JPEGSupport. FatalError 20008 without a name, 20009 for a null record.
class ImageFile : public File {
  public:
    // The file dialogs: fileCancelled when the user left without a choice. A null list stands for
    // the supported types. Ids are without effect: the dialogs are the system's.
    std::int16_t ChooseImageToOpen(void* ownerWindow, const FileType* types, std::int16_t dialogId);
    std::int16_t ChooseImageToSave(void* ownerWindow, const FileType* types, std::int16_t dialogId);
    std::int16_t ChooseImageToOpen(FileDialogOwner& dialog, const FileType* types,
                                   std::int16_t dialogId);
    std::int16_t ChooseImageToSave(FileDialogOwner& dialog, const FileType* types,
                                   std::int16_t dialogId);

    /// Fills the record from the file's header.
    std::int16_t ReadImageInfo(ImageInfo* info);
    /// States how pixels lie in memory. FatalError 20008 unless `planes` are those of `mode`,
    /// `colBytes` has room for them and `rowBytes` for a row.
    std::int16_t SetImageLayout(const ImageInfo* info);
    /// The whole picture, to or from memory in the layout.
    std::int16_t ReadImagePixels(void* base);
    std::int16_t WriteImagePixels(const void* base);
    /// Whether the type, or the last four characters of the name, are those of a supported image.
    bool IsSupportedImage() const;

  private:
    std::int16_t CheckImage(int line) const;
};
