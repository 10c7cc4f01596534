// BinaryData.cpp - the shared byte buffer, its copy-on-write holder and the hex form.
#include "kvxml/values/BinaryData.h"

#include <array>
#include <cstring>
#include <memory>

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/values/Base64.h"

namespace KvXmlLib10 {

namespace {

constexpr uint32_t kMinimumCapacity = 8192;
constexpr uint32_t kMaxLength = UINT32_MAX;
const char kTooLarge[] = "Binary data would exceed 4294967295 bytes";
const char kNullData[] = "Binary data pointer is NULL";

class LockGuard {
public:
    explicit LockGuard(CKVCriticalSection& lock) : m_lock(lock) { m_lock.Enter(); }
    ~LockGuard() { m_lock.Leave(); }
    LockGuard(const LockGuard&) = delete;
    LockGuard& operator=(const LockGuard&) = delete;

private:
    CKVCriticalSection& m_lock;
};

// Twice the size, saturating rather than wrapping near the 4 GB limit.
uint32_t Doubled(uint32_t size) { return size > kMaxLength / 2 ? kMaxLength : 2 * size; }

uint32_t TextLength(const char* text) {
    if (text == nullptr) return 0;
    const size_t length = std::strlen(text);
    if (length > kMaxLength) throw CKvException(kTooLarge);
    return static_cast<uint32_t>(length);
}

const unsigned char* TextBytes(const char* text) { return reinterpret_cast<const unsigned char*>(text); }

// Digit value of each byte, -1 for anything that is not a hex digit.
constexpr std::array<int8_t, 256> MakeHexTable() {
    std::array<int8_t, 256> table{};
    for (int i = 0; i < 256; ++i) table[i] = -1;
    for (int i = 0; i < 10; ++i) table['0' + i] = static_cast<int8_t>(i);
    for (int i = 0; i < 6; ++i) {
        table['A' + i] = static_cast<int8_t>(10 + i);
        table['a' + i] = static_cast<int8_t>(10 + i);
    }
    return table;
}

constexpr std::array<int8_t, 256> kHexValue = MakeHexTable();

// The two upper-case digits of every byte.
struct HexPairs {
    char pair[256][2];
};

constexpr HexPairs MakeHexPairs() {
    HexPairs table{};
    const char digits[] = "0123456789ABCDEF";
    for (int i = 0; i < 256; ++i) {
        table.pair[i][0] = digits[i >> 4];
        table.pair[i][1] = digits[i & 0x0F];
    }
    return table;
}

constexpr HexPairs kHexPairs = MakeHexPairs();

// The largest chunk CBase64::Encode takes in one call that ends on a whole group.
constexpr uint32_t kBase64Chunk = 3u << 29;

}  // namespace

// ---------------------------------------------------------------------------
// CDataHolder

CBinaryData::CDataHolder::CDataHolder(unsigned char* data, uint32_t length, bool adopt)
    : m_data(nullptr), m_length(length), m_capacity(length), m_refCount(1) {
    if (data == nullptr && length != 0) throw CKvException(kNullData);
    if (adopt) {
        m_data = data;
        return;
    }
    m_capacity = Doubled(length);
    if (m_capacity < kMinimumCapacity) m_capacity = kMinimumCapacity;
    m_data = new unsigned char[m_capacity];
    if (length != 0) std::memcpy(m_data, data, length);
}

CBinaryData::CDataHolder::~CDataHolder() { delete[] m_data; }

void CBinaryData::CDataHolder::AddRef() {
    LockGuard guard(m_lock);
    ++m_refCount;
}

void CBinaryData::CDataHolder::Release(bool throwOnError) {
    bool last = false;
    int32_t badCount = 0;
    bool bad = false;
    {
        LockGuard guard(m_lock);
        if (m_refCount <= 0) {
            bad = true;
            badCount = m_refCount;
        } else {
            last = --m_refCount == 0;
        }
    }
    if (bad) {
        if (throwOnError) throw CKvException(FormatString("Failed to release data. [RefCount=%d]", badCount));
        return;
    }
    // Nobody else holds a reference, so the lock may go with the holder.
    if (last) delete this;
}

CBinaryData::CDataHolder* CBinaryData::CDataHolder::GetExclusiveCopy() {
    LockGuard guard(m_lock);
    if (m_refCount < 2) return this;
    CDataHolder* copy = new CDataHolder(m_data, m_length, false);
    // At least one other value still holds this holder, so the count
    // cannot reach zero here.
    --m_refCount;
    return copy;
}

void CBinaryData::CDataHolder::Append(const unsigned char* data, uint32_t length) {
    LockGuard guard(m_lock);
    if (m_refCount != 1) throw CKvException(FormatString("Failed to append. [RefCount=%d]", m_refCount));
    if (length == 0) return;
    if (data == nullptr) throw CKvException(kNullData);
    if (length > kMaxLength - m_length) throw CKvException(kTooLarge);
    const uint32_t total = m_length + length;
    if (total <= m_capacity) {
        // memmove: the new bytes may be a slice of this very buffer.
        std::memmove(m_data + m_length, data, length);
    } else {
        const uint32_t capacity = Doubled(total);
        auto* grown = new unsigned char[capacity];
        std::memcpy(grown, m_data, m_length);
        // Still before the old array is freed, for the same reason.
        std::memcpy(grown + m_length, data, length);
        delete[] m_data;
        m_data = grown;
        m_capacity = capacity;
    }
    m_length = total;
}

// ---------------------------------------------------------------------------
// CBinaryData: construction and sharing

CBinaryData::CBinaryData() : m_holder(nullptr) {}

CBinaryData::CBinaryData(const CBinaryData& other) : m_holder(other.m_holder) {
    if (m_holder) m_holder->AddRef();
}

CBinaryData::CBinaryData(unsigned char* data, uint32_t length, bool adopt) : m_holder(nullptr) {
    // Adopted arrays are ours even when construction fails.
    std::unique_ptr<unsigned char[]> owned(adopt ? data : nullptr);
    if (length == 0) return;
    if (data == nullptr) throw CKvException(kNullData);
    m_holder = new CDataHolder(data, length, adopt);
    owned.release();
}

CBinaryData::CBinaryData(const char* text) : m_holder(nullptr) {
    const uint32_t length = TextLength(text);
    if (length != 0) m_holder = new CDataHolder(const_cast<unsigned char*>(TextBytes(text)), length, false);
}

CBinaryData::~CBinaryData() {
    if (m_holder) m_holder->Release(false);
}

CBinaryData& CBinaryData::operator=(const CBinaryData& other) {
    if (m_holder == other.m_holder) return *this;
    CDataHolder* previous = m_holder;
    if (other.m_holder) other.m_holder->AddRef();
    m_holder = other.m_holder;
    if (previous) previous->Release(false);
    return *this;
}

bool CBinaryData::operator==(const CBinaryData& other) const {
    if (m_holder == other.m_holder) return true;
    const uint32_t length = GetLength();
    if (length != other.GetLength()) return false;
    return length == 0 || std::memcmp(GetData(), other.GetData(), length) == 0;
}

bool CBinaryData::operator!=(const CBinaryData& other) const { return !(*this == other); }

CBinaryData::CDataHolder* CBinaryData::MakeExclusive() {
    m_holder = m_holder->GetExclusiveCopy();
    return m_holder;
}

// ---------------------------------------------------------------------------
// Access and changes

const unsigned char* CBinaryData::GetData() const { return m_holder ? m_holder->GetData() : nullptr; }

uint32_t CBinaryData::GetLength() const { return m_holder ? m_holder->GetLength() : 0; }

unsigned char& CBinaryData::operator[](uint32_t index) {
    if (index >= GetLength())
        throw CKvException(FormatString("Index Out of range [%d]", static_cast<int>(index)));
    return MakeExclusive()->GetData()[index];
}

unsigned char CBinaryData::operator[](uint32_t index) const {
    if (index >= GetLength())
        throw CKvException(FormatString("Index Out of range [%d]", static_cast<int>(index)));
    return m_holder->GetData()[index];
}

void CBinaryData::Append(const unsigned char* data, uint32_t length) {
    if (length == 0) return;
    if (data == nullptr) throw CKvException(kNullData);
    if (m_holder == nullptr) {
        m_holder = new CDataHolder(const_cast<unsigned char*>(data), length, false);
        return;
    }
    MakeExclusive()->Append(data, length);
}

void CBinaryData::Append(const CBinaryData& other) {
    if (other.GetLength() == 0) return;
    // Holding a reference keeps the source bytes alive while our own holder
    // is copied and released, which matters when other is this value.
    const CBinaryData source(other);
    Append(source.GetData(), source.GetLength());
}

void CBinaryData::Append(const char* text) { Append(TextBytes(text), TextLength(text)); }

void CBinaryData::Append(const std::string& text) {
    if (text.size() > kMaxLength) throw CKvException(kTooLarge);
    Append(TextBytes(text.data()), static_cast<uint32_t>(text.size()));
}

void CBinaryData::Append(char c) {
    const unsigned char byte = static_cast<unsigned char>(c);
    Append(&byte, 1);
}

void CBinaryData::Append(unsigned char c) { Append(&c, 1); }

void CBinaryData::SetBuffer(const unsigned char* data, uint32_t length) {
    if (length != 0 && data == nullptr) throw CKvException(kNullData);
    // The new holder is made before the old one goes: data may live in it.
    CDataHolder* replacement = length != 0 ? new CDataHolder(const_cast<unsigned char*>(data), length, false) : nullptr;
    CDataHolder* previous = m_holder;
    m_holder = replacement;
    if (previous) previous->Release(false);
}

void CBinaryData::SetBuffer(const char* text) { SetBuffer(TextBytes(text), TextLength(text)); }

void CBinaryData::Clear() {
    CDataHolder* previous = m_holder;
    m_holder = nullptr;
    if (previous) previous->Release(false);
}

void CBinaryData::ReleaseData() {
    CDataHolder* previous = m_holder;
    m_holder = nullptr;
    if (previous) previous->Release(true);
}

// ---------------------------------------------------------------------------
// Base64 and hex forms

void CBinaryData::SetAsBase64(const char* text) {
    Clear();
    if (text == nullptr || *text == '\0') return;
    const size_t length = std::strlen(text);
    // Four characters never make more than three bytes.
    std::unique_ptr<unsigned char[]> bytes(new unsigned char[length / 4 * 3 + 3]);
    CBase64 codec;
    const int decoded = codec.Decode(text, bytes.get());
    if (decoded <= 0) return;
    m_holder = new CDataHolder(bytes.get(), static_cast<uint32_t>(decoded), true);
    bytes.release();
}

std::string CBinaryData::GetAsBase64() const {
    const uint32_t length = GetLength();
    CBase64 codec;
    if (length <= kBase64Chunk) return codec.Encode(GetData(), static_cast<int>(length));
    // Beyond an int's range: whole groups per call give the same text.
    std::string text;
    const unsigned char* data = GetData();
    for (uint32_t done = 0; done < length;) {
        const uint32_t chunk = length - done < kBase64Chunk ? length - done : kBase64Chunk;
        text += codec.Encode(data + done, static_cast<int>(chunk));
        done += chunk;
    }
    return text;
}

void CBinaryData::SetAsHexString(const char* text) {
    unsigned char* raw = nullptr;
    const uint32_t length = ConvertToHexData(text, &raw);
    std::unique_ptr<unsigned char[]> bytes(raw);
    CDataHolder* replacement = length != 0 ? new CDataHolder(raw, length, true) : nullptr;
    bytes.release();
    CDataHolder* previous = m_holder;
    m_holder = replacement;
    if (previous) previous->Release(false);
}

std::string CBinaryData::GetAsHexString() const { return GetAsHexString(GetData(), GetLength()); }

std::string CBinaryData::GetAsHexString(const unsigned char* data, uint32_t length) {
    if (data == nullptr || length == 0) return std::string();
    std::string text(static_cast<size_t>(length) * 2, '0');
    char* out = &text[0];
    for (uint32_t i = 0; i < length; ++i, out += 2) std::memcpy(out, kHexPairs.pair[data[i]], 2);
    return text;
}

uint32_t CBinaryData::ConvertToHexData(const char* text, unsigned char** out) {
    if (out == nullptr) throw CKvException("Output pointer is NULL");
    *out = nullptr;
    if (text == nullptr) return 0;
    const size_t textLength = std::strlen(text);
    if (textLength % 2 != 0) throw CKvException("Invalid length in hex string");
    if (textLength / 2 > kMaxLength) throw CKvException(kTooLarge);
    const uint32_t length = static_cast<uint32_t>(textLength / 2);
    if (length == 0) return 0;

    std::unique_ptr<unsigned char[]> bytes(new unsigned char[length]);
    const unsigned char* in = TextBytes(text);
    for (uint32_t i = 0; i < length; ++i, in += 2) {
        const int high = kHexValue[in[0]];
        const int low = kHexValue[in[1]];
        if ((high | low) < 0)
            throw CKvException(FormatString("Invalid char in hex string [%c]", high < 0 ? in[0] : in[1]));
        bytes[i] = static_cast<unsigned char>((high << 4) | low);
    }
    *out = bytes.release();
    return length;
}

}  // namespace KvXmlLib10
