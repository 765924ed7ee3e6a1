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

/// Enough for the largest texture that `tile` makes, which needs memory for itself, its undo store
/// and another block of its size.
inline host::MemorySettings StandardMemory() {
    host::MemorySettings memory;
    memory.budget = std::int64_t{1} << 30;
    return memory;
}

/// The state of a run. A process has one at a time, like its CoreHost.
class Session {
  public:
    explicit Session(FilePlaces filePlaces, ProgressHook progressHook = nullptr,
                     const host::MemorySettings& memory = StandardMemory());
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    /// Runs the operations in order. Throws RecipeError with the line of the one that fails.
    void Run(const std::vector<Operation>& operations);

    /// Valid after the first `new` or `open`, which the parser guarantees.
    PaintClass& Texture() { return *texture; }
    void SetTexture(std::unique_ptr<PaintClass> newTexture);

    const FilePlaces& Places() const { return places; }
    CoreHost& Core() { return core; }
    /// Reports the share of the current operation that is done, 0 to 1.
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
