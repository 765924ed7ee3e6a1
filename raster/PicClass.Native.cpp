#include "raster/PicStorage.h"

FilePointer OpenAnonymousFile() {
    return FilePointer(std::tmpfile());
}
