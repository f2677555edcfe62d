#pragma once

#include <cstddef>
#include <memory>
#include <memory_resource>
#include <vector>

namespace engine {

/// Memory for the many small things of films: key records and list nodes. Freed pieces are kept for the next
/// of the same size, and all goes with the pool. Sizes above kLargest come from the heap.
class SlabPool final : public std::pmr::memory_resource {
public:
    static constexpr std::size_t kLargest = 256;

    SlabPool() = default;
    ~SlabPool() override;
    SlabPool(const SlabPool&) = delete;
    SlabPool& operator=(const SlabPool&) = delete;

    /// A piece of at most kLargest bytes, aligned to 8; given back with deallocate.
    void* Take(std::size_t bytes) {
        const std::size_t index = (bytes + kStep - 1) / kStep;
        if (freePieces[index] != nullptr) {
            return TakeFreed(index);
        }
        if (left < index * kStep) {
            StartSlab();
        }
        void* piece = next;
        next += index * kStep;
        left -= index * kStep;
        return piece;
    }
    /// Bytes taken from the heap for slabs so far.
    std::size_t SlabBytes() const { return slabs.size() * kSlabBytes; }

private:
    static constexpr std::size_t kStep = 8;
    static constexpr std::size_t kSlabBytes = 64UL * 1024UL;
    struct FreePiece {
        FreePiece* next;
    };

    void* do_allocate(std::size_t bytes, std::size_t alignment) override;
    void do_deallocate(void* piece, std::size_t bytes, std::size_t alignment) override;
    bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override {
        return this == &other;
    }
    void* TakeFreed(std::size_t index);
    void StartSlab();

    std::vector<std::unique_ptr<std::byte[]>> slabs;
    std::byte* next = nullptr;
    std::size_t left = 0;
    FreePiece* freePieces[kLargest / kStep + 1] = {};
};

} // namespace engine
