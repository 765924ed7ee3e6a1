#include "host/record/Services.h"

#include <gtest/gtest.h>

#include <set>

namespace host {

TEST(ServicesTest, EveryServiceHasANameOfItsOwnThatLeadsBack) {
    std::set<std::string> names;
    for (std::size_t index = 0; index < serviceCount; ++index) {
        const auto service = static_cast<Service>(index);
        EXPECT_EQ(ServiceFromName(ServiceName(service)), service);
        names.insert(ServiceName(service));
    }
    EXPECT_EQ(names.size(), serviceCount);
    EXPECT_EQ(ServiceFromName("handleProcs.newProc"), Service::handleNew);
    EXPECT_EQ(ServiceFromName("newProc"), std::nullopt);
    EXPECT_EQ(ServiceFromName(""), std::nullopt);
}

}  // namespace host
