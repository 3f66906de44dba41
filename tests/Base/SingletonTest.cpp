#include "Engine/Common/Base/Singleton.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <thread>

using namespace Quillanor::Common;

namespace {

std::string gLog;

template <char Name>
class cNamed : public tSingleton<cNamed<Name>> {
public:
    cNamed() { gLog += std::string("+") + Name; }
    ~cNamed() override { gLog += std::string("-") + Name; }
};
using cA = cNamed<'A'>;
using cB = cNamed<'B'>;
using cC = cNamed<'C'>;

// Creates the lazy singleton L inside its own constructor.
class cOuter : public tSingleton<cOuter> {
public:
    cOuter() {
        gLog += "+O";
        cNamed<'L'>::Instance();
    }
    ~cOuter() override {
        // L must still be alive while its creator is torn down.
        gLog += cNamed<'L'>::HasInstance() ? "-O(L alive)" : "-O(L gone)";
    }
};

class cManual : public tManualSingleton<cManual> {
public:
    static cManual* Create() {
        cManual* instance = CreateInstance();
        instance->mReady = true;
        return instance;
    }
    bool mReady = false;
};

class cThrowing : public tSingleton<cThrowing> {
public:
    cThrowing() { throw std::runtime_error("no"); }
};

// Registers a fresh object of its own type on every call, to overflow the registry.
class cFiller : public cSingleton {};

// A destructor that creates another singleton while DoneAll runs.
class cRegistersOnDestruction : public tSingleton<cRegistersOnDestruction> {
public:
    ~cRegistersOnDestruction() override { cNamed<'Z'>::Instance(); }
};

} // namespace

TEST(Singleton, LazyInstanceIsCreatedOnceAndRecreatedAfterDone) {
    gLog.clear();
    EXPECT_FALSE(cA::HasInstance());
    const int before = cSingletonManager::Count();
    cA* a = cA::Instance();
    EXPECT_EQ(a, cA::Instance());
    EXPECT_TRUE(cA::HasInstance());
    EXPECT_EQ(cSingletonManager::Count(), before + 1);
    cA::Done();
    EXPECT_FALSE(cA::HasInstance());
    EXPECT_EQ(cSingletonManager::Count(), before);
    cA::Done(); // nothing left: nothing happens
    cA::Instance();
    EXPECT_TRUE(cA::HasInstance());
    cA::Done();
    EXPECT_EQ(gLog, "+A-A+A-A");
}

TEST(SingletonTeardownDeathTest, DoneOfTheMiddleOneKeepsTheOthersInOrder) {
    EXPECT_EXIT(
        {
            gLog.clear();
            cA::Instance();
            cB::Instance();
            cC::Instance();
            cB::Done();
            cSingletonManager::DoneAll();
            std::fprintf(stderr, "log=%s count=%d\n", gLog.c_str(), cSingletonManager::Count());
            std::exit(0);
        },
        testing::ExitedWithCode(0), "log=\\+A\\+B\\+C-B-C-A count=0");
}

TEST(SingletonTeardownDeathTest, DoneAllDestroysInReverseOrderOfCreation) {
    EXPECT_EXIT(
        {
            gLog.clear();
            cA::Instance();
            cB::Instance();
            cC::Instance();
            cSingletonManager::DoneAll();
            const bool any = cA::HasInstance() || cB::HasInstance() || cC::HasInstance();
            std::fprintf(stderr, "log=%s any=%d\n", gLog.c_str(), any ? 1 : 0);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "log=\\+A\\+B\\+C-C-B-A any=0");
}

TEST(SingletonTeardownDeathTest, LazySingletonCreatedInAConstructorOutlivesItsCreator) {
    EXPECT_EXIT(
        {
            gLog.clear();
            cOuter::Instance();
            cSingletonManager::DoneAll();
            std::fprintf(stderr, "log=%s\n", gLog.c_str());
            std::exit(0);
        },
        testing::ExitedWithCode(0), "log=\\+O\\+L-O\\(L alive\\)-L\n");
}

TEST(Singleton, ManualSingletonComesOnlyFromCreate) {
    EXPECT_FALSE(cManual::HasInstance());
    cManual* manual = cManual::Create();
    EXPECT_TRUE(manual->mReady);
    EXPECT_EQ(cManual::Instance(), manual);
    cManual::Done();
    EXPECT_FALSE(cManual::HasInstance());
}

TEST(Singleton, ThrowingConstructorLeavesNoInstanceAndNoLock) {
    const int before = cSingletonManager::Count();
    EXPECT_THROW(cThrowing::Instance(), std::runtime_error);
    EXPECT_FALSE(cThrowing::HasInstance());
    // Another thread can still take the registry lock (a leaked lock would hang here).
    int countSeenElsewhere = -1;
    std::thread([&] { countSeenElsewhere = cSingletonManager::Count(); }).join();
    EXPECT_EQ(countSeenElsewhere, before);
}

TEST(SingletonDeathTest, ManualInstanceBeforeCreateIsAHardAssertion) {
    EXPECT_DEATH(cManual::Instance(), "Hard assertion failed: instance != nullptr");
}

TEST(SingletonDeathTest, SecondCreationIsAHardAssertion) {
    EXPECT_DEATH(
        {
            cManual::Create();
            cManual::Create();
        },
        "Hard assertion failed: sInstance.load\\(std::memory_order_relaxed\\)==nullptr");
}

TEST(SingletonDeathTest, RegistryOverflowIsAHardAssertion) {
    EXPECT_DEATH(
        {
            cSingletonManager::Lock();
            for (int i = cSingletonManager::Count(); i <= cSingletonManager::MaxSingletons; ++i) {
                cSingletonManager::AddSingleton(new cFiller());
            }
            cSingletonManager::Unlock();
        },
        "Hard assertion failed: sSingletonCount<MaxSingletons");
}

TEST(SingletonDeathTest, RemovingAnUnregisteredSingletonIsAHardAssertion) {
    EXPECT_DEATH(
        {
            cFiller stranger;
            cSingletonManager::RemoveSingleton(&stranger);
        },
        "Hard assertion failed: index<sSingletonCount");
}

TEST(SingletonDeathTest, RegistryChangeDuringDoneAllIsAHardAssertion) {
    EXPECT_DEATH(
        {
            cRegistersOnDestruction::Instance();
            cSingletonManager::DoneAll();
        },
        "Hard assertion failed: sSingletonCount==index");
}
