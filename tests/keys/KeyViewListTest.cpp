#include "keys/views/KeyViewList.h"

#include "keys/views/NullTimeTrackKey.h"
#include "keys/views/TimedTrackKey.h"
#include "tests/keys/KeyFixture.h"

#include <algorithm>
#include <limits>
#include <random>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

std::vector<CTrackKey*> Order(const KeyViewList& list) {
    return {list.begin(), list.end()};
}

/// The rule of insertion, word for word.
void InsertByRule(std::vector<CTrackKey*>& order, CTrackKey* view) {
    for (auto place = order.begin(); place != order.end(); ++place) {
        if ((*place)->IsDrawnBefore(view)) {
            order.insert(place, view);
            return;
        }
    }
    order.push_back(view);
}

std::vector<CTrackKey*> OverlappingByWalk(const KeyViewList& list, float from, float to) {
    std::vector<CTrackKey*> found;
    std::ranges::copy_if(list, std::back_inserter(found), [from, to](const CTrackKey* view) {
        return view->time <= to && view->time + view->GetDuration() >= from;
    });
    return found;
}

std::vector<CTrackKey*> Found(const KeyViewList& list, float from, float to) {
    std::vector<CTrackKey*> found{nullptr};
    list.Overlapping(from, to, found);
    return found;
}

class KeyViewListTest : public ::testing::Test {
protected:
    CTimedTrackKey* Make(float time, float duration, int height = 15) {
        views.push_back(std::make_unique<CTimedTrackKey>());
        views.back()->time = time;
        views.back()->duration = duration;
        views.back()->rectHeight = height;
        return views.back().get();
    }
    CTimedTrackKey* Add(float time, float duration, int height = 15) {
        CTimedTrackKey* view = Make(time, duration, height);
        list.Insert(view);
        return view;
    }

    std::vector<std::unique_ptr<CTimedTrackKey>> views; ///< outlive the list
    KeyViewList list;
};

TEST_F(KeyViewListTest, RunsFromTallToShortAndFromLongToBrief) {
    CTimedTrackKey* brief = Add(1.0f, 1.0f);
    CTimedTrackKey* flat = Add(0.0f, 9.0f, 10);
    CTimedTrackKey* tall = Add(5.0f, 0.5f, 18);
    CTimedTrackKey* longer = Add(7.0f, 4.0f);
    EXPECT_THAT(Order(list), ElementsAre(tall, longer, brief, flat));
}

TEST_F(KeyViewListTest, EqualKeysStayInTheOrderOfInsertion) {
    CTimedTrackKey* first = Add(9.0f, 1.0f);
    CTimedTrackKey* second = Add(1.0f, 1.0f);
    CTimedTrackKey* third = Add(5.0f, 1.0f);
    EXPECT_THAT(Order(list), ElementsAre(first, second, third));
}

// Required: the place is chosen at insertion only.
TEST_F(KeyViewListTest, LaterChangesOfTheDurationKeepThePlace) {
    CTimedTrackKey* a = Add(0.0f, 4.0f);
    CTimedTrackKey* b = Add(0.0f, 3.0f);
    a->SetDuration(1.0f, /*viewOnly*/ true);
    EXPECT_THAT(Order(list), ElementsAre(a, b));
    // In front of the first that is shorter, which is now a.
    CTimedTrackKey* c = Add(0.0f, 2.0f);
    EXPECT_THAT(Order(list), ElementsAre(c, a, b));
}

TEST_F(KeyViewListTest, OffersTheUsualWaysToLookAtIt) {
    EXPECT_TRUE(list.empty());
    CTimedTrackKey* a = Add(0.0f, 4.0f);
    CTimedTrackKey* b = Add(0.0f, 3.0f);
    CTimedTrackKey* stranger = Make(0.0f, 3.0f);
    EXPECT_FALSE(list.empty());
    EXPECT_EQ(list.size(), 2u);
    EXPECT_EQ(list.front(), a);
    EXPECT_EQ(list.back(), b);
    EXPECT_EQ(list[1], b);
    EXPECT_TRUE(list.Contains(a));
    EXPECT_FALSE(list.Contains(stranger));
    EXPECT_FALSE(list.Contains(nullptr));
}

