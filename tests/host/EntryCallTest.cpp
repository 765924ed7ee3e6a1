#include "host/record/EntryCall.h"

#include <gtest/gtest.h>

#include <cfenv>

#include "tests/host/TestFilters.h"

namespace host {

namespace {

std::int16_t CallOnce(EntryPoint entry, const TraitSet& traits, Faults& faults,
                      std::int16_t selector = 3) {
    hostapi::FilterRecord record{};
    std::intptr_t data = 0;
    return CallEntry(entry, selector, &record, &data, traits, faults);
}

std::uint16_t ControlWord() {
    std::uint16_t control = 0;
    asm volatile("fnstcw %0" : "=m"(control));
    return control;
}

std::int16_t lastSelector;
void* lastData;
hostapi::FilterRecord* lastRecord;

void HOST_CALL RememberArguments(std::int16_t selector, hostapi::FilterRecord* record, void* data,
                                 std::int16_t* result) {
    lastSelector = selector;
    lastRecord = record;
    lastData = data;
    *result = -1234;
}

/// Inexact: the floating-point unit notes that in its control register.
void HOST_CALL DivideByThree(std::int16_t, hostapi::FilterRecord*, void*, std::int16_t* result) {
    volatile double number = 1.0;
    number = number / 3.0;
    *result = std::fetestexcept(FE_INEXACT) != 0 ? 1 : 0;
}

}  // namespace

TEST(EntryCallTest, HandsTheArgumentsOver) {
    for (const TraitSet& traits : {TraitSet{}, TraitSet{Trait::misalignStack}}) {
        Faults faults;
        hostapi::FilterRecord record{};
        std::intptr_t data = 0;
        EXPECT_EQ(CallEntry(RememberArguments, -7, &record, &data, traits, faults), -1234);
        EXPECT_EQ(lastSelector, -7);
        EXPECT_EQ(lastRecord, &record);
        EXPECT_EQ(lastData, &data);
        EXPECT_TRUE(faults.IsEmpty());
    }
}

TEST(EntryCallTest, SetsTheControlWordForTheCallOnly) {
    const std::uint16_t own = ControlWord();
    Faults faults;
    EXPECT_EQ(CallOnce(testfilters::ReportControlWord, {}, faults), own);
    EXPECT_EQ(CallOnce(testfilters::ReportControlWord, {Trait::fpu27f}, faults), 0x27F);
    EXPECT_EQ(CallOnce(testfilters::ReportControlWord, {Trait::fpu37f}, faults), 0x37F);
    // One of the two is the process's own, so one of them alone may have done nothing.
    EXPECT_EQ(CallOnce(testfilters::ReportControlWord, {Trait::fpu27f, Trait::fpu37f}, faults),
              0x37F);
    EXPECT_EQ(
        CallOnce(testfilters::ReportControlWord, {Trait::fpu27f, Trait::misalignStack}, faults),
        0x27F);
    EXPECT_EQ(ControlWord(), own);
    EXPECT_TRUE(faults.IsEmpty());
}

TEST(EntryCallTest, AChangedControlWordIsAFaultAndIsPutBack) {
    const std::uint16_t own = ControlWord();
    Faults faults;
    CallOnce(testfilters::ChangeControlWord, {}, faults, 5);
    EXPECT_EQ(ControlWord(), own);
    EXPECT_EQ(faults.Lines(),
              std::vector<std::string>{"the filter changed the floating-point control word"});
}

TEST(EntryCallTest, WhatACalculationNotesIsNoChange) {
    std::feclearexcept(FE_ALL_EXCEPT);
    Faults faults;
    EXPECT_EQ(CallOnce(DivideByThree, {}, faults), 1);
    EXPECT_TRUE(faults.IsEmpty());
}

TEST(EntryCallTest, TheStackIsAlignedAsTheTraitSays) {
    Faults faults;
    EXPECT_EQ(CallOnce(testfilters::ReportStack, {}, faults), 100);
    EXPECT_EQ(CallOnce(testfilters::ReportStack, {Trait::misalignStack}, faults),
              hostapi::is64Bit ? 100 : 104);
}

}  // namespace host
