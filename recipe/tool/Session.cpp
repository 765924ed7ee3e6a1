#include "recipe/tool/Session.h"

#include <cstdint>
#include <exception>
#include <new>
#include <utility>

namespace recipe {

Session::Session(FilePlaces filePlaces, ProgressHook progressHook,
                 const host::MemorySettings& memory)
    : places(std::move(filePlaces)), progress(std::move(progressHook)), core(memory) {}

Session::~Session() = default;

void Session::Run(const std::vector<Operation>& operations) {
    allOperations = operations.size();
    finishedOperations = 0;
    for (const Operation& operation : operations) {
        try {
            RunOne(operation);
        } catch (std::int16_t fault) {
            throw RecipeError(operation.line, CoreHost::FaultText(fault));
        } catch (const std::bad_alloc&) {
            throw RecipeError(operation.line, "not enough memory");
        } catch (const std::exception& error) {
            throw RecipeError(operation.line, error.what());
        }
        ReportProgress(1.0);
        ++finishedOperations;
    }
}

void Session::RunOne(const Operation& operation) {
    ReportProgress(0.0);
    if (operation.definition->textureUse == TextureUse::changes) {
        texture->SaveUndo();
    }
    operation.definition->run(*this, operation.arguments);
}

void Session::SetTexture(std::unique_ptr<PaintClass> newTexture) {
    texture = std::move(newTexture);
    texture->SetColors(&foreground, &background);
}

void Session::ReportProgress(double share) const {
    if (progress) {
        progress((static_cast<double>(finishedOperations) + share) /
                 static_cast<double>(allOperations));
    }
}

}  // namespace recipe
