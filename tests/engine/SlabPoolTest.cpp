#include "host/engine/SlabPool.h"

#include <gtest/gtest.h>

#include <cstring>
#include <list>

namespace {

using engine::SlabPool;

TEST(SlabPoolTest, FreedPiecesAreUsedAgainForTheirSize) {
    SlabPool pool;
    void* first = pool.allocate(80, 8);
    void* second = pool.allocate(24, 8);
    pool.deallocate(first, 80, 8);
    pool.deallocate(second, 24, 8);
    EXPECT_EQ(pool.allocate(24, 8), second);
    EXPECT_EQ(pool.allocate(80, 8), first);
    EXPECT_EQ(pool.SlabBytes(), 64u * 1024u);
}

TEST(SlabPoolTest, PiecesDoNotOverlap) {
    SlabPool pool;
    std::vector<char*> pieces;
    for (int i = 0; i < 5000; ++i) {
        pieces.push_back(static_cast<char*>(pool.allocate(40, 8)));
        std::memset(pieces.back(), i & 0x7F, 40);
    }
    for (int i = 0; i < 5000; ++i) {
        EXPECT_EQ(pieces[static_cast<std::size_t>(i)][0], i & 0x7F);
        EXPECT_EQ(pieces[static_cast<std::size_t>(i)][39], i & 0x7F);
    }
}

TEST(SlabPoolTest, LargePiecesComeFromTheHeap) {
    SlabPool pool;
    void* large = pool.allocate(SlabPool::kLargest + 1, 8);
    void* aligned = pool.allocate(64, 64);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(aligned) % 64, 0u);
    EXPECT_EQ(pool.SlabBytes(), 0u);
    pool.deallocate(large, SlabPool::kLargest + 1, 8);
    pool.deallocate(aligned, 64, 64);
}

TEST(SlabPoolTest, CarriesLists) {
    SlabPool pool;
    std::pmr::list<int> list(&pool);
    for (int i = 0; i < 100; ++i) {
        list.push_back(i);
    }
    list.remove_if([](int i) { return i % 2 == 0; });
    EXPECT_EQ(list.size(), 50u);
    EXPECT_TRUE(pool == *list.get_allocator().resource());
}

} // namespace
