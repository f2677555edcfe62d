#include "host/engine/MemoryFile.h"
#include "tests/engine/EngineFixture.h"

#include <limits>
#include <string_view>

namespace engine_test {

using engine::MemoryFile;

/// Export and import of the body of a track file, in the order in which the timeline calls them.
class TrackFileTest : public EngineTest {
protected:
    TrackFileTest() : track(AddActor(MakeObject("Box"))) {}

    std::string Exported(int kind) {
        MemoryFile memory;
        track.subTracks[kind]->Export(memory.file, 0);
        return memory.Take();
    }
    /// Refused, whatever the track held stays.
    void ExpectRefused(const std::string& bytes) {
        AddVector(track, KeyKind::Position, 3.0f, {});
        const std::size_t before = Films().Keys().Count();
        const std::size_t listed = track.keys.size();
        MemoryFile memory{std::string_view(bytes)};
        EXPECT_THROW(track.subTracks[KeyKind::Position]->Import(memory.file, 0, KeyKind::Position),
                     fs::file_exception);
        EXPECT_EQ(Films().Keys().Count(), before);
        EXPECT_EQ(track.keys.size(), listed);
        KeyList channel;
        track.subTracks[KeyKind::Position]->CollectKeys(channel);
        EXPECT_EQ(channel.size(), listed);
    }
    /// The body of one position key: 43 bytes of key behind size and count, its numbers at these places.
    static constexpr std::size_t kMarks = 8;
    static constexpr std::size_t kTime = 9;
    std::string OneKey() {
        CFilmObjectTrack& other = AddActor(MakeObject("Other"));
        AddVector(other, KeyKind::Position, 1.0f, {1.0f, 2.0f, 3.0f});
        MemoryFile memory;
        other.subTracks[KeyKind::Position]->Export(memory.file, 0);
        return memory.Take();
    }
    void Import(CFilmTrack& target, int kind, const std::string& bytes, int fileKind) {
        MemoryFile memory{std::string_view(bytes)};
        target.ClearKind(kind);
        target.subTracks[kind]->Import(memory.file, 0, fileKind);
        target.subTracks[kind]->CollectKeys(target.keys);
        target.Finish();
    }

    CFilmObjectTrack& track;
};

TEST_F(TrackFileTest, KeysComeBackAsTheyWere) {
    CFilmVectorKey& first = AddVector(track, KeyKind::Position, 2.0f, {1.0f, 2.0f, 3.0f}, BezierMethod::User);
    first.inHandle = {4.0f, 5.0f, 6.0f};
    first.outHandle = {7.0f, 8.0f, 9.0f};
    first.outMethod = 1000000; // no method, but kept
    first.endTime = 2.5f;
    first.flags |= KeyFlag::MayOverlap;
    AddVector(track, KeyKind::Position, 1.0f, {-1.0f, 0.0f, 0.0f});
    const std::string bytes = Exported(KeyKind::Position);

    CFilmObjectTrack& other = AddActor(MakeObject("Other"));
    AddVector(other, KeyKind::Position, 0.0f, {99.0f, 0.0f, 0.0f});
    AddVector(other, KeyKind::Rotation, 0.5f, {});
    Import(other, KeyKind::Position, bytes, KeyKind::Position);
    ASSERT_EQ(other.keys.size(), 3u);
    EXPECT_EQ(other.keys.front()->kind, KeyKind::Rotation); // sorted by time
    const auto& back = static_cast<const CFilmVectorKey&>(*other.keys.back());
    EXPECT_TRUE(back.Equals(first, true));
    EXPECT_EQ(back.endTime, 2.5f);
    EXPECT_EQ(back.flags, KeyFlag::NoDuration | KeyFlag::MayOverlap);
    EXPECT_EQ(back.outMethod, 1000000);
    EXPECT_EQ(back.track, &other);
    EXPECT_FLOAT_EQ(other.GetPositionAt(1.0f).x, -1.0f);
}

TEST_F(TrackFileTest, VectorKeyTakes43Bytes) {
    AddVector(track, KeyKind::Position, 0.0f, {});
    const std::size_t one = Exported(KeyKind::Position).size();
    AddVector(track, KeyKind::Position, 1.0f, {1.0f, 2.0f, 3.0f});
    EXPECT_EQ(Exported(KeyKind::Position).size() - one, 43u);
}

TEST_F(TrackFileTest, EmptyRestOfFileIsATrackWithoutKeys) {
    AddVector(track, KeyKind::Position, 0.0f, {});
    Import(track, KeyKind::Position, "", KeyKind::Position);
    EXPECT_TRUE(track.keys.empty());
}

TEST_F(TrackFileTest, TrackWithoutKeysIsWrittenAndRead) {
    const std::string bytes = Exported(KeyKind::Rotation);
    Import(track, KeyKind::Rotation, bytes, KeyKind::Rotation);
    EXPECT_TRUE(track.keys.empty());
}

TEST_F(TrackFileTest, EveryCutAndEveryFlippedByteIsSurvivedWithoutLeavingKeys) {
    AddVector(track, KeyKind::Position, 0.0f, {1.0f, 2.0f, 3.0f});
    AddVector(track, KeyKind::Position, 1.0f, {4.0f, 5.0f, 6.0f});
    const std::string bytes = Exported(KeyKind::Position);
    CFilmObjectTrack& other = AddActor(MakeObject("Other"));
    const std::size_t before = Films().Keys().Count();
    for (std::size_t length = 1; length < bytes.size(); ++length) {
        EXPECT_THROW(Import(other, KeyKind::Position, bytes.substr(0, length), KeyKind::Position),
                     fs::file_exception)
            << length;
        EXPECT_TRUE(other.keys.empty());
        EXPECT_EQ(Films().Keys().Count(), before);
    }
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        std::string flipped = bytes;
        flipped[i] = static_cast<char>(~flipped[i]);
        try {
            Import(other, KeyKind::Position, flipped, KeyKind::Position);
        } catch (const fs::file_exception& error) {
            EXPECT_EQ(error.code, fs::file_exception::kRead);
        }
        EXPECT_FALSE(std::isinf(other.GetPositionAt(0.5f).y));
        other.ClearKind(KeyKind::Position);
        EXPECT_EQ(Films().Keys().Count(), before);
    }
}

