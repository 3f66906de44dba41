// The system random source on Windows: the system-preferred BCrypt generator.
#include "Engine/Common/Math/Math.h"

#include <windows.h>

#include <bcrypt.h>

#include <chrono>

namespace Quillanor::Common {
namespace {

// Users of the DLL import the class constants when they take their address or bind them to
// a reference (EXPECT_EQ, std::max...). GCC emits inline static data only in a module that
// uses it, so the DLL uses them here to emit and export them.
[[gnu::used]] const void* const kExportedConstants[] = {
    &cMath::Pi,  &cMath::HalfPi,  &cMath::TwoPi,  &cMath::Epsilon,
    &cMath::DPi, &cMath::DHalfPi, &cMath::DTwoPi, &cMath::DEpsilon,
};

} // namespace

std::uint32_t cMath::SystemRandomImpl() {
    std::uint32_t value = 0;
    if (BCryptGenRandom(nullptr, reinterpret_cast<PUCHAR>(&value), sizeof(value),
                        BCRYPT_USE_SYSTEM_PREFERRED_RNG) == 0) {
        return value;
    }
    // No random source at all: the clock is the best that is left.
    return static_cast<std::uint32_t>(std::chrono::steady_clock::now().time_since_epoch().count() *
                                      2654435761u);
}

} // namespace Quillanor::Common
