#include "framework/dialog/ChildWindows.Win.h"

#include <new>
#include <utility>

#include "base/Callback.Win.h"

namespace {

struct Listing {
    HWND parent;
    std::vector<void*> children;
    /// There was memory for all so far.
    bool isWhole = true;
};

BOOL CALLBACK AddChild(HWND window, LPARAM object) {
    Listing& listing = *reinterpret_cast<Listing*>(object);
    listing.isWhole = Guarded(false, [&] {
        if (GetAncestor(window, GA_PARENT) == listing.parent) {
            listing.children.push_back(window);
        }
        return true;
    });
    return listing.isWhole ? TRUE : FALSE;
}

}  // namespace

std::vector<void*> ChildrenOf(HWND parent) {
    Listing listing{parent, {}};
    EnumChildWindows(parent, AddChild, reinterpret_cast<LPARAM>(&listing));
    if (!listing.isWhole) {
        throw std::bad_alloc();
    }
    return std::move(listing.children);
}
