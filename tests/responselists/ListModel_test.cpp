// The lists against plain models of them: any events, the same notifications, values and places.
#include <gtest/gtest.h>

#include "tests/support/ListRun.h"

namespace tessalink::test {
namespace {

TEST(ListModels, EveryList) {
    runLists<HeadlessDriver>(60);
}

}  // namespace
}  // namespace tessalink::test
