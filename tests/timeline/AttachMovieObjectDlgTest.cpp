#include "files/AttachMovieObjectDlg.h"

#include "framework/QtBridge.h"
#include "host/engine/MeshLibrary.h"
#include "host/engine/ObjectTrack.h"
#include "resources/resource.h"
#include "tests/support/ElementMesh.h"
#include "tests/support/Golden.h"
#include "tests/support/PickingEditor.h"
#include "tests/timeline/CommandFixture.h"

#include <functional>
#include <gmock/gmock.h>
#include <QApplication>
#include <QImage>
#include <QTest>
#include <QWidget>
#include <QWindow>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

/// The window "Attach movie object" on the track of the actor "Crate", which is attached to nothing.
class AttachMovieObjectDlgTest : public CommandTest {
protected:
    AttachMovieObjectDlgTest() {
        editor.level.SetMeshLibrary(&meshes);
        ship = editor.Create("Ship", 100, 0, 0);
        ship->SetMeshName("ship.glb");
    }
    ~AttachMovieObjectDlgTest() override {
        plugin.editor = &editor;
        Settle();
        editor.level.SetMeshLibrary(nullptr);
    }
    CFilmObjectTrack* Track() { return AsObjectTrack(film->FindObjectTrack(crate)); }
    void Open(const std::string& actor = "Crate") { RunAt(IDC_ATTACH_ROW_TO_OBJECT, RowOf(actor), 0.0f); }
    CAttachMovieObjectDlg& Dialog() {
        return dynamic_cast<CAttachMovieObjectDlg&>(*control->GetAttachDialog());
    }
    std::string Text(int id) { return Dialog().GetDlgItemText(id); }
    bool Enabled(int id) { return Dialog().GetDlgItem(id)->IsWindowEnabled() != FALSE; }
    void Press(UINT button) { Dialog().SendMessage(WM_COMMAND, button); }
    static std::string Named(const EditorObject& object) {
        return object.name + "(" + std::to_string(object.id) + ")";
    }
    /// Chooses "Attach to ..." in the menu of an object.
    void AttachTo(EditorObject* object) {
        CMenu menu;
        menu.CreatePopupMenu();
        ASSERT_TRUE(plugin.OnObjectMenu(&menu, 0, 0, object));
        plugin.OnCommand(plugin.pluginId.PluginNumber(), 63);
    }
    /// A real click into the middle of a control.
    void Click(int id) {
        QWidget* widget = NativeWidget(*Dialog().GetDlgItem(id));
        QTest::mouseClick(widget->window()->windowHandle(), Qt::LeftButton, {},
                          widget->mapTo(widget->window(), widget->rect().center()));
        Settle();
    }
    void Key(Qt::Key key) {
        QWidget* window = NativeWidget(Dialog());
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
        QTest::keyClick(window->windowHandle(), key);
        Settle();
    }

    ElementMesh meshes{{{"Deck", -1, 1}, {"Mast", 0, 1}}};
    PickingEditor picker;
    engine::SceneObject* ship;
};

} // namespace

TEST_F(AttachMovieObjectDlgTest, IsMadeAtTheFirstUseAndKept) {
    EXPECT_EQ(control->GetAttachDialog(), nullptr);
    Open();
    ASSERT_NE(control->GetAttachDialog(), nullptr);
    const IAttachDialog* made = control->GetAttachDialog();
    EXPECT_TRUE(Dialog().IsVisible());
    EXPECT_EQ(Dialog().GetTrack(), Track());
    EXPECT_EQ(Dialog().GetWindowText(), "Attach movie object");
    Press(IDCANCEL);
    EXPECT_FALSE(made->IsVisible());
    Open();
    EXPECT_EQ(control->GetAttachDialog(), made);
    EXPECT_TRUE(made->IsVisible());
}

TEST_F(AttachMovieObjectDlgTest, OnlyActorsHaveIt) {
    Open("Level");
    EXPECT_EQ(control->GetAttachDialog(), nullptr);
    control->menuRow = nullptr;
    Run(IDC_ATTACH_ROW_TO_OBJECT);
    EXPECT_EQ(control->GetAttachDialog(), nullptr);
}

TEST_F(AttachMovieObjectDlgTest, WithoutAParentItIsEmptyAndTheButtonsAreOff) {
    Open();
    EXPECT_EQ(Text(IDC_PARENT_OBJECT), "");
    EXPECT_EQ(Text(IDC_PARENT_ELEMENT), "");
    EXPECT_FALSE(Enabled(IDC_BROWSE_ELEMENT));
    EXPECT_FALSE(Enabled(IDC_DETACH_PARENT));
}

