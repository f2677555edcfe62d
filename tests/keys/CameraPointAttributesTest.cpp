#include "host/engine/LevelRoot.h"
#include "tests/keys/AttributesFixture.h"

using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

constexpr const char* kIn = "IN CONTROL POINT";
constexpr const char* kOut = "OUT CONTROL POINT";

class RecordedPoint final : public RecordedKey<CFilmLinkedKey, &ShowFloats> {
public:
    void GetInPoint(Vector3&) const override {}
    void GetOutPoint(Vector3&) const override {}
};

/// Writes down into a key's log when it is told of changes.
class TellingTrack final : public CFilmTrack {
public:
    explicit TellingTrack(RecordedPoint& recorded)
        : CFilmTrack(std::pmr::get_default_resource()), key(recorded) {}
    bool IsA(int classId) const override { return classId == ClassId::CameraTrack; }
    bool AddKey(IFilmKey*) override { return false; }
    void RemoveKey(IFilmKey*, bool) override {}
    void ClearKind(int) override {}
    void NotifyKeysChanged(int kind) override { key.Note("Notify " + std::to_string(kind)); }
    void Finish() override {}
    void RefreshTrack() override {}
    void ApplyAt(float, float, int) override {}
    Vector3 GetPositionAt(float) const override { return {}; }
    Vector3 GetRotationAt(float) const override { return {}; }

private:
    RecordedPoint& key;
};

/// A level that has one more thing, under the id 99, which is no object with a matrix.
class LevelWithMore final : public ILevel, public ILevelData {
public:
    explicit LevelWithMore(engine::Level& level) : real(level), more(*level.Data()) {}
    void MakeUniqueName(const char*, EditorObject*, int) override {}
    IViewManager* GetViewManager() override { return nullptr; }
    ILevelData* GetLevelData() override { return this; }
    int RayCast(const float*, float*, int) override { return 0; }
    EditorObject* FindObject(int id) const override {
        return id == 99 ? &more : static_cast<EditorObject*>(real.FindObject(id));
    }

private:
    engine::Level& real;
    mutable engine::LevelRoot more;
};

class CameraPointAttributesTest : public AttributesTest {
protected:
    CameraPointAttributesTest() : track(key) {
        key.kind = KeyKind::CameraPosition;
        key.value = {1.0f, 2.0f, 3.0f};
        key.inHandle = {4.0f, 5.0f, 6.0f};
        key.outHandle = {7.0f, 8.0f, 9.0f};
        key.state = [this] {
            return ShowVector(key.value) + ", " + ShowVector(key.inHandle) + ", " + ShowVector(key.outHandle);
        };
    }
    /// The last call but one: what an apply links to for this id.
    std::string LinkFor(const char* id) {
        key.state = nullptr;
        key.log.clear();
        Type("Object ID", "LINK", id);
        Apply(key);
        return key.log.at(key.log.size() - 2);
    }

    RecordedPoint key;
    TellingTrack track;
};

} // namespace

TEST_F(CameraPointAttributesTest, FieldsAreWrittenDirectlyAndTheTrackToldAfterEach) {
    for (const int kind : {KeyKind::CameraPosition, KeyKind::CameraTarget}) {
        key.kind = kind;
        key.track = &track;
        key.value = {1.0f, 2.0f, 3.0f};
        key.inHandle = {4.0f, 5.0f, 6.0f};
        key.outHandle = {7.0f, 8.0f, 9.0f};
        key.log.clear();
        Fill(key);
        Type("X", "POSITION", "10");
        Choose("In type", kIn, BezierMethod::User);
        Type("In X", kIn, "40");
        Choose("Out type", kOut, BezierMethod::User);
        Type("Out X", kOut, "70");
        Type("Mesh element name", "LINK", "Mast");
        Apply(key);
        const std::string told = "Notify " + std::to_string(kind);
        EXPECT_THAT(key.log,
                    ElementsAre(told + " | 10 2 3, 4 5 6, 7 8 9", "SetInMethod 4 | 10 2 3, 4 5 6, 7 8 9",
                                told + " | 10 2 3, 40 5 6, 7 8 9", "SetOutMethod 4 | 10 2 3, 40 5 6, 7 8 9",
                                told + " | 10 2 3, 40 5 6, 70 8 9",
                                "SetLinkObject null | 10 2 3, 40 5 6, 70 8 9",
                                "SetLinkElement Mast | 10 2 3, 40 5 6, 70 8 9"));
    }
    key.track = nullptr;
}

