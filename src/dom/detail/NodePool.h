// NodePool.h - slab storage for the element and attribute nodes of one document.
//
// A loaded document is mostly small nodes of two sizes. Carving them out of
// 64 KiB slabs saves the per-node malloc header and rounding, makes loading
// cheaper, and lets a whole tree go back in a few large frees instead of
// flooding the allocator's small-chunk lists. A freed node is kept for reuse
// by the same pool (the element callback drops nodes all the time). When the
// whole tree goes, each slab is handed back as soon as its last node is,
// while the memory the nodes pointed to is still warm in the cache.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(__SANITIZE_ADDRESS__)
#define KVXML_POOL_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KVXML_POOL_ASAN 1
#endif
#endif

#if defined(KVXML_POOL_ASAN)
#include <sanitizer/asan_interface.h>
// Free and never-used node space is poisoned, so the sanitizer still sees
// a use after delete even though the memory stays in the pool.
#define KVXML_POISON(p, n) ASAN_POISON_MEMORY_REGION((p), (n))
#define KVXML_UNPOISON(p, n) ASAN_UNPOISON_MEMORY_REGION((p), (n))
#else
#define KVXML_POISON(p, n) ((void)(p), (void)(n))
#define KVXML_UNPOISON(p, n) ((void)(p), (void)(n))
#endif

namespace KvXmlLib10::detail {

class NodePool {
public:
    NodePool() = default;
    ~NodePool();
    NodePool(const NodePool&) = delete;
    NodePool& operator=(const NodePool&) = delete;

    /// Storage for one node of `size` bytes (at most kMaxNodeSize). The
    /// common cases (a freed node of that size, room in the newest slab)
    /// are inline: every element and attribute of a load comes through here.
    void* Allocate(std::size_t size) {
        size = (size + 7) & ~std::size_t{7};
        FreeNode*& reused = m_free[size <= kMaxNodeSize ? size / 8 : 0];
        if (size > kMaxNodeSize || (!reused && static_cast<std::size_t>(m_bumpEnd - m_bump) < size))
            return AllocateSlow(size);
        void* node = reused;
        if (reused) {
            KVXML_UNPOISON(reused, size);
            reused = reused->next;
        } else {
            node = m_bump;
            m_bump += size;
            KVXML_UNPOISON(node, size);
        }
        ++SlabOf(node)->live;
        return node;
    }
    /// Gives a node back; works for any pool's nodes, and after the pool
    /// itself is gone.
    static void Free(void* node, std::size_t size) noexcept;
    /// The tree is about to be deleted whole: from now until Reset, freed
    /// nodes are not kept for reuse and each slab is released with its last node.
    void Drain() noexcept;
    /// Forgets free nodes and releases every slab without live nodes; slabs
    /// still holding nodes are released when their last node is freed.
    void Reset() noexcept;

    static constexpr std::size_t kMaxNodeSize = 128;
    /// Slabs are aligned to their size, so a node's slab header sits at its
    /// address rounded down.
    static constexpr std::size_t kSlabSize = 64 * 1024;

private:
    struct Slab {
        NodePool* pool;  // null once the pool has let go of it
        Slab* previous;  // the pool's list, so a drained slab leaves it at once
        Slab* next;
        std::size_t live;  // nodes handed out and not yet freed
    };
    struct FreeNode {
        FreeNode* next;
    };
    static constexpr std::size_t kClasses = kMaxNodeSize / 8 + 1;
    static Slab* SlabOf(void* node) {
        return reinterpret_cast<Slab*>(reinterpret_cast<std::uintptr_t>(node) & ~(std::uintptr_t{kSlabSize} - 1));
    }
    void* AllocateSlow(std::size_t size);
    Slab* NewSlab();
    void Unlink(Slab* slab) noexcept;

    Slab* m_slabs = nullptr;  // all slabs of this pool, newest first
    char* m_bump = nullptr;   // next unused byte of the newest slab
    char* m_bumpEnd = nullptr;
    FreeNode* m_free[kClasses] = {};
    bool m_draining = false;
};

}  // namespace KvXmlLib10::detail