TEST_F(AttachMovieObjectDlgTest, ShowsWhatTheTrackIsAttachedTo) {
    Track()->SetParent(ship, false, "Mast");
    Open();
    EXPECT_EQ(Text(IDC_PARENT_OBJECT), Named(*ship));
    EXPECT_EQ(Text(IDC_PARENT_ELEMENT), "Mast");
    EXPECT_TRUE(Enabled(IDC_BROWSE_ELEMENT));
    EXPECT_TRUE(Enabled(IDC_DETACH_PARENT));
}

TEST_F(AttachMovieObjectDlgTest, TheObjectsMenuGivesItAParentAndOkAttaches) {
    Open();
    AttachTo(ship);
    EXPECT_EQ(Text(IDC_PARENT_OBJECT), Named(*ship));
    EXPECT_EQ(Track()->parentObject, nullptr); // not before OK
    Press(IDOK);
    EXPECT_FALSE(Dialog().IsVisible());
    EXPECT_EQ(Track()->parentObject, ship);
    EXPECT_EQ(Track()->parentElement, "");
    // The crate's keys say (1, 2, 3), now in the space of the ship, which stands at (100, 0, 0).
    EXPECT_EQ(PositionOf(*crate), (Vector3{101, 2, 3}));
}

TEST_F(AttachMovieObjectDlgTest, CancelAttachesNothingAndTheNextUseBeginsAnew) {
    Open();
    AttachTo(ship);
    Press(IDCANCEL);
    EXPECT_EQ(Track()->parentObject, nullptr);
    Open();
    EXPECT_EQ(Text(IDC_PARENT_OBJECT), "");
}

TEST_F(AttachMovieObjectDlgTest, AnotherObjectClearsTheElement) {
    Track()->SetParent(ship, false, "Mast");
    engine::SceneObject* cart = editor.Create("Cart");
    Open();
    AttachTo(cart);
    EXPECT_EQ(Text(IDC_PARENT_OBJECT), Named(*cart));
    EXPECT_EQ(Text(IDC_PARENT_ELEMENT), "");
    Press(IDOK);
    EXPECT_EQ(Track()->parentObject, cart);
    EXPECT_EQ(Track()->parentElement, "");
}

TEST_F(AttachMovieObjectDlgTest, CrossAndOkDetach) {
    Track()->SetParent(ship, false, "Mast");
    Open();
    Press(IDC_DETACH_PARENT);
    EXPECT_EQ(Text(IDC_PARENT_OBJECT), "");
    EXPECT_EQ(Text(IDC_PARENT_ELEMENT), "");
    EXPECT_FALSE(Enabled(IDC_DETACH_PARENT));
    Press(IDOK);
    EXPECT_EQ(Track()->parentObject, nullptr);
    EXPECT_EQ(Track()->parentElement, "");
}

TEST_F(AttachMovieObjectDlgTest, TheElementIsBrowsedInTheParentsMesh) {
    Open();
    AttachTo(ship);
    plugin.editor = &picker;
    picker.answer = "Mast";
    Press(IDC_BROWSE_ELEMENT);
    EXPECT_THAT(picker.asked, ElementsAre("Ship/"));
    EXPECT_EQ(Text(IDC_PARENT_ELEMENT), "Mast");
    picker.answer = "Deck";
    Press(IDC_BROWSE_ELEMENT);
    EXPECT_THAT(picker.asked, ElementsAre("Ship/", "Ship/Mast"));
    Press(IDOK);
    EXPECT_EQ(Track()->parentElement, "Deck");
}

TEST_F(AttachMovieObjectDlgTest, AnElementThatTheMeshHasNotIsNone) {
    Track()->SetParent(ship, false, "Mast");
    Open();
    plugin.editor = &picker;
    picker.answer = "Sail";
    Press(IDC_BROWSE_ELEMENT);
    EXPECT_EQ(Text(IDC_PARENT_ELEMENT), "");
}

TEST_F(AttachMovieObjectDlgTest, ABrowserThatIsCancelledKeepsAnElementOfAMissingMesh) {
    Track()->SetParent(ship, false, "Sail"); // not in this mesh
    Open();
    plugin.editor = &picker;
    picker.answer = "Sail"; // the browser gives back what it got
    Press(IDC_BROWSE_ELEMENT);
    EXPECT_EQ(Text(IDC_PARENT_ELEMENT), "Sail");
    Press(IDOK);
    EXPECT_EQ(Track()->parentElement, "Sail");
}

TEST_F(AttachMovieObjectDlgTest, AHelperIsStoredWithoutAnElement) {
    EditorObject* helper = editor.CreateOfClass("HelperEditorObject", "Helper");
    Open();
    Dialog().SetObject(helper);
    Dialog().SetElement("Mast");
    Press(IDOK);
    EXPECT_EQ(Track()->parentObject, helper);
    EXPECT_EQ(Track()->parentElement, "");
}

