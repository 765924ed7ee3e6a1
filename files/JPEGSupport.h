// JPEG files for ImageFile: the one format that the program reads and writes.
//
// One layout record is kept between a call that states it and the call that moves pixels, so one
// file is worked on at a time. A status is 0, imageNotRead or imageNotWritten, memFullErr, or a
// status of File; errors of the program raise FatalError. Either way the file is closed.
#pragma once

#include "files/File.h"
#include "files/ImageInfo.h"

/// Fills the record from the header and keeps a copy as the layout. The file may carry up to 16383
/// bytes in front of its picture. Other pictures than grey and those of three components are
/// imageNotRead. Sides above 32767 come out negative. A file that is open stays open, unless the
/// library cannot make out its header.
std::int16_t ReadJPEGInfo(File& file, ImageInfo& info);

/// How the caller of the pixel calls has its pixels in memory.
void SetJPEGLayout(const ImageInfo& info);

/// Reads the picture to `base`, in the layout. Bytes of a pixel after its planes become 255. A
/// picture in other colours than the layout's goes through the host's colour service, whose error
/// is returned: 17500 in a host that has none. A picture of another size than the layout's is
/// imageNotRead. FatalError 20008 for a number of components that is no colour.
std::int16_t ReadJPEGPixels(File& file, void* base);

/// Writes the picture at `base`, in the layout: grey or RGB with nothing between the pixels, else
/// FatalError 20008, also for a resolution unit without resolutions. Asks the file's callback for
/// the quality and, if the result is not above 0, shows the quality dialog, which may end in
/// fileCancelled; until then nothing has touched the file. A file that could not be written whole
/// stays as it is.
std::int16_t WriteJPEG(File& file, const void* base);
