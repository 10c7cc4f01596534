// NameTable.cpp - interned names with a SipHash-1-3 keyed by a per-process random key.
#include "dom/detail/NameTable.h"

#include <cstring>
#include <random>

namespace KvXmlLib10::detail {

namespace {

struct HashKey {
    uint64_t k0;
    uint64_t k1;
};

// The key only decides bucket placement, never what a lookup finds, so a
// fallback constant when no random source exists changes nothing but
// collision resistance.
HashKey MakeKey() {
    HashKey key{0x0706050403020100ULL, 0x0F0E0D0C0B0A0908ULL};
    try {
        std::random_device device;
        key.k0 = (static_cast<uint64_t>(device()) << 32) ^ device();
        key.k1 = (static_cast<uint64_t>(device()) << 32) ^ device();
    } catch (...) {
    }
    return key;
}

const HashKey& Key() {
    static const HashKey key = MakeKey();
    return key;
}

constexpr uint64_t Rotl(uint64_t x, int bits) { return (x << bits) | (x >> (64 - bits)); }

struct SipState {
    uint64_t v0, v1, v2, v3;

    void Round() {
        v0 += v1;
        v1 = Rotl(v1, 13);
        v1 ^= v0;
        v0 = Rotl(v0, 32);
        v2 += v3;
        v3 = Rotl(v3, 16);
        v3 ^= v2;
        v0 += v3;
        v3 = Rotl(v3, 21);
        v3 ^= v0;
        v2 += v1;
        v1 = Rotl(v1, 17);
        v1 ^= v2;
        v2 = Rotl(v2, 32);
    }

    void Absorb(uint64_t block) {
        v3 ^= block;
        Round();
        v0 ^= block;
    }
};

uint64_t SipHash13(const HashKey& key, const unsigned char* bytes, std::size_t length) {
    SipState s{0x736F6D6570736575ULL ^ key.k0, 0x646F72616E646F6DULL ^ key.k1,
               0x6C7967656E657261ULL ^ key.k0, 0x7465646279746573ULL ^ key.k1};
    const std::size_t whole = length - length % 8;
    for (std::size_t i = 0; i < whole; i += 8) {
        uint64_t block = 0;
        std::memcpy(&block, bytes + i, 8);  // no alignment assumed
        s.Absorb(block);
    }
    uint64_t last = static_cast<uint64_t>(length) << 56;
    for (std::size_t i = whole; i < length; ++i) last |= static_cast<uint64_t>(bytes[i]) << (8 * (i - whole));
    s.Absorb(last);
    s.v2 ^= 0xFF;
    s.Round();
    s.Round();
    s.Round();
    return s.v0 ^ s.v1 ^ s.v2 ^ s.v3;
}

}  // namespace

const std::string& EmptyString() {
    static const std::string* empty = new std::string;  // never destroyed: nodes may die after exit
    return *empty;
}

std::size_t NameTable::KeyedHash::operator()(std::string_view text) const {
    return static_cast<std::size_t>(
        SipHash13(Key(), reinterpret_cast<const unsigned char*>(text.data()), text.size()));
}

const std::string* NameTable::Intern(std::string_view text) {
    if (text.empty()) return &EmptyString();
    auto found = m_interned.find(text);
    if (found != m_interned.end()) return found->second;
    const std::string& stored = m_storage.emplace_back(text);
    m_interned.emplace(std::string_view(stored), &stored);
    return &stored;
}

std::size_t NameTable::RecentSlot(std::string_view raw) {
    const std::size_t length = raw.size();
    const std::size_t part = length < 8 ? length : 8;
    uint64_t head = 0;
    uint64_t tail = 0;
    std::memcpy(&head, raw.data(), part);
    std::memcpy(&tail, raw.data() + length - part, part);
    const uint64_t mixed = (head * 0x9E3779B97F4A7C15ULL) ^ ((tail + length) * 0xC2B2AE3D27D4EB4FULL);
    return static_cast<std::size_t>(mixed >> 56) % kRecentSlots;
}

const QualifiedName& NameTable::Found(RawName& entry) {
    if (m_latest) m_latest->next = &entry;
    m_latest = &entry;
    return entry.name;
}

const QualifiedName* NameTable::FindRaw(const char* raw) {
    if (m_latest && m_latest->next) {
        RawName* guess = m_latest->next;
        // Stops at the NUL of either side, so a shorter spelling is never read past.
        if (std::strncmp(guess->raw.data(), raw, guess->raw.size() + 1) == 0) {
            m_latest = guess;
            return &guess->name;
        }
    }
    const std::string_view spelling(raw);
    RawName*& recent = m_recent[RecentSlot(spelling)];
    if (recent && recent->raw == spelling) return &Found(*recent);
    auto found = m_raw.find(spelling);
    if (found == m_raw.end()) return nullptr;
    recent = &found->second;
    return &Found(found->second);
}

const QualifiedName& NameTable::AddRaw(std::string_view raw, const QualifiedName& name) {
    const std::string& stored = m_storage.emplace_back(raw);
    RawName& entry = m_raw.emplace(std::string_view(stored), RawName{std::string_view(stored), name}).first->second;
    return Found(entry);
}

void NameTable::Clear() {
    m_recent.fill(nullptr);
    m_latest = nullptr;
    m_raw.clear();
    m_interned.clear();
    m_storage.clear();
}

}  // namespace KvXmlLib10::detail
