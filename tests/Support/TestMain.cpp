// Main of every test program: runs a child main when started as a child, else the tests.
#include "ChildProcess.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    QcTest::InitTestProcess();
    int exitCode = 0;
    if (QcTest::DispatchChild(argc, argv, exitCode)) {
        return exitCode;
    }
    testing::InitGoogleTest(&argc, argv);
    // The library starts threads of its own; fork-only death tests would be unsafe.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    return RUN_ALL_TESTS();
}
