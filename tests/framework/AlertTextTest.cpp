#include "framework/alerts/AlertText.h"

#include <gtest/gtest.h>

namespace {

bool NoLeadByte(unsigned char) {
    return false;
}

/// As in a Japanese system.
bool HighByteLeads(unsigned char byte) {
    return byte >= 0x81;
}

const AlertTexts numbered = {"zero", "one", "two", "three"};

std::string Substituted(const char* text, const AlertTexts& texts = numbered) {
    return SubstituteTexts(text, texts, NoLeadByte);
}

std::string SubstitutedDoubleByte(const std::string& text, const AlertTexts& texts = numbered) {
    return SubstituteTexts(text.c_str(), texts, HighByteLeads);
}

TEST(AlertTextTest, TextsWithoutMarkersStay) {
    EXPECT_EQ(Substituted(""), "");
    EXPECT_EQ(Substituted("A plain text."), "A plain text.");
}

TEST(AlertTextTest, ReplacesEachMarker) {
    EXPECT_EQ(Substituted("^0"), "zero");
    EXPECT_EQ(Substituted("^1"), "one");
    EXPECT_EQ(Substituted("^2"), "two");
    EXPECT_EQ(Substituted("^3"), "three");
    EXPECT_EQ(Substituted("(^3^2 ^1-^0)"), "(threetwo one-zero)");
    EXPECT_EQ(Substituted("^1, ^1"), "one, one");
}

TEST(AlertTextTest, NullAndEmptyTextsRemoveTheirMarker) {
    EXPECT_EQ(Substituted("a^0b^1c^2d^3e", {}), "abcde");
    EXPECT_EQ(Substituted("a^0b", {""}), "ab");
}

TEST(AlertTextTest, OtherCaretsStay) {
    EXPECT_EQ(Substituted("2^4"), "2^4");
    EXPECT_EQ(Substituted("^/^:^a^"), "^/^:^a^");
    EXPECT_EQ(Substituted("^^0"), "^zero");
}

TEST(AlertTextTest, InsertedTextsAreNotLookedAtAgain) {
    EXPECT_EQ(Substituted("^0!", {"^1", "no"}), "^1!");
    EXPECT_EQ(Substituted("^^00", {"0"}), "^00");
}

TEST(AlertTextTest, IsAtMost255Bytes) {
    const std::string longest(255, 'x');
    const std::string longer(256, 'x');
    EXPECT_EQ(Substituted(longest.c_str()), longest);
    EXPECT_EQ(Substituted(longer.c_str()), longest);
    EXPECT_EQ(Substituted("^0", {longest.c_str()}), longest);
    EXPECT_EQ(Substituted("^0^1", {longer.c_str(), longer.c_str()}), longest);
    EXPECT_EQ(Substituted("ab^0", {longest.c_str()}), "ab" + std::string(253, 'x'));
}

TEST(AlertTextTest, ADoubleByteCharacterIsNoMarker) {
    // The second byte of 0x81 0x5E is a caret.
    EXPECT_EQ(SubstitutedDoubleByte("\x81^0"), "\x81^0");
    EXPECT_EQ(SubstitutedDoubleByte("\x81\x40^0"), "\x81\x40zero");
    // Half a character at the end of the text is a byte like others.
    EXPECT_EQ(SubstitutedDoubleByte("^0\x81"), "zero\x81");
}

TEST(AlertTextTest, IsNotCutInsideADoubleByteCharacter) {
    const std::string fits(253, 'x');
    const std::string tooLong(254, 'x');
    const std::string wide = "\x81\x40";
    EXPECT_EQ(SubstitutedDoubleByte(fits + wide), fits + wide);
    EXPECT_EQ(SubstitutedDoubleByte(tooLong + wide), tooLong);
    EXPECT_EQ(SubstitutedDoubleByte(tooLong + wide + "z"), tooLong);
    // Nor inside one of an inserted text.
    EXPECT_EQ(SubstitutedDoubleByte(tooLong + "^0", {wide.c_str()}), tooLong);
    EXPECT_EQ(SubstitutedDoubleByte(fits + "^0z", {wide.c_str()}), fits + wide);
}

}  // namespace
