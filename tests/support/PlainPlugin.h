#pragma once

#include "plugin/contract/Plugin.h"

/// A plug-in that adds nothing and lets everything be done; tests override what they look at.
class PlainPlugin : public IPlugin {
public:
    void Reserved1(std::uint32_t) override {}
    void Reserved2() override {}
    void Reserved3(std::uint32_t) override {}
    void Reserved4(std::uint32_t) override {}
    bool CanDeleteObjects(const ObjectList*, std::list<DeleteMessage>*) override { return true; }
    void OnObjectDestroyed(EditorObject*) override {}
    void Reserved5() override {}
    void Reserved6() override {}
    void RegisterShortcuts() override {}
    void GetCommandText(std::uint32_t, std::uint32_t, char*) override {}
    void OnEditorReady() override {}
    void OnActivate(bool) override {}
    void OnEditorClosing() override {}
    void OnCommand(std::uint32_t, std::uint32_t) override {}
    PluginCommandId GetPluginId() override { return id; }
    int GetPluginKind() override { return kind; }
    bool OnObjectMenu(CMenu*, Word, Word, EditorObject*) override { return false; }
    bool OnViewMenu(CMenu*) override { return false; }
    void OnEvent(int, void*) override {}
    void OnViewRequest(int, Word, void*, bool*) override {}
    bool Reserved19(Word) override { return false; }
    void Reserved20(Word, Word) override {}
    Word Reserved21(Word, Word, Word, Word) override { return 0; }

    PluginCommandId id;
    int kind = 1;
};
