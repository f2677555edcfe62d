#include "tests/timeline/CommandFixture.h"

#include "files/AddCameraDlg.h"
#include "host/engine/MeshLibrary.h"
#include "resources/resource.h"
#include "tests/support/FakeKeyFactory.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A wall of no depth: every ray meets it after a share of its way.
class Wall final : public engine::IMesh {
public:
    const std::vector<MeshElement>& Elements() const override { return elements; }
    const std::vector<engine::Matrix4>& RestLocals() const override { return locals; }
    const std::vector<engine::MeshClip>& Clips() const override { return clips; }
    void Bounds(Vector3&, Vector3&) const override {}
    void SampleClip(int, float, engine::Matrix4*) const override {}
    bool RayCast(const Vector3&, const Vector3&, const engine::Matrix4*, float& fraction) const override {
        fraction = 0.00001f; // 10 of the million units that are looked ahead
        return true;
    }

private:
    std::vector<MeshElement> elements;
    std::vector<engine::Matrix4> locals;
    std::vector<engine::MeshClip> clips;
};

class WallLibrary final : public engine::IMeshLibrary {
public:
    const engine::IMesh* FindMesh(const std::string&) override { return &wall; }

private:
    Wall wall;
};

/// The command "Add camera", in a view at (10, 20, 30) that looks along -z with 90 degrees.
class AddCameraTest : public CommandTest {
protected:
    AddCameraTest() {
        constexpr float kQuarterTurn = 1.5707963f;
        editor.viewMatrix = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 10, 20, 30, 1};
        editor.level.Views().At(0)->SetProjection(kQuarterTurn, 0.1f, 1000.0f, 0);
        Hooks().modalDialog = [this](CDialog& shown) {
            auto& dialog = dynamic_cast<CAddCameraDlg&>(shown);
            offeredName = dialog.name;
            if (!typedName.empty()) {
                dialog.name = typedName;
            }
            if (meanwhile) {
                meanwhile();
            }
            return result;
        };
    }
    std::vector<std::string> CameraNames() const {
        std::vector<std::string> names;
        for (CFilmTrack* candidate : film->tracks) {
            if (const auto* camera = AsCameraTrack(candidate)) {
                names.push_back(camera->cameraName);
            }
        }
        return names;
    }
    CFilmTrack* Camera() const { return film->FindCamera("Camera 1"); }
    const CFilmLinkedKey& LinkedKey(int kind) const {
        return static_cast<const CFilmLinkedKey&>(*KeysOf(*Camera(), kind).front());
    }
    float Scalar(int kind) const {
        return static_cast<const CFilmScalarKey*>(KeysOf(*Camera(), kind).front())->value;
    }

    std::string offeredName;
    std::string typedName;
    std::function<void()> meanwhile;
    int result = IDOK;
};

} // namespace

TEST_F(AddCameraTest, OffersAFreeNameAndTakesTheUsers) {
    Run(IDC_ADD_CAMERA);
    EXPECT_EQ(offeredName, "Camera 1");
    typedName = "Bridge";
    Run(IDC_ADD_CAMERA);
    EXPECT_EQ(offeredName, "Camera 2");
    EXPECT_THAT(CameraNames(), ElementsAre("Camera 1", "Bridge"));
}

TEST_F(AddCameraTest, BeginsAsTheActiveViewStands) {
    Run(IDC_ADD_CAMERA);
    ASSERT_NE(Camera(), nullptr);
    std::vector<int> kinds;
    for (const IFilmKey* key : Camera()->keys) {
        kinds.push_back(key->kind);
        EXPECT_EQ(key->time, 0.0f);
        EXPECT_EQ(key->track, Camera());
    }
    EXPECT_THAT(kinds, ElementsAre(19, 18, 16, 17));
    EXPECT_NEAR(Scalar(KeyKind::FieldOfView), 90.0f, 1e-5f);
    EXPECT_EQ(Scalar(KeyKind::Roll), 0.0f);
    EXPECT_EQ(LinkedKey(KeyKind::CameraPosition).value, (Vector3{10, 20, 30}));
    for (const int kind : {KeyKind::CameraPosition, KeyKind::CameraTarget}) {
        EXPECT_EQ(LinkedKey(kind).linkObject, nullptr);
        EXPECT_EQ(LinkedKey(kind).linkElement, "");
        EXPECT_EQ(LinkedKey(kind).inMethod, BezierMethod::Smooth);
        EXPECT_EQ(LinkedKey(kind).outMethod, BezierMethod::Smooth);
    }
}

