// What this version does not have yet, in one list: the editor disables it, and the tools named
// here do nothing. Effects and filters say it by a row without a dialog in Operations.cpp.
#pragma once

#include <array>

#include "editor/Tools.h"
#include "resources/Ids.h"

inline constexpr std::array missingItems = {TextureItems::combine, TextureItems::tile};
inline constexpr std::array missingCommands = {commandCombine, commandTile, commandStampSettings,
                                               commandFillSettings};
inline constexpr std::array missingTools = {toolGradient, toolRubberStamp};
