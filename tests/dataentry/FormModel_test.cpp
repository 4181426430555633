// Random events on random forms, against a plain model of what a form is.
#include <gtest/gtest.h>

#include "tests/support/FormRun.h"

namespace tessalink::test {
namespace {

// TESSALINK_FORM_EVENTS sets another number of events than a short run has.
TEST(FormModel, RandomEventsAgree) {
    HeadlessDriver driver;
    runForms(driver, 2026, eventCount("TESSALINK_FORM_EVENTS", 40'000));
}

}  // namespace
}  // namespace tessalink::test
