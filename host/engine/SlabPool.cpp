#include "host/engine/SlabPool.h"

// Under the address sanitizer freed pieces are marked, so that a record used after its end is found out.
#ifdef __has_feature
#if __has_feature(address_sanitizer)
#define FILMS_POOL_CHECKS
#endif
#endif
#ifdef __SANITIZE_ADDRESS__
#define FILMS_POOL_CHECKS
#endif
#ifdef FILMS_POOL_CHECKS
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(address, size) ((void)(address), (void)(size))
#define ASAN_UNPOISON_MEMORY_REGION(address, size) ((void)(address), (void)(size))
#endif

namespace engine {

SlabPool::~SlabPool() {
    for (const auto& slab : slabs) {
        ASAN_UNPOISON_MEMORY_REGION(slab.get(), kSlabBytes);
    }
}

void SlabPool::StartSlab() {
    // The rest of the old slab is given up: less than one record of 64 KiB.
    slabs.emplace_back(new std::byte[kSlabBytes]);
    next = slabs.back().get();
    left = kSlabBytes;
}

void* SlabPool::TakeFreed(std::size_t index) {
    FreePiece* piece = freePieces[index];
    ASAN_UNPOISON_MEMORY_REGION(piece, index * kStep);
    freePieces[index] = piece->next;
    return piece;
}

void* SlabPool::do_allocate(std::size_t bytes, std::size_t alignment) {
    if (bytes > kLargest || alignment > kStep) {
        return std::pmr::new_delete_resource()->allocate(bytes, alignment);
    }
    return Take(bytes);
}

void SlabPool::do_deallocate(void* piece, std::size_t bytes, std::size_t alignment) {
    if (bytes > kLargest || alignment > kStep) {
        std::pmr::new_delete_resource()->deallocate(piece, bytes, alignment);
        return;
    }
    const std::size_t index = (bytes + kStep - 1) / kStep;
    auto* freed = static_cast<FreePiece*>(piece);
    freed->next = freePieces[index];
    freePieces[index] = freed;
    ASAN_POISON_MEMORY_REGION(piece, index * kStep);
}

} // namespace engine
