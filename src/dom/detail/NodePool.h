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

namespace KvXmlLib10::detail {

class NodePool {
public:
    NodePool() = default;
    ~NodePool();
    NodePool(const NodePool&) = delete;
    NodePool& operator=(const NodePool&) = delete;

    /// Storage for one node of `size` bytes (at most kMaxNodeSize).
    void* Allocate(std::size_t size);
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

private:
    struct Slab;
    struct FreeNode {
        FreeNode* next;
    };
    static constexpr std::size_t kClasses = kMaxNodeSize / 8 + 1;

    Slab* NewSlab();
    void Unlink(Slab* slab) noexcept;

    Slab* m_slabs = nullptr;  // all slabs of this pool, newest first
    char* m_bump = nullptr;   // next unused byte of the newest slab
    char* m_bumpEnd = nullptr;
    FreeNode* m_free[kClasses] = {};
    bool m_draining = false;
};

}  // namespace KvXmlLib10::detail
