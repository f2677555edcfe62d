#pragma once

#include "plugin/contract/Plugin.h"

#include <gmock/gmock.h>

/// A plug-in whose calls a test expects one by one.
class MockPlugin : public IPlugin {
public:
    void Reserved1(std::uint32_t) override {}
    void Reserved2() override {}
    void Reserved3(std::uint32_t) override {}
    void Reserved4(std::uint32_t) override {}
    MOCK_METHOD(bool, CanDeleteObjects, (const ObjectList*, std::list<DeleteMessage>*), (override));
    MOCK_METHOD(void, OnObjectDestroyed, (EditorObject*), (override));
    void Reserved5() override {}
    void Reserved6() override {}
    MOCK_METHOD(void, RegisterShortcuts, (), (override));
    MOCK_METHOD(void, GetCommandText, (std::uint32_t, std::uint32_t, char*), (override));
    MOCK_METHOD(void, OnEditorReady, (), (override));
    MOCK_METHOD(void, OnActivate, (bool), (override));
    MOCK_METHOD(void, OnEditorClosing, (), (override));
    MOCK_METHOD(void, OnCommand, (std::uint32_t, std::uint32_t), (override));
    MOCK_METHOD(void, OnNew, (), (override));
    PluginCommandId GetPluginId() override { return id; }
    int GetPluginKind() override { return 6; }
    MOCK_METHOD(void, OnShortcut, (Word, int, Word), (override));
    MOCK_METHOD(void, OnRender, (), (override));
    MOCK_METHOD(bool, OnObjectMenu, (CMenu*, Word, Word, EditorObject*), (override));
    MOCK_METHOD(bool, OnViewMenu, (CMenu*), (override));
    MOCK_METHOD(void, OnEvent, (int, void*), (override));
    MOCK_METHOD(void, OnViewRequest, (int, Word, void*, bool*), (override));
    MOCK_METHOD(bool, SaveChunks, (fs::file&, IHostObject*), (override));
    MOCK_METHOD(bool, LoadChunk, (IHostObject*, fs::file&, std::uint16_t, std::uint32_t), (override));
    MOCK_METHOD(bool, IsOwnChunk, (Word, std::uint16_t), (override));
    bool Reserved19(Word) override { return false; }
    void Reserved20(Word, Word) override {}
    Word Reserved21(Word, Word, Word, Word) override { return 0; }

    PluginCommandId id = PluginCommandId::FromPluginNumber(1);
};
