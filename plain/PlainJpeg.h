// The plain form of reading and writing JPEGs: the library, used from memory to memory.
#pragma once

#include <optional>
#include <string>

/// One byte a component, packed.
struct PlainPicture {
    int width;
    int height;
    int components;
    std::string bytes;

    bool operator==(const PlainPicture&) const = default;
};

/// A stream that begins with its picture. Empty where the library gives up, and for a picture with
/// a longer side.
std::optional<PlainPicture> DecodeJpegPlainly(const std::string& jpeg, int maximalSide = 65535);

/// With the library's defaults; three components are RGB, one is grey, two are no colours. Without
/// a JFIF header.
std::string EncodeJpegPlainly(const PlainPicture& picture, int quality);
