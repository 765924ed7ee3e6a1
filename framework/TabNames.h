// The names of a tab control's tabs.
#pragma once

#include <string>
#include <vector>

/// From the control's window text, where blanks and control characters separate them. A name with
/// blanks in it is kept whole where control characters do the separating: "Texture\tTile Preview".
std::vector<std::string> TabNames(const std::string& windowText);
