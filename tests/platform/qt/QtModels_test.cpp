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

TEST(QtModels, EveryList) {
    runLists<QtDriver>(70);
}

TEST(QtModels, EveryProfileGraph) {
    runGraphs<QtDriver>(45);
}

}  // namespace
}  // namespace tessalink::test
