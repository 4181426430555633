#include "platform/base/CArray.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <vector>

#include "platform/base/CByteArray.h"
#include "platform/base/CStringArray.h"

namespace {

using Numbers = CArray<int, int>;

void fill(Numbers& array, const std::vector<int>& values) {
    array.RemoveAll();
    for (const int value : values) array.Add(value);
}

std::vector<int> contents(const Numbers& array) {
    return {array.GetData(), array.GetData() + array.GetSize()};
}

struct Step {
    const char* name;
    std::function<void(Numbers&)> step;
    std::vector<int> expected;  // from 1 2 3
};

TEST(CArray, Changes) {
    Numbers other;
    fill(other, {8, 9});
    const Step cases[] = {
        {"Add", [](Numbers& a) { EXPECT_EQ(a.Add(4), 3); }, {1, 2, 3, 4}},
        {"SetAt", [](Numbers& a) { a.SetAt(1, 7); }, {1, 7, 3}},
        {"operator[]", [](Numbers& a) { a[0] = a.ElementAt(2); }, {3, 2, 3}},
        {"SetAtGrow", [](Numbers& a) { a.SetAtGrow(5, 6); }, {1, 2, 3, 0, 0, 6}},
        {"SetAtGrow inside", [](Numbers& a) { a.SetAtGrow(0, 6); }, {6, 2, 3}},
        {"SetSize up", [](Numbers& a) { a.SetSize(5, 100); }, {1, 2, 3, 0, 0}},
        {"SetSize down", [](Numbers& a) { a.SetSize(1), a.FreeExtra(); }, {1}},
        {"Append", [&](Numbers& a) { EXPECT_EQ(a.Append(other), 3); }, {1, 2, 3, 8, 9}},
        {"Copy", [&](Numbers& a) { a.Copy(other); }, {8, 9}},
        {"Copy itself", [&](Numbers& a) { a.Copy(a); }, {1, 2, 3}},
        {"InsertAt", [](Numbers& a) { a.InsertAt(1, 7, 2); }, {1, 7, 7, 2, 3}},
        {"InsertAt behind", [](Numbers& a) { a.InsertAt(4, 7); }, {1, 2, 3, 0, 7}},
        {"InsertAt array", [&](Numbers& a) { a.InsertAt(0, &other); }, {8, 9, 1, 2, 3}},
        {"InsertAt array behind", [&](Numbers& a) { a.InsertAt(4, &other); }, {1, 2, 3, 0, 8, 9}},
        {"RemoveAt", [](Numbers& a) { a.RemoveAt(0, 2); }, {3}},
        {"RemoveAt end", [](Numbers& a) { a.RemoveAt(3, 0); }, {1, 2, 3}},
        {"RemoveAll", [](Numbers& a) { a.RemoveAll(); }, {}},
    };
    for (const Step& entry : cases) {
        Numbers array;
        fill(array, {1, 2, 3});
        entry.step(array);
        EXPECT_EQ(contents(array), entry.expected) << entry.name;
        EXPECT_EQ(array.GetUpperBound(), static_cast<int>(entry.expected.size()) - 1);
    }
}

TEST(CArray, RejectsWhatIsOutOfRangeAndChangesNothing) {
    Numbers array;
    fill(array, {1, 2, 3});
    const Numbers& constant = array;
    const std::function<void()> cases[] = {
        [&] { array[3] = 0; },
        [&] { (void)constant[-1]; },
        [&] { array.SetAt(3, 0); },
        [&] { (void)array.ElementAt(99); },
        [&] { array.SetSize(-1); },
        [&] { array.SetAtGrow(-1, 0); },
        [&] { array.InsertAt(-1, 0); },
        [&] { array.InsertAt(0, 0, -1); },
        [&] { array.RemoveAt(2, 2); },
        [&] { array.RemoveAt(4, 0); },
        [&] { array.RemoveAt(0, -1); },
        [&] { array.Append(array); },
        [&] { array.InsertAt(0, &array); },
        [&] { array.InsertAt(0, nullptr); },
        [&] { array.InsertAt(1, 0, std::numeric_limits<int>::max()); },
    };
    int index = 0;
    for (const auto& attempt : cases) {
        EXPECT_THROW(attempt(), CInvalidArgException) << "case " << index++;
        EXPECT_EQ(contents(array), (std::vector<int>{1, 2, 3}));
    }
}

// An element may be passed to the operation that moves it.
TEST(CArray, TakesItsOwnElements) {
    CStringArray texts;
    texts.Add("a text that does not fit into the string itself");
    for (int i = 0; i < 100; ++i) texts.Add(texts[0]);
    texts.InsertAt(0, texts[50], 3);
    texts.SetAtGrow(1000, texts[7]);
    EXPECT_EQ(texts[0], texts[1000]);
    EXPECT_EQ(texts[1000], "a text that does not fit into the string itself");
    EXPECT_EQ(texts[999], "");
}

TEST(CArray, KnowsItsClass) {
    EXPECT_STREQ(CStringArray().GetRuntimeClass()->m_lpszClassName, "CStringArray");
    EXPECT_TRUE(CByteArray().IsSerializable());
}

}  // namespace
