#include "platform/base/CMap.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

using Table = CMap<CString, const char*, CString, const char*>;

// Short keys, keys of every length around the steps of the hash, and keys of one prefix.
std::string makeKey(unsigned long number) {
    std::string key = std::to_string(number);
    return number % 3 == 0 ? key : std::string(number % 40, 'k') + key;
}

void expectSame(Table& table, const std::unordered_map<std::string, std::string>& model) {
    ASSERT_EQ(table.GetCount(), static_cast<int>(model.size()));
    std::size_t visited = 0;
    for (POSITION position = table.GetStartPosition(); position != nullptr; ++visited) {
        CString key, value;
        table.GetNextAssoc(position, key, value);
        const auto found = model.find(std::string(key.View()));
        ASSERT_NE(found, model.end()) << key;
        ASSERT_EQ(value, found->second);
    }
    EXPECT_EQ(visited, model.size());
}

TEST(CMap, BehavesAsAMapUnderRandomOperations) {
    for (const unsigned keys : {3u, 40u, 5000u}) {
        std::mt19937 random(keys);
        Table table(static_cast<int>(keys % 7));
        std::unordered_map<std::string, std::string> model;
        for (int i = 0; i < 60'000; ++i) {
            const std::string key = makeKey(random() % keys);
            const std::string value = std::to_string(i);
            switch (random() % 8) {
                case 0:
                case 1:
                    table.SetAt(key.c_str(), value.c_str());
                    model[key] = value;
                    break;
                case 2:
                    table[key.c_str()] += 'x';
                    model[key] += 'x';
                    break;
                case 3:
                case 4:
                    ASSERT_EQ(table.RemoveKey(key.c_str()), model.erase(key) != 0);
                    break;
                default: {
                    CString found = "none";
                    const auto expected = model.find(key);
                    ASSERT_EQ(table.Lookup(key.c_str(), found) != 0, expected != model.end());
                    ASSERT_EQ(found, expected != model.end() ? expected->second : "none");
                }
            }
            if (random() % 20'000 == 0) {
                table.RemoveAll();
                model.clear();
            }
        }
        expectSame(table, model);
    }
}

TEST(CMap, KeepsEntriesInPlace) {
    CMap<int, int, int, int> map;
    map[0] = -1;
    const int* first = &map[0];
    for (int i = 1; i < 100'000; ++i) map[i] = i;
    for (int i = 1; i < 100'000; i += 2) map.RemoveKey(i);
    EXPECT_EQ(first, &map.PLookup(0)->value);
    EXPECT_EQ(*first, -1);
}

TEST(CMap, FindsTextKeysByAnyKindOfText) {
    Table table;
    table.SetAt("Name", "Ada");
    const std::string_view line = "@Name.";
    ASSERT_NE(table.Find(line.substr(1, 4)), nullptr);
    EXPECT_EQ(table.Find(line.substr(1, 4))->value, "Ada");
    EXPECT_NE(table.Find(CString("Name")), nullptr);
    EXPECT_NE(table.Find("Name"), nullptr);
    EXPECT_EQ(table.Find("name"), nullptr);
    EXPECT_EQ(table.Find(line.substr(1, 3)), nullptr);
    EXPECT_EQ(table.Find(static_cast<const char*>(nullptr)), nullptr);
    table.SetAt("", "empty");
    EXPECT_EQ(table.Find(std::string_view())->value, "empty");
}

TEST(CMap, IteratesInTheOrderOfEntryWhileEntriesAreRemoved) {
    CMap<int, int, int, int> map;
    for (int i = 0; i < 1000; ++i) map.SetAt(i * 7919, i);
    int expected = 0;
    for (POSITION position = map.GetStartPosition(); position != nullptr; ++expected) {
        int key = -1;
        int value = -1;
        map.GetNextAssoc(position, key, value);
        ASSERT_EQ(value, expected);
        map.RemoveKey(key);
    }
    EXPECT_EQ(expected, 1000);
    EXPECT_TRUE(map.IsEmpty());
    POSITION none = map.GetStartPosition();
    EXPECT_EQ(none, nullptr);
    EXPECT_THROW(map.GetNextPair(none), CInvalidArgException);
}

TEST(CMap, TakesNumbersPointersAndTextsAsKeys) {
    enum class Colour { red, green };
    CMap<Colour, Colour, int, int> colours;
    colours[Colour::green] = 2;
    EXPECT_EQ(colours.Find(Colour::red), nullptr);
    int items[2] = {};
    CMap<int*, int*, int, int> pointers;
    pointers.SetAt(&items[1], 5);
    EXPECT_EQ(pointers.PLookup(&items[1])->value, 5);
    EXPECT_EQ(pointers.PLookup(&items[0]), nullptr);
    CMap<std::uint64_t, std::uint64_t, int, int> numbers;
    for (std::uint64_t i = 0; i < 64; ++i) numbers[std::uint64_t{1} << i] = static_cast<int>(i);
    EXPECT_EQ(numbers.GetCount(), 64);
}

TEST(CMap, AcceptsASizeForItsTable) {
    CMap<int, int, int, int> map;
    EXPECT_EQ(map.GetHashTableSize(), 17u);
    map.InitHashTable(5003);
    EXPECT_EQ(map.GetHashTableSize(), 5003u);
    for (int i = 0; i < 10'000; ++i) map[i] = i;
    map.InitHashTable(100'000);
    map.InitHashTable(3);
    EXPECT_EQ(map.PLookup(9'999)->value, 9'999);
    EXPECT_EQ(map.PLookup(10'000), nullptr);
}

struct Point {
    int x;
    int y;
    bool operator==(const Point&) const = default;
};

}  // namespace

template <>
UINT HashKey<const Point&>(const Point& key) {
    return static_cast<UINT>(key.x);  // all y collide
}

namespace {

TEST(CMap, UsesTheHashOfAHost) {
    CMap<Point, const Point&, int, int> map;
    for (int i = 0; i < 900; ++i) map.SetAt({i % 3, i}, i);
    for (int i = 0; i < 900; i += 2) EXPECT_NE(map.RemoveKey({i % 3, i}), 0);
    for (int i = 0; i < 900; ++i) {
        int value = -1;
        EXPECT_EQ(map.Lookup({i % 3, i}, value), i % 2);
        EXPECT_EQ(value, i % 2 == 1 ? i : -1);
    }
}

// Of keys that differ little, as many hashes must differ as chance would have it.
TEST(TextHash, SpreadsSimilarTexts) {
    std::map<std::uint32_t, int> hashes;
    const int cCount = 200'000;
    for (int i = 0; i < cCount; ++i) {
        CString key;
        key.Format(i % 2 == 0 ? "v%d" : "scale_%d_of_the_questionnaire", i);
        ++hashes[tessalink::hashText(key.View())];
    }
    EXPECT_GT(hashes.size(), static_cast<std::size_t>(cCount - 25));
    EXPECT_NE(tessalink::hashText(std::string_view("\0", 1)), tessalink::hashText(""));
    EXPECT_NE(tessalink::hashText(std::string_view("a\0", 2)), tessalink::hashText("a"));
}

}  // namespace
