// Objects of the graphics system that go with their owner.
#pragma once

#include <windows.h>

#include <memory>

struct GdiDeleter {
    void operator()(void* object) const { DeleteObject(object); }
};
/// A pen, brush, region, bitmap or font of ours.
using GdiObject = std::unique_ptr<void, GdiDeleter>;

template <typename Handle>
Handle As(const GdiObject& object) {
    return static_cast<Handle>(object.get());
}

/// An object in a device context for as long as this lives.
class Selection {
  public:
    Selection(HDC newContext, HGDIOBJ object)
        : context(newContext), before(SelectObject(newContext, object)) {}
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;
    ~Selection() { SelectObject(context, before); }

  private:
    HDC context;
    HGDIOBJ before;
};

/// A device context in memory with a bitmap in it.
class MemoryContext {
  public:
    MemoryContext(HDC like, HBITMAP bitmap)
        : context(CreateCompatibleDC(like)), before(SelectObject(context, bitmap)) {}
    MemoryContext(const MemoryContext&) = delete;
    MemoryContext& operator=(const MemoryContext&) = delete;
    ~MemoryContext() {
        SelectObject(context, before);
        DeleteDC(context);
    }
    HDC Get() const { return context; }

  private:
    HDC context;
    HGDIOBJ before;
};

/// 0 by 0 for none.
inline SIZE BitmapSize(HBITMAP bitmap) {
    BITMAP description{};
    if (bitmap == nullptr || GetObjectA(bitmap, sizeof description, &description) == 0) {
        return {0, 0};
    }
    return {description.bmWidth, description.bmHeight};
}
