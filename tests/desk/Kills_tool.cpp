// A process that keys is killed a hundred times, or as often as the argument says.
#include <cstdio>
#include <cstdlib>

#include "tests/desk/KillRun.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const int times = argc > 1 ? std::atoi(argv[1]) : 100;
    tessalink::desk::test::killOften(times);
    const bool isRight = testing::Test::HasFailure() == false;
    std::printf("%d kills: %s\n", times, isRight ? "nothing lost" : "FAILED");
    return isRight ? 0 : 1;
}
