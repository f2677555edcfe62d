#include "host/engine/CurveChannel.h"
#include "tests/engine/EngineFixture.h"

#include <cmath>
#include <limits>

namespace engine_test {

class ChannelTest : public EngineTest {
protected:
    ChannelTest() : object(MakeObject("Box")), track(AddActor(object)) {}

    float X(float time) const { return track.GetPositionAt(time).x; }
    std::vector<float> ListTimes() const {
        std::vector<float> times;
        for (const IFilmKey* key : track.keys) {
            times.push_back(key->time);
        }
        return times;
    }
    std::vector<float> CollectedTimes(int kind) const {
        KeyList list;
        track.subTracks[kind]->CollectKeys(list);
        std::vector<float> times;
        for (const IFilmKey* key : list) {
            times.push_back(key->time);
        }
        return times;
    }

    engine::SceneObject& object;
    CFilmObjectTrack& track;
};

TEST_F(ChannelTest, IsConstantBeforeTheFirstAndAfterTheLastKey) {
    AddVector(track, KeyKind::Position, 2.0f, {4.0f, 0.0f, 0.0f});
    AddVector(track, KeyKind::Position, 4.0f, {8.0f, 0.0f, 0.0f});
    EXPECT_FLOAT_EQ(X(0.0f), 4.0f);
    EXPECT_FLOAT_EQ(X(2.0f), 4.0f);
    EXPECT_FLOAT_EQ(X(3.0f), 6.0f);
    EXPECT_FLOAT_EQ(X(4.0f), 8.0f);
    EXPECT_FLOAT_EQ(X(1000.0f), 8.0f);
    EXPECT_FLOAT_EQ(X(-5.0f), 4.0f);
}

TEST_F(ChannelTest, WithoutKeysGivesZero) {
    EXPECT_EQ(track.GetPositionAt(1.0f), Vector3{});
    EXPECT_EQ(track.GetRotationAt(1.0f), Vector3{});
}

TEST_F(ChannelTest, TimesThatAreNoNumbersAreAnswered) {
    AddVector(track, KeyKind::Position, 0.0f, {1.0f, 0.0f, 0.0f});
    AddVector(track, KeyKind::Position, 1.0f, {2.0f, 0.0f, 0.0f});
    EXPECT_FLOAT_EQ(X(std::numeric_limits<float>::quiet_NaN()), 1.0f);
    EXPECT_FLOAT_EQ(X(std::numeric_limits<float>::infinity()), 2.0f);
    EXPECT_FLOAT_EQ(X(-std::numeric_limits<float>::infinity()), 1.0f);
}

TEST_F(ChannelTest, KeyWithoutATimeCountsAsTheLast) {
    AddVector(track, KeyKind::Position, std::numeric_limits<float>::quiet_NaN(), {9.0f, 0.0f, 0.0f});
    AddVector(track, KeyKind::Position, 0.0f, {1.0f, 0.0f, 0.0f}, BezierMethod::Slowdown);
    AddVector(track, KeyKind::Position, 1.0f, {2.0f, 0.0f, 0.0f}, BezierMethod::Slowdown);
    EXPECT_FLOAT_EQ(X(0.5f), 1.5f);
    track.Finish();
    EXPECT_TRUE(std::isnan(track.keys.back()->time));
}

TEST_F(ChannelTest, OfKeysAtOneTimeTheLastAddedIsShownFromThenOn) {
    AddVector(track, KeyKind::Position, 0.0f, {0.0f, 0.0f, 0.0f});
    AddVector(track, KeyKind::Position, 1.0f, {1.0f, 0.0f, 0.0f});
    AddVector(track, KeyKind::Position, 1.0f, {7.0f, 0.0f, 0.0f});
    EXPECT_FLOAT_EQ(X(0.5f), 0.5f);
    EXPECT_FLOAT_EQ(X(1.0f), 7.0f);
}

TEST_F(ChannelTest, SetTimeOfAKeyIsSeenAtOnce) {
    AddVector(track, KeyKind::Position, 0.0f, {0.0f, 0.0f, 0.0f});
    CFilmVectorKey& moved = AddVector(track, KeyKind::Position, 1.0f, {10.0f, 0.0f, 0.0f});
    AddVector(track, KeyKind::Position, 2.0f, {20.0f, 0.0f, 0.0f});
    EXPECT_FLOAT_EQ(X(1.0f), 10.0f);
    moved.SetTime(4.0f); // behind the third key now
    EXPECT_FLOAT_EQ(X(1.0f), 10.0f);
    EXPECT_FLOAT_EQ(X(2.0f), 20.0f);
    EXPECT_FLOAT_EQ(X(3.0f), 15.0f);
    EXPECT_EQ(CollectedTimes(KeyKind::Position), (std::vector<float>{0.0f, 2.0f, 4.0f}));
}

TEST_F(ChannelTest, DirectWriteIsSeenAfterNotifyKeysChanged) {
    CFilmVectorKey& key = AddVector(track, KeyKind::Position, 0.0f, {1.0f, 0.0f, 0.0f});
    EXPECT_FLOAT_EQ(X(0.0f), 1.0f);
    key.value.x = 5.0f;
    EXPECT_FLOAT_EQ(X(0.0f), 1.0f);
    track.NotifyKeysChanged(KeyKind::Position);
    EXPECT_FLOAT_EQ(X(0.0f), 5.0f);
    track.NotifyKeysChanged(99); // not a kind: nothing
    track.NotifyKeysChanged(-1);
}

TEST_F(ChannelTest, ManyKeysOutOfOrderAreSortedStably) {
    for (int i = 40; i-- > 0;) {
        const int pair = i / 2;
        AddVector(track, KeyKind::Position, static_cast<float>(pair), {static_cast<float>(i), 0.0f, 0.0f});
    }
    for (IFilmKey* key : track.keys) {
        key->SetTime(key->time + 0.0f); // all times are read anew
    }
    KeyList list;
    track.subTracks[KeyKind::Position]->CollectKeys(list);
    float time = 0.0f;
    int number = 0;
    for (const IFilmKey* key : list) {
        const int pair = number / 2;
        EXPECT_EQ(key->time, static_cast<float>(pair));
        // Added downwards: of two at one time the higher value came first.
        EXPECT_EQ(static_cast<const CFilmVectorKey*>(key)->value.x, static_cast<float>(number ^ 1));
        time = key->time;
        ++number;
    }
    EXPECT_EQ(time, 19.0f);
}

TEST_F(ChannelTest, ListKeepsInsertionOrderUntilFinishSortsItStably) {
    AddVector(track, KeyKind::Position, 3.0f, {});
    AddVector(track, KeyKind::Rotation, 1.0f, {});
    IFilmKey& first = AddVector(track, KeyKind::Scale, 2.0f, {});
    IFilmKey& second = AddVector(track, KeyKind::Position, 2.0f, {});
    EXPECT_EQ(ListTimes(), (std::vector<float>{3.0f, 1.0f, 2.0f, 2.0f}));
    track.Finish();
    EXPECT_EQ(ListTimes(), (std::vector<float>{1.0f, 2.0f, 2.0f, 3.0f}));
    EXPECT_EQ(*std::next(track.keys.begin(), 1), &first);
    EXPECT_EQ(*std::next(track.keys.begin(), 2), &second);
}

TEST_F(ChannelTest, FinishSortsListsOfManyRuns) {
    for (const int kind : {KeyKind::Scale, KeyKind::Rotation, KeyKind::Position}) {
        for (int i = 0; i < 10; ++i) {
            AddVector(track, kind, static_cast<float>(i * 7 % 10), {});
        }
    }
    track.Finish();
    int number = 0;
    for (const IFilmKey* key : track.keys) {
        const int group = number / 3;
        EXPECT_EQ(key->time, static_cast<float>(group));
        EXPECT_EQ(key->kind, KeyKind::Scale - number % 3); // of equals the one added first comes first
        ++number;
    }
}

TEST_F(ChannelTest, KeyPutStraightIntoTheListIsTakenOverByFinish) {
    IFilmKey* key = MakeKey(KeyKind::Position, 1.0f);
    const Vector3 value{4.0f, 0.0f, 0.0f};
    key->SetValue(value.Data());
    track.keys.push_back(key);
    track.Finish();
    EXPECT_EQ(key->track, &track);
    EXPECT_FLOAT_EQ(X(1.0f), 4.0f);
}

TEST_F(ChannelTest, AddKeyRefusesWrongKindsNullAndKeysOfATrack) {
    EXPECT_FALSE(track.AddKey(nullptr));
    IFilmKey* camera = MakeKey(KeyKind::CameraPosition, 0.0f);
    EXPECT_FALSE(track.AddKey(camera));
    EXPECT_EQ(camera->track, nullptr);
    Films().keyFactory->DestroyKey(camera);
    IFilmKey& own = AddVector(track, KeyKind::Position, 0.0f, {});
    EXPECT_FALSE(track.AddKey(&own));
    CFilmObjectTrack& other = AddActor(MakeObject("Other"));
    EXPECT_FALSE(other.AddKey(&own));
    EXPECT_EQ(track.keys.size(), 1u);
}

TEST_F(ChannelTest, RemoveKeyHandsTheKeyBackOrDestroysIt) {
    const std::size_t before = Films().Keys().Count();
    IFilmKey& kept = AddVector(track, KeyKind::Position, 0.0f, {1.0f, 0.0f, 0.0f});
    IFilmKey& gone = AddVector(track, KeyKind::Position, 1.0f, {2.0f, 0.0f, 0.0f});
    track.RemoveKey(&gone, true);
    EXPECT_EQ(Films().Keys().Count(), before + 1);
    track.RemoveKey(&kept, false);
    EXPECT_EQ(kept.track, nullptr);
    EXPECT_TRUE(track.keys.empty());
    EXPECT_NE(track.subTracks[KeyKind::Position], nullptr);
    EXPECT_EQ(track.GetPositionAt(0.0f), Vector3{});
    EXPECT_TRUE(track.AddKey(&kept));
    EXPECT_FLOAT_EQ(X(0.0f), 1.0f);
    track.RemoveKey(nullptr, true);
}

TEST_F(ChannelTest, RemoveKeyOfAnotherTrackDoesNothing) {
    CFilmObjectTrack& other = AddActor(MakeObject("Other"));
    IFilmKey& key = AddVector(other, KeyKind::Position, 0.0f, {3.0f, 0.0f, 0.0f});
    track.RemoveKey(&key, true);
    EXPECT_EQ(key.track, &other);
    EXPECT_FLOAT_EQ(other.GetPositionAt(0.0f).x, 3.0f);
}

TEST_F(ChannelTest, ClearKindDestroysTheKeysOfThatKindOnly) {
    const std::size_t before = Films().Keys().Count();
    AddVector(track, KeyKind::Position, 0.0f, {});
    AddVector(track, KeyKind::Position, 1.0f, {});
    IFilmKey& rotation = AddVector(track, KeyKind::Rotation, 0.0f, {});
    track.ClearKind(KeyKind::Position);
    track.ClearKind(KeyKind::CameraPosition); // not a kind of this track
    EXPECT_EQ(Films().Keys().Count(), before + 1);
    ASSERT_EQ(track.keys.size(), 1u);
    EXPECT_EQ(track.keys.front(), &rotation);
}

TEST_F(ChannelTest, SubTracksComeWithTheFirstKeyExceptThoseThatFilesAreReadInto) {
    EXPECT_NE(track.subTracks[KeyKind::Position], nullptr);
    EXPECT_NE(track.subTracks[KeyKind::Rotation], nullptr);
    EXPECT_EQ(track.subTracks[KeyKind::Scale], nullptr);
    EXPECT_EQ(track.subTracks[KeyKind::CameraPosition], nullptr);
    AddVector(track, KeyKind::Scale, 0.0f, {});
    EXPECT_NE(track.subTracks[KeyKind::Scale], nullptr);
}

struct KindRow {
    int classId;
    std::vector<int> kinds;
};

TEST_F(ChannelTest, EachTrackClassHoldsItsKinds) {
    const KindRow rows[] = {{ClassId::LevelTrack, {0, 2, 3, 4, 5, 6, 7, 9, 13, 15}},
                            {ClassId::ObjectTrack, {1, 2, 3, 4, 7, 8, 9, 10, 11, 12, 13, 15}},
                            {ClassId::GLLightTrack, {10, 14, 15}},
                            {ClassId::DynLightTrack, {10, 11, 12, 14, 15}},
                            {ClassId::CameraTrack, {16, 17, 18, 19}}};
    for (const KindRow& row : rows) {
        CFilmTrack& made = AddTrack(film->CreateTrack(row.classId));
        std::vector<int> taken;
        for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
            IFilmKey* key = MakeKey(kind, 0.0f);
            if (made.AddKey(key)) {
                taken.push_back(kind);
            } else {
                Films().keyFactory->DestroyKey(key);
            }
        }
        EXPECT_EQ(taken, row.kinds) << "class " << row.classId;
    }
}

TEST_F(ChannelTest, SearchFindsEachSegmentOfUnevenKeys) {
    const float times[] = {0.0f, 0.001f, 0.002f, 5.0f, 5.5f, 100.0f, 1000.0f};
    float value = 0.0f;
    for (const float time : times) {
        AddVector(track, KeyKind::Position, time, {value, 0.0f, 0.0f});
        value += 2.0f;
    }
    const auto* channel = static_cast<engine::KeyChannel*>(track.subTracks[KeyKind::Position]);
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(channel->LastAtOrBefore(times[i]), i);
        EXPECT_EQ(channel->LastAtOrBefore(std::nextafter(times[i], -1.0f)), i - 1);
        EXPECT_FLOAT_EQ(X(times[i]), 2.0f * static_cast<float>(i));
    }
    EXPECT_NEAR(X(52.75f), 9.0f, 1e-4f);
    EXPECT_NEAR(X(0.0005f), 1.0f, 1e-4f);
    EXPECT_EQ(channel->LastAtOrBefore(std::numeric_limits<float>::quiet_NaN()), -1);
}

} // namespace engine_test
