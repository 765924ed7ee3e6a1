#include "framework/access/ItemDescription.h"

namespace {

/// Where the ampersand of the mnemonic stands; a doubled one is a character.
std::size_t MnemonicPlace(const std::string& text) {
    std::size_t at = text.find('&');
    while (at != std::string::npos && at + 1 < text.size() && text[at + 1] == '&') {
        at = text.find('&', at + 2);
    }
    return at;
}

}  // namespace

std::string SpokenText(const std::string& text) {
    std::string spoken;
    for (std::size_t i = 0; i < text.size() && text[i] != '\t'; ++i) {
        if (text[i] == '&' && i + 1 < text.size()) {
            ++i;
        }
        spoken += text[i];
    }
    while (!spoken.empty() && (spoken.back() == ':' || spoken.back() == ' ')) {
        spoken.pop_back();
    }
    return spoken;
}

char MnemonicIn(const std::string& text) {
    const std::size_t at = MnemonicPlace(text);
    return at != std::string::npos && at + 1 < text.size() ? text[at + 1] : '\0';
}

char KeyInHint(const std::string& hint) {
    const std::size_t at = hint.find('[');
    return at != std::string::npos && at + 2 < hint.size() && hint[at + 2] == ']' ? hint[at + 1]
                                                                                  : '\0';
}

bool IsLabel(const std::string& text) {
    return text.size() > 1 && text.back() == ':';
}

std::string SpokenWord(std::string_view word) {
    std::string spoken;
    for (const char character : word) {
        const bool isCapital = character >= 'A' && character <= 'Z';
        const bool isSmall = character >= 'a' && character <= 'z';
        constexpr int toOther = 'a' - 'A';
        if (spoken.empty()) {
            spoken += static_cast<char>(isSmall ? character - toOther : character);
        } else {
            spoken += isCapital ? " " : "";
            spoken += static_cast<char>(isCapital ? character + toOther : character);
        }
    }
    return spoken;
}

std::string FirstSentence(const std::string& text) {
    return text.substr(0, text.find('.'));
}

std::string ColorText(Color24 color) {
    return "red " + std::to_string(color & 0xFF) + ", green " + std::to_string(color >> 8 & 0xFF) +
           ", blue " + std::to_string(color >> 16 & 0xFF);
}