TEST_F(KeyViewListTest, RemovedViewIsGone) {
    CTimedTrackKey* a = Add(0.0f, 4.0f);
    CTimedTrackKey* b = Add(0.0f, 3.0f);
    list.Remove(a);
    EXPECT_THAT(Order(list), ElementsAre(b));
    EXPECT_THAT(Found(list, 0.0f, 9.0f), ElementsAre(b));
    list.Remove(a);
    list.Remove(nullptr);
    EXPECT_EQ(list.size(), 1u);
}

TEST_F(KeyViewListTest, DyingViewLeavesTheList) {
    CTimedTrackKey* a = Add(0.0f, 4.0f);
    {
        CNullTimeTrackKey passing;
        list.Insert(&passing);
        EXPECT_EQ(list.size(), 2u);
    }
    EXPECT_THAT(Order(list), ElementsAre(a));
}

TEST_F(KeyViewListTest, ClearedListLetsItsViewsGo) {
    CTimedTrackKey* a = Add(0.0f, 4.0f);
    list.Clear();
    EXPECT_TRUE(list.empty());
    EXPECT_THAT(Found(list, -kInfinity, kInfinity), IsEmpty());
    KeyViewList other;
    other.Insert(a);
    EXPECT_THAT(Order(other), ElementsAre(a));
}

TEST_F(KeyViewListTest, ViewOutlivesItsList) {
    CTimedTrackKey* a = Make(0.0f, 4.0f);
    {
        KeyViewList passing;
        passing.Insert(a);
    }
    a->SetPosition(3.0f, /*viewOnly*/ false);
    list.Insert(a);
    EXPECT_THAT(Found(list, 3.0f, 3.0f), ElementsAre(a));
}

// Overlap.

TEST_F(KeyViewListTest, FindsWhatTouchesTheRangeEndsIncluded) {
    CTimedTrackKey* a = Add(2.0f, 3.0f);
    EXPECT_THAT(Found(list, 5.0f, 9.0f), ElementsAre(a));
    EXPECT_THAT(Found(list, 0.0f, 2.0f), ElementsAre(a));
    EXPECT_THAT(Found(list, 3.0f, 4.0f), ElementsAre(a));
    EXPECT_THAT(Found(list, 5.001f, 9.0f), IsEmpty());
    EXPECT_THAT(Found(list, 0.0f, 1.999f), IsEmpty());
}

TEST_F(KeyViewListTest, NothingIsFoundInAnEmptyList) {
    EXPECT_THAT(Found(list, 0.0f, 9.0f), IsEmpty());
    list.BeginFill();
    list.EndFill();
    EXPECT_THAT(Found(list, 0.0f, 9.0f), IsEmpty());
}

TEST_F(KeyViewListTest, FindsInDrawOrderNotInTimeOrder) {
    CTimedTrackKey* late = Add(5.0f, 3.0f);
    CTimedTrackKey* early = Add(0.0f, 2.0f);
    CTimedTrackKey* middle = Add(3.0f, 9.0f);
    EXPECT_THAT(Found(list, 0.0f, 9.0f), ElementsAre(middle, late, early));
}

TEST_F(KeyViewListTest, EachChangeOfTimesIsSeen) {
    CTimedTrackKey* a = Add(2.0f, 1.0f);
    EXPECT_THAT(Found(list, 10.0f, 11.0f), IsEmpty());
    a->SetPosition(10.0f, /*viewOnly*/ true);
    EXPECT_THAT(Found(list, 10.0f, 11.0f), ElementsAre(a));
    a->SaveTime();
    a->SetDuration(5.0f, /*viewOnly*/ true);
    EXPECT_THAT(Found(list, 15.0f, 16.0f), ElementsAre(a));
    a->SetPosition(0.0f, /*viewOnly*/ true);
    EXPECT_THAT(Found(list, 10.0f, 20.0f), IsEmpty());
    a->RestoreTime(/*keep*/ false);
    EXPECT_THAT(Found(list, 10.0f, 20.0f), ElementsAre(a));
}

