#pragma once

#include "host/stage/headless/Headless.h"
#include "host/stage/host/EditorHost.h"
#include "host/stage/host/LevelSession.h"

namespace stage {

/// Windows that are not there: reports are kept for who asks, questions are cancelled.
class QuietWindows : public IStageWindows {
public:
    int ActiveView() override { return 0; }
    void RedrawView(int) override {}
    void AttachmentChanged(int) override {}
    void SelectionChanged() override {}
    void ObjectsChanged() override {}
    void ObjectsMoved() override {}
    void RefreshObjectTree() override {}
    void RefreshObjectPanel() override {}
    void LevelChanged() override {}
    void ShowPanel(const CRuntimeClass*) override {}
    void HidePanel() override {}
    bool IsPanelShown() override { return false; }
    bool AddToolbar(CToolBar* toolbar, unsigned resourceId) override;
    void RemoveToolbar(CToolBar*) override {}
    void DestroyToolWindows() override {}
    void ShortcutsChanged() override {}
    std::optional<std::string> BrowseMeshElement(EditorObject*, const std::string&) override { return {}; }
    std::optional<std::string> BrowseMeshAnimation(EditorObject*, const std::string&) override { return {}; }
    std::optional<std::string> BrowseFx(int, const std::string&) override { return {}; }
    std::optional<float> InputNumber(float, const std::string&, const std::string&) override { return {}; }
    std::optional<std::string> PathForChangedFile(const std::string&) override { return {}; }
    void Report(const std::string& text) override;
    void ReportError(const std::string& text) override { Report(text); }
    void ShowDeleteRefusals(const std::list<DeleteMessage>&) override {}

    std::vector<std::string> reports;
};

/// The whole editor host for films that are rendered without a window: the plug-ins read their chunks, so
/// that a film's lights are there.
class HeadlessStage : public headless::HeadlessHost {
public:
    HeadlessStage(HostFolders folders, const std::vector<std::string>& plugins);
    ~HeadlessStage() override;

    engine::Level& Level() override { return host.level; }
    mesh::GltfMeshLibrary& Meshes() override { return host.meshes; }
    engine::LevelMessages Open(const std::string& path) override;
    std::vector<std::string> TakeTroubles() override;
    void Begin(IFilm& film) override;
    void End(IFilm& film) override;

    QuietWindows windows;
    EditorHost host;
    LevelSession session;
};

} // namespace stage
