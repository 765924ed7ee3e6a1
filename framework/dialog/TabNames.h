// The names of a tab control's tabs.
#pragma once

#include <string>
#include <vector>

/// From the control's window text: names separated by blanks and control characters.
std::vector<std::string> TabNames(const std::string& windowText);
