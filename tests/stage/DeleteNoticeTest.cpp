#include "tests/stage/WindowFixture.h"

#include "host/stage/windows/Notice.h"
#include "host/stage/windows/UndoCommands.h"

#include <QAction>
#include <QToolButton>

namespace {

/// A lamp in the films "Intro" and "Harbour", and a cart with two crates on it. The plug-in refuses nothing.
class DeleteNoticeTest : public WindowFixture {
protected:
    DeleteNoticeTest() {
        engine::ObjectSpec spec;
        spec.className = ClassName::GLLight;
        spec.name = "Lamp";
        lamp = window.host.level.CreateObject(spec);
        cart = AddEmpty("Cart", 0, 0, 0);
        crate = AddCrate("Crate", 0, 0, 0);
        barrel = AddCrate("Barrel", 0, 0, 0);
        window.host.level.SetParent(crate, cart);
        window.host.level.SetParent(barrel, cart);
        for (const char* name : {"Intro", "Harbour"}) {
            IFilmManager* films = window.host.level.Data()->filmManager;
            IFilm* film = films->GetFilm(films->AllocateFilm());
            film->SetName(name);
            CFilmTrack* track = film->CreateObjectTrack();
            film->AddTrack(track);
            AsObjectTrack(track)->SetActor(lamp, /*isVirtual*/ false);
        }
        EXPECT_TRUE(window.session.Save(PathOf("start.level")));
        window.session.History().NoteAll();
    }
    void Delete(const ObjectList& objects) {
        window.host.Select(objects);
        Settle();
        Action("EditDelete")->trigger();
    }

    engine::SceneObject* lamp;
    engine::SceneObject* cart;
    engine::SceneObject* crate;
    engine::SceneObject* barrel;
};

} // namespace

TEST_F(DeleteNoticeTest, ItTellsFilmsAndChildrenAndTakesTheDeletionBack) {
    Delete({lamp, cart});
    EXPECT_EQ(window.notice->Text(), "Deleted. Lamp is in Intro and Harbour; Cart carries Crate and Barrel.");
    EXPECT_EQ(window.host.level.FindObject("Lamp"), nullptr);
    window.notice->findChild<QToolButton*>("NoticeAction")->click();
    ASSERT_NE(window.host.level.FindObject("Lamp"), nullptr);
    EXPECT_EQ(window.host.level.FindObject("Crate")->Parent(), window.host.level.FindObject("Cart"));
    EXPECT_FALSE(window.notice->isVisible());
}

TEST_F(DeleteNoticeTest, WhatNothingUsesGoesWithoutAWord) {
    Delete({crate});
    EXPECT_EQ(window.notice->Text(), "");
    EXPECT_FALSE(window.notice->isVisible());
}

TEST_F(DeleteNoticeTest, WhatGoesAlongIsNoUse) {
    Delete({cart, crate, barrel});
    EXPECT_EQ(window.notice->Text(), "");
}

TEST_F(DeleteNoticeTest, EffectsAtTheObjectAreUses) {
    IFilm* film = window.host.level.Data()->filmManager->films[0];
    auto* key = static_cast<CFilmFxKey*>(
        window.host.level.Data()->filmManager->keyFactory->CreateKey(KeyKind::FxParticle));
    key->fxName = "smoke";
    key->objectId = crate->id;
    ASSERT_TRUE(film->tracks.back()->AddKey(key));
    Delete({crate});
    EXPECT_EQ(window.notice->Text(), "Deleted. Crate has effects in Intro.");
}

TEST_F(DeleteNoticeTest, ItGoesWithTheNextEdit) {
    Delete({cart});
    window.session.History().Note();
    EXPECT_TRUE(window.notice->isVisible());
    window.commands.Rename(*lamp, "Lantern");
    window.session.History().NoteAll();
    EXPECT_FALSE(window.notice->isVisible());
}

TEST_F(DeleteNoticeTest, ItGoesWithUndoByKeysAndWithTheLevel) {
    Delete({cart});
    window.undo->Undo();
    EXPECT_FALSE(window.notice->isVisible());
    Delete({window.host.level.FindObject("Cart")});
    window.session.History().Note();
    EXPECT_TRUE(window.notice->isVisible());
    window.session.New();
    EXPECT_FALSE(window.notice->isVisible());
}
