#include "Engine/Common/Base/Object.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace Quillanor::Common;

namespace {

struct sTrace {
    std::vector<std::string> events;
};

class cTracked : public cReferencedObject {
public:
    explicit cTracked(sTrace& trace) : mTrace(trace) {}
    int mValue = 7;

protected:
    ~cTracked() override { mTrace.events.push_back("destroyed"); }

private:
    sTrace& mTrace;
};

struct sListener {
    sTrace* trace;
    const char* name;
    cReferenced* expected;
    bool removeSelf;
};

void OnRelease(void* target, cReferenced* released, int reserved, sReleaseNotification* node) {
    auto* listener = static_cast<sListener*>(target);
    std::string event = listener->name;
    if (released != listener->expected || reserved != 0 || node->Target != target) {
        event += ":bad-arguments";
    }
    // The object is still alive while notifications run.
    if (static_cast<cTracked*>(released)->mValue != 7) {
        event += ":dead";
    }
    listener->trace->events.push_back(event);
    if (listener->removeSelf) {
        released->RemoveReleaseNotification(node);
    }
}

} // namespace

TEST(Referenced, CountStartsAtZeroAndLastReleaseDestroys) {
    sTrace trace;
    auto* object = new cTracked(trace);
    EXPECT_EQ(object->RefCount(), 0);
    EXPECT_EQ(object->AddRef(), 1);
    EXPECT_EQ(object->AddRef(), 2);
    EXPECT_EQ(object->Release(), 1);
    EXPECT_TRUE(trace.events.empty());
    EXPECT_EQ(object->Release(), 0);
    EXPECT_EQ(trace.events, std::vector<std::string>{"destroyed"});
}

TEST(Referenced, NotificationsRunInListOrderBeforeDestruction) {
    sTrace trace;
    auto* object = new cTracked(trace);
    // Nodes are pushed at the head, so the list order is the reverse of attachment.
    sListener first{&trace, "first", object, false};
    sListener second{&trace, "second", object, true};
    sListener third{&trace, "third", object, false};
    object->AddReleaseNotification(&first, &OnRelease);
    object->AddReleaseNotification(&second, &OnRelease);
    object->AddReleaseNotification(&third, &OnRelease);
    object->AddRef();
    object->AddRef();
    EXPECT_EQ(object->Release(), 1);
    EXPECT_TRUE(trace.events.empty()) << "no notification before the last release";
    EXPECT_EQ(object->Release(), 0);
    EXPECT_EQ(trace.events, (std::vector<std::string>{"third", "second", "first", "destroyed"}));
}

TEST(Referenced, RemovedNotificationIsNotCalled) {
    sTrace trace;
    auto* object = new cTracked(trace);
    sListener kept{&trace, "kept", object, false};
    sListener dropped{&trace, "dropped", object, false};
    object->AddReleaseNotification(&kept, &OnRelease);
    sReleaseNotification* node = object->AddReleaseNotification(&dropped, &OnRelease);
    object->RemoveReleaseNotification(node);
    object->AddRef();
    object->Release();
    EXPECT_EQ(trace.events, (std::vector<std::string>{"kept", "destroyed"}));
}

TEST(Referenced, CopyIsMemberWise) {
    sTrace trace;
    auto* object = new cTracked(trace);
    object->AddRef();
    object->AddRef();
    auto* copy = new cTracked(*object);
    EXPECT_EQ(copy->RefCount(), 2) << "a copy keeps the count as it stands";
    copy->Release();
    copy->Release();
    object->Release();
    object->Release();
    EXPECT_EQ(trace.events.size(), 2u);
}
