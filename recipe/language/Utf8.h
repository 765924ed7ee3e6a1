// UTF-8 text at the tool's edges.
#pragma once

#include <string_view>

namespace recipe {

/// Whether the bytes are well-formed UTF-8: no overlong forms, no surrogates, nothing beyond
/// U+10FFFF.
bool IsUtf8(std::string_view bytes);

}  // namespace recipe
