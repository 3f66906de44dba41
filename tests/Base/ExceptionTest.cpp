#include "Engine/Common/Base/Exception.h"

#include <gtest/gtest.h>

using namespace Quillanor::Common;

namespace {

// A library-style exception of its own, as other areas derive them.
class cParseException : public cMessageException {
public:
    cParseException(const cString& text, int line) : cMessageException(text), mLine(line) {}
    int mLine;
};

[[noreturn]] void ThrowParse() {
    throw cParseException(u"Unclosed string", 12);
}

} // namespace

TEST(Exception, RootMessageIsTheSharedEmptyString) {
    const cException e;
    EXPECT_EQ(e.Message().Length(), 0);
    EXPECT_EQ(e.Message().Text(), cString::Empty().Text()) << "the shared empty buffer";
}

TEST(Exception, MessageExceptionKeepsItsTextThroughCopiesAndBaseCatches) {
    try {
        ThrowParse();
    } catch (const cException& e) {
        EXPECT_TRUE(e.Message().Equals(u"Unclosed string"));
        const auto* parse = dynamic_cast<const cParseException*>(&e);
        ASSERT_NE(parse, nullptr);
        EXPECT_EQ(parse->mLine, 12);
    }
    cMessageException original(u"first");
    cMessageException copy = original;
    EXPECT_TRUE(copy.Message().Equals(u"first"));
    EXPECT_EQ(copy.Message().Text(), original.Message().Text()) << "copies share the buffer";
    copy = cMessageException(u"second");
    EXPECT_TRUE(copy.Message().Equals(u"second"));
    EXPECT_TRUE(original.Message().Equals(u"first"));
}

TEST(Exception, LastErrorExceptionWithAnExplicitCode) {
    const cLastErrorException e(5, nullptr);
    EXPECT_EQ(e.ErrorCode(), 5);
    EXPECT_EQ(e.Module().Length(), 0);
    const cLastErrorException unknown(987654, nullptr);
    EXPECT_EQ(unknown.Message().Length(), 0) << "an unknown code has no text";
    cLastErrorException copy(unknown);
    EXPECT_EQ(copy.ErrorCode(), 987654);
}
