// The ANSI code page (0) of the Windows backend: the system's own, whatever it is.
#include "Engine/Common/Base/String.h"

#include <gtest/gtest.h>

#include <windows.h>

using namespace Quillanor::Common;

TEST(StringTestWin32, AnsiCodePageIsTheSystemOne) {
    const cString s(u"caf\u00E9 \u20AC");
    const cAString ansi = s.AsAnsi(0);
    EXPECT_STREQ(ansi.Text(), s.AsAnsi(GetACP()).Text());
    EXPECT_GT(ansi.Length(), 0);
    EXPECT_TRUE(ansi.AsWideChar(0).Equals(ansi.AsWideChar(GetACP())));
}
