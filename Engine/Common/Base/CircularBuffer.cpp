#include "Engine/Common/Base/CircularBuffer.h"

#include <cstring>

namespace Quillanor::Common {

cCircularBuffer::cCircularBuffer() = default;

cCircularBuffer::cCircularBuffer(int pSize, bool pAutoGrow, bool pTailMode)
    : mAutoGrow(pAutoGrow), mTailMode(pTailMode) {
    mBuffer.SetCount(pSize);
}

void cCircularBuffer::CopyIn(const unsigned char* pData, int pSize) {
    const int size = Size();
    const int first = pSize < size - mWritePos ? pSize : size - mWritePos;
    std::memcpy(mBuffer.Data() + mWritePos, pData, static_cast<std::size_t>(first));
    std::memcpy(mBuffer.Data(), pData + first, static_cast<std::size_t>(pSize - first));
    mWritePos = (mWritePos + pSize) % size;
}

void cCircularBuffer::CopyOut(unsigned char* pData, int pSize) {
    const int size = Size();
    const int first = pSize < size - mReadPos ? pSize : size - mReadPos;
    std::memcpy(pData, mBuffer.Data() + mReadPos, static_cast<std::size_t>(first));
    std::memcpy(pData + first, mBuffer.Data(), static_cast<std::size_t>(pSize - first));
    mReadPos = (mReadPos + pSize) % size;
}

int cCircularBuffer::Write(const void* pData, int pSize) {
    QC_ASSERT(pSize >= 0);
    if (mTailMode) {
        QC_ASSERT(pSize <= Size());
        if (pSize > 0) {
            CopyIn(static_cast<const unsigned char*>(pData), pSize);
        }
        return pSize;
    }
    const int size = Size();
    const int free = size - mUsedSize;
    if (pSize > free) {
        if (mAutoGrow) {
            const int grow = pSize - free;
            const bool wraps = mReadPos > mWritePos || (mReadPos == mWritePos && mUsedSize > 0);
            mBuffer.SetCount(size + grow);
            if (wraps) {
                unsigned char* data = mBuffer.Data();
                std::memmove(data + mReadPos + grow, data + mReadPos,
                             static_cast<std::size_t>(size - mReadPos));
                mReadPos += grow;
            }
        } else {
            pSize = free;
        }
    }
    if (pSize > 0) {
        mUsedSize += pSize;
        CopyIn(static_cast<const unsigned char*>(pData), pSize);
    }
    return pSize;
}

int cCircularBuffer::Read(void* pData, int pSize) {
    QC_ASSERT(pSize >= 0);
    if (mTailMode) {
        QC_ASSERT(pSize <= Size());
        if (pSize > 0) {
            const int size = Size();
            mReadPos = ((mWritePos - pSize) % size + size) % size;
            CopyOut(static_cast<unsigned char*>(pData), pSize);
        }
        return pSize;
    }
    const int count = pSize < mUsedSize ? pSize : mUsedSize;
    if (count > 0) {
        mUsedSize -= count;
        CopyOut(static_cast<unsigned char*>(pData), count);
    }
    return count;
}

void cCircularBuffer::SetSize(int pSize) {
    QC_ASSERT(pSize > 0);
    if (pSize != Size()) {
        mBuffer.SetCount(pSize);
        mWritePos = 0;
        mReadPos = 0;
        mUsedSize = 0;
    }
}

void cCircularBuffer::Clear() {
    mWritePos = 0;
    mReadPos = 0;
    mUsedSize = 0;
}

void cCircularBuffer::Zero() {
    if (Size() > 0) {
        std::memset(mBuffer.Data(), 0, static_cast<std::size_t>(Size()));
    }
}

void cCircularBuffer::SetTailMode(bool pTailMode) {
    if (pTailMode != mTailMode) {
        mTailMode = pTailMode;
        Clear();
    }
}

} // namespace Quillanor::Common
