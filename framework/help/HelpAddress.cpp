#include "framework/help/HelpAddress.h"

std::string HelpAddress(const std::string& module, const std::string& pages,
                        bool (*isLeadByte)(unsigned char)) {
    const std::string path = helpScheme + module;
    // The pages bring the backslash before them along, if they have one.
    const std::size_t behindBackslash = !pages.empty() && pages[0] == '\\' ? 0 : 1;
    std::size_t end = 0;
    for (std::size_t at = 0; at < path.size(); ++at) {
        if (path[at] == '\\') {
            end = at + behindBackslash;
        } else if (path[at] == '/' || path[at] == ':') {
            end = at + 1;
        } else if (isLeadByte(static_cast<unsigned char>(path[at]))) {
            ++at;
        }
    }
    return path.substr(0, end) + pages;
}
