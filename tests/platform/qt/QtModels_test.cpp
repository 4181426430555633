// Random events of the toolkit on random windows, against plain models of these.
#include <gtest/gtest.h>

#include "tests/platform/qt/QtDriver.h"
#include "tests/support/FormRun.h"
#include "tests/support/GraphRun.h"

namespace tessalink::test {
namespace {

// TESSALINK_FORM_EVENTS sets another number of events than a short run has.
TEST(QtModels, Forms) {
    QtDriver driver;
    ASSERT_TRUE(driver.IsReady());
    runForms(driver, 2027, eventCount("TESSALINK_FORM_EVENTS", 20'000));
}

// TESSALINK_GRAPH_EVENTS: so many for each window.
TEST(QtModels, ProfileGraphCtl) {
    QtDriver driver;
    ProfileRun<ProfileGraphCtl>(driver, 45).Run(eventCount("TESSALINK_GRAPH_EVENTS", 4'000));
}

TEST(QtModels, ProfileGraphCtl3) {
    QtDriver driver;
    ProfileRun<ProfileGraphCtl3>(driver, 46).Run(eventCount("TESSALINK_GRAPH_EVENTS", 4'000));
}

}  // namespace
}  // namespace tessalink::test