TEST_F(KeyViewListTest, TimesThatComeWithARecordAreSeen) {
    CTimedTrackKey* a = Add(2.0f, 1.0f);
    CNullTimeTrackKey moment;
    list.Insert(&moment);
    EXPECT_THAT(Found(list, 10.0f, 20.0f), IsEmpty());
    LoggingKey record;
    record.time = 12.0f;
    record.endTime = 13.0f;
    a->SetRecord(&record, /*takeTimes*/ true);
    EXPECT_THAT(Found(list, 10.0f, 20.0f), ElementsAre(a));
    moment.SetRecord(&record, /*takeTimes*/ true);
    EXPECT_THAT(Found(list, 10.0f, 20.0f), ElementsAre(a, &moment));
    a->record = nullptr;
}

TEST_F(KeyViewListTest, TimesThatAreCopiedAreSeen) {
    CTimedTrackKey* a = Add(2.0f, 1.0f);
    EXPECT_THAT(Found(list, 18.0f, 20.0f), IsEmpty());
    CTimedTrackKey* source = Make(12.0f, 7.0f);
    a->CopyFrom(source, /*copyTime*/ true);
    EXPECT_THAT(Found(list, 18.0f, 20.0f), ElementsAre(a));
}

TEST_F(KeyViewListTest, TimesThatAreNoNumbersAreNeverFound) {
    Add(kNaN, 1.0f);
    Add(1.0f, kNaN);
    Add(kInfinity, -kInfinity);
    CTimedTrackKey* endless = Add(-kInfinity, kInfinity); // its end is no number either
    CTimedTrackKey* sound = Add(1.0f, 1.0f);
    CTimedTrackKey* forever = Add(1.0f, kInfinity);
    EXPECT_THAT(Found(list, -kInfinity, kInfinity), ElementsAre(forever, sound));
    EXPECT_THAT(Found(list, kNaN, 1.0f), IsEmpty());
    EXPECT_THAT(Found(list, 1.0f, kNaN), IsEmpty());
    EXPECT_TRUE(list.Contains(endless));
}

TEST_F(KeyViewListTest, InvertedRangeFindsWhatSpansIt) {
    CTimedTrackKey* a = Add(2.0f, 3.0f);
    EXPECT_THAT(Found(list, 4.0f, 3.0f), ElementsAre(a));
    EXPECT_THAT(Found(list, 6.0f, 1.0f), IsEmpty());
}

// Random lists against the rules, with few different values so that many are equal.

class RandomListTest : public KeyViewListTest {
protected:
    RandomListTest() {
        RecordProperty("seed", std::to_string(seed));
        random.seed(seed);
    }
    float Pick(std::initializer_list<float> values) { return values.begin()[random() % values.size()]; }
    float Between(float from, float to) { return std::uniform_real_distribution<float>(from, to)(random); }
    CTimedTrackKey* MakeAny() {
        CTimedTrackKey* view = Make(Between(0.0f, 100.0f), Pick({0.0f, 0.5f, 1.0f, 4.0f, 40.0f}),
                                    static_cast<int>(Pick({5.0f, 10.0f, 15.0f})));
        if (random() % 20 == 0) {
            view->duration = Pick({kNaN, kInfinity, -1.0f});
        }
        if (random() % 20 == 0) {
            view->time = Pick({kNaN, kInfinity, -kInfinity, -5.0f});
        }
        return view;
    }
    void CheckQueries(int count) {
        for (int i = 0; i < count; ++i) {
            const float from = Between(-10.0f, 110.0f);
            const float to = from + Pick({0.0f, 0.1f, 5.0f, 200.0f, -3.0f, kInfinity});
            ASSERT_EQ(Found(list, from, to), OverlappingByWalk(list, from, to))
                << "seed " << seed << " from " << from << " to " << to;
        }
    }

    const unsigned seed = std::random_device{}();
    std::mt19937 random;
};

TEST_F(RandomListTest, InsertionFollowsTheRule) {
    std::vector<CTrackKey*> order;
    for (int i = 0; i < 600; ++i) {
        CTimedTrackKey* view = MakeAny();
        list.Insert(view);
        InsertByRule(order, view);
        ASSERT_EQ(Order(list), order) << "seed " << seed;
    }
}

TEST_F(RandomListTest, FillingGivesTheOrderOfSingleInsertions) {
    for (int round = 0; round < 50; ++round) {
        std::vector<CTrackKey*> order;
        list.Clear();
        list.BeginFill();
        for (int i = 0; i < 200; ++i) {
            CTimedTrackKey* view = MakeAny();
            list.Insert(view);
            InsertByRule(order, view);
        }
        list.EndFill();
        ASSERT_EQ(Order(list), order) << "seed " << seed;
    }
}

