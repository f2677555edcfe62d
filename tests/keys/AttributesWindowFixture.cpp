#include "tests/keys/AttributesWindowFixture.h"

#include "framework/QtBridge.h"
#include "keys/views/TrackKey.h"
#include "tests/support/MouseScript.h"

#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

AttributesWindowTest::AttributesWindowTest() {
    plugin.makeKeyAttributesDlg = [](IPluginImpl& owner) -> std::unique_ptr<IKeyAttributesDlg> {
        return std::make_unique<CFilmKeyAttributesDlg>(owner);
    };
    crate = editor.Create("Crate");
    film = OpenFilmWith({crate});
    track = film->FindObjectTrack(crate);
    for (const int kind : {KeyKind::Position, KeyKind::Rotation, KeyKind::Scale}) {
        track->ClearKind(kind); // those that a new actor gets
    }
    control->ShowFilm(film, /*flag*/ true);
    Settle();
}

AttributesWindowTest::~AttributesWindowTest() {
    plugin.keyAttributesDlg.reset();
    Settle();
}

IFilmKey* AttributesWindowTest::PutKey(int kind, float time, CFilmTrack* on) {
    IFilmKey* key = AddKey(on != nullptr ? on : track, kind, time);
    control->ShowFilm(film, /*flag*/ true);
    return key;
}

CTrackKey* AttributesWindowTest::ViewOf(const IFilmKey* record) {
    for (const CTrackCtrl* row : control->tracks) {
        for (CTrackKey* view : row->keys) {
            if (view->record == record) {
                return view;
            }
        }
    }
    return nullptr;
}

void AttributesWindowTest::Open(const IFilmKey* record) {
    CTrackKey* view = ViewOf(record);
    ASSERT_NE(view, nullptr);
    control->SelectOnly(view);
    view->OnDoubleClick();
    QWidget* widget = NativeWidget(Dialog());
    widget->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(widget));
}

std::vector<std::string> AttributesWindowTest::Lines() {
    std::vector<std::string> lines;
    for (int i = 0; i < Dialog().list.GetCount(); ++i) {
        const auto* row = static_cast<const AttrRow*>(Dialog().list.GetItemDataPtr(i));
        lines.push_back(row->member->name + "=" + GetRowText(*row->member));
    }
    return lines;
}

int AttributesWindowTest::LineOf(const std::string& name) {
    for (int i = 0; i < Dialog().list.GetCount(); ++i) {
        if (Dialog().list.GetText(i) == name) {
            return i;
        }
    }
    ADD_FAILURE() << "no row " << name;
    return 0;
}

void AttributesWindowTest::Edit(const std::string& name, const std::string& text) {
    CRect rect;
    Dialog().list.GetItemRect(LineOf(name), &rect);
    MouseScript(Dialog().list).Press(20, rect.top + 10).Release(20, rect.top + 10);
    Settle();
    if (!text.empty()) {
        QTest::keyClicks(QApplication::focusWidget(), QString::fromStdString(text));
    }
}

void AttributesWindowTest::PressBrowse() {
    MouseScript(Dialog().list.inPlaceButton).Press(5, 5).Release(5, 5);
    Settle();
}

void AttributesWindowTest::Press(int key) {
    QTest::keyClick(NativeWidget(Dialog())->windowHandle(), static_cast<Qt::Key>(key));
    Settle();
}

void AttributesWindowTest::Wheel(int delta) {
    QWidget* edit = NativeWidget(Dialog().list.inPlaceEdit);
    const QPointF place = edit->mapTo(edit->window(), edit->rect().center());
    QWheelEvent wheel(place, edit->window()->mapToGlobal(place), QPoint(), QPoint(0, delta), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&wheel); // as the user's
    qApp->notify(edit->window()->windowHandle(), &wheel);
}

void AttributesWindowTest::LeaveEditor() {
    QWidget* widget = NativeWidget(frame);
    widget->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(widget));
    control->SetFocus();
    Settle();
}

void AttributesWindowTest::ExpectEmpty() {
    EXPECT_EQ(Dialog().key, nullptr);
    EXPECT_EQ(Dialog().record, nullptr);
    EXPECT_TRUE(Dialog().rows.empty());
    EXPECT_EQ(Dialog().list.GetCount(), 0);
    EXPECT_EQ(Dialog().list.activeRow, -1);
    EXPECT_FALSE(Dialog().list.inPlaceEdit.IsWindowVisible());
    EXPECT_FALSE(Dialog().list.inPlaceCombo.IsWindowVisible());
    EXPECT_FALSE(Dialog().list.inPlaceButton.IsWindowVisible());
}
