// NodePool.cpp - 64 KiB slabs found from a node's address, with per-size free lists.
#include "dom/detail/NodePool.h"

#include <new>

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

namespace {
// Slabs are aligned to their size, so a node's slab header sits at its
// address rounded down.
constexpr std::size_t kSlabSize = 64 * 1024;
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

struct NodePool::Slab {
    NodePool* pool;  // null once the pool has let go of it
    Slab* previous;  // the pool's list, so a drained slab leaves it at once
    Slab* next;
    std::size_t live;  // nodes handed out and not yet freed
};

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

void* NodePool::Allocate(std::size_t size) {
    size = RoundUp(size);
    if (size > kMaxNodeSize) throw std::bad_alloc();
    void* node = nullptr;
    if (FreeNode* reused = m_free[size / 8]) {
        KVXML_UNPOISON(reused, size);
        m_free[size / 8] = reused->next;
        node = reused;
    } else {
        if (static_cast<std::size_t>(m_bumpEnd - m_bump) < size) NewSlab();
        node = m_bump;
        m_bump += size;
        KVXML_UNPOISON(node, size);
    }
    Slab* slab = reinterpret_cast<Slab*>(reinterpret_cast<uintptr_t>(node) & ~(uintptr_t{kSlabSize} - 1));
    ++slab->live;
    return node;
}

void NodePool::Free(void* node, std::size_t size) noexcept {
    if (!node) return;
    size = RoundUp(size);
    Slab* slab = reinterpret_cast<Slab*>(reinterpret_cast<uintptr_t>(node) & ~(uintptr_t{kSlabSize} - 1));
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
