#include "host/plugin/PluginFile.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

namespace host {

namespace {

using Bytes = std::vector<std::uint8_t>;

void Append(Bytes& bytes, std::uint32_t number, int width) {
    for (int i = 0; i < width; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
    }
}

std::uint32_t Key(const char* text) {
    return hostapi::FourCharacters(text[0], text[1], text[2], text[3]);
}

Bytes Padded(Bytes bytes) {
    bytes.resize((bytes.size() + 3) / 4 * 4);
    return bytes;
}

Bytes Number(std::uint32_t number) {
    Bytes bytes;
    Append(bytes, number, 4);
    return bytes;
}

Bytes Pascal(const std::string& text) {
    Bytes bytes = {static_cast<std::uint8_t>(text.size())};
    bytes.insert(bytes.end(), text.begin(), text.end());
    return Padded(bytes);
}

Bytes ZeroTerminated(const std::string& text) {
    Bytes bytes(text.begin(), text.end());
    bytes.push_back(0);
    return Padded(bytes);
}

struct Property {
    std::string key;
    Bytes data;
    std::string vendor = "8BIM";
};

std::vector<Property> Whole() {
    Bytes cases;
    for (std::uint8_t input : Bytes{1, 1, 4, 4, 4, 4, 0}) {
        cases.insert(cases.end(), {input, 1, 2, 3});
    }
    return {{"kind", Number(Key("8BFM"))},      {"name", Pascal("Sharpen more...")},
            {"catg", Pascal("Sharpen")},        {"vers", Number(0x00040000)},
            {"wx86", ZeroTerminated("MAIN32")}, {"8664", ZeroTerminated("MAIN64")},
            {"mode", Bytes{0x18, 0, 0, 0}},     {"fici", cases}};
}

Bytes Resource(const std::vector<Property>& properties) {
    Bytes bytes;
    Append(bytes, 1, 2);
    Append(bytes, 0, 4);
    Append(bytes, static_cast<std::uint32_t>(properties.size()), 4);
    for (const Property& property : properties) {
        Append(bytes, Key(property.vendor.c_str()), 4);
        Append(bytes, Key(property.key.c_str()), 4);
        Append(bytes, 0, 4);
        Append(bytes, static_cast<std::uint32_t>(property.data.size()), 4);
        bytes.insert(bytes.end(), property.data.begin(), property.data.end());
    }
    return bytes;
}

std::vector<Property> Without(const std::string& key) {
    std::vector<Property> properties = Whole();
    std::erase_if(properties, [&](const Property& property) { return property.key == key; });
    return properties;
}

std::vector<Property> Changed(const std::string& key, const Bytes& data) {
    std::vector<Property> properties = Whole();
    for (Property& property : properties) {
        if (property.key == key) {
            property.data = data;
        }
    }
    return properties;
}

std::string ErrorOf(const Bytes& bytes) {
    try {
        ParsePipl(bytes);
    } catch (const PluginError& error) {
        return error.what();
    }
    return "no error";
}

}  // namespace

TEST(PluginFileTest, ReadsAWholeResource) {
    const FilterDescription description = ParsePipl(Resource(Whole()));
    EXPECT_EQ(description.name, "Sharpen more...");
    EXPECT_EQ(description.category, "Sharpen");
    EXPECT_EQ(description.version, 0x00040000U);
    EXPECT_EQ(description.entry32, "MAIN32");
    EXPECT_EQ(description.entry64, "MAIN64");
    EXPECT_EQ(description.Entry(), hostapi::is64Bit ? "MAIN64" : "MAIN32");
    EXPECT_EQ(description.modes, modeRGB | modeCMYK);
    EXPECT_EQ(description.ModeNames(), "RGB, CMYK");
    ASSERT_TRUE(description.cases);
    EXPECT_EQ((*description.cases)[2], (FilterCase{Matte::white, Matte::straight, 2, 3}));
    EXPECT_EQ(description.InputMattes()[0], Matte::straight);
    EXPECT_EQ(description.InputMattes()[5], Matte::white);
}

TEST(PluginFileTest, TheFilterCaseTableSaysWhatTheFilterHandles) {
    const FilterDescription description = ParsePipl(Resource(Whole()));
    for (std::int16_t filterCase = -1; filterCase < 10; ++filterCase) {
        EXPECT_EQ(description.Handles(filterCase), filterCase >= 1 && filterCase <= 6);
    }
    const FilterDescription flatOnly = ParsePipl(Resource(Without("fici")));
    EXPECT_TRUE(flatOnly.Handles(2));
    EXPECT_FALSE(flatOnly.Handles(3));
    EXPECT_EQ(flatOnly.InputMattes()[6], Matte::straight);
    EXPECT_FALSE(ParsePipl(Resource(Changed("mode", {0x48, 0, 0, 0}))).Handles(1));
}

TEST(PluginFileTest, WhatIsNotNeededMayBeMissing) {
    for (const char* key : {"catg", "vers", "mode", "fici", "wx86", "8664"}) {
        EXPECT_EQ(ErrorOf(Resource(Without(key))), "no error") << key;
    }
    EXPECT_EQ(ErrorOf(Resource(Without("kind"))), "the PIPL resource has no kind");
    EXPECT_EQ(ErrorOf(Resource(Without("name"))), "the PIPL resource has no name");
    std::vector<Property> noCode = Without("wx86");
    std::erase_if(noCode, [](const Property& property) { return property.key == "8664"; });
    EXPECT_EQ(ErrorOf(Resource(noCode)), "the PIPL resource names no code");
}

TEST(PluginFileTest, UnknownPropertiesAreSkipped) {
    std::vector<Property> properties = Whole();
    properties.insert(properties.begin() + 1, {"zzzz", Bytes{9, 9, 9, 9}});
    properties.push_back({"name", Pascal("Another's name"), "ABCD"});
    EXPECT_EQ(ParsePipl(Resource(properties)).name, "Sharpen more...");
}

TEST(PluginFileTest, RefusesWhatIsWrong) {
    Bytes version = Resource(Whole());
    version[0] = 2;
    EXPECT_EQ(ErrorOf(version), "the PIPL resource has an unknown version");
    version[0] = 1;
    version[2] = 1;
    EXPECT_EQ(ErrorOf(version), "the PIPL resource has an unknown version");
    EXPECT_EQ(ErrorOf(Resource(Changed("kind", Number(Key("8BIF"))))), "the plug-in is no filter");
    EXPECT_EQ(ErrorOf(Resource(Changed("name", {4, 'A', 'B', 'C'}))),
              "the PIPL resource ends too early");
    EXPECT_EQ(ErrorOf(Resource(Changed("name", {5, 'A', 'B', 'C', 'D'}))),
              "the PIPL resource has a property whose length isn't padded");
    EXPECT_EQ(ErrorOf(Resource(Changed("wx86", {'M', 'A', 'I', 'N'}))),
              "the PIPL resource has an entry's name without an end or a start");
    EXPECT_EQ(ErrorOf(Resource(Changed("wx86", {0, 0, 0, 0}))),
              "the PIPL resource has an entry's name without an end or a start");
    EXPECT_EQ(ErrorOf(Resource(Changed("fici", Number(0x0101)))),
              "the PIPL resource ends too early");
    EXPECT_EQ(ErrorOf(Resource(Changed("fici", Bytes(28, 5)))),
              "the PIPL resource has an unknown value in its filter case table");
    std::vector<Property> twice = Whole();
    twice.push_back(twice.front());
    EXPECT_EQ(ErrorOf(Resource(twice)), "the PIPL resource has a property twice");
}

TEST(PluginFileTest, ATruncatedResourceIsRefusedAtEveryLength) {
    const Bytes whole = Resource(Whole());
    for (std::size_t length = 0; length < whole.size(); ++length) {
        // A copy of exactly this length, so that a sanitizer sees each byte read after it.
        const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(ErrorOf(part), "the PIPL resource ends too early") << length;
    }
    EXPECT_EQ(ErrorOf(whole), "no error");
}

TEST(PluginFileTest, HugeLengthsAndCountsAreRefused) {
    Bytes bytes = Resource(Whole());
    bytes[6] = bytes[7] = bytes[8] = bytes[9] = 0xFF;
    EXPECT_EQ(ErrorOf(bytes), "the PIPL resource ends too early");
    bytes = Resource(Whole());
    bytes[22] = 0xFC;
    bytes[23] = bytes[24] = bytes[25] = 0xFF;
    EXPECT_EQ(ErrorOf(bytes), "the PIPL resource ends too early");
}

TEST(PluginFileTest, NoDamageDoesMoreThanAnError) {
    const Bytes whole = Resource(Whole());
    std::mt19937 random(3);
    int errors = 0;
    for (int round = 0; round < 20000; ++round) {
        Bytes damaged = whole;
        for (int change = 0; change < 3; ++change) {
            damaged[random() % damaged.size()] = static_cast<std::uint8_t>(random());
        }
        errors += ErrorOf(damaged) == "no error" ? 0 : 1;
    }
    EXPECT_GT(errors, 0);
    EXPECT_LT(errors, 20000);
}

}  // namespace host
