// How operations tell that memory was short.
#pragma once

#include <new>

#include "recipe/tool/Session.h"

namespace recipe {

/// For run steps that answer whether there was memory.
inline void CheckMemory(bool hadMemory) {
    if (!hadMemory) {
        throw std::bad_alloc();
    }
}

/// The texture, for run steps that do nothing without memory for a clone and do not say so.
inline PaintClass& TextureWithRoom(Session& session) {
    CheckMemory(session.Texture().HasRoomForClone());
    return session.Texture();
}

}  // namespace recipe
