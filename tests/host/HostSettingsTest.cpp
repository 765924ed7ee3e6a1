#include "host/record/HostSettings.h"

#include <gtest/gtest.h>

#include <set>

namespace host {

TEST(HostSettingsTest, EveryTraitHasANameOfItsOwnThatLeadsBack) {
    std::set<std::string> names;
    for (Trait trait : AllTraits()) {
        EXPECT_EQ(TraitFromName(TraitName(trait)), trait);
        EXPECT_STRNE(TraitDescription(trait), "");
        names.insert(TraitName(trait));
    }
    EXPECT_EQ(names.size(), traitCount);
    EXPECT_EQ(TraitFromName("misalign-stack"), Trait::misalignStack);
    EXPECT_EQ(TraitFromName("dumb-handles"), Trait::dumbHandles);
    EXPECT_EQ(TraitFromName("Misalign-Stack"), std::nullopt);
}

TEST(HostSettingsTest, ASetHoldsWhatWasPutIn) {
    TraitSet traits{Trait::zeroRecord, Trait::ignoreMatte};
    traits.Insert(Trait::fpu27f);
    for (Trait trait : AllTraits()) {
        const bool isIn =
            trait == Trait::zeroRecord || trait == Trait::ignoreMatte || trait == Trait::fpu27f;
        EXPECT_EQ(traits.Has(trait), isIn) << TraitName(trait);
    }
}

}  // namespace host