TEST_F(TrackFileTest, BodyOfAnotherKindIsRefused) {
    AddVector(track, KeyKind::Position, 0.0f, {});
    const std::string bytes = Exported(KeyKind::Position);
    EXPECT_THROW(Import(track, KeyKind::Rotation, bytes, KeyKind::Position), fs::file_exception);
}

TEST_F(TrackFileTest, HugeCountsAndSizesCostNoMemory) {
    // Sizes of 4 GiB and a count of 4 billion keys in a dozen bytes.
    const std::string body("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x00\x00\x00\x00", 12);
    EXPECT_THROW(Import(track, KeyKind::Position, body, KeyKind::Position), fs::file_exception);
    const std::string counted("\x08\x00\x00\x00\xFF\xFF\xFF\xFF\x00\x00\x00\x00", 12);
    EXPECT_THROW(Import(track, KeyKind::Position, counted, KeyKind::Position), fs::file_exception);
}

TEST_F(TrackFileTest, ImportReplacesTheKeysAndTheListLetsGoOfThem) {
    AddVector(track, KeyKind::Position, 5.0f, {});
    AddVector(track, KeyKind::Position, 6.0f, {});
    AddVector(track, KeyKind::Rotation, 7.0f, {});
    const std::string bytes = OneKey();
    const std::size_t others = Films().Keys().Count() - 2;
    MemoryFile memory{std::string_view(bytes)};
    track.subTracks[KeyKind::Position]->Import(memory.file, 0, KeyKind::Position);
    EXPECT_EQ(Films().Keys().Count(), others + 1);
    ASSERT_EQ(track.keys.size(), 1u);
    EXPECT_EQ(track.keys.front()->kind, KeyKind::Rotation);
    KeyList channel;
    track.subTracks[KeyKind::Position]->CollectKeys(channel);
    ASSERT_EQ(channel.size(), 1u);
    EXPECT_EQ(channel.front()->time, 1.0f);
}

TEST_F(TrackFileTest, FaultChangesNothing) {
    const std::string bytes = OneKey();
    ExpectRefused(bytes.substr(0, bytes.size() - 1));
    std::string wrongCount = bytes;
    wrongCount[4] = 2;
    ExpectRefused(wrongCount);
}

TEST_F(TrackFileTest, BytesBehindTheBodyAreRefused) {
    ExpectRefused(OneKey() + '\0');
}

TEST_F(TrackFileTest, TimesThatAreNoNumbersAreRefused) {
    for (const std::string_view number : {std::string_view("\x00\x00\xC0\x7F", 4),    // not a number
                                          std::string_view("\x00\x00\x80\x7F", 4),    // without end
                                          std::string_view("\x00\x00\x80\xFF", 4)}) { // before everything
        std::string bytes = OneKey();
        bytes.replace(kTime, 4, number);
        ExpectRefused(bytes);
    }
    CFilmVectorKey& key = AddVector(track, KeyKind::Position, 0.0f, {});
    key.endTime = std::numeric_limits<float>::quiet_NaN();
    ExpectRefused(Exported(KeyKind::Position));
}

TEST_F(TrackFileTest, FarTimesAreTaken) {
    AddVector(track, KeyKind::Position, -1.0e30f, {1.0f, 0.0f, 0.0f});
    AddVector(track, KeyKind::Position, 3.0e38f, {2.0f, 0.0f, 0.0f});
    const std::string bytes = Exported(KeyKind::Position);
    Import(track, KeyKind::Position, bytes, KeyKind::Position);
    ASSERT_EQ(track.keys.size(), 2u);
    EXPECT_EQ(track.keys.back()->time, 3.0e38f);
}

TEST_F(TrackFileTest, KeyWithADurationWhereTheKindHasNoneIsRefused) {
    AddVector(track, KeyKind::Position, 0.0f, {}).flags = KeyFlag::MayOverlap;
    ExpectRefused(Exported(KeyKind::Position));
}

} // namespace engine_test
