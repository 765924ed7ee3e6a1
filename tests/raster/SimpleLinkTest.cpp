#include "raster/SimpleLink.h"

#include <new>
#include <string>
#include <vector>

#include "tests/support/CoreTest.h"
#include "tests/support/RandomInput.h"

namespace {

class SimpleLinkTest : public CoreTest {
  protected:
    /// A record that the list will own.
    static void* NewRecord(int value) { return new (::operator new(sizeof(int))) int(value); }
    int ValueAt(short n) const {
        void* data = nullptr;
        return list.DataAt(n, &data) ? *static_cast<int*>(data) : -1;
    }
    std::string NameAt(short n) const {
        char name[nameCapacity] = "untouched";
        return list.NameAt(n, name) ? name : std::string("(none)") + name;
    }

    SimpleLink list;
};

TEST_F(SimpleLinkTest, AppendsAtTheTailAndCountsFromOne) {
    list.Append(NewRecord(10), "first");
    list.Append(NewRecord(20), "second");
    list.Append(NewRecord(30), "third");
    EXPECT_EQ(NameAt(1), "first");
    EXPECT_EQ(NameAt(3), "third");
    EXPECT_EQ(ValueAt(2), 20);
}

TEST_F(SimpleLinkTest, AMissingEntryHasAnEmptyNameAndNoData) {
    list.Append(NewRecord(10), "first");
    EXPECT_EQ(NameAt(2), "(none)");
    EXPECT_EQ(NameAt(-1), "(none)");
    void* data = &list;
    EXPECT_FALSE(list.DataAt(2, &data));
    EXPECT_EQ(data, nullptr);
    data = &list;
    EXPECT_FALSE(list.DataAt(0, &data));
    EXPECT_EQ(data, nullptr);
}

TEST_F(SimpleLinkTest, EntryZeroFailsAnAssertion) {
    char name[nameCapacity];
    EXPECT_EQ(AssertionOf([&] { list.NameAt(0, name); }), "SimpleLink / Zeile 230 !(n != 0)");
    EXPECT_EQ(AssertionOf([&] { list.Remove(0); }), "SimpleLink / Zeile 205 !(n != 0)");
}

TEST_F(SimpleLinkTest, RemovesTheOnlyEntry) {
    list.Append(NewRecord(10), "first");
    EXPECT_FALSE(list.Remove(2));
    EXPECT_FALSE(list.Remove(-1));
    EXPECT_TRUE(list.Remove(1));
    EXPECT_EQ(NameAt(1), "(none)");
    EXPECT_FALSE(list.Remove(1));
}

TEST_F(SimpleLinkTest, RemovesFromTheMiddleAndTheEnd) {
    for (int i = 1; i <= 4; ++i) {
        list.Append(NewRecord(i), std::to_string(i).c_str());
    }
    EXPECT_TRUE(list.Remove(2));
    EXPECT_TRUE(list.Remove(3));
    EXPECT_EQ(ValueAt(1), 1);
    EXPECT_EQ(ValueAt(2), 3);
    EXPECT_EQ(ValueAt(3), -1);
    list.Append(NewRecord(9), "9");
    EXPECT_EQ(ValueAt(3), 9);
}

TEST_F(SimpleLinkTest, ARecordIsRequired) {
    EXPECT_EQ(AssertionOf([&] { list.Append(nullptr, "name"); }),
              "SimpleLink / Zeile 25 !(ptr != NULL)");
    EXPECT_EQ(NameAt(1), "(none)");
}

TEST_F(SimpleLinkTest, CutsALongName) {
    list.Append(NewRecord(1), std::string(300, 'x').c_str());
    EXPECT_EQ(NameAt(1), std::string(255, 'x'));
}

TEST_F(SimpleLinkTest, NamesAreUniqueWithoutRegardToCase) {
    list.Append(NewRecord(1), "Brick");
    list.Append(NewRecord(1), "Moss");
    EXPECT_FALSE(list.IsUnique("brick"));
    EXPECT_FALSE(list.IsUnique("MOSS"));
    EXPECT_TRUE(list.IsUnique("Bricks"));
    EXPECT_TRUE(list.IsUnique(""));
}

TEST_F(SimpleLinkTest, TheNameOfTheLastSettingsIsTaken) {
    EXPECT_FALSE(list.IsUnique("Last Used"));
    EXPECT_FALSE(list.IsUnique("last used"));
    EXPECT_TRUE(list.IsUnique("Last Used 2"));
}

TEST_F(SimpleLinkTest, ALongListIsReachedToItsEnd) {
    for (int i = 0; i < 3000; ++i) {
        list.Append(NewRecord(i), "entry");
    }
    EXPECT_EQ(ValueAt(3000), 2999);
}

TEST_F(SimpleLinkTest, AnyOrderOfCallsFindsWhatIsThere) {
    RandomInput random(1);
    std::vector<int> expected;
    for (int call = 0; call < 20000; ++call) {
        const auto size = static_cast<int>(expected.size());
        const short n = random.Number(-1, size + 2);
        const bool isThere = n >= 1 && n <= size;
        const short kind = random.Number(0, 9);
        // Now and then more go than come, so that the list also is short, and empty.
        const int appending = call / 500 % 2 == 0 ? 4 : 2;
        if (kind < appending) {
            list.Append(NewRecord(call), std::to_string(call).c_str());
            expected.push_back(call);
        } else if (kind < 7) {
            if (n != 0) {
                ASSERT_EQ(list.Remove(n), isThere);
            }
            if (isThere) {
                expected.erase(expected.begin() + n - 1);
            }
        } else if (kind < 9) {
            ASSERT_EQ(ValueAt(n), isThere ? expected[static_cast<std::size_t>(n - 1)] : -1);
        } else {
            for (short i = 1; i <= size; ++i) {
                ASSERT_EQ(NameAt(i), std::to_string(expected[static_cast<std::size_t>(i - 1)]));
            }
        }
    }
    EXPECT_EQ(ValueAt(static_cast<short>(expected.size() + 1)), -1);
}

}  // namespace
