// The assertion macros used by library code.
//
// A failed assertion is a programming error: the failure routine formats a message with the
// expression text, the source file and line, shows and logs it, and ends the process. The
// expression text is passed literally, so messages quote the code's own names
// ("pIdx>=0 && pIdx<mLength"). All macros are safe to use from any thread.
#pragma once

#include "Engine/Common/Base/Api.h"

namespace Quillanor::Common::Detail {

// Reports a failed assertion; never returns. `message` may be null.
[[noreturn]] QC_API void AssertFailed(const char16_t* expression, const char16_t* file,
                                      unsigned int line, const char16_t* message);

// Reports a broken internal invariant as a debugger break: with a debugger attached it stops
// there and returns when resumed, otherwise it prints the position and aborts the process.
QC_API void HardAssertFailed(const char16_t* expression, const char16_t* file, unsigned int line);

} // namespace Quillanor::Common::Detail

#define QC_WIDEN_IMPL(text) u##text
#define QC_WIDEN(text) QC_WIDEN_IMPL(text)

// Fatal unless `expr` holds; the message names the expression as written.
#define QC_ASSERT(expr)                                                                            \
    ((expr) ? static_cast<void>(0)                                                                 \
            : ::Quillanor::Common::Detail::AssertFailed(QC_WIDEN(#expr), QC_WIDEN(__FILE__),       \
                                                        __LINE__, nullptr))

// As QC_ASSERT, with a free text (a char16_t literal) as the message's first line.
#define QC_ASSERT_MSG(expr, message)                                                               \
    ((expr) ? static_cast<void>(0)                                                                 \
            : ::Quillanor::Common::Detail::AssertFailed(QC_WIDEN(#expr), QC_WIDEN(__FILE__),       \
                                                        __LINE__, message))

// Reports a failure whose expression text is given explicitly, for checks whose text must
// read differently from the code that performs them (e.g. "SetEvent(hEvent)").
#define QC_ASSERT_TEXT(ok, exprText)                                                               \
    ((ok) ? static_cast<void>(0)                                                                   \
          : ::Quillanor::Common::Detail::AssertFailed(exprText, QC_WIDEN(__FILE__), __LINE__,      \
                                                      nullptr))

// A debugger break unless `expr` holds (see HardAssertFailed); for registry invariants whose
// failure must stop in the debugger rather than show a message.
#define QC_HARD_ASSERT(expr)                                                                       \
    ((expr) ? static_cast<void>(0)                                                                 \
            : ::Quillanor::Common::Detail::HardAssertFailed(QC_WIDEN(#expr), QC_WIDEN(__FILE__),   \
                                                            __LINE__))
