#pragma once

#include "host/stage/host/StageWindows.h"

#include <vector>

/// Windows that keep count and answer what a test set.
class FakeWindows : public stage::IStageWindows {
public:
    int ActiveView() override { return activeView; }
    void RedrawView(int view) override { redrawn.push_back(view); }
    void AttachmentChanged(int view) override { attachmentChanges.push_back(view); }
    void SelectionChanged() override { ++selectionChanges; }
    void ObjectsChanged() override { ++objectChanges; }
    void ObjectsMoved() override { ++objectMoves; }
    void ObjectGone(const EditorObject* object) override { gone.push_back(object); }
    void RefreshObjectTree() override { ++treeRefreshes; }
    void RefreshObjectPanel() override { ++panelRefreshes; }
    void LevelChanged() override { ++levelChanges; }
    void ShowPanel(const CRuntimeClass* formClass) override { panel = formClass; }
    void HidePanel() override { panel = nullptr; }
    bool IsPanelShown() override { return panel != nullptr; }
    bool AddToolbar(CToolBar* toolbar, unsigned resourceId) override {
        toolbars.push_back(toolbar);
        toolbarResource = resourceId;
        return true;
    }
    void RemoveToolbar(CToolBar* toolbar) override { std::erase(toolbars, toolbar); }
    void DestroyToolWindows() override { ++toolWindowEnds; }
    void ShortcutsChanged() override { ++shortcutChanges; }
    std::optional<std::string> BrowseMeshElement(EditorObject*, const std::string&) override {
        return browsed;
    }
    std::optional<std::string> BrowseMeshAnimation(EditorObject*, const std::string&) override {
        return browsed;
    }
    std::optional<std::string> BrowseFx(int kind, const std::string&) override {
        fxKind = kind;
        return browsed;
    }
    std::optional<float> InputNumber(float, const std::string& title, const std::string& prompt) override {
        inputTexts = title + "|" + prompt;
        return number;
    }
    std::optional<std::string> PathForChangedFile(const std::string& path) override {
        changedFiles.push_back(path);
        return pathForChangedFile;
    }
    void Report(const std::string& text) override { reports.push_back(text); }
    void ReportError(const std::string& text) override { errors.push_back(text); }
    void ShowDeleteRefusals(const std::list<DeleteMessage>& messages) override { refusals = messages; }

    int activeView = 0;
    std::vector<int> redrawn;
    std::vector<int> attachmentChanges;
    int selectionChanges = 0;
    int objectChanges = 0;
    int objectMoves = 0;
    std::vector<const EditorObject*> gone;
    int treeRefreshes = 0;
    int panelRefreshes = 0;
    int levelChanges = 0;
    int shortcutChanges = 0;
    int toolWindowEnds = 0;
    int fxKind = -1;
    const CRuntimeClass* panel = nullptr;
    std::vector<CToolBar*> toolbars;
    unsigned toolbarResource = 0;
    std::optional<std::string> browsed;
    std::optional<float> number;
    std::string inputTexts;
    std::vector<std::string> changedFiles;
    std::optional<std::string> pathForChangedFile;
    std::vector<std::string> reports;
    std::vector<std::string> errors;
    std::list<DeleteMessage> refusals;
};