TEST_F(AddCameraTest, FirstKeysAreSmoothFreeAndAtTheBeginWhateverTheFactoryMakes) {
    FakeKeyFactory factory(Films());
    factory.onCreate = [this](IFilmKey& key) {
        key.SetInMethod(BezierMethod::User);
        key.SetOutMethod(BezierMethod::User);
        key.SetTime(3.0f);
        key.SetLinkObject(crate);
        key.SetLinkElement("Hips");
    };
    Run(IDC_ADD_CAMERA);
    ASSERT_NE(Camera(), nullptr);
    ASSERT_EQ(Camera()->keys.size(), 4u);
    for (const IFilmKey* key : Camera()->keys) {
        EXPECT_EQ(key->time, 0.0f) << key->kind;
    }
    for (const int kind : {KeyKind::CameraPosition, KeyKind::CameraTarget}) {
        EXPECT_EQ(LinkedKey(kind).linkObject, nullptr);
        EXPECT_EQ(LinkedKey(kind).linkElement, "");
        EXPECT_EQ(LinkedKey(kind).inMethod, BezierMethod::Smooth);
        EXPECT_EQ(LinkedKey(kind).outMethod, BezierMethod::Smooth);
    }
    for (const int kind : {KeyKind::Roll, KeyKind::FieldOfView}) {
        const auto& key = static_cast<const CFilmScalarKey&>(*KeysOf(*Camera(), kind).front());
        EXPECT_EQ(key.inMethod, BezierMethod::Smooth);
        EXPECT_EQ(key.outMethod, BezierMethod::Smooth);
    }
    EXPECT_EQ(Scalar(KeyKind::Roll), 0.0f);
}

TEST_F(AddCameraTest, WithNothingInFrontTheTargetIsFiveThousandUnitsAway) {
    Run(IDC_ADD_CAMERA);
    EXPECT_EQ(LinkedKey(KeyKind::CameraTarget).value, (Vector3{10, 20, -4970}));
}

TEST_F(AddCameraTest, TheTargetIsWhatTheViewLooksAt) {
    WallLibrary walls;
    editor.level.SetMeshLibrary(&walls);
    crate->SetMatrix(crate->GetMatrix(0), 0);
    Run(IDC_ADD_CAMERA);
    editor.level.SetMeshLibrary(nullptr);
    EXPECT_EQ(LinkedKey(KeyKind::CameraTarget).value, (Vector3{10, 20, 20}));
}

TEST_F(AddCameraTest, TheRowComesUnfoldedAmongTheOthers) {
    Run(IDC_ADD_CAMERA);
    EXPECT_THAT(VisibleNames(), ElementsAre("Level", "Camera 1", "Camera position keys",
                                            "Target position keys", "FOV keys", "Roll keys", "Crate"));
    EXPECT_EQ(RowOf("Camera 1", KeyKind::CameraPosition)->keys.size(), 1u);
    ASSERT_EQ(plugin.cameraParams.size(), 1u);
    const MovieParamsRecord& stored = plugin.cameraParams.front().records.front();
    EXPECT_EQ(stored.filmName, film->name);
    EXPECT_EQ(stored.objectName, "Camera 1");
    EXPECT_EQ(stored.expanded, 1);
}

TEST_F(AddCameraTest, CancelAddsNothing) {
    result = IDCANCEL;
    Run(IDC_ADD_CAMERA);
    EXPECT_THAT(CameraNames(), IsEmpty());
    EXPECT_TRUE(plugin.cameraParams.empty());
}

TEST_F(AddCameraTest, WithoutAViewOrAFilmNobodyIsAsked) {
    editor.activeView = -1;
    Run(IDC_ADD_CAMERA);
    editor.activeView = 7;
    Run(IDC_ADD_CAMERA);
    editor.activeView = 0;
    plugin.SetCurrentFilm(nullptr);
    Run(IDC_ADD_CAMERA);
    EXPECT_EQ(offeredName, "");
    EXPECT_THAT(CameraNames(), IsEmpty());
}

TEST_F(AddCameraTest, AFilmThatClosesUnderTheDialogGetsNoCamera) {
    meanwhile = [this] { plugin.SetCurrentFilm(nullptr); };
    Run(IDC_ADD_CAMERA);
    EXPECT_THAT(CameraNames(), IsEmpty());
}

TEST_F(AddCameraTest, AViewThatClosesUnderTheDialogMakesNoCamera) {
    meanwhile = [this] { editor.activeView = -1; };
    Run(IDC_ADD_CAMERA);
    EXPECT_THAT(CameraNames(), IsEmpty());
}
