// Members common to cString and cAString, written once. The including file defines
// QC_STR (the class) and QC_CH (its character type) and the tStrOps specialisations of Lock
// and EmptyBuff before including this.

namespace Quillanor::Common {

namespace {

using Ops = tStrOps<QC_STR>;
using Chr = tChr<QC_CH>;

constexpr QC_CH kNoText[1] = {0};

int TextLength(const QC_CH* pText) {
    return pText == nullptr ? 0 : static_cast<int>(Chr::Len(pText));
}

} // namespace

// ---- construction and assignment ----

QC_STR::QC_STR() : mBuff(Ops::EmptyBuff()), mLength(0) {
    Ops::AddRef(mBuff);
}

QC_STR::QC_STR(QC_CH pChar, int pCount) : mBuff(nullptr), mLength(0) {
    if (pCount <= 0 || pChar == 0) {
        mBuff = Ops::EmptyBuff();
        Ops::AddRef(mBuff);
        return;
    }
    mBuff = Ops::NewBuff(pCount + 1);
    for (int i = 0; i < pCount; ++i) {
        mBuff->mData[i] = pChar;
    }
    mBuff->mData[pCount] = 0;
    mLength = pCount;
}

QC_STR::QC_STR(const QC_CH* pText) : QC_STR(pText, TextLength(pText)) {}

QC_STR::QC_STR(const QC_CH* pText, int pLength) : mBuff(nullptr), mLength(0) {
    if (pText == nullptr || pLength <= 0) {
        mBuff = Ops::EmptyBuff();
        Ops::AddRef(mBuff);
        return;
    }
    mBuff = Ops::NewBuff(pLength + 1);
    std::memcpy(mBuff->mData, pText, sizeof(QC_CH) * static_cast<std::size_t>(pLength));
    mBuff->mData[pLength] = 0;
    mLength = pLength;
}

QC_STR::QC_STR(int pSize) : mBuff(nullptr), mLength(0) {
    QC_ASSERT(pSize >= 8);
    mBuff = Ops::NewBuff(pSize);
}

QC_STR::QC_STR(const QC_STR& pOther) : mBuff(pOther.mBuff), mLength(pOther.mLength) {
    Ops::AddRef(mBuff);
}

QC_STR::QC_STR(QC_STR&& pOther) noexcept : mBuff(pOther.mBuff), mLength(pOther.mLength) {
    pOther.mBuff = Ops::EmptyBuff();
    pOther.mLength = 0;
    Ops::AddRef(pOther.mBuff);
}

QC_STR::~QC_STR() {
    Ops::Release(mBuff);
}

QC_STR& QC_STR::operator=(const QC_STR& pOther) {
    if (mBuff != pOther.mBuff) {
        Ops::Share(*this, pOther.mBuff);
    }
    mLength = pOther.mLength;
    return *this;
}

QC_STR& QC_STR::operator=(QC_STR&& pOther) noexcept {
    std::swap(mBuff, pOther.mBuff);
    std::swap(mLength, pOther.mLength);
    return *this;
}

QC_STR& QC_STR::operator=(QC_CH pChar) {
    if (pChar == 0) {
        Ops::Assign(*this, nullptr, 0);
    } else {
        Ops::Assign(*this, &pChar, 1);
    }
    return *this;
}

QC_STR& QC_STR::operator=(const QC_CH* pText) {
    Ops::Assign(*this, pText, TextLength(pText));
    return *this;
}

QC_STR& QC_STR::Set(QC_CH pChar, int pCount) {
    if (pCount <= 0 || pChar == 0) {
        Ops::Assign(*this, nullptr, 0);
        return *this;
    }
    QC_CH* d = Ops::Reserve(*this, pCount);
    for (int i = 0; i < pCount; ++i) {
        d[i] = pChar;
    }
    d[pCount] = 0;
    mLength = pCount;
    return *this;
}

QC_STR& QC_STR::Set(const QC_CH* pText, int pLength) {
    Ops::Assign(*this, pText, pLength);
    return *this;
}

QC_STR& QC_STR::Set(const QC_STR& pSource, int pLength) {
    if (pLength < 0 || pLength >= pSource.mLength) {
        return *this = pSource;
    }
    Ops::Assign(*this, pSource.mBuff->mData, pLength);
    return *this;
}

// ---- size and access ----

QC_CH QC_STR::operator[](int pIdx) const {
    // clang-format off
    QC_ASSERT(pIdx>=0 && pIdx<mLength);
    // clang-format on
    return mBuff->mData[pIdx];
}

void QC_STR::SetChar(int pIdx, QC_CH pChar) {
    // clang-format off
    QC_ASSERT(pIdx>=0 && pIdx<mLength);
    // clang-format on
    Ops::Unshare(*this)[pIdx] = pChar;
}

QC_CH* QC_STR::GetWritable() {
    return Ops::Unshare(*this);
}

void QC_STR::SetLength(int pNewLength) {
    QC_ASSERT(pNewLength >= 0);
    if (pNewLength == mLength) {
        return;
    }
    QC_CH* d = Ops::Reserve(*this, pNewLength);
    for (int i = mLength; i < pNewLength; ++i) {
        d[i] = QC_CH(' ');
    }
    d[pNewLength] = 0;
    mLength = pNewLength;
}

void QC_STR::SetSize(int pNewSize) {
    QC_ASSERT(pNewSize > 0);
    const int length = mLength < pNewSize ? mLength : pNewSize - 1;
    auto* fresh = Ops::NewBuff(pNewSize);
    std::memcpy(fresh->mData, mBuff->mData, sizeof(QC_CH) * static_cast<std::size_t>(length));
    fresh->mData[length] = 0;
    Ops::Switch(*this, fresh);
    mLength = length;
}

void QC_STR::Clear() {
    if (mLength != 0) {
        Ops::Unshare(*this)[0] = 0;
        mLength = 0;
    }
}

void QC_STR::Reset() {
    if (mBuff != Ops::EmptyBuff()) {
        Ops::Share(*this, Ops::EmptyBuff());
    }
    mLength = 0;
}

const QC_STR& QC_STR::Empty() {
    return sEmpty;
}

// ---- appending and editing ----

QC_STR& QC_STR::operator<<(const QC_CH* pText) {
    return Append(pText, TextLength(pText));
}

QC_STR& QC_STR::operator<<(const QC_STR& pText) {
    return Append(pText);
}

QC_STR& QC_STR::Append(const QC_STR& pText) {
    if (pText.mLength > 0) {
        Ops::Splice(*this, mLength, 0, pText.mBuff->mData, pText.mLength);
    }
    return *this;
}

QC_STR& QC_STR::Append(const QC_CH* pText, int pLength) {
    if (pText != nullptr && pLength > 0) {
        Ops::Splice(*this, mLength, 0, pText, pLength);
    }
    return *this;
}

QC_STR& QC_STR::operator+=(QC_CH pChar) {
    if (pChar != 0) {
        Ops::Splice(*this, mLength, 0, &pChar, 1);
    }
    return *this;
}

QC_STR& QC_STR::operator-=(QC_CH pChar) {
    if (pChar != 0) {
        Ops::Splice(*this, 0, 0, &pChar, 1);
    }
    return *this;
}

QC_STR& QC_STR::operator-=(const QC_CH* pText) {
    return Insert(pText, TextLength(pText), 0);
}

QC_STR& QC_STR::operator-=(const QC_STR& pText) {
    return Insert(pText, 0);
}

QC_STR& QC_STR::Insert(const QC_CH* pText, int pLength, int pPosition) {
    if (pText == nullptr || pLength <= 0) {
        return *this;
    }
    if (pPosition < 0) {
        pPosition = 0;
    } else if (pPosition > mLength) {
        pPosition = mLength;
    }
    Ops::Splice(*this, pPosition, 0, pText, pLength);
    return *this;
}

QC_STR& QC_STR::Insert(const QC_CH* pText, int pPosition) {
    return Insert(pText, TextLength(pText), pPosition);
}

QC_STR& QC_STR::Insert(const QC_STR& pText, int pPosition) {
    return Insert(pText.mBuff->mData, pText.mLength, pPosition);
}

QC_STR& QC_STR::Remove(int pStart, int pCount) {
    if (pStart < 0) {
        pCount += pStart;
        pStart = 0;
    }
    if (mLength == 0 || pStart >= mLength || pCount < 1) {
        return *this;
    }
    if (pCount > mLength - pStart) {
        pCount = mLength - pStart;
    }
    Ops::Splice(*this, pStart, pCount, kNoText, 0);
    return *this;
}

QC_STR& QC_STR::RemoveFromEnd(int pCount) {
    if (pCount <= 0) {
        return *this;
    }
    if (pCount >= mLength) {
        Clear();
        return *this;
    }
    Ops::Unshare(*this)[mLength - pCount] = 0;
    mLength -= pCount;
    return *this;
}

QC_STR& QC_STR::Fill(QC_CH pChar) {
    if (mLength > 0) {
        QC_CH* d = Ops::Unshare(*this);
        for (int i = 0; i < mLength; ++i) {
            d[i] = pChar;
        }
    }
    return *this;
}

QC_STR& QC_STR::TrimLeft() {
    int count = 0;
    while (count < mLength && Chr::Space(mBuff->mData[count])) {
        ++count;
    }
    return Remove(0, count);
}

QC_STR& QC_STR::TrimRight() {
    int count = 0;
    while (count < mLength && Chr::Space(mBuff->mData[mLength - 1 - count])) {
        ++count;
    }
    return RemoveFromEnd(count);
}

QC_STR& QC_STR::Trim() {
    TrimRight();
    return TrimLeft();
}

QC_STR& QC_STR::ToLower() {
    if (mLength > 0) {
        QC_CH* d = Ops::Unshare(*this);
        for (int i = 0; i < mLength; ++i) {
            d[i] = Chr::Lower(d[i]);
        }
    }
    return *this;
}

QC_STR& QC_STR::ToUpper() {
    if (mLength > 0) {
        QC_CH* d = Ops::Unshare(*this);
        for (int i = 0; i < mLength; ++i) {
            d[i] = Chr::Upper(d[i]);
        }
    }
    return *this;
}

// ---- comparison ----

int QC_STR::Compare(const QC_CH* pText) const {
    if (pText == nullptr) {
        return mLength > 0 ? 1 : 0;
    }
    using U = typename Chr::Unit;
    for (const QC_CH* a = mBuff->mData;; ++a, ++pText) {
        QC_CH x = *a;
        QC_CH y = *pText;
        if (x != y) {
            x = Chr::Upper(x);
            y = Chr::Upper(y);
            if (x != y) {
                return static_cast<int>(static_cast<U>(x)) - static_cast<int>(static_cast<U>(y));
            }
        }
        if (x == 0) {
            return 0;
        }
    }
}

int QC_STR::Compare(const QC_STR& pText) const {
    if (mBuff == pText.mBuff) {
        return 0;
    }
    // Identical texts (the usual case of equal keys) are recognised at memcmp speed; the wide
    // kernel does that on its own.
    if constexpr (sizeof(QC_CH) == 1) {
        if (mLength == pText.mLength &&
            std::memcmp(mBuff->mData, pText.mBuff->mData, static_cast<std::size_t>(mLength)) == 0) {
            return 0;
        }
    }
    // Texts of one length end together, so their terminators need no comparing; otherwise the
    // shorter one's terminator takes part.
    const int shorter = mLength < pText.mLength ? mLength : pText.mLength;
    const int units = mLength == pText.mLength ? shorter : shorter + 1;
    return ICmpBounded(mBuff->mData, pText.mBuff->mData, static_cast<std::size_t>(units));
}

bool QC_STR::Equals(const QC_CH* pText) const {
    if (pText == nullptr) {
        return mLength == 0;
    }
    return CmpBounded(mBuff->mData, pText, static_cast<std::size_t>(mLength) + 1) == 0;
}

bool QC_STR::Equals(const QC_STR& pText) const {
    return mBuff == pText.mBuff ||
           (mLength == pText.mLength &&
            std::memcmp(mBuff->mData, pText.mBuff->mData,
                        sizeof(QC_CH) * static_cast<std::size_t>(mLength)) == 0);
}

int QC_STR::CompareCS(const QC_CH* pText) const {
    if (pText == nullptr) {
        return mLength > 0 ? 1 : 0;
    }
    return CmpBounded(mBuff->mData, pText, static_cast<std::size_t>(mLength) + 1);
}

int QC_STR::CompareCS(const QC_STR& pText) const {
    const int shorter = mLength < pText.mLength ? mLength : pText.mLength;
    return CmpBounded(mBuff->mData, pText.mBuff->mData, static_cast<std::size_t>(shorter) + 1);
}

bool QC_STR::CheckPrefix(const QC_CH* pText, bool pCaseSensitive) const {
    const int length = TextLength(pText);
    if (length == 0) {
        return true;
    }
    if (length > mLength) {
        return false;
    }
    const auto n = static_cast<std::size_t>(length);
    return (pCaseSensitive ? Chr::NCmp(mBuff->mData, pText, n)
                           : Chr::NICmp(mBuff->mData, pText, n)) == 0;
}

bool QC_STR::CheckPostfix(const QC_CH* pText, bool pCaseSensitive) const {
    const int length = TextLength(pText);
    if (length == 0) {
        return true;
    }
    if (length > mLength) {
        return false;
    }
    const auto n = static_cast<std::size_t>(length);
    const QC_CH* tail = mBuff->mData + mLength - length;
    return (pCaseSensitive ? Chr::NCmp(tail, pText, n) : Chr::NICmp(tail, pText, n)) == 0;
}

bool QC_STR::StartsWith(const QC_CH* pText) const {
    return CheckPrefix(pText, false);
}

bool QC_STR::EndsWith(const QC_CH* pText) const {
    return CheckPostfix(pText, false);
}

int QC_STR::Find(const QC_CH* pText, int pStart) const {
    return Ops::Find(*this, pText, pStart, false);
}

int QC_STR::Find(const QC_STR& pText, int pStart) const {
    if (pText.mLength > mLength - (pStart < 0 ? 0 : pStart)) {
        return -1;
    }
    return Ops::Find(*this, pText.mBuff->mData, pStart, false);
}

int QC_STR::FindCS(const QC_CH* pText, int pStart) const {
    return Ops::Find(*this, pText, pStart, true);
}

int QC_STR::FindCS(const QC_STR& pText, int pStart) const {
    if (pText.mLength > mLength - (pStart < 0 ? 0 : pStart)) {
        return -1;
    }
    return Ops::Find(*this, pText.mBuff->mData, pStart, true);
}

int QC_STR::CharIdx(QC_CH pChar, int pStart) const {
    if (pChar == 0) {
        return -1;
    }
    if (pStart < 0) {
        pStart = 0;
    }
    const QC_CH* d = mBuff->mData;
    for (int i = pStart; i < mLength; ++i) {
        if (d[i] == pChar) {
            return i;
        }
    }
    return -1;
}

int QC_STR::CharLastIdx(QC_CH pChar) const {
    if (pChar == 0) {
        return -1;
    }
    const QC_CH* d = mBuff->mData;
    for (int i = mLength - 1; i >= 0; --i) {
        if (d[i] == pChar) {
            return i;
        }
    }
    return -1;
}

// ---- substrings ----

QC_STR QC_STR::SubStr(int pStart, int pCount) const {
    if (pStart < 0) {
        pCount += pStart;
        pStart = 0;
    }
    if (pCount <= 0 || pStart >= mLength) {
        return QC_STR();
    }
    if (pCount > mLength - pStart) {
        pCount = mLength - pStart;
    }
    if (pStart == 0 && pCount == mLength) {
        return *this;
    }
    return QC_STR(mBuff->mData + pStart, pCount);
}

QC_STR QC_STR::Left(int pCount) const {
    return SubStr(0, pCount);
}

QC_STR QC_STR::Right(int pCount) const {
    if (pCount > mLength) {
        pCount = mLength;
    }
    return SubStr(mLength - pCount, pCount);
}

QC_STR& QC_STR::SubStr(const QC_STR& pSource, int pStart, int pCount) {
    return *this = pSource.SubStr(pStart, pCount);
}

QC_STR& QC_STR::Left(const QC_STR& pSource, int pCount) {
    return *this = pSource.Left(pCount);
}

QC_STR& QC_STR::Right(const QC_STR& pSource, int pCount) {
    return *this = pSource.Right(pCount);
}

QC_STR QC_STR::SubStr(const QC_CH* pDelimiter, int pStart, int* pEnd) const {
    return Ops::SubStrDelimited(*this, pDelimiter, pStart, pEnd);
}

// ---- splitting and joining ----

int QC_STR::Split(tArray<QC_STR>& pOut, const QC_CH* pSeparators, bool pSkipEmpty, bool pTrim,
                  int pMaxCount) const {
    pOut.Clear();
    if (pSeparators == nullptr || *pSeparators == 0 || pMaxCount < 1) {
        return 0;
    }
    const QC_CH* data = mBuff->mData;
    int position = 0;
    for (;;) {
        int pieceEnd = position;
        if (pOut.Count() == pMaxCount - 1) {
            pieceEnd = mLength;
        } else {
            while (pieceEnd < mLength) {
                const QC_CH c = data[pieceEnd];
                const QC_CH* s = pSeparators;
                while (*s != 0 && *s != c) {
                    ++s;
                }
                if (*s != 0) {
                    break;
                }
                ++pieceEnd;
            }
        }
        if (pieceEnd > position || !pSkipEmpty) {
            QC_STR& piece = pOut.Append(QC_STR(data + position, pieceEnd - position));
            if (pTrim) {
                piece.Trim();
            }
        }
        if (pieceEnd >= mLength) {
            break;
        }
        position = pieceEnd + 1;
    }
    return pOut.Count();
}

void QC_STR::Join(const tArray<QC_STR>& pItems, const QC_CH* pSeparator) {
    Clear();
    const int separatorLength = TextLength(pSeparator);
    long long total = 0;
    for (int i = 0; i < pItems.Count(); ++i) {
        total += pItems[i].mLength + (i > 0 ? separatorLength : 0);
    }
    if (total == 0) {
        return;
    }
    Ops::Reserve(*this, static_cast<int>(total));
    for (int i = 0; i < pItems.Count(); ++i) {
        if (i > 0) {
            Append(pSeparator, separatorLength);
        }
        Append(pItems[i]);
    }
}

// ---- concatenation ----

QC_STR operator+(const QC_STR& pLeft, const QC_STR& pRight) {
    return Ops::Concat(pLeft.Text(), pLeft.Length(), pRight.Text(), pRight.Length());
}

QC_STR operator+(const QC_STR& pLeft, const QC_CH* pRight) {
    return Ops::Concat(pLeft.Text(), pLeft.Length(), pRight == nullptr ? kNoText : pRight,
                       TextLength(pRight));
}

QC_STR operator+(const QC_CH* pLeft, const QC_STR& pRight) {
    return Ops::Concat(pLeft == nullptr ? kNoText : pLeft, TextLength(pLeft), pRight.Text(),
                       pRight.Length());
}

} // namespace Quillanor::Common