TEST_F(RandomListTest, FilledListTakesFurtherViewsByTheRule) {
    std::vector<CTrackKey*> order;
    list.BeginFill();
    for (int i = 0; i < 200; ++i) {
        CTimedTrackKey* view = MakeAny();
        list.Insert(view);
        InsertByRule(order, view);
    }
    list.EndFill();
    for (int i = 0; i < 50; ++i) {
        CTimedTrackKey* view = MakeAny();
        list.Insert(view);
        InsertByRule(order, view);
    }
    EXPECT_EQ(Order(list), order) << "seed " << seed;
}

TEST_F(KeyViewListTest, ListWithViewsIsFilledOneByOne) {
    CTimedTrackKey* brief = Add(0.0f, 1.0f);
    brief->duration = 9.0f; // its place is that of a second
    CTimedTrackKey* second = Add(0.0f, 1.0f);
    list.BeginFill();
    CTimedTrackKey* third = Add(0.0f, 2.0f);
    list.EndFill();
    EXPECT_THAT(Order(list), ElementsAre(brief, third, second));
}

TEST_F(RandomListTest, OverlapIsThatOfAFullWalk) {
    for (const int count : {1, 15, 16, 17, 33, 500}) {
        list.Clear();
        list.BeginFill();
        for (int i = 0; i < count; ++i) {
            list.Insert(MakeAny());
        }
        list.EndFill();
        CheckQueries(200);
    }
}

TEST_F(RandomListTest, OverlapFollowsEveryChange) {
    for (int i = 0; i < 300; ++i) {
        list.Insert(MakeAny());
    }
    for (int i = 0; i < 300; ++i) {
        CTimedTrackKey* view = views[random() % views.size()].get();
        switch (random() % 4) {
        case 0:
            view->SetPosition(Between(0.0f, 100.0f), /*viewOnly*/ true);
            break;
        case 1:
            view->SetDuration(Between(0.0f, 30.0f), /*viewOnly*/ true);
            break;
        case 2:
            list.Remove(view);
            break;
        default:
            list.Insert(MakeAny());
        }
        CheckQueries(3);
    }
}

/// Counts how often it is looked at.
class CountedKey : public CTimedTrackKey {
public:
    float GetDuration() const override {
        ++looks;
        return duration;
    }

    static int looks;
};

int CountedKey::looks = 0;

TEST(KeyViewListCostTest, ALongKeyAtTheStartDoesNotMakeLookingExpensive) {
    constexpr int kKeys = 100'000;
    std::vector<std::unique_ptr<CountedKey>> views;
    KeyViewList list;
    list.BeginFill();
    for (int i = 0; i < kKeys; ++i) {
        views.push_back(std::make_unique<CountedKey>());
        views.back()->time = static_cast<float>(i);
        views.back()->duration = i == 0 ? 1e6f : 0.5f;
        list.Insert(views.back().get());
    }
    list.EndFill();
    std::vector<CTrackKey*> found;
    list.Overlapping(0.0f, 0.0f, found); // builds the index
    CountedKey::looks = 0;
    list.Overlapping(90'000.25f, 90'002.25f, found);
    // The long one, and those that start at 90000, 90001 and 90002.
    EXPECT_EQ(found.size(), 4u);
    // At most the three runs of 16 that can hold them.
    EXPECT_LE(CountedKey::looks, 48);
}

TEST_F(RandomListTest, AMillionViewsAreFilledAndSearched) {
    constexpr int kKeys = 1'000'000;
    list.BeginFill();
    for (int i = 0; i < kKeys; ++i) {
        list.Insert(Make(Between(0.0f, 1e6f), 0.5f));
    }
    list.EndFill();
    std::vector<CTrackKey*> found;
    for (int i = 0; i < 3; ++i) {
        const float from = Between(0.0f, 1e6f);
        list.Overlapping(from, from + 100.0f, found);
        EXPECT_EQ(found, OverlappingByWalk(list, from, from + 100.0f)) << "seed " << seed;
    }
    list.Overlapping(0.0f, 1e6f, found);
    EXPECT_EQ(found.size(), static_cast<std::size_t>(kKeys));
}

} // namespace
