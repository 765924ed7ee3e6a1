#include "host/record/ServiceDirectory.h"

#include <gtest/gtest.h>

namespace host {
namespace {

constexpr hostapi::ServiceTag one = 1;
constexpr hostapi::ServiceTag other = 2;

TEST(ServiceDirectoryTest, ServicesAreFoundByTheirTags) {
    ServiceDirectory directory;
    int service = 0;
    int another = 0;
    EXPECT_EQ(directory.Lookup(one), nullptr);
    EXPECT_TRUE(directory.Register(one, &service));
    EXPECT_TRUE(directory.Register(other, &another));
    EXPECT_EQ(directory.Lookup(one), &service);
    EXPECT_EQ(directory.Lookup(other), &another);
}

TEST(ServiceDirectoryTest, ATagIsTakenOnce) {
    ServiceDirectory directory;
    int service = 0;
    int another = 0;
    EXPECT_TRUE(directory.Register(one, &service));
    EXPECT_FALSE(directory.Register(one, &another));
    EXPECT_EQ(directory.Lookup(one), &service);
    EXPECT_FALSE(directory.Register(other, nullptr));
}

TEST(ServiceDirectoryTest, RemovedServicesMakeRoom) {
    ServiceDirectory directory;
    int service = 0;
    int another = 0;
    EXPECT_FALSE(directory.Remove(one));
    EXPECT_TRUE(directory.Register(one, &service));
    EXPECT_TRUE(directory.Remove(one));
    EXPECT_EQ(directory.Lookup(one), nullptr);
    EXPECT_FALSE(directory.Remove(one));
    EXPECT_TRUE(directory.Register(one, &another));
    EXPECT_EQ(directory.Lookup(one), &another);
}

}  // namespace
}  // namespace host
