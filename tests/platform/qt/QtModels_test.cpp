// Random events of the toolkit on random windows, against plain models of these.
#include <gtest/gtest.h>

#include "tests/platform/qt/QtDriver.h"
#include "tests/support/FormRun.h"
#include "tests/support/GraphRun.h"
#include "tests/support/ListRun.h"

namespace tessalink::test {
namespace {

// TESSALINK_FORM_EVENTS sets another number of events than a short run has.
TEST(QtModels, Forms) {
    QtDriver driver;
    ASSERT_TRUE(driver.IsReady());
    runForms(driver, 2027, eventCount("TESSALINK_FORM_EVENTS", 20'000));
}

// TESSALINK_LIST_EVENTS: so many for each list.
int listEvents() {
    return eventCount("TESSALINK_LIST_EVENTS", 5'000);
}

TEST(QtModels, ItemListCtl) {
    QtDriver driver;
    ItemRun<ItemListCtl>(driver, 70).RunAll(listEvents());
}

TEST(QtModels, ItemListCtl2) {
    QtDriver driver;
    ItemRun<ItemListCtl2>(driver, 71).RunAll(listEvents());
}

TEST(QtModels, NumberListCtl) {
    QtDriver driver;
    auto list = std::make_unique<NumberListCtl>(0, nullptr, nullptr);
    NumberRun(driver, 72, std::move(list), false).RunAll(listEvents());
}

TEST(QtModels, NumberListCtl2) {
    QtDriver driver;
    auto list = std::make_unique<NumberListCtl2>(0, nullptr, nullptr);
    NumberRun(driver, 73, std::move(list), false).RunAll(listEvents());
}

TEST(QtModels, NumberListCtl3) {
    QtDriver driver;
    auto list = std::make_unique<NumberListCtl3>(0, nullptr, nullptr, cMissingNumber);
    NumberRun(driver, 74, std::move(list), true).RunAll(listEvents());
}

// TESSALINK_GRAPH_EVENTS: so many for each window.
TEST(QtModels, ProfileGraphCtl) {
    QtDriver driver;
    ProfileRun<ProfileGraphCtl>(driver, 45).Run(eventCount("TESSALINK_GRAPH_EVENTS", 4'000));
}

TEST(QtModels, ProfileGraphCtl2) {
    QtDriver driver;
    ProfileRun<ProfileGraphCtl2>(driver, 49).Run(eventCount("TESSALINK_GRAPH_EVENTS", 4'000));
}

TEST(QtModels, ProfileGraphCtl3) {
    QtDriver driver;
    ProfileRun<ProfileGraphCtl3>(driver, 46).Run(eventCount("TESSALINK_GRAPH_EVENTS", 4'000));
}

TEST(QtModels, ProfileGraphCtl4) {
    QtDriver driver;
    ProfileRun<ProfileGraphCtl4>(driver, 50).Run(eventCount("TESSALINK_GRAPH_EVENTS", 4'000));
}

}  // namespace
}  // namespace tessalink::test
