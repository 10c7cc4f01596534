// FINameCache.h - the writer's quick way from a qualified name (or a value) to its table index.
//
// The vocabulary finds a name by three string lookups and one for the
// triple of indexes. The cache hashes the three parts once and keeps, per
// entry, views of the vocabulary's own copies of them (those never move as
// the tables grow), so a repeated name costs one probe and a compare. A
// miss sends the caller to the vocabulary, which stays the authority.
// Values go the same way, one part each, instead of through the table's
// map (a division per probe, a node per entry).
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <string_view>
#include <vector>

namespace KvXmlLib10::detail {

/// Strings of `Parts` parts -> a 1-based table index. Holds at most
/// kMaxEntries keys; further ones are left to the vocabulary.
template <std::size_t Parts>
class FIIndexCache {
public:
    static constexpr std::size_t kMaxEntries = std::size_t{1} << 16;
    static constexpr std::size_t kParts = Parts;
    using Key = std::string_view[kParts];

    static uint64_t Hash(const Key& key) {
        // Each word is salted by its position and multiplied on its own, so
        // the multiplications overlap; only the sum is a chain. The start is
        // drawn once per process, so a document cannot be built to make its
        // names collide and every lookup walk the whole table.
        static const uint64_t seed = (uint64_t{std::random_device{}()} << 32) ^ std::random_device{}();
        uint64_t sum = 0;
        uint64_t salt = 0x9E3779B97F4A7C15ULL ^ seed;
        const auto add = [&sum, &salt](uint64_t word) {
            sum += (word ^ salt) * 0xBF58476D1CE4E5B9ULL;
            salt += 0x94D049BB133111EBULL;
        };
        for (const std::string_view& part : key) {
            const char* at = part.data();
            std::size_t left = part.size();
            for (; left >= 8; at += 8, left -= 8) add(Load8(at));
            // The tail and the length close each part, so ("ab", "c") and
            // ("a", "bc") differ.
            add(LoadTail(at, left) ^ (uint64_t{part.size()} << 56));
        }
        // Each product carries a word's later bytes only in its high bits:
        // fold them down twice, as the slot is picked by the low bits.
        sum = (sum ^ (sum >> 32)) * 0xD6E8FEB86659FD93ULL;
        sum = (sum ^ (sum >> 32)) * 0xD6E8FEB86659FD93ULL;
        return sum ^ (sum >> 32);
    }

    /// The index of the key when it is the one that followed the key found
    /// last, the time before; else 0. No hash: a data document repeats its
    /// sequences of names.
    uint32_t FindFollower(const Key& key) {
        if (m_last == kNoSlot) return 0;
        const uint32_t next = m_next[m_last];
        if (next == kNoSlot || !Matches(m_slots[next], key)) return 0;
        m_last = next;
        return m_slots[next].index;
    }

    /// The index cached for the key with this hash, or 0.
    uint32_t Find(uint64_t hash, const Key& key) {
        const std::size_t mask = m_slots.size() - 1;
        for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
            const Slot& slot = m_slots[at];
            if (slot.index == 0) return 0;
            if (slot.hash == hash && Matches(slot, key)) {
                Follow(static_cast<uint32_t>(at));
                return slot.index;
            }
        }
    }

    /// `stored` views the vocabulary's copies of the parts, which must
    /// outlive the cache. Index 0 (a full table) is not cached.
    void Add(uint64_t hash, uint32_t index, const Key& stored) {
        if (m_used >= kMaxEntries || index == 0) {
            m_last = kNoSlot;
            return;
        }
        if (2 * (m_used + 1) > m_slots.size()) Grow();
        Slot slot{hash, index, {}, {}};
        for (std::size_t i = 0; i < kParts; ++i) {
            slot.sizes[i] = static_cast<uint32_t>(stored[i].size());
            slot.data[i] = stored[i].data();
        }
        Follow(Insert(slot));
        ++m_used;
    }

private:
    struct Slot {
        uint64_t hash;
        uint32_t index;  // 0: empty
        uint32_t sizes[kParts];
        const char* data[kParts];
    };

    static uint64_t Load8(const char* at) {
        uint64_t word;
        std::memcpy(&word, at, 8);
        return word;
    }
    // Up to seven bytes without a byte loop: two overlapping halves.
    static uint64_t LoadTail(const char* at, std::size_t size) {
        if (size >= 4) {
            uint32_t low;
            uint32_t high;
            std::memcpy(&low, at, 4);
            std::memcpy(&high, at + size - 4, 4);
            return low | (uint64_t{high} << 32);
        }
        if (size == 0) return 0;
        const auto byte = [at](std::size_t i) { return uint64_t{static_cast<unsigned char>(at[i])}; };
        return byte(0) | (byte(size / 2) << 8) | (byte(size - 1) << 16);
    }
    // Names are short: whole words (the last one overlapping) instead of
    // a call to memcmp.
    static bool SameBytes(const char* a, const char* b, std::size_t size) {
        if (size < 8) return LoadTail(a, size) == LoadTail(b, size);  // the loads cover every byte
        for (std::size_t at = 0; at + 8 < size; at += 8)
            if (Load8(a + at) != Load8(b + at)) return false;
        return Load8(a + size - 8) == Load8(b + size - 8);
    }
    static bool Matches(const Slot& slot, const Key& key) {
        for (std::size_t i = 0; i < kParts; ++i) {
            if (slot.sizes[i] != key[i].size()) return false;
            if (!SameBytes(slot.data[i], key[i].data(), key[i].size())) return false;
        }
        return true;
    }
    uint32_t Insert(const Slot& slot) {
        const std::size_t mask = m_slots.size() - 1;
        std::size_t at = slot.hash & mask;
        while (m_slots[at].index != 0) at = (at + 1) & mask;
        m_slots[at] = slot;
        return static_cast<uint32_t>(at);
    }
    void Grow() {
        std::vector<Slot> old(2 * m_slots.size(), Slot{});
        old.swap(m_slots);
        for (const Slot& slot : old)
            if (slot.index) Insert(slot);
        // The slots moved: sequences are learnt again.
        m_next.assign(m_slots.size(), kNoSlot);
        m_last = kNoSlot;
    }
    // The slot found or added now follows the one before it.
    void Follow(uint32_t slot) {
        if (m_last != kNoSlot) m_next[m_last] = slot;
        m_last = slot;
    }

    static constexpr uint32_t kNoSlot = UINT32_MAX;
    std::vector<Slot> m_slots = std::vector<Slot>(64, Slot{});
    std::vector<uint32_t> m_next = std::vector<uint32_t>(64, kNoSlot);
    uint32_t m_last = kNoSlot;
    std::size_t m_used = 0;
};

/// Prefix, namespace and local name (an empty view: no prefix or no
/// namespace).
using FINameCache = FIIndexCache<3>;
/// A value of the attribute value or character chunk table: one part keeps
/// the slots small, as the tables grow large.
using FIValueCache = FIIndexCache<1>;

}  // namespace KvXmlLib10::detail
