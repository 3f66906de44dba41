// Lifetime roots of the library's classes.
//
// cObject is the polymorphic root. cReferenced is an intrusive reference count with release
// notifications; the count is plain (not atomic): objects shared between threads are
// protected by their owners' locks. A new cReferenced starts at 0 and the first owner calls
// AddRef; the Release that brings the count to zero (or below) notifies and deletes it.
#pragma once

#include "Engine/Common/Base/Api.h"

namespace Quillanor::Common {

class QC_API cObject {
public:
    cObject() = default;
    cObject(const cObject&) = default;
    cObject& operator=(const cObject&) = default;
    virtual ~cObject() = default;
};

class cReferenced;

// One release notification: `Callback(Target, released object, 0, this node)` runs when the
// object it is attached to is released for the last time, before the object is destroyed.
struct sReleaseNotification {
    using Function = void (*)(void* target, cReferenced* released, int reserved,
                              sReleaseNotification* node);
    void* Target;
    Function Callback;
    sReleaseNotification* Next;
};

class QC_API cReferenced {
public:
    cReferenced() = default;
    // Copying copies the count and the notification list head as they stand (member-wise);
    // a copy never re-counts.
    cReferenced(const cReferenced&) = default;
    cReferenced& operator=(const cReferenced&) = default;

    // Returns the count after the increment.
    virtual int AddRef();
    // Returns the count after the decrement; at or below zero the notifications run and the
    // object is deleted (the caller then sees 0). Releasing a dead object is undefined.
    virtual int Release();
    int RefCount() const { return mRefCount; }

    // Attaches a notification at the head of the list; the object owns the node.
    sReleaseNotification* AddReleaseNotification(void* target,
                                                 sReleaseNotification::Function callback);
    // Unlinks and frees a node of this object; a callback may remove its own node.
    void RemoveReleaseNotification(sReleaseNotification* node);

protected:
    // Frees the nodes still listed without calling them. Objects die through Release.
    virtual ~cReferenced();

private:
    sReleaseNotification* mListeners = nullptr;
    int mRefCount = 0;
};

// The usual base of reference-counted library classes: both roots together.
class QC_API cReferencedObject : public cObject, public cReferenced {
public:
    cReferencedObject() = default;
    cReferencedObject(const cReferencedObject&) = default;
    cReferencedObject& operator=(const cReferencedObject&) = default;

protected:
    ~cReferencedObject() override = default;
};

} // namespace Quillanor::Common
