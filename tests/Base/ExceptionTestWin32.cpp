#include "Engine/Common/Base/Exception.h"

#include "Engine/Common/Base/Utils.h"

#include <gtest/gtest.h>

#include <string>
#include <windows.h>

using namespace Quillanor::Common;

TEST(ExceptionWin32, NegativeCodeTakesTheLastErrorAtConstruction) {
    SetLastError(ERROR_FILE_NOT_FOUND);
    const cLastErrorException e(-1, nullptr);
    SetLastError(ERROR_ACCESS_DENIED);
    EXPECT_EQ(e.ErrorCode(), static_cast<int>(ERROR_FILE_NOT_FOUND));
    const std::u16string text(e.Message().Text());
    EXPECT_FALSE(text.empty());
    EXPECT_EQ(text, std::u16string(cUtils::LastErrorStr(ERROR_FILE_NOT_FOUND)));

    SetLastError(ERROR_BROKEN_PIPE);
    const cLastErrorException byDefault;
    SetLastError(0);
    EXPECT_EQ(byDefault.ErrorCode(), static_cast<int>(ERROR_BROKEN_PIPE));
}

TEST(ExceptionWin32, TextsFromAModuleMessageTable) {
    // kernelbase.dll, loaded in every process, carries the system's message table.
    const cLastErrorException loaded(ERROR_ACCESS_DENIED, u"kernelbase.dll");
    const std::u16string text(loaded.Message().Text());
    EXPECT_FALSE(text.empty());
    EXPECT_EQ(text, std::u16string(cUtils::LastErrorStr(ERROR_ACCESS_DENIED)));

    // A module that is not loaded has no table to look in.
    const cLastErrorException missing(ERROR_ACCESS_DENIED, u"qc-not-loaded.dll");
    EXPECT_TRUE(missing.Module().Equals(u"qc-not-loaded.dll"));
    EXPECT_EQ(missing.Message().Length(), 0);
}
