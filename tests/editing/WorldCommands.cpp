// Menus, toolbar and settings of the scenario window.
#include "framework/QtBridge.h"
#include "framework/Resource.h"
#include "keys/views/TrackKey.h"
#include "plugin/base/PluginResources.h"
#include "resources/resource.h"
#include "tests/editing/World.h"

#include <algorithm>
#include <iterator>
#include <QCoreApplication>
#include <QEvent>
#include <QPixmap>
#include <QWidget>

namespace editing {

namespace {

constexpr UINT kKeyCommands[] = {
    IDC_REMOVE_KEY,      IDC_REMOVE_KEY,       IDC_SET_POSITION,      IDC_SET_POSITION,
    IDC_SET_DURATION,    IDC_SET_DURATION,     IDC_CALC_KEY_DURATION, IDC_COPY_ATTRIBUTES,
    IDC_COPY_ATTRIBUTES, IDC_PASTE_ATTRIBUTES, IDC_PASTE_ATTRIBUTES,  IDC_IN_SMOOTH,
    IDC_IN_LINEAR,       IDC_IN_SLOWDOWN,      IDC_IN_SPEEDUP,        IDC_IN_USER,
    IDC_OUT_SMOOTH,      IDC_OUT_LINEAR,       IDC_OUT_SLOWDOWN,      IDC_OUT_SPEEDUP,
    IDC_OUT_USER,        IDC_IN_INVERSE,       IDC_OUT_INVERSE};

/// What takes rows away comes seldom, so that there is something to edit.
constexpr UINT kRowCommands[] = {IDC_ADD_KEY,          IDC_ADD_KEY,
                                 IDC_ADD_KEY,          IDC_ADD_KEY,
                                 IDC_ADD_KEY,          IDC_ADD_KEY,
                                 IDC_ADD_KEY,          IDC_PASTE_KEY,
                                 IDC_PASTE_KEY,        IDC_PASTE_KEY,
                                 IDC_PASTE_KEY,        IDC_PASTE_KEY,
                                 IDC_HIDE_TRACK,       IDC_HIDE_TRACK,
                                 IDC_REMOVE_ACTOR,     IDC_REMOVE_TRACK,
                                 IDC_CHANGE_ACTOR,     IDC_CHANGE_ACTOR,
                                 IDC_FILTER_KEYS,      IDC_FILTER_KEYS,
                                 IDC_FILTER_KEYS,      IDC_ADD_CAMERA_TRACK,
                                 IDC_EXPORT_TRACK,     IDC_EXPORT_TRACK,
                                 IDC_IMPORT_TRACK,     IDC_IMPORT_TRACK,
                                 IDC_IMPORT_TRACK,     IDC_CAMERA_PARAMETERS,
                                 IDC_TRACK_PARAMETERS, IDC_CAMERA_PARAMETERS,
                                 IDC_TRACK_PARAMETERS, IDC_ATTACH_ROW_TO_OBJECT,
                                 IDC_ADJUST_TIME,      IDC_ATTACH_ROW_TO_OBJECT};

constexpr UINT kMainCommands[] = {
    IDC_SETTINGS,      IDC_SETTINGS,      IDC_ADD_ACTORS,  IDC_ADD_ACTORS,      IDC_REMOVE_ACTORS,
    IDC_PLAY_MOVIE,    IDC_STOP_MOVIE,    IDC_ADD_CAMERA,  IDC_ADD_CAMERA,      IDC_VALIDATE_MOVIE,
    IDC_FILTER_ACTORS, IDC_FILTER_ACTORS, IDC_ADJUST_TIME, IDC_SET_MOVIE_FRAME, IDC_SET_MOVIE_FRAME,
    IDC_ADD_GL_LIGHT,  IDC_ADD_DYN_LIGHT};

constexpr UINT kToolbarCommands[] = {IDC_PLAY_MOVIE,
                                     IDC_STOP_MOVIE,
                                     IDC_VALIDATE_MOVIE,
                                     IDC_ANIMATE_OBJECT,
                                     IDC_ATTACH_MOVIE,
                                     IDC_MOVE_TO_BEGIN,
                                     IDC_MOVE_TO_END,
                                     IDC_UNDO,
                                     IDC_REDO,
                                     IDC_FRAME_BACK,
                                     IDC_FRAME_FORWARD,
                                     IDC_CREATE_CAMERA_FRAME,
                                     IDC_CREATE_CAMERA_FRAME,
                                     IDC_CREATE_CAMERA_FRAME,
                                     IDC_TO_VIRTUAL_OBJECT,
                                     IDC_KEY_FRAME_BACK,
                                     IDC_KEY_FRAME_FORWARD,
                                     IDC_DESELECT_KEYS,
                                     IDC_SELECT_KEY};

/// Films with more tracks than this get no further ones, and so it is with the camera rows of a level row.
constexpr std::size_t kMostTracks = 20;
constexpr std::size_t kMostChildren = 20;

template <std::size_t count> UINT Chosen(const UINT (&commands)[count], int number) {
    return commands[static_cast<std::size_t>(number) % count];
}

bool IsOffered(CTrackCtrl& row, UINT command) {
    constexpr UINT kNoItem = 0xFFFFFFFF;
    const ResourceScope resources(PluginResources());
    CMenu source;
    CMenu menu;
    source.LoadMenu(IDR_ROW_MENU);
    menu.CreatePopupMenu();
    row.FillRowMenu(&menu, &source);
    const UINT state = menu.GetMenuState(command, MF_BYCOMMAND);
    return state != kNoItem && (state & (MF_GRAYED | MF_DISABLED)) == 0;
}

float Seconds(int number, int most) {
    return static_cast<float>(number % (most * 100)) / 100.0f;
}

} // namespace

void World::ChooseInMenu(CTrackCtrl* row, CTrackKey* key, UINT command) {
    menuChoice = command;
    Control()->ShowContextMenu(mouse.x, mouse.y, row, key);
    QCoreApplication::sendPostedEvents(); // the choice
    menuChoice = 0;
}

void World::KeyMenu(const Step& step) {
    auto [row, key] = KeyOf(step.numbers[0]);
    if (row == nullptr) {
        return;
    }
    const UINT command = Chosen(kKeyCommands, step.numbers[1]);
    // Most keys are of another kind than the one that was copied.
    const CTrackKey* source = Control()->keyDuplicator.sourceKey;
    if (command == IDC_PASTE_ATTRIBUTES && source != nullptr && source->record != nullptr) {
        for (CTrackCtrl* taking : Control()->visibleTracks) {
            if (taking->kind == source->record->kind && !taking->keys.empty()) {
                row = taking;
                key = taking->keys[0];
            }
        }
    }
    tally.mostRemoved += command == IDC_REMOVE_KEY ? 1 : 0;
    ChooseInMenu(row, key, command);
}

void World::RowMenu(const Step& step) {
    const UINT command = Chosen(kRowCommands, step.numbers[1]);
    CTrackCtrl* row = RowOf(step.numbers[0]);
    if (row != nullptr && step.numbers[2] % 3 != 0) { // most rows don't offer most commands
        const auto& rows = Control()->visibleTracks;
        const auto offering =
            std::ranges::find_if(rows, [&](CTrackCtrl* candidate) { return IsOffered(*candidate, command); });
        row = offering != rows.end() && !IsOffered(*row, command) ? *offering : row;
    }
    if (row == nullptr || IsFull(command, row)) {
        return;
    }
    // Most rows offer no paste, since they take another kind than the key that was copied.
    const CTrackKey* source = Control()->keyDuplicator.sourceKey;
    if (command == IDC_PASTE_KEY && source != nullptr && step.numbers[2] % 4 != 0) {
        const auto& rows = Control()->visibleTracks;
        const auto taking = std::ranges::find(rows, source->record->kind, &CTrackCtrl::kind);
        row = taking != rows.end() ? *taking : row;
    }
    ChooseInMenu(row, nullptr, command);
}

void World::MainMenu(const Step& step) {
    const UINT command = Chosen(kMainCommands, step.numbers[0]);
    if (Control() != nullptr && !IsFull(command, nullptr)) {
        ChooseInMenu(nullptr, nullptr, command);
    }
}

/// Long runs would fill films and level with what is only ever added.
bool World::IsFull(UINT command, const CTrackCtrl* row) const {
    constexpr std::size_t kMostObjects = 40;
    const IFilm* film = plugin.GetCurrentFilm();
    switch (command) {
    case IDC_ADD_CAMERA:
        return film != nullptr && film->tracks.size() >= kMostTracks;
    case IDC_ADD_GL_LIGHT:
    case IDC_ADD_DYN_LIGHT:
        return editor.level.Data() == nullptr || editor.level.Data()->Objects().size() >= kMostObjects;
    case IDC_ADD_CAMERA_TRACK:
        return row != nullptr && row->children.size() >= kMostChildren;
    default:
        return false;
    }
}

/// An enabled item of a menu that the plug-in filled for the host.
void World::ChooseInHostMenu(const CMenu& menu, int number) {
    std::vector<UINT> offered;
    for (const MenuItem& item : menu.Items()) {
        if (item.id != 0 && (item.flags & (MF_GRAYED | MF_DISABLED | MF_SEPARATOR)) == 0) {
            offered.push_back(item.id);
        }
    }
    if (!offered.empty()) {
        const PluginCommandId chosen{offered[static_cast<std::size_t>(number) % offered.size()]};
        ++tried[chosen.LocalCommand()];
        plugin.OnCommand(chosen.PluginNumber(), chosen.LocalCommand());
    }
}

void World::ObjectMenu(const Step& step) {
    if (EditorObject* object = ObjectOf(step.numbers[0])) {
        CMenu menu;
        menu.CreatePopupMenu();
        plugin.OnObjectMenu(&menu, 0, 0, object);
        Interrupt(); // while it is open
        ChooseInHostMenu(menu, step.numbers[1]);
    }
}

void World::ViewMenu(const Step& step) {
    CMenu menu;
    menu.CreatePopupMenu();
    plugin.OnViewMenu(&menu);
    ChooseInHostMenu(menu, step.numbers[1]);
}

void World::PluginToolbar(const Step& step) {
    const ToolBarButton& button =
        plugin.toolbar.Buttons()[static_cast<std::size_t>(step.numbers[0]) % plugin.toolbar.Buttons().size()];
    const PluginCommandId command{button.id};
    if (button.id != 0 && (button.state & TBSTATE_ENABLED) != 0) {
        ++tried[command.LocalCommand()];
        plugin.OnCommand(command.PluginNumber(), command.LocalCommand());
    }
}

void World::StaleCommand(const Step& step) {
    const UINT commands[] = {Chosen(kKeyCommands, step.numbers[1]), Chosen(kKeyCommands, step.numbers[1]),
                             Chosen(kRowCommands, step.numbers[1]),
                             UINT{36800} + static_cast<UINT>(step.numbers[1] % 3)};
    if (CFilmsMainCtrl* control = Control()) {
        control->SendMessage(WM_COMMAND, Chosen(commands, step.numbers[0]));
    }
}

void World::Toolbar(const Step& step) {
    if (Control() != nullptr) {
        const UINT command = Chosen(kToolbarCommands, step.numbers[0]);
        ++tried[command];
        window->SendMessage(WM_COMMAND, command);
    }
}

void World::Undo(const Step& /*step*/) {
    if (CFilmsMainCtrl* control = Control()) {
        control->undoMgr.Undo();
    }
}

void World::Fold(const Step& step) {
    CFilmsMainCtrl* control = Control();
    if (control == nullptr) {
        return;
    }
    if (step.numbers[1] % 3 != 0) {
        UnfoldAll();
    } else if (CTrackCtrl* row = RowOf(step.numbers[0])) {
        row->ToggleExpanded();
    }
}

/// As the filter dialogs do it.
void World::Filter(const Step& step) {
    CTrackCtrl* row = RowOf(step.numbers[0]);
    if (row == nullptr) {
        return;
    }
    KeyFilter flags{};
    switch (step.numbers[1] % 3) {
    case 0:
        row->ApplyKindFlags(nullptr, /*show*/ true);
        break;
    case 1:
        std::ranges::generate(flags, [this] { return static_cast<std::uint8_t>(luck.OneIn(3) ? 0 : 1); });
        row->ApplyKindFlags(flags.data(), /*show*/ step.numbers[2] % 4 != 0);
        break;
    default:
        row->SetKindFlag(step.numbers[2] % 24 - 2, step.numbers[1] % 2 == 0);
        break;
    }
    Control()->RebuildVisibleRows(/*redraw*/ true, nullptr);
}

void World::RemoveRow(const Step& step) {
    if (CTrackCtrl* row = RowOf(step.numbers[0])) {
        Control()->RemoveTrackCtrl(row, /*redraw*/ true);
    }
}

void World::Resize(const Step& step) {
    if (Control() != nullptr) {
        window->SetWindowPos(nullptr, 0, 0, 500 + step.numbers[0] % 700, 100 + step.numbers[1] % 800,
                             SWP_NOMOVE | SWP_NOZORDER);
    }
}

void World::MovieRange(const Step& step) {
    if (CFilmsMainCtrl* control = Control()) {
        control->SetMovieRange(Seconds(step.numbers[0], 3) - 1.0f, Seconds(step.numbers[1], 12));
    }
}

void World::ViewRange(const Step& step) {
    if (CFilmsMainCtrl* control = Control()) {
        const float start = Seconds(step.numbers[0], 8);
        control->SetViewRange(start, start + Seconds(step.numbers[1], 12), /*redraw*/ true);
    }
}

void World::Tics(const Step& step) {
    static constexpr float distances[] = {1.0f / 30.0f, 0.1f, 0.5f, 1.0f, 2.0f, 0.0f, -1.0f};
    if (CFilmsMainCtrl* control = Control()) {
        control->SetTicsDistance(distances[step.numbers[0] % 7], /*redraw*/ true);
        control->SetBigTics(step.numbers[1] % 8, /*redraw*/ false);
    }
}

/// The film's time gets an interval longer or shorter, as one row tells it.
void World::AdjustTime(const Step& step) {
    if (CTrackCtrl* row = RowOf(step.numbers[0])) {
        row->AdjustKeys(Seconds(step.numbers[1], 8), 0.1f + Seconds(step.numbers[1] / 7, 4),
                        0.1f + Seconds(step.numbers[2], 6));
        Control()->ShowFilm(plugin.GetCurrentFilm(), /*flag*/ true);
    }
}

void World::ChangeElement(const Step& step) {
    static const std::string elements[] = {"", "arm", "hand", "hip", "tail"};
    CTrackCtrl* row = RowOf(step.numbers[0]);
    if (row != nullptr) {
        row->SetCurrentKeyElement(elements[step.numbers[1] % 5], plugin.FindObjectByTrack(row->track));
    }
}

void World::OpenClose(const Step& step) {
    if (Control() == nullptr) {
        return;
    }
    window->SendMessage(step.numbers[0] % 2 == 0 ? WM_CLOSE : WM_TIMER);
    window->Show();
}

/// The window goes, as with the program's main window; behind the step there is a new one.
void World::CloseWindow(const Step& /*step*/) {
    if (Control() != nullptr) {
        window->DestroyWindow();
    }
}

void World::Paint(const Step& /*step*/) {
    QCoreApplication::sendPostedEvents();
    if (Control() != nullptr) {
        NativeWidget(*window)->grab();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace editing
