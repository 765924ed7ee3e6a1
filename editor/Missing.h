// What this version does not have yet, in one list: the editor disables it. Effects and filters say
// it by a row without a dialog in Operations.cpp.
#pragma once

#include <array>

#include "editor/Tools.h"
#include "resources/Ids.h"

inline constexpr std::array missingItems = {TextureItems::combine};
inline constexpr std::array missingCommands = {commandCombine};
