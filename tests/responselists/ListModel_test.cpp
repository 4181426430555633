// The lists against plain models of them: any events, the same notifications, values and places.
#include <gtest/gtest.h>

#include "tests/support/ListRun.h"

namespace tessalink::test {
namespace {

// TESSALINK_LIST_EVENTS: so many for each list.
int listEvents() {
    return eventCount("TESSALINK_LIST_EVENTS", 5'000);
}

TEST(ListModels, ItemListCtl) {
    HeadlessDriver driver;
    ItemRun<ItemListCtl>(driver, 60).RunAll(listEvents());
}

TEST(ListModels, ItemListCtl2) {
    HeadlessDriver driver;
    ItemRun<ItemListCtl2>(driver, 61).RunAll(listEvents());
}

TEST(ListModels, NumberListCtl) {
    HeadlessDriver driver;
    auto list = std::make_unique<NumberListCtl>(0, nullptr, nullptr);
    NumberRun(driver, 62, std::move(list), false).RunAll(listEvents());
}

TEST(ListModels, NumberListCtl2) {
    HeadlessDriver driver;
    auto list = std::make_unique<NumberListCtl2>(0, nullptr, nullptr);
    NumberRun(driver, 63, std::move(list), false).RunAll(listEvents());
}

TEST(ListModels, NumberListCtl3) {
    HeadlessDriver driver;
    auto list = std::make_unique<NumberListCtl3>(0, nullptr, nullptr, cMissingNumber);
    NumberRun(driver, 64, std::move(list), true).RunAll(listEvents());
}

}  // namespace
}  // namespace tessalink::test
