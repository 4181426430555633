// What the value types take from the heap: nothing, but for texts that a string can't hold in
// place.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <new>

#include "core/Date.h"
#include "core/MD5Hash.h"
#include "core/Time.h"
#include "scores/Reliability.h"
#include "scores/ScoreScale.h"
#include "scores/StandardScores.h"
#include "tests/support/Environment.h"

namespace {
int allocations = 0;
}

// Not inlined: GCC would take malloc and free for a mismatch with new and delete.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++allocations;
    return std::malloc(size > 0 ? size : 1);
}

[[gnu::noinline]] void* operator new(std::size_t size) {
    if (void* place = operator new(size, std::nothrow)) return place;
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* place) noexcept {
    std::free(place);
}

[[gnu::noinline]] void operator delete(void* place, std::size_t) noexcept {
    std::free(place);
}

namespace tessalink::test {
namespace {

using KOVStandardScores::PercentileRank;
using KOVStandardScores::Stanine;
using KOVStandardScores::ZScore;

int allocationsOf(const std::function<void()>& work) {
    work();  // what is read on first use
    const int before = allocations;
    work();
    return allocations - before;
}

TEST(Allocations, AreCounted) {
    EXPECT_GT(allocationsOf([] { CString(std::string(100, 'x').c_str()); }), 0);
}

TEST(Allocations, NoneForNumbersAndShortTexts) {
    struct {
        const char* name;
        std::function<void()> work;
    } const cTable[] = {
        {"stanine", [] { (void)Stanine(ZScore(0.7)).GetValue(); }},
        {"rank", [] { (void)PercentileRank(ZScore(0.7)).GetValue(); }},
        {"deviate", [] { (void)PercentileRank(3.5).GetAsZScore(); }},
        {"rank texts",
         [] {
             EXPECT_EQ(PercentileRank(61.5).Format1(), "62");
             EXPECT_EQ(PercentileRank(99.7).Format1(), "99.7");
             EXPECT_EQ(PercentileRank(99.7).FormatLG(), "> 99");
         }},
        {"scale",
         [] {
             const TScore score(ZScore(0.7));
             EXPECT_EQ(score.Format(), "57");
             EXPECT_NE(score.GetAsZScore(), 0);
         }},
        {"range",
         [] {
             const Reliability reliability(cIQScale, 0.9);
             EXPECT_EQ(reliability.GetIntervalOfMeasurement(100, 0.95).Format(2), "90.70-109.30");
         }},
        {"time",
         [] {
             Time begin(9, 30, 0), end(101500u);
             int hours, minutes, seconds;
             end.Minus(begin, hours, minutes, seconds);
             EXPECT_EQ(Time(end.GetAsStr(0)), end);
         }},
        {"date",
         [] {
             Date birth("07/31/1990"), test(2024, 2, 29);
             int years, months, days;
             test.Minus(birth, years, months, days);
             Date again;
             EXPECT_EQ(again.SetLocal(test.GetAsLocalStr()), 1);
             EXPECT_EQ(again, test);
             EXPECT_EQ(test.GetAsUSStr(), "02/29/2024");
         }},
        {"fingerprint",
         [] {
             unsigned char digest[16];
             EXPECT_EQ(MD5Hash::GetHash("a text that is a little longer", digest), 1);
         }},
    };
    for (const auto& [name, work] : cTable) EXPECT_EQ(allocationsOf(work), 0) << name;
}

TEST(Allocations, OneForATextBeyondAStringSOwnPlace) {
    if (cIsWindows) GTEST_SKIP() << "shared libraries there have an operator new of their own";
    EXPECT_EQ(allocationsOf([] { (void)PercentileRank(1e20).Format1(); }), 1);
}

}  // namespace
}  // namespace tessalink::test