TEST_F(AttachMovieObjectDlgTest, AVirtualObjectIsStoredWithItsElement) {
    engine::SceneObject* ghost = editor.CreateOfClass("VirtualObjEditorObject", "Ghost");
    Open();
    AttachTo(ghost);
    Dialog().SetElement("Mast");
    Press(IDOK);
    EXPECT_EQ(Track()->parentObject, ghost);
    EXPECT_EQ(Track()->parentElement, "Mast");
    EXPECT_TRUE(static_cast<engine::ObjectTrack*>(Track())->parentIsVirtual);
}

TEST_F(AttachMovieObjectDlgTest, AnActorThatHangsOnThisOneMeanwhileIsRefused) {
    plugin.AddActors({ship});
    Open();
    AttachTo(ship);
    AsObjectTrack(film->FindObjectTrack(ship))->SetParent(crate, false, "");
    Press(IDOK);
    EXPECT_THAT(boxes, ElementsAre(Named(*ship) + " is this actor, or is attached to it."));
    EXPECT_TRUE(Dialog().IsVisible());
    EXPECT_EQ(Track()->parentObject, nullptr);
}

TEST_F(AttachMovieObjectDlgTest, SpecialLettersOfNamesAreShown) {
    ship->name = "Salt & Pepper";
    Track()->SetParent(ship, false, "A&B");
    Open();
    Settle();
    EXPECT_EQ(Text(IDC_PARENT_OBJECT), "Salt && Pepper(" + std::to_string(ship->id) + ")");
    EXPECT_EQ(Text(IDC_PARENT_ELEMENT), "A&&B");
}

TEST_F(AttachMovieObjectDlgTest, StaysWhenItsFilmIsShownAnew) {
    Open();
    AttachTo(ship);
    control->ShowFilm(film, true);
    EXPECT_TRUE(Dialog().IsVisible());
    EXPECT_EQ(Text(IDC_PARENT_OBJECT), Named(*ship));
    Press(IDOK);
    EXPECT_EQ(Track()->parentObject, ship);
}

TEST_F(AttachMovieObjectDlgTest, ClosesWithItsFilm) {
    Open();
    AttachTo(ship);
    plugin.SetCurrentFilm(nullptr);
    EXPECT_FALSE(Dialog().IsVisible());
    EXPECT_EQ(Dialog().GetTrack(), nullptr);
    EXPECT_EQ(Dialog().GetObject(), nullptr);
    Press(IDOK);
    EXPECT_EQ(Track()->parentObject, nullptr);
}

TEST_F(AttachMovieObjectDlgTest, ClosesWhenAnotherFilmIsChosen) {
    Open();
    plugin.SetCurrentFilm(NewFilm());
    EXPECT_FALSE(Dialog().IsVisible());
}

TEST_F(AttachMovieObjectDlgTest, ClosesWithItsTrack) {
    Open();
    control->RemoveTrackCtrl(RowOf("Crate"), true);
    EXPECT_FALSE(Dialog().IsVisible());
    EXPECT_EQ(Dialog().GetTrack(), nullptr);
}

TEST_F(AttachMovieObjectDlgTest, ClosesWhenItsActorIsTakenOutOfTheFilm) {
    Open();
    editor.Select({crate});
    Run(IDC_REMOVE_ACTORS);
    EXPECT_FALSE(Dialog().IsVisible());
}

TEST_F(AttachMovieObjectDlgTest, AParentThatIsDeletedLeavesItEmpty) {
    Open();
    AttachTo(ship);
    editor.DeleteObjects({ship});
    EXPECT_TRUE(Dialog().IsVisible());
    EXPECT_EQ(Text(IDC_PARENT_OBJECT), "");
    EXPECT_FALSE(Enabled(IDC_BROWSE_ELEMENT));
    Press(IDOK);
    EXPECT_EQ(Track()->parentObject, nullptr);
}

TEST_F(AttachMovieObjectDlgTest, AParentThatIsDeletedInTheBrowserIsForgotten) {
    Open();
    AttachTo(ship);
    plugin.editor = &picker;
    picker.answer = "Mast";
    picker.onBrowse = [this] { editor.DeleteObjects({ship}); };
    Press(IDC_BROWSE_ELEMENT);
    EXPECT_EQ(Dialog().GetObject(), nullptr);
    EXPECT_EQ(Text(IDC_PARENT_ELEMENT), "");
}

TEST_F(AttachMovieObjectDlgTest, ANewLevelClosesIt) {
    Open();
    AttachTo(ship);
    plugin.OnNew();
    EXPECT_FALSE(Dialog().IsVisible());
    EXPECT_EQ(Dialog().GetObject(), nullptr);
}

TEST_F(AttachMovieObjectDlgTest, GoesWithTheControlWhileTheBrowserIsOpen) {
    Open();
    AttachTo(ship);
    plugin.editor = &picker;
    picker.answer = "Mast";
    picker.onBrowse = [this] {
        plugin.scenarioDlg = nullptr;
        control.reset();
    };
    Press(IDC_BROWSE_ELEMENT);
    EXPECT_EQ(control, nullptr);
    EXPECT_EQ(PickMode::Present(), nullptr);
}

