// Random input messages of the platform on random windows, against plain models of these.
#include <gtest/gtest.h>

#include "tests/platform/win32/Win32Driver.h"
#include "tests/support/FormRun.h"
#include "tests/support/GraphRun.h"
#include "tests/support/ListRun.h"

namespace tessalink::test {
namespace {

// TESSALINK_FORM_EVENTS and the like set other numbers of events than short runs have.
TEST(Win32Models, Forms) {
    Win32Driver driver;
    ASSERT_TRUE(driver.IsReady());
    runForms(driver, 2031, eventCount("TESSALINK_FORM_EVENTS", 10'000));
}

TEST(Win32Models, EveryList) {
    runLists<Win32Driver>(70);
}

TEST(Win32Models, EveryProfileGraph) {
    runGraphs<Win32Driver>(45);
}

}  // namespace
}  // namespace tessalink::test
