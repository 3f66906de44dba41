// The last error of the Windows backend is GetLastError; texts come from the system's and the
// modules' message tables.
#include "Engine/Common/Base/Utils.h"

#include <gtest/gtest.h>

#include <string>
#include <windows.h>

using namespace Quillanor::Common;

TEST(FormatTestWin32, LastErrorIsGetLastError) {
    const std::u16string denied = cUtils::LastErrorStr(ERROR_ACCESS_DENIED);
    EXPECT_FALSE(denied.empty());
    EXPECT_NE(denied, std::u16string(cUtils::LastErrorStr(ERROR_FILE_NOT_FOUND)));
    SetLastError(ERROR_ACCESS_DENIED);
    EXPECT_EQ(std::u16string(cUtils::LastErrorStr(-1)), denied);
}

TEST(FormatTestWin32, ModuleThatIsNotLoadedGivesNoText) {
    EXPECT_EQ(std::u16string(cUtils::LastErrorStr(ERROR_ACCESS_DENIED, u"qc-no-such-module.dll")),
              u"");
}
