#include "keys/views/TransformKeys.h"

#include <array>
#include <gmock/gmock.h>
#include <limits>
#include <map>
#include <utility>
#include <vector>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Matrix = std::array<float, 16>;

/// Axes of the world, moved to a place.
Matrix At(float x, float y, float z) {
    return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1};
}

/// A key that keeps what it is given.
class PlainKey final : public CFilmVectorKey {
public:
    explicit PlainKey(int keyKind) { kind = keyKind; }
    void SetTime(float) override {}
    void SetEndTime(float) override {}
    void Describe(char*, int) const override {}
    float GetTime() const override { return time; }
    float GetNaturalDuration() const override { return -1.0f; }
    void CopyFrom(const IFilmKey&, int) override {}
    bool Equals(const IFilmKey&, bool) const override { return false; }
    void SetValue(const void* v) override { value = *static_cast<const Vector3*>(v); }
    void SetInHandle(const void* v) override { inHandle = *static_cast<const Vector3*>(v); }
    void SetOutHandle(const void* v) override { outHandle = *static_cast<const Vector3*>(v); }
    void SetInMethod(int) override {}
    void SetOutMethod(int) override {}
    void SetLinkElement(const std::string&) override {}
    void SetLinkObject(EditorObject*) override {}
};

class PlainSink final : public TransformSink {
public:
    bool Takes(int kind) override { return kind != refused; }
    CFilmVectorKey* FindKey(int kind) override { return keys.contains(kind) ? keys.at(kind) : nullptr; }
    void TellMoved(const CFilmVectorKey& key) override { moved.push_back(key.kind); }
    void AddKey(const TransformChange& change) override {
        added.push_back(change.kind);
        lastAdded = change.newValue;
    }

    std::map<int, CFilmVectorKey*> keys;
    int refused = KeyKind::None;
    std::vector<int> moved;
    std::vector<int> added;
    Vector3 lastAdded;
};

void Record(PlainSink& sink, const TransformRules& rules, const Matrix& from, const Matrix& to) {
    RecordTransform(sink, rules, Vector3(), to.data(), from.data());
}

void ExpectEqual(const Vector3& value, const Vector3& expected) {
    EXPECT_EQ(value.x, expected.x);
    EXPECT_EQ(value.y, expected.y);
    EXPECT_EQ(value.z, expected.z);
}

TEST(RecordTransformTest, OnlyWhatChangedGetsAKey) {
    PlainSink sink;
    Record(sink, kOpenFilmRules, At(0, 0, 0), At(4, 0, 0));
    EXPECT_THAT(sink.added, ElementsAre(KeyKind::Position));
    ExpectEqual(sink.lastAdded, {4, 0, 0});
}

TEST(RecordTransformTest, SmallMoveMakesAKeyOnlyInAFilmThatIsNotShown) {
    PlainSink open;
    Record(open, kOpenFilmRules, At(4.25f, 0, 0), At(4.75f, 0, 0)); // both are 4 when cut
    EXPECT_THAT(open.added, IsEmpty());
    PlainSink other;
    Record(other, kOtherFilmRules, At(4.25f, 0, 0), At(4.75f, 0, 0));
    EXPECT_THAT(other.added, ElementsAre(KeyKind::Position));
}

TEST(RecordTransformTest, WholeNumbersAreCutTowardsNothingOnEveryAxis) {
    for (const auto& [from, to] : {std::pair{At(-0.25f, 5, 5), At(0.25f, 5, 5)},
                                   {At(5, -0.25f, 5), At(5, 0.25f, 5)},
                                   {At(5, 5, -0.25f), At(5, 5, 0.25f)}}) {
        PlainSink sink;
        Record(sink, kOpenFilmRules, from, to);
        EXPECT_THAT(sink.added, IsEmpty());
    }
}

TEST(RecordTransformTest, HundredThousandthOfAUnitOnAnyAxisIsAMove) {
    constexpr float kBefore = 0.99999f; // 20 millionths from 1.00001f, and 1 lies between
    constexpr float kBehind = 1.00001f;
    for (const auto& [from, to] : {std::pair{At(kBefore, 5, 5), At(kBehind, 5, 5)},
                                   {At(5, kBefore, 5), At(5, kBehind, 5)},
                                   {At(5, 5, kBefore), At(5, 5, kBehind)}}) {
        PlainSink sink;
        Record(sink, kOpenFilmRules, from, to);
        EXPECT_THAT(sink.added, ElementsAre(KeyKind::Position));
    }
    PlainSink sink;
    Record(sink, kOpenFilmRules, At(0.999996f, 5, 5), At(1.000003f, 5, 5)); // 7 millionths
    EXPECT_THAT(sink.added, IsEmpty());
}

TEST(RecordTransformTest, KeyThatStandsThereMovesWithItsHandles) {
    PlainKey key(KeyKind::Position);
    key.inHandle = {1, 0, 0};
    key.outHandle = {10, 0, 0};
    PlainSink sink;
    sink.keys[KeyKind::Position] = &key;
    Record(sink, kOtherFilmRules, At(4, 0, 0), At(6, 0, 0));
    EXPECT_THAT(sink.moved, ElementsAre(KeyKind::Position));
    ExpectEqual(key.value, {6, 0, 0});
    ExpectEqual(key.inHandle, {3, 0, 0});
    ExpectEqual(key.outHandle, {12, 0, 0});
}

TEST(RecordTransformTest, OpenFilmWritesThePositionsOutHandleTwice) {
    PlainKey key(KeyKind::Position);
    key.inHandle = {1, 0, 0};
    key.outHandle = {10, 0, 0};
    PlainSink sink;
    sink.keys[KeyKind::Position] = &key;
    Record(sink, kOpenFilmRules, At(4, 0, 0), At(6, 0, 0));
    ExpectEqual(key.inHandle, {1, 0, 0});
    ExpectEqual(key.outHandle, {5, 0, 0}); // 1 + 2, and once more + 2
}

TEST(RecordTransformTest, HandlesAreSummedInAnotherOrder) {
    // 0.1 + (1e8 - 1e8) is 0.1 still, (0.1 + 1e8) - 1e8 is nothing.
    for (const bool isOpen : {true, false}) {
        PlainKey key(KeyKind::Position);
        key.inHandle = key.outHandle = {0.1f, 0, 0};
        PlainSink sink;
        sink.keys[KeyKind::Position] = &key;
        Record(sink, isOpen ? kOpenFilmRules : kOtherFilmRules, At(1e8f, 0, 0), At(1e8f, 0, 0));
        EXPECT_EQ(key.outHandle.x, isOpen ? 0.1f : 0.0f);
    }
}

TEST(RecordTransformTest, KindWithoutAPlaceIsPassedOver) {
    PlainSink sink;
    sink.refused = KeyKind::Position;
    Record(sink, kOpenFilmRules, At(0, 0, 0), At(4, 0, 0));
    EXPECT_THAT(sink.added, IsEmpty());
}

TEST(RecordTransformTest, OpenFilmPassesOverWhatIsNoNumber) {
    const float inf = std::numeric_limits<float>::infinity();
    PlainSink open;
    Record(open, kOpenFilmRules, At(0, 0, 0), At(inf, 0, 0));
    EXPECT_THAT(open.added, IsEmpty());
    PlainSink other;
    Record(other, kOtherFilmRules, At(0, 0, 0), At(inf, 0, 0));
    EXPECT_THAT(other.added, ElementsAre(KeyKind::Position));
}

} // namespace
