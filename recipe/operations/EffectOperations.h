// The rows of the operation table that run an effect.
#pragma once

#include <vector>

#include "paint/records/EffectParams.h"
#include "paint/records/LinesParams.h"
#include "recipe/language/Definitions.h"

namespace recipe {

// Each effect as the editor runs it, with the session's colours. Throw std::bad_alloc.
void RunEffect(Session& session, const LinesParams& params);
void RunEffect(Session& session, const ShapesParams& params);
void RunEffect(Session& session, const DropsParams& params);
void RunEffect(Session& session, const DividersParams& params);
void RunEffect(Session& session, const WavesParams& params);
void RunEffect(Session& session, const TwirlsParams& params);
void RunEffect(Session& session, const SkewParams& params);

std::vector<OperationDefinition> EffectOperations();

}  // namespace recipe
