#include "framework/dialog/TabNames.h"

namespace {

/// A no-break space is none, so a name can have more than one word.
bool IsSeparator(char c) {
    return static_cast<unsigned char>(c) <= ' ';
}

}  // namespace

std::vector<std::string> TabNames(const std::string& windowText) {
    std::vector<std::string> names;
    bool isInName = false;
    for (const char c : windowText) {
        if (!IsSeparator(c)) {
            if (!isInName) {
                names.emplace_back();
            }
            names.back() += c;
        }
        isInName = !IsSeparator(c);
    }
    return names;
}
