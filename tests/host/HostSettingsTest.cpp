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
    EXPECT_EQ(TraitFromName("misalign-stack"), Trait::MisalignStack);
    EXPECT_EQ(TraitFromName("dumb-handles"), Trait::DumbHandles);
    EXPECT_EQ(TraitFromName("Misalign-Stack"), std::nullopt);
}

TEST(HostSettingsTest, ASetHoldsWhatWasPutIn) {
    TraitSet traits{Trait::ZeroRecord, Trait::IgnoreMatte};
    traits.Insert(Trait::Fpu27f);
    for (Trait trait : AllTraits()) {
        const bool isIn =
            trait == Trait::ZeroRecord || trait == Trait::IgnoreMatte || trait == Trait::Fpu27f;
        EXPECT_EQ(traits.Has(trait), isIn) << TraitName(trait);
    }
}

}  // namespace host
