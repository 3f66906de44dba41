#include "Engine/Common/Multithreading/Event.h"

#include "ChildProcess.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

using namespace Quillanor::Common;
using namespace std::chrono_literals;

namespace {

std::u16string Wide(const std::string& s) { return std::u16string(s.begin(), s.end()); }

// Generous bound for "eventually": waits in tests never rely on tight timing.
constexpr unsigned int kLongMs = 20000;

} // namespace

TEST(Event, AutoResetConsumesManualResetStays) {
    cEvent autoEvent;
    EXPECT_FALSE(autoEvent.Peek());
    autoEvent.Set();
    autoEvent.Set(); // setting twice is still one signal
    EXPECT_TRUE(autoEvent.WaitFor(0));
    EXPECT_FALSE(autoEvent.WaitFor(0));

    cEvent manual(true, true);
    EXPECT_TRUE(manual.Peek());
    EXPECT_TRUE(manual.WaitFor(cEvent::Infinite));
    EXPECT_TRUE(manual.WaitFor(10));
    manual.Reset();
    EXPECT_FALSE(manual.Peek());
    manual.Reset();
    EXPECT_FALSE(manual.WaitFor(0));
    EXPECT_NE(manual.Handle(), nullptr);
}

TEST(Event, WaitTimesOutAndWakesOnSetFromAnotherThread) {
    cEvent event;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(event.WaitFor(30));
    EXPECT_GE(std::chrono::steady_clock::now() - start, 25ms);

    std::thread setter([&] {
        std::this_thread::sleep_for(20ms);
        event.Set();
    });
    EXPECT_TRUE(event.WaitFor(kLongMs));
    setter.join();
    EXPECT_FALSE(event.Peek()) << "the waiter consumed the signal";
}

TEST(Event, AutoResetWakesExactlyOneOfManyWaiters) {
    cEvent event;
    std::atomic<int> woken{0};
    std::vector<std::thread> waiters;
    for (int i = 0; i < 4; ++i) {
        waiters.emplace_back([&] {
            if (event.WaitFor(kLongMs)) {
                ++woken;
            }
        });
    }
    for (int i = 0; i < 4; ++i) {
        event.Set();
        const auto until = std::chrono::steady_clock::now() + 10s;
        while (woken.load() < i + 1 && std::chrono::steady_clock::now() < until) {
            std::this_thread::sleep_for(1ms);
        }
        EXPECT_EQ(woken.load(), i + 1);
    }
    for (auto& t : waiters) {
        t.join();
    }
}

TEST(Event, CopiesNameTheSameEvent) {
    cEvent a(true);
    cEvent b(a);
    cEvent c;
    c = b;
    a.Set();
    EXPECT_TRUE(b.Peek());
    EXPECT_TRUE(c.Peek());
    c.Reset();
    EXPECT_FALSE(a.Peek());
}

TEST(Event, WaitForMultipleAnyReturnsTheSignalledIndex) {
    cEvent e0, e1, e2, e3;
    cEvent* list[] = {&e0, &e1, &e2, &e3};
    EXPECT_EQ(cEvent::WaitForMultiple(list, 4, false, 10), -1);

    e2.Set();
    EXPECT_EQ(cEvent::WaitForMultiple(list, 4, false, 0), 2);
    EXPECT_FALSE(e2.Peek()) << "wait-any consumes the auto-reset event it returns";

    e3.Set();
    e1.Set();
    EXPECT_EQ(cEvent::WaitForMultiple(list, 4, false, 0), 1) << "lowest index first";
    EXPECT_EQ(cEvent::WaitForMultiple(list, 4, false, 0), 3);

    std::thread setter([&] {
        std::this_thread::sleep_for(20ms);
        e3.Set();
    });
    EXPECT_EQ(cEvent::WaitForMultiple(list, 4, false, kLongMs), 3);
    setter.join();
}

TEST(Event, WaitForMultipleFailures) {
    cEvent e0;
    cEvent* withNull[] = {&e0, nullptr};
    EXPECT_EQ(cEvent::WaitForMultiple(withNull, 2, false, 0), -2);
    cEvent* one[] = {&e0};
    EXPECT_EQ(cEvent::WaitForMultiple(one, 0, false, 0), -2);
    EXPECT_EQ(cEvent::WaitForMultiple(nullptr, 1, false, 0), -2);
    std::vector<cEvent> many(65);
    std::vector<cEvent*> ptrs;
    for (auto& e : many) {
        ptrs.push_back(&e);
    }
    EXPECT_EQ(cEvent::WaitForMultiple(ptrs.data(), 65, false, 0), -2);
    many[63].Set();
    EXPECT_EQ(cEvent::WaitForMultiple(ptrs.data(), 64, false, 0), 63) << "64 is allowed";
}

TEST(Event, WaitForAllConsumesAllAtOnceAndNoneWhileOneIsUnset) {
    cEvent a, b;
    cEvent manual(true);
    cEvent* list[] = {&a, &b, &manual};
    a.Set();
    b.Set();
    EXPECT_EQ(cEvent::WaitForMultiple(list, 3, true, 0), -1);
    EXPECT_EQ(cEvent::WaitForMultiple(list, 3, true, 20), -1);
    EXPECT_TRUE(a.Peek()) << "nothing consumed while one was unset";
    EXPECT_TRUE(b.Peek());
    a.Set();
    b.Set();

    std::thread setter([&] {
        std::this_thread::sleep_for(20ms);
        manual.Set();
    });
    EXPECT_EQ(cEvent::WaitForMultiple(list, 3, true, kLongMs), 0);
    setter.join();
    EXPECT_FALSE(a.Peek());
    EXPECT_FALSE(b.Peek());
    EXPECT_TRUE(manual.Peek()) << "manual-reset events stay signalled";
}