TEST_F(CameraPointAttributesTest, KeyInNoTrackIsWrittenWithoutTelling) {
    Fill(key);
    Type("Y", "POSITION", "20");
    key.state = nullptr;
    Apply(key);
    EXPECT_EQ(key.value, (Vector3{1.0f, 20.0f, 3.0f}));
    EXPECT_THAT(key.log,
                ElementsAre("SetInMethod 0", "SetOutMethod 0", "SetLinkObject null", "SetLinkElement "));
}

TEST_F(CameraPointAttributesTest, ObjectIsFoundByItsId) {
    engine::SceneObject* ship = editor.Create("Ship");
    engine::SceneObject* lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp");
    Fill(key);
    EXPECT_EQ(LinkFor(std::to_string(ship->id).c_str()), "SetLinkObject Ship");
    EXPECT_EQ(LinkFor(std::to_string(lamp->id).c_str()), "SetLinkObject Lamp");
    EXPECT_EQ(LinkFor("0"), "SetLinkObject null");
    EXPECT_EQ(LinkFor("-1"), "SetLinkObject null");
    EXPECT_EQ(LinkFor("123456"), "SetLinkObject null");
    EXPECT_EQ(LinkFor("Ship"), "SetLinkObject null") << "a text that is no number is 0";
    const std::string id = std::to_string(ship->id);
    editor.level.DeleteObject(ship);
    EXPECT_EQ(LinkFor(id.c_str()), "SetLinkObject null");
}

TEST_F(CameraPointAttributesTest, OnlyObjectsWithAMatrixAreLinkedTo) {
    LevelWithMore level(editor.level);
    engine::SceneObject* ship = editor.Create("Ship");
    plugin.level = &level;
    Fill(key);
    EXPECT_EQ(LinkFor("99"), "SetLinkObject null");
    EXPECT_EQ(LinkFor(std::to_string(ship->id).c_str()), "SetLinkObject Ship");
    plugin.level = &editor.level;
}

TEST_F(CameraPointAttributesTest, WithoutALevelThereIsNothingToLinkTo) {
    plugin.level = nullptr;
    Fill(key);
    EXPECT_EQ(LinkFor("1"), "SetLinkObject null");
    plugin.level = &editor.level;
}

TEST_F(CameraPointAttributesTest, RealKeyFollowsTheObjectFromWhereItStands) {
    engine::SceneObject* ship = editor.Create("Ship", 10.0f, 0.0f, 0.0f);
    CFilmTrack* camera = CameraTrack();
    auto& real = static_cast<CFilmLinkedKey&>(*AddKey(camera, KeyKind::CameraPosition, 1.0f));
    Fill(real);
    Type("X", "POSITION", "12");
    Type("Object ID", "LINK", std::to_string(ship->id).c_str());
    Apply(real);
    EXPECT_EQ(real.linkObject, ship);
    EXPECT_EQ(real.linkObjectId, ship->id);
    EXPECT_EQ(real.value, (Vector3{2.0f, 0.0f, 0.0f})); // 12 in the world, 2 from the ship
    Fill(real);
    EXPECT_EQ(TextOf("X", "POSITION"), "2.00000");
    Apply(real);
    EXPECT_EQ(real.value, (Vector3{2.0f, 0.0f, 0.0f})) << "a second apply moves nothing";
    Type("Object ID", "LINK", "0");
    Apply(real);
    EXPECT_EQ(real.linkObject, nullptr);
    EXPECT_EQ(real.value, (Vector3{12.0f, 0.0f, 0.0f}));
}
