#pragma once

#include "tests/support/PlainPlugin.h"

#include <gmock/gmock.h>

/// A plug-in whose calls a test expects one by one.
class MockPlugin : public PlainPlugin {
public:
    MockPlugin();
    ~MockPlugin() override;
    MOCK_METHOD(bool, CanDeleteObjects, (const ObjectList*, std::list<DeleteMessage>*), (override));
    MOCK_METHOD(void, OnObjectDestroyed, (EditorObject*), (override));
    MOCK_METHOD(void, RegisterShortcuts, (), (override));
    MOCK_METHOD(void, GetCommandText, (std::uint32_t, std::uint32_t, char*), (override));
    MOCK_METHOD(void, OnEditorReady, (), (override));
    MOCK_METHOD(void, OnActivate, (bool), (override));
    MOCK_METHOD(void, OnEditorClosing, (), (override));
    MOCK_METHOD(void, OnCommand, (std::uint32_t, std::uint32_t), (override));
    MOCK_METHOD(void, OnNew, (), (override));
    MOCK_METHOD(void, OnShortcut, (Word, int, Word), (override));
    MOCK_METHOD(void, OnRender, (), (override));
    MOCK_METHOD(bool, OnObjectMenu, (CMenu*, Word, Word, EditorObject*), (override));
    MOCK_METHOD(bool, OnViewMenu, (CMenu*), (override));
    MOCK_METHOD(void, OnEvent, (int, void*), (override));
    MOCK_METHOD(void, OnViewRequest, (int, Word, void*, bool*), (override));
    MOCK_METHOD(bool, SaveChunks, (fs::file&, IHostObject*), (override));
    MOCK_METHOD(bool, LoadChunk, (IHostObject*, fs::file&, std::uint16_t, std::uint32_t), (override));
    MOCK_METHOD(bool, IsOwnChunk, (Word, std::uint16_t), (override));
};