TEST_F(AttachMovieObjectDlgTest, IsAnnouncedWhileItIsShown) {
    EXPECT_EQ(PickMode::Present(), nullptr);
    Open();
    ASSERT_NE(PickMode::Present(), nullptr);
    EXPECT_THAT(PickMode::Present()->Text(), HasSubstr("choose \"Attach to ...\""));
    EXPECT_THAT(PickMode::Present()->Text(), HasSubstr("\"Crate\""));
    EXPECT_EQ(PickMode::Present()->ChosenBy(), PickMode::By::Menu);
    Press(IDOK);
    EXPECT_EQ(PickMode::Present(), nullptr);
    Open();
    Press(IDCANCEL);
    EXPECT_EQ(PickMode::Present(), nullptr);
    Open();
    plugin.SetCurrentFilm(nullptr);
    EXPECT_EQ(PickMode::Present(), nullptr);
}

TEST_F(AttachMovieObjectDlgTest, GivingUpClosesIt) {
    Open();
    EXPECT_TRUE(PickMode::GiveUp());
    EXPECT_FALSE(Dialog().IsVisible());
    EXPECT_EQ(Track()->parentObject, nullptr);
}

TEST_F(AttachMovieObjectDlgTest, MouseAndEnterAttachAndDetach) {
    Open();
    AttachTo(ship);
    ASSERT_NO_FATAL_FAILURE(Key(Qt::Key_Return));
    EXPECT_FALSE(Dialog().IsVisible());
    EXPECT_EQ(Track()->parentObject, ship);
    Open();
    Click(IDC_DETACH_PARENT);
    EXPECT_EQ(Text(IDC_PARENT_OBJECT), "");
    Click(IDOK);
    EXPECT_FALSE(Dialog().IsVisible());
    EXPECT_EQ(Track()->parentObject, nullptr);
}

TEST_F(AttachMovieObjectDlgTest, EscapeClosesIt) {
    Open();
    AttachTo(ship);
    ASSERT_NO_FATAL_FAILURE(Key(Qt::Key_Escape));
    EXPECT_FALSE(Dialog().IsVisible());
    EXPECT_EQ(Track()->parentObject, nullptr);
}

TEST_F(AttachMovieObjectDlgTest, WorksWhileTheFilmPlays) {
    Open();
    std::uint32_t now = 0;
    bool attached = false;
    Hooks().clock = [&] {
        if (!attached) { // inside the playing loop
            attached = true;
            AttachTo(ship);
            Press(IDOK);
        }
        return now += 2000;
    };
    plugin.Play(0.0f);
    Hooks().clock = nullptr;
    EXPECT_TRUE(attached);
    EXPECT_EQ(Track()->parentObject, ship);
    EXPECT_EQ(PositionOf(*crate), (Vector3{101, 2, 3}));
}

TEST_F(AttachMovieObjectDlgTest, NothingIsCutAndNothingOverlaps) {
    ship->name = "Fishing boat with mast";
    Track()->SetParent(ship, false, "Bip01 R Finger0Nub");
    Open();
    const QWidget* window = NativeWidget(Dialog());
    std::vector<QRect> places;
    for (const int id :
         {IDC_PARENT_OBJECT, IDC_PARENT_ELEMENT, IDC_BROWSE_ELEMENT, IDC_DETACH_PARENT, IDOK, IDCANCEL}) {
        const QWidget* shown = NativeWidget(*Dialog().GetDlgItem(id));
        const std::string text = Dialog().GetDlgItemText(id);
        EXPECT_LE(shown->fontMetrics().horizontalAdvance(QString::fromStdString(text)), shown->width())
            << text;
        EXPECT_TRUE(window->rect().contains(shown->geometry())) << text;
        for (const QRect& other : places) {
            EXPECT_FALSE(other.intersects(shown->geometry())) << text;
        }
        places.push_back(shown->geometry());
    }
}

/// Texts and what the toolkit draws differ with the machine; frames and places don't.
TEST_F(AttachMovieObjectDlgTest, Picture) {
    Track()->SetParent(ship, false, "Mast");
    Open();
    Settle();
    const QImage picture = PictureOf(Dialog());
    std::vector<CRect> texts;
    for (int i = 0; CWnd* child = Dialog().GetWindowChild(i); ++i) {
        CRect place;
        child->GetWindowRect(&place);
        Dialog().ScreenToClient(&place);
        const bool isGroup = place.Width() > 300;
        texts.emplace_back(place.left, place.top, place.right, isGroup ? place.top + 16 : place.bottom);
    }
    ExpectGolden(picture, "tests/timeline", "attach_object", texts);
}
