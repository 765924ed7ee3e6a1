#include "framework/TabNames.h"

#include <algorithm>

namespace {

bool IsControlCharacter(char c) {
    return static_cast<unsigned char>(c) < ' ';
}

/// Adds what is left of the part without the blanks around it.
void AddTrimmed(std::vector<std::string>& names, const std::string& part) {
    const std::size_t first = part.find_first_not_of(' ');
    if (first != std::string::npos) {
        names.push_back(part.substr(first, part.find_last_not_of(' ') - first + 1));
    }
}

}  // namespace

std::vector<std::string> TabNames(const std::string& windowText) {
    const bool hasControlCharacters =
        std::any_of(windowText.begin(), windowText.end(), IsControlCharacter);
    std::vector<std::string> names;
    std::string part;
    for (const char c : windowText) {
        if (IsControlCharacter(c) || (c == ' ' && !hasControlCharacters)) {
            AddTrimmed(names, part);
            part.clear();
        } else {
            part += c;
        }
    }
    AddTrimmed(names, part);
    return names;
}