TEST(Event, WaitForAllCompetingWithSingleWaitersNeverSplitsAPair) {
    // Two auto-reset events set together many times; a wait-all thread and two single waiters
    // compete. Every pair goes either wholly to the wait-all or to the single waiters.
    cEvent a, b;
    cEvent* list[] = {&a, &b};
    std::atomic<bool> stop{false};
    std::atomic<int> allCount{0}, aCount{0}, bCount{0};
    std::thread all([&] {
        while (!stop) {
            if (cEvent::WaitForMultiple(list, 2, true, 5) == 0) {
                ++allCount;
            }
        }
    });
    std::thread onlyA([&] {
        while (!stop) {
            if (a.WaitFor(5)) {
                ++aCount;
            }
        }
    });
    std::thread onlyB([&] {
        while (!stop) {
            if (b.WaitFor(5)) {
                ++bCount;
            }
        }
    });
    constexpr int kRounds = 2000;
    for (int i = 0; i < kRounds; ++i) {
        a.Set();
        b.Set();
        // Wait until both signals are gone before the next round, so none are merged.
        const auto until = std::chrono::steady_clock::now() + 10s;
        while (allCount * 2 + aCount + bCount < 2 * (i + 1)) {
            if (std::chrono::steady_clock::now() > until) {
                break;
            }
            std::this_thread::yield();
        }
    }
    stop = true;
    all.join();
    onlyA.join();
    onlyB.join();
    EXPECT_EQ(aCount.load(), bCount.load()) << "wait-all took one event without the other";
    EXPECT_EQ(allCount * 2 + aCount + bCount, 2 * kRounds);
}

QC_CHILD_MAIN(OpenAndSet) {
    // args: name, manual(0/1)
    cEvent event(args.at(1) == "1", false, Wide(args.at(0)).c_str());
    event.Set();
    return 0;
}

QC_CHILD_MAIN(CreateThenHang) {
    // Creates the named event, signals readiness through a second named event, then waits to
    // be killed.
    cEvent event(false, false, Wide(args.at(0)).c_str());
    cEvent ready(true, false, Wide(args.at(1)).c_str());
    ready.Set();
    std::this_thread::sleep_for(60s);
    return 3;
}

TEST(Event, NamedEventIsSharedWithinAProcess) {
    const std::string name = QcTest::UniqueName("within");
    cEvent first(false, false, Wide(name).c_str());
    cEvent second(true, true, Wide(name).c_str()); // opens the existing auto-reset event
    EXPECT_FALSE(second.Peek()) << "an existing event keeps its own mode and state";
    first.Set();
    EXPECT_TRUE(second.WaitFor(kLongMs));
    EXPECT_FALSE(first.Peek()) << "auto-reset: consumed through the other handle";
}

TEST(Event, NamedEventSetByAnotherProcessWakesTheWaiter) {
    const std::string name = QcTest::UniqueName("xproc");
    cEvent event(false, false, Wide(name).c_str());
    QcTest::cChildProcess child("OpenAndSet", {name, "0"});
    ASSERT_TRUE(child.Started());
    EXPECT_TRUE(event.WaitFor(kLongMs));
    EXPECT_EQ(child.Wait(kLongMs), 0);

    // Wait-any over a named and an unnamed event.
    cEvent local;
    cEvent* list[] = {&local, &event};
    QcTest::cChildProcess second("OpenAndSet", {name, "0"});
    EXPECT_EQ(cEvent::WaitForMultiple(list, 2, false, kLongMs), 1);
    EXPECT_EQ(second.Wait(kLongMs), 0);
}

TEST(Event, NameSurvivesAKilledCreator) {
    const std::string name = QcTest::UniqueName("killed");
    const std::string readyName = QcTest::UniqueName("ready");
    cEvent ready(true, false, Wide(readyName).c_str());
    {
        QcTest::cChildProcess creator("CreateThenHang", {name, readyName});
        ASSERT_TRUE(ready.WaitFor(kLongMs));
        creator.Kill();
    }
    // The killed process was the only holder: this process creates the name afresh with its
    // own mode and state, and a third process can open and set it.
    cEvent event(true, false, Wide(name).c_str());
    EXPECT_FALSE(event.Peek());
    QcTest::cChildProcess setter("OpenAndSet", {name, "1"});
    EXPECT_TRUE(event.WaitFor(kLongMs));
    EXPECT_EQ(setter.Wait(kLongMs), 0);
    EXPECT_TRUE(event.Peek()) << "manual-reset as created here";
}

TEST(Event, NamedEventLivesWhileAnyHandleIsOpen) {
    const std::string name = QcTest::UniqueName("life");
    auto* first = new cEvent(true, true, Wide(name).c_str());
    cEvent second(false, false, Wide(name).c_str());
    delete first;
    EXPECT_TRUE(second.Peek()) << "still the first one's manual, signalled event";
}
