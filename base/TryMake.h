// Blocks of the process's memory that may be missing: whoever asks for one tests it at once and has
// a status for it. All other allocations throw std::bad_alloc.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

/// Null without memory for the object itself. What its constructor throws passes through.
template <typename Type, typename... Arguments>
std::unique_ptr<Type> TryMake(Arguments&&... arguments) {
    return std::unique_ptr<Type>(new (std::nothrow) Type(std::forward<Arguments>(arguments)...));
}

/// Returns `count` elements without values, null without memory for them.
template <typename Element>
std::unique_ptr<Element[]> TryMakeArray(std::size_t count) {
    static_assert(std::is_trivially_default_constructible_v<Element>);
    return std::unique_ptr<Element[]>(new (std::nothrow) Element[count]);
}

struct RecordDeleter {
    void operator()(void* record) const { ::operator delete(record); }
};
/// A plain record whose type the holder does not know, made by `operator new`.
using RecordPointer = std::unique_ptr<void, RecordDeleter>;

/// Returns `size` bytes without values, null without memory for them.
inline RecordPointer TryMakeRecord(std::size_t size) {
    return RecordPointer(::operator new(size, std::nothrow));
}
