// cCircularBuffer: a byte ring buffer with two modes.
//
// FIFO mode (the default): what is written is later read once, in order. A write that does not
// fit is truncated (the return value says how much was taken) unless auto-grow is on, in which
// case the storage grows by exactly the missing bytes and wrapped data is kept in order.
// Tail mode: the buffer keeps the most recent bytes written; Read(n) returns the last n bytes
// without consuming them (and the used size is not maintained).
//
// A value type (copying copies the storage). Not synchronised: guard it when sharing.
#pragma once

#include "Engine/Common/Base/Api.h"
#include "Engine/Common/Base/Array.h"

namespace Quillanor::Common {

class QC_API cCircularBuffer {
public:
    // An empty FIFO buffer that grows on demand.
    cCircularBuffer();
    cCircularBuffer(int pSize, bool pAutoGrow, bool pTailMode);
    cCircularBuffer(const cCircularBuffer& pOther) = default;
    cCircularBuffer& operator=(const cCircularBuffer& pOther) = default;
    ~cCircularBuffer() = default;

    // Return the number of bytes written or read.
    int Write(const void* pData, int pSize);
    int Read(void* pData, int pSize);

    // Resizes when pSize differs from Size(), resetting positions and used size (the contents
    // are then meaningless); the same size keeps everything.
    void SetSize(int pSize);
    int Size() const { return mBuffer.Count(); }
    // Bytes written and not yet read (FIFO mode).
    int UsedSize() const { return mUsedSize; }
    // Positions and used size to 0; the contents stay.
    void Clear();
    // Fills the storage with zero bytes; positions stay.
    void Zero();

    void SetAutoGrow(bool pAutoGrow) { mAutoGrow = pAutoGrow; }
    bool AutoGrow() const { return mAutoGrow; }
    // Changing the mode resets positions and used size.
    void SetTailMode(bool pTailMode);
    bool TailMode() const { return mTailMode; }

private:
    void CopyIn(const unsigned char* pData, int pSize);
    void CopyOut(unsigned char* pData, int pSize);

    tArray<unsigned char> mBuffer{64};
    bool mAutoGrow = true;
    bool mTailMode = false;
    int mWritePos = 0;
    int mReadPos = 0;
    int mUsedSize = 0;
};

} // namespace Quillanor::Common
