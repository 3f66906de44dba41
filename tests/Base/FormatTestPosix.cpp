// The last error of the POSIX backend is errno.
#include "Engine/Common/Base/Utils.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

using namespace Quillanor::Common;

TEST(FormatTestPosix, LastErrorIsErrno) {
    const std::u16string denied = cUtils::LastErrorStr(EACCES);
    EXPECT_FALSE(denied.empty());
    errno = EACCES;
    EXPECT_EQ(std::u16string(cUtils::LastErrorStr(-1)), denied);
}
