#include "host/command/DialogPress.h"

#include <charconv>
#include <stdexcept>

namespace host {

DialogPress ParsePress(const std::string& text) {
    const std::size_t colon = text.rfind(':');
    int item = 0;
    if (colon != std::string::npos) {
        const char* const end = text.data() + text.size();
        const auto [stopped, error] = std::from_chars(text.data() + colon + 1, end, item);
        if (error == std::errc() && stopped == end && item > 0) {
            return {text.substr(0, colon), item};
        }
    }
    throw std::invalid_argument("'" + text + "' is not TITLE:ITEM");
}

}  // namespace host
