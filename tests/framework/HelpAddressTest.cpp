#include "framework/help/HelpAddress.h"

#include <gtest/gtest.h>

namespace {

bool IsNoLeadByte(unsigned char) {
    return false;
}

bool IsShiftJisLeadByte(unsigned char byte) {
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

TEST(HelpAddressTest, ThePagesLieBesideTheModule) {
    EXPECT_EQ(HelpAddress("C:\\Plug-Ins\\Zandermolite.8bf", "\\Brenvalder Help\\WHStart.htm",
                          IsNoLeadByte),
              "file://C:\\Plug-Ins\\Brenvalder Help\\WHStart.htm");
}

TEST(HelpAddressTest, PagesWithoutABackslashKeepTheModules) {
    EXPECT_EQ(HelpAddress("C:\\Plug-Ins\\Zandermolite.8bf", "Help.htm", IsNoLeadByte),
              "file://C:\\Plug-Ins\\Help.htm");
}

TEST(HelpAddressTest, SlashesAndColonsCountAsWell) {
    EXPECT_EQ(HelpAddress("C:/Plug-Ins/Zandermolite.8bf", "Help.htm", IsNoLeadByte),
              "file://C:/Plug-Ins/Help.htm");
    EXPECT_EQ(HelpAddress("C:Zandermolite.8bf", "Help.htm", IsNoLeadByte), "file://C:Help.htm");
    EXPECT_EQ(HelpAddress("Zandermolite.8bf", "Help.htm", IsNoLeadByte), "file://Help.htm");
}

TEST(HelpAddressTest, ADoubleByteCharacterIsNoBackslash) {
    EXPECT_EQ(HelpAddress("C:\\\x95\\x.8bf", "\\Help.htm", IsShiftJisLeadByte),
              "file://C:\\Help.htm");
}

}  // namespace
