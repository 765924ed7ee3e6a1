#include "tests/gui/ReadingOrder.Win.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>
#include <optional>

#include "fixtures/WindowAccess.Win.h"

namespace {

/// A control, or several that are read as one, and what lies inside.
struct Block {
    int item;
    RECT bounds;
    bool isStop;
    bool isRadioButton;
    std::vector<Block> inside;
};
using Blocks = std::vector<Block>;

bool HasStyle(const DrivenDialog& dialog, int item, DWORD style) {
    return (static_cast<DWORD>(GetWindowLongA(dialog.Control(item), GWL_STYLE)) & style) != 0;
}

/// BS_PUSHBUTTON and so on; -1 for an item that is no button.
int ButtonType(const DrivenDialog& dialog, int item) {
    const HWND control = dialog.Control(item);
    return ClassOf(control) == "Button" ? static_cast<int>(GetWindowLongA(control, GWL_STYLE)) &
                                              static_cast<int>(BS_TYPEMASK)
                                        : -1;
}

/// A tab control counts as the row of its tabs: the others lie on its page.
RECT BoundsOf(const DrivenDialog& dialog, int item) {
    RECT bounds = dialog.Bounds(item);
    const HWND control = dialog.Control(item);
    if (ClassOf(control) == "SysTabControl32") {
        const WPARAM last = static_cast<WPARAM>(Ask(control, TCM_GETITEMCOUNT)) - 1;
        RECT tab{};
        Ask(control, TCM_GETITEMRECT, last, reinterpret_cast<LPARAM>(&tab));
        bounds.right = bounds.left + tab.right;
        bounds.bottom = bounds.top + tab.bottom;
    }
    return bounds;
}

Blocks VisibleControls(const DrivenDialog& dialog) {
    Blocks blocks;
    for (int item = 1; GetDlgItem(dialog.Window(), item) != nullptr; ++item) {
        if (IsWindowVisible(dialog.Control(item)) != FALSE) {
            const int type = ButtonType(dialog, item);
            blocks.push_back({item,
                              BoundsOf(dialog, item),
                              HasStyle(dialog, item, WS_TABSTOP) && dialog.IsEnabled(item),
                              type == BS_RADIOBUTTON,
                              {}});
        }
    }
    return blocks;
}

// --- What closes the dialog ---

/// The buttons below each other that begin with OK, down to the next line across; empty where they
/// stand side by side.
std::vector<int> ColumnOfOk(const DrivenDialog& dialog, const Blocks& blocks) {
    const RECT ok = dialog.Bounds(IDOK);
    if (dialog.Bounds(IDCANCEL).left != ok.left) {
        return {};
    }
    LONG end = 0x7FFF;
    for (const Block& block : blocks) {
        const bool isLine = ClassOf(dialog.Control(block.item)) == "Static" &&
                            block.bounds.right >= ok.right && block.bounds.top > ok.bottom;
        end = isLine ? std::min(end, block.bounds.top) : end;
    }
    std::vector<int> column;
    for (const Block& block : blocks) {
        if (block.bounds.left == ok.left && block.bounds.top < end) {
            column.push_back(block.item);
        }
    }
    std::sort(column.begin(), column.end(),
              [&](int a, int b) { return dialog.Bounds(a).top < dialog.Bounds(b).top; });
    return column;
}

// --- What lies in what ---

LONG AreaOf(const Block& block) {
    return (block.bounds.right - block.bounds.left) * (block.bounds.bottom - block.bounds.top);
}

bool LiesIn(const Block& block, const Block& frame) {
    RECT both;
    UnionRect(&both, &block.bounds, &frame.bounds);
    return EqualRect(&both, &frame.bounds) != FALSE && AreaOf(block) < AreaOf(frame);
}

/// Puts each block into the smallest one that it lies in.
Blocks Nested(Blocks blocks) {
    std::sort(blocks.begin(), blocks.end(),
              [](const Block& a, const Block& b) { return AreaOf(a) < AreaOf(b); });
    Blocks outermost;
    for (auto block = blocks.begin(); block != blocks.end(); ++block) {
        const auto frame = std::find_if(std::next(block), blocks.end(),
                                        [&](const Block& other) { return LiesIn(*block, other); });
        (frame != blocks.end() ? frame->inside : outermost).push_back(*block);
    }
    return outermost;
}

/// The radio buttons among the blocks become one. At most one of them is a tab stop.
Blocks WithRadioGroup(Blocks blocks) {
    const auto first = std::stable_partition(
        blocks.begin(), blocks.end(), [](const Block& block) { return !block.isRadioButton; });
    if (first == blocks.end()) {
        return blocks;
    }
    Block group = *first;
    for (auto button = first; button != blocks.end(); ++button) {
        UnionRect(&group.bounds, &group.bounds, &button->bounds);
        if (button->isStop) {
            group.item = button->item;
            group.isStop = true;
        }
    }
    blocks.erase(first, blocks.end());
    blocks.push_back(group);
    return blocks;
}

// --- Rows and columns ---

/// Splits where a line across, or upright, meets none of the blocks.
std::vector<Blocks> Split(Blocks blocks, LONG RECT::*from, LONG RECT::*to) {
    std::sort(blocks.begin(), blocks.end(),
              [=](const Block& a, const Block& b) { return a.bounds.*from < b.bounds.*from; });
    std::vector<Blocks> parts;
    LONG end = 0;
    for (const Block& block : blocks) {
        if (parts.empty() || block.bounds.*from >= end) {
            parts.emplace_back();
            end = block.bounds.*to;
        }
        parts.back().push_back(block);
        end = std::max(end, block.bounds.*to);
    }
    return parts;
}

void Read(const Blocks& blocks, std::vector<int>& order);

void ReadBlock(const Block& block, std::vector<int>& order) {
    if (block.isStop) {
        order.push_back(block.item);
    }
    if (!block.inside.empty()) {
        Read(block.inside, order);
    }
}

void Read(const Blocks& blocks, std::vector<int>& order) {
    const Blocks grouped = WithRadioGroup(blocks);
    std::vector<Blocks> parts = Split(grouped, &RECT::top, &RECT::bottom);
    if (parts.size() == 1) {
        parts = Split(grouped, &RECT::left, &RECT::right);
    }
    for (const Blocks& part : parts) {
        if (parts.size() > 1) {
            Read(part, order);
        } else {
            // They overlap, and stand from left to right.
            for (const Block& block : part) {
                ReadBlock(block, order);
            }
        }
    }
}

}  // namespace

std::vector<int> ReadingOrder(const DrivenDialog& dialog) {
    Blocks blocks = VisibleControls(dialog);
    std::vector<int> order;
    for (const int item : ColumnOfOk(dialog, blocks)) {
        const auto block = std::find_if(blocks.begin(), blocks.end(),
                                        [item](const Block& other) { return other.item == item; });
        ReadBlock(*block, order);
        blocks.erase(block);
    }
    Read(Nested(blocks), order);
    return order;
}
