#include "keys/views/KeyViewList.h"
#include "keys/views/NullTimeTrackKey.h"
#include "keys/views/TimedTrackKey.h"
#include "tests/keys/KeyFixture.h"

#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

std::size_t allocations = 0;
std::size_t liveBytes = 0;

/// With the word that the allocator keeps in front of a block.
std::size_t BytesOf(void* memory) {
    return memory != nullptr ? malloc_usable_size(memory) + sizeof(std::size_t) : 0;
}

} // namespace

// All forms of new and delete of the whole program come here, so that none is paired with another's.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++allocations;
    void* memory = std::malloc(size);
    liveBytes += BytesOf(memory);
    return memory;
}
void* operator new(std::size_t size) {
    if (void* memory = operator new(size, std::nothrow)) {
        return memory;
    }
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    liveBytes -= BytesOf(memory);
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    operator delete(memory);
}

namespace {

/// A row full of keys, one after the other.
class KeyCostTest : public KeyTest {
protected:
    template <class View> void Fill(int count) {
        views.reserve(static_cast<std::size_t>(count));
        const std::size_t before = liveBytes;
        list.BeginFill();
        for (int i = 0; i < count; ++i) {
            views.push_back(std::make_unique<View>());
            views.back()->time = static_cast<float>(i);
            list.Insert(views.back().get());
        }
        list.EndFill();
        list.Overlapping(0.0f, 1.0f, found); // builds the index
        bytesPerView = static_cast<double>(liveBytes - before) / count;
    }
    void DrawAll(CDC& dc) {
        const CRect clip(0, 0, 1000, 20);
        list.Overlapping(-1.0f, 1e9f, found);
        for (CTrackKey* view : found) {
            view->Draw(&dc, CutForTest(view->time), 2, 1.0f, &clip, /*outline*/ true);
        }
    }
    static int CutForTest(float time) { return static_cast<int>(time) % 1000; }

    std::vector<std::unique_ptr<CTrackKey>> views; ///< outlive the list
    KeyViewList list;
    std::vector<CTrackKey*> found;
    double bytesPerView = 0.0;
};

TEST_F(KeyCostTest, AKeyTakesLessThan150Bytes) {
    Fill<CTimedTrackKey>(200'000);
    EXPECT_LT(bytesPerView, 150.0);
    EXPECT_GT(bytesPerView, sizeof(CTimedTrackKey));
    RecordProperty("bytes", std::to_string(bytesPerView));
}

template <class View> class RedrawCostTest : public KeyCostTest {};

using ViewClasses = ::testing::Types<CTimedTrackKey, CNullTimeTrackKey>;
TYPED_TEST_SUITE(RedrawCostTest, ViewClasses);

TYPED_TEST(RedrawCostTest, RedrawOfManyKeysAllocatesNothing) {
    this->template Fill<TypeParam>(20'000);
    for (const std::unique_ptr<CTrackKey>& view : this->views) {
        view->selected = true;
        view->marked = true;
    }
    CDC dc;
    this->DrawAll(dc); // what is made once is made now
    const std::size_t before = allocations;
    this->DrawAll(dc);
    EXPECT_EQ(allocations, before);
    EXPECT_EQ(this->found.size(), 20'000u);
}

} // namespace
