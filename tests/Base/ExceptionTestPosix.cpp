#include "Engine/Common/Base/Exception.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

using namespace Quillanor::Common;

namespace {

std::u16string Wide(const char* text) {
    return std::u16string(text, text + std::strlen(text));
}

} // namespace

TEST(ExceptionPosix, NegativeCodeTakesTheLastErrorAtConstruction) {
    errno = ENOENT;
    const cLastErrorException e(-1, nullptr);
    errno = EACCES;
    EXPECT_EQ(e.ErrorCode(), ENOENT);
    EXPECT_EQ(std::u16string(e.Message().Text()), Wide(std::strerror(ENOENT)));

    errno = EPIPE;
    const cLastErrorException byDefault;
    errno = 0;
    EXPECT_EQ(byDefault.ErrorCode(), EPIPE);
    EXPECT_EQ(std::u16string(byDefault.Message().Text()), Wide(std::strerror(EPIPE)));
}

TEST(ExceptionPosix, ModuleTablesDoNotExistOnPosix) {
    const cLastErrorException e(ENOENT, u"wininet.dll");
    EXPECT_TRUE(e.Module().Equals(u"wininet.dll"));
    EXPECT_EQ(e.Message().Length(), 0);
}
