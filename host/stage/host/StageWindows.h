#pragma once

#include "plugin/contract/Plugin.h"

#include <list>
#include <optional>
#include <string>

class CToolBar;
struct CRuntimeClass;

namespace stage {

/// What the editor host needs of its windows. The main window implements it; tests use a fake.
/// All calls come on the user-interface thread.
class IStageWindows {
public:
    virtual ~IStageWindows() = default;

    /// Number of the active 3D view, negative without one.
    virtual int ActiveView() = 0;
    /// Queues a repaint of one view, or of all with a negative number. Never paints at once.
    virtual void RedrawView(int view) = 0;
    virtual void AttachmentChanged(int view) = 0;

    virtual void SelectionChanged() = 0;
    virtual void ObjectsChanged() = 0; ///< created, deleted, renamed, re-parented, of another class
    virtual void ObjectsMoved() = 0;   ///< transforms of existing objects
    /// An object is about to go, whatever the reason: windows that show it let go of it.
    virtual void ObjectGone(const EditorObject* /*object*/) {}
    virtual void RefreshObjectTree() = 0;
    virtual void RefreshObjectPanel() = 0;
    virtual void LevelChanged() = 0; ///< another level, another path, dirty or clean

    /// Makes the panel from its run-time class and shows it; a panel shown before is destroyed first.
    virtual void ShowPanel(const CRuntimeClass* formClass) = 0;
    /// Destroys the panel, if there is one.
    virtual void HidePanel() = 0;
    virtual bool IsPanelShown() = 0;
    /// Creates the toolbar from the calling plug-in's resources.
    virtual bool AddToolbar(CToolBar* toolbar, unsigned resourceId) = 0;
    /// The toolbar's plug-in goes away: its native window must go before it.
    virtual void RemoveToolbar(CToolBar* toolbar) = 0;
    /// Destroys the plug-ins' modeless windows, while their code is still loaded.
    virtual void DestroyToolWindows() = 0;
    virtual void ShortcutsChanged() = 0;

    virtual std::optional<std::string> BrowseMeshElement(EditorObject* object,
                                                         const std::string& present) = 0;
    virtual std::optional<std::string> BrowseMeshAnimation(EditorObject* object,
                                                           const std::string& present) = 0;
    virtual std::optional<std::string> BrowseFx(int fxKind, const std::string& present) = 0;
    virtual std::optional<float> InputNumber(float present, const std::string& title,
                                             const std::string& prompt) = 0;

    /// Another program has changed the level's file since it was opened or saved here. The path to save
    /// under: the same to overwrite what the other has written, another to keep both, none to save nothing.
    virtual std::optional<std::string> PathForChangedFile(const std::string& path) = 0;

    /// A line for the status bar.
    virtual void Report(const std::string& text) = 0;
    /// A failure that the user must see.
    virtual void ReportError(const std::string& text) = 0;
    /// Why objects can't be deleted.
    virtual void ShowDeleteRefusals(const std::list<DeleteMessage>& messages) = 0;
};

} // namespace stage
