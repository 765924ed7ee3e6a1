// The state that the operations of one recipe share.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "paint/PaintClass.h"
#include "recipe/formats/FilePlaces.h"
#include "recipe/formats/TextureFiles.h"
#include "recipe/language/Definitions.h"
#include "recipe/tool/CoreHost.h"

namespace recipe {

/// Enough for the largest texture that `tile` makes of the largest there is, which needs room for
/// itself, its undo store and another block of its size.
inline host::MemorySettings StandardMemory() {
    host::MemorySettings memory;
    memory.budget = std::int64_t{1} << 30;
    return memory;
}

/// The state of a run. One at a time in a process, as its CoreHost.
class Session {
  public:
    explicit Session(FilePlaces filePlaces, ProgressHook progressHook = nullptr,
                     const host::MemorySettings& memory = StandardMemory());
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    /// Runs the operations in order. Throws RecipeError with the line of the first that fails.
    void Run(const std::vector<Operation>& operations);

    /// Valid from the first `new` or `open` on, which the parser sees to.
    PaintClass& Texture() { return *texture; }
    void SetTexture(std::unique_ptr<PaintClass> newTexture);

    const FilePlaces& Places() const { return places; }
    CoreHost& Core() { return core; }
    /// The present operation has come so far: 0 to 1.
    void ReportProgress(double share) const;

    /// The editor's two colours.
    RGBColor16 foreground = black16;
    RGBColor16 background = white16;

  private:
    void RunOne(const Operation& operation);

    FilePlaces places;
    ProgressHook progress;
    CoreHost core;
    // Declared after the host whose memory holds it.
    std::unique_ptr<PaintClass> texture;
    std::size_t finishedOperations = 0;
    std::size_t allOperations = 1;
};

}  // namespace recipe
