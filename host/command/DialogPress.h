// A press of a button in a filter's dialog, for batches: the dialog by its title, the button by its
// control id.
#pragma once

#include <string>

namespace host {

struct DialogPress {
    std::string title;
    int item;

    friend bool operator==(const DialogPress&, const DialogPress&) = default;
};

/// "TITLE:ITEM"; the last colon counts. Throws std::invalid_argument.
DialogPress ParsePress(const std::string& text);

}  // namespace host
