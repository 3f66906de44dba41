// The ANSI code page (0) of the POSIX backend.
#include "Engine/Common/Base/String.h"
#include "Engine/Common/Base/Utils.h"

#include <gtest/gtest.h>

using namespace Quillanor::Common;

TEST(StringTestPosix, AnsiCodePageIsUtf8) {
    const cString s(u"gr\u00FC\u00DF \u20AC \U0001F600");
    const cAString utf8 = s.AsAnsi(65001);
    EXPECT_STREQ(s.AsAnsi(0).Text(), utf8.Text());
    EXPECT_TRUE(utf8.AsWideChar(0).Equals(s));
    EXPECT_EQ(cUtils::WideCharLen(0, "\xC3\xA9", 2), 1);
}
