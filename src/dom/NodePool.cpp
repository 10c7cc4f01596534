// NodePool.cpp - 64 KiB slabs found from a node's address, with per-size free lists.
#include "dom/detail/NodePool.h"

#include <new>

namespace KvXmlLib10::detail {

namespace {
constexpr std::size_t kSlabSize = NodePool::kSlabSize;
constexpr std::size_t kHeaderSize = 32;

std::size_t RoundUp(std::size_t size) { return (size + 7) & ~std::size_t{7}; }

// One spare slab per thread. A size-aligned 64 KiB block is beyond malloc's
// mmap threshold, so without the spare every small document would map,
// fault in and unmap a fresh slab.
struct SpareSlab {
    void* memory = nullptr;
    ~SpareSlab() { ::operator delete(memory, std::align_val_t(kSlabSize)); }
};
thread_local SpareSlab t_spare;

void* AcquireSlabMemory() {
    if (void* memory = t_spare.memory) {
        t_spare.memory = nullptr;
        KVXML_UNPOISON(memory, kSlabSize);
        return memory;
    }
    return ::operator new(kSlabSize, std::align_val_t(kSlabSize));
}

void ReleaseSlabMemory(void* memory) noexcept {
    KVXML_UNPOISON(memory, kSlabSize);
    if (!t_spare.memory) {
        KVXML_POISON(memory, kSlabSize);
        t_spare.memory = memory;
        return;
    }
    ::operator delete(memory, std::align_val_t(kSlabSize));
}
}  // namespace

NodePool::~NodePool() { Reset(); }

NodePool::Slab* NodePool::NewSlab() {
    static_assert(sizeof(Slab) <= kHeaderSize, "slab header fits its reserved space");
    void* memory = AcquireSlabMemory();
    Slab* slab = new (memory) Slab{this, nullptr, m_slabs, 0};
    if (m_slabs) m_slabs->previous = slab;
    m_slabs = slab;
    m_bump = static_cast<char*>(memory) + kHeaderSize;
    m_bumpEnd = static_cast<char*>(memory) + kSlabSize;
    KVXML_POISON(m_bump, kSlabSize - kHeaderSize);
    return slab;
}

void* NodePool::AllocateSlow(std::size_t size) {
    // Reached with no free node of this size and no room left in the newest slab.
    if (size > kMaxNodeSize) throw std::bad_alloc();
    NewSlab();
    void* node = m_bump;
    m_bump += size;
    KVXML_UNPOISON(node, size);
    ++SlabOf(node)->live;
    return node;
}

void NodePool::Free(void* node, std::size_t size) noexcept {
    if (!node) return;
    size = RoundUp(size);
    Slab* slab = SlabOf(node);
    --slab->live;
    NodePool* pool = slab->pool;
    if (pool && !pool->m_draining) {
        auto* freed = static_cast<FreeNode*>(node);
        freed->next = pool->m_free[size / 8];
        pool->m_free[size / 8] = freed;
        KVXML_POISON(node, size);
    } else if (slab->live == 0) {
        if (pool) pool->Unlink(slab);
        ReleaseSlabMemory(slab);
    } else {
        KVXML_POISON(node, size);
    }
}

void NodePool::Unlink(Slab* slab) noexcept {
    (slab->previous ? slab->previous->next : m_slabs) = slab->next;
    if (slab->next) slab->next->previous = slab->previous;
}

void NodePool::Drain() noexcept {
    // Nodes on the free lists are not live: their slabs may go too.
    for (FreeNode*& head : m_free) head = nullptr;
    m_bump = m_bumpEnd = nullptr;
    m_draining = true;
}

void NodePool::Reset() noexcept {
    for (FreeNode*& head : m_free) head = nullptr;
    m_bump = m_bumpEnd = nullptr;
    m_draining = false;
    Slab* slab = m_slabs;
    m_slabs = nullptr;
    while (slab) {
        Slab* next = slab->next;
        if (slab->live == 0) {
            ReleaseSlabMemory(slab);
        } else {
            // Nodes detached from the tree are still out there; the slab
            // goes when the last of them is deleted.
            slab->pool = nullptr;
            slab->previous = slab->next = nullptr;
        }
        slab = next;
    }
}

}  // namespace KvXmlLib10::detail
