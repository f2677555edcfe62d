#include "keys/rules/KeyKinds.h"
#include "tests/keys/AttributesWindowFixture.h"
#include "tests/support/Golden.h"

#include <QImage>

namespace {

/// Frame of the list, from the left top of the window's client area.
constexpr CPoint kList(7, 8);
constexpr int kWindowWidth = 430;

class KeyAttributesPictureTest : public AttributesWindowTest, public ::testing::WithParamInterface<int> {
protected:
    /// The track that can hold a kind.
    CFilmTrack* TrackFor(int kind) {
        switch (kind) {
        case KeyKind::Camera:
        case KeyKind::FxRain:
        case KeyKind::FxBlind:
        case KeyKind::FxSequence:
            return film->mainTrack;
        case KeyKind::CameraPosition:
        case KeyKind::CameraTarget:
        case KeyKind::Roll:
        case KeyKind::FieldOfView:
            return AddCamera(film, "Cam");
        case KeyKind::Color: {
            CFilmTrack* light = film->CreateGLLightTrack();
            film->AddTrack(light);
            return light;
        }
        default:
            return track;
        }
    }
    /// Texts, and whatever the toolkit draws, differ with the machine; lines, grounds and colours don't.
    std::vector<CRect> TextAreas() {
        std::vector<CRect> areas{CRect(368, 0, kWindowWidth, 310), CRect(0, 298, kWindowWidth, 310)};
        CRect inside;
        Dialog().list.GetClientRect(&inside);
        const int middle = inside.right / 2;
        for (int i = 0; i < Dialog().list.GetCount(); ++i) {
            const int top = kList.y + 1 + i * 20;
            areas.emplace_back(kList.x + 3, top + 2, kList.x + middle - 1, top + 18);
            const auto* row = static_cast<const AttrRow*>(Dialog().list.GetItemDataPtr(i));
            if (row->member->value[0].GetType() != MemberType::Vector) {
                areas.emplace_back(kList.x + middle + 3, top + 1, kList.x + inside.right, top + 19);
            }
        }
        return areas;
    }
    void Compare(const std::string& name) {
        Settle();
        ExpectGolden(PictureOf(Dialog()), "tests/keys", name, TextAreas());
    }
};

} // namespace

TEST_P(KeyAttributesPictureTest, RowsOfTheKind) {
    IFilmKey* key = Put<IFilmKey>(GetParam(), 2.0f, TrackFor(GetParam()));
    ASSERT_NE(key, nullptr);
    if (key->kind == KeyKind::Color) {
        const float orange[] = {1.0f, 0.5f, 0.0f};
        key->SetValue(orange);
    }
    Open(key);
    Compare("attributes_" + std::to_string(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Kinds, KeyAttributesPictureTest, ::testing::Range(0, 20));

using KeyAttributesEditorPictureTest = KeyAttributesPictureTest;

TEST_F(KeyAttributesEditorPictureTest, RowUnderEdit) {
    Open(PutPosition(2.0f, 1.5f));
    Edit("Pos Y", "");
    Compare("attributes_edit");
}

TEST_F(KeyAttributesEditorPictureTest, SelectedRowWithoutAnEditor) {
    Open(PutPosition(2.0f, 1.5f));
    Dialog().list.SetCurSel(1);
    Compare("attributes_selected");
}

TEST_F(KeyAttributesEditorPictureTest, ShownHandles) {
    CFilmVectorKey* key = PutPosition(2.0f, 1.5f);
    key->inMethod = key->outMethod = BezierMethod::User;
    Open(key);
    Compare("attributes_handles");
}
