#include "tests/editing/Operations.h"

#include "tests/editing/World.h"

#include <algorithm>

namespace editing {

std::span<const Operation> Operations() {
    constexpr int any = Operation::kAny;
    static const Operation all[] = {
        // Mouse and keyboard. A press may select an object or a camera, which rebuilds nothing; what a
        // release adds is a clone, what it removes the key that the user was asked about.
        {"press-key", 120, &World::PressKey, 0, 0},
        {"press-empty", 20, &World::PressEmpty, 0, 0},
        {"press-name", 12, &World::PressName, any, any},
        {"press-ruler", 25, &World::PressRuler, any, any},
        {"press-bar", 12, &World::PressBar, 0, 0},
        {"drag", 20, &World::Drag, 0, 0},
        {"release", 12, &World::Release, 1, 1},
        {"lose-capture", 6, &World::LoseCapture, 0, 0},
        {"double-click", 10, &World::DoubleClick, 0, 0},
        {"hover", 15, &World::Hover, 0, 0},
        {"timer", 5, &World::Timer, 0, 0},
        {"key-press", 20, &World::KeyPress, any, any},
        {"wheel", 10, &World::Wheel, 0, 0},
        // The attributes window. It writes values; what its questions and browsers let in is told on its own.
        {"attributes-open", 25, &World::AttributesOpen, 0, 0},
        {"attributes-row", 90, &World::AttributesRow, 0, 0},
        {"attributes-type", 25, &World::AttributesType, 0, 0},
        {"attributes-wheel", 10, &World::AttributesWheel, 0, 0},
        {"attributes-choice", 12, &World::AttributesChoice, 0, 0},
        {"attributes-next", 15, &World::AttributesNext, 0, 0},
        {"attributes-key", 10, &World::AttributesKey, 0, 0},
        {"attributes-close", 3, &World::AttributesClose, 0, 0},
        {"attributes-browse", 20, &World::AttributesBrowse, 0, 0},
        {"attributes-link", 6, &World::AttributesLink, 0, 0},
        {"attributes-leave", 6, &World::AttributesLeave, 0, 0},
        // Menus and windows.
        {"key-menu", 90, &World::KeyMenu, 0, 0},
        {"row-menu", 80, &World::RowMenu, any, any},
        {"main-menu", 30, &World::MainMenu, any, any},
        {"stale-command", 20, &World::StaleCommand, any, any},
        {"toolbar", 20, &World::Toolbar, any, any},
        {"undo", 4, &World::Undo, 0, 0},
        {"fold", 10, &World::Fold, 0, 0},
        {"filter", 12, &World::Filter, 0, 0},
        {"remove-row", 1, &World::RemoveRow, any, any},
        {"resize", 4, &World::Resize, 0, 0},
        {"movie-range", 3, &World::MovieRange, 0, 0},
        {"view-range", 8, &World::ViewRange, 0, 0},
        {"tics", 5, &World::Tics, 0, 0},
        {"adjust-time", 3, &World::AdjustTime, any, 0},
        {"change-element", 3, &World::ChangeElement, any, 0},
        {"open-close", 2, &World::OpenClose, any, 0},
        // Never drawn by itself: it happens behind a dialog, a box or a menu.
        {"close-window", 0, &World::CloseWindow, any, any},
        {"paint", 20, &World::Paint, 0, 0},
        // The host's menus and panel with the plug-in's items, and windows beside the scenario window.
        {"object-menu", 8, &World::ObjectMenu, 0, 0},
        {"view-menu", 3, &World::ViewMenu, 0, 0},
        {"plugin-toolbar", 5, &World::PluginToolbar, any, any},
        {"panel", 6, &World::Panel, any, any},
        {"modeless", 15, &World::Modeless, any, any},
        // Level, host and films.
        {"create-object", 3, &World::CreateObject, any, 0},
        {"delete-objects", 5, &World::DeleteObjects, any, any},
        {"select-objects", 8, &World::SelectObjects, any, any},
        {"move-object", 30, &World::MoveObject, any, 0},
        {"animate", 6, &World::Animate, 0, 0},
        {"show-film", 6, &World::ShowFilm, any, 0},
        {"show-again", 3, &World::ShowAgain, any, 0},
        {"new-film", 1, &World::NewFilm, any, 0},
        {"delete-film", 1, &World::DeleteFilm, any, any},
        {"save-level", 1, &World::SaveLevel, any, 0},
        {"load-level", 4, &World::LoadLevel, any, any},
        {"leave-level", 0, &World::NewLevel, any, any},
        {"host-event", 2, &World::HostEvent, any, 0},
        {"render", 6, &World::Render, 0, 0},
        {"set-time", 10, &World::SetTime, 0, 0},
        {"play", 5, &World::Play, any, 0},
        {"stop", 2, &World::Stop, 0, 0},
    };
    return all;
}

int FindOperation(const std::string& name) {
    const auto all = Operations();
    const auto found = std::ranges::find(all, name, &Operation::name);
    return found != all.end() ? static_cast<int>(found - all.begin()) : -1;
}

} // namespace editing
