#include "host/stage/windows/films/FilmCommands.h"
#include "host/stage/windows/films/ScenarioKeys.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/ToolWindows.h"
#include "plugin/contract/KeyKind.h"

#include <QAction>
#include <QMenuBar>

namespace stage {

namespace {

struct KeyEntry {
    int kind;
    const char* text;
    const char* name;
};

constexpr KeyEntry kAddedKeys[] = {
    {KeyKind::Animation, QT_TR_NOOP("&Animation..."), "FilmsAddAnimation"},
    {KeyKind::Speech, QT_TR_NOOP("&Speech..."), "FilmsAddSpeech"},
    {KeyKind::Sound, QT_TR_NOOP("S&ound..."), "FilmsAddSound"},
    {KeyKind::FxSequence, QT_TR_NOOP("Effect: se&quence..."), "FilmsAddSequence"},
    {KeyKind::FxParticle, QT_TR_NOOP("Effect: &particles..."), "FilmsAddParticle"},
    {KeyKind::FxTrace, QT_TR_NOOP("Effect: &trace..."), "FilmsAddTrace"},
    {KeyKind::FxFlare, QT_TR_NOOP("Effect: &flare..."), "FilmsAddFlare"},
    {KeyKind::Color, QT_TR_NOOP("&Colour of a light..."), "FilmsAddColor"},
};

} // namespace

void MainWindow::MakeFilmsMenu() {
    QMenu* menu = menuBar()->addMenu(tr("F&ilms"));
    menu->setObjectName("FilmsMenu");
    scenarioKeys = new ScenarioKeys(
        host.level, *toolWindows, [this](const std::string& text) { Report(text); }, this);
    filmCommands = std::make_unique<FilmCommands>(*this);
    AddAction(
        *menu, tr("&New film..."), {}, [this] { filmCommands->New(); }, "FilmsNew");
    AddAction(
        *menu, tr("&Rename film..."), {}, [this] { filmCommands->Rename(); }, "FilmsRename");
    AddAction(
        *menu, tr("&Duplicate film..."), {}, [this] { filmCommands->Duplicate(); }, "FilmsDuplicate");
    AddAction(
        *menu, tr("D&elete film"), {}, [this] { filmCommands->Delete(); }, "FilmsDelete");
    menu->addSeparator();
    AddAction(
        *menu, tr("Add &camera here"), {}, [this] { filmCommands->AddCamera(); }, "FilmsAddCamera")
        ->setToolTip(tr("In the open film, where the active view looks from"));
    AddAction(
        *menu, tr("Add camera at the selected &object"), {}, [this] { filmCommands->AddCameraFromObject(); },
        "FilmsAddCameraFromObject")
        ->setToolTip(
            tr("In the open film, where a camera of the level looks from, or along any other object"));
    QMenu* keys = menu->addMenu(tr("&Add key at the cursor"));
    for (const KeyEntry& entry : kAddedKeys) {
        AddAction(
            *keys, tr(entry.text), {}, [this, kind = entry.kind] { filmCommands->AddKey(kind); }, entry.name);
    }
    menu->addSeparator();
    QAction* loop = AddAction(
        *menu, tr("&Loop"), {}, [] {}, "FilmsLoop");
    loop->setCheckable(true);
    connect(loop, &QAction::toggled, scenarioKeys, &ScenarioKeys::SetLooping);
    connect(scenarioKeys, &ScenarioKeys::LoopingChanged, loop, &QAction::setChecked);
    QAction* extras = AddAction(
        *menu, tr("&Extra keys in the Scenario window"), {}, [] {}, "FilmsExtraKeys");
    extras->setCheckable(true);
    extras->setChecked(ScenarioKeys::IsOn());
    connect(extras, &QAction::toggled, this, [this](bool on) {
        ScenarioKeys::SetOn(on);
        Report(on ? "Stage's own keys work in the Scenario window"
                  : "The Scenario window has the plug-in's keys alone");
    });
}

void MainWindow::AddFilmListMenu() {
    QList<QAction*> actions;
    for (const char* name : {"FilmsNew", "", "FilmsRename", "FilmsDuplicate", "FilmsDelete"}) {
        actions.append(findChild<QAction*>(*name != '\0' ? name : "none"));
    }
    filmCommands->AttachMenu(actions);
}

CWnd* MainWindow::OpenFilmsPanel() {
    if (panelForm == nullptr) {
        OpenPanel();
    }
    return panelForm;
}

} // namespace stage
