#pragma once

#include "plugin/contract/File.h"
#include "plugin/contract/HostObject.h"
#include "plugin/contract/PluginCommandId.h"
#include "plugin/contract/Types.h"

#include <cstdint>
#include <list>
#include <string>

class CMenu;
class IEditor;
class IEditorView;

/// A reason why an object can't be deleted.
struct DeleteMessage {
    std::string text;
    EditorObject* object = nullptr;
    std::uint32_t zero = 0;
};

/// Takes the objects that the level's object list leaves out.
class IObjectCollection {
public:
    virtual ~IObjectCollection() = default;
    virtual bool Contains(const EditorObject* object) const = 0;
    virtual void Add(EditorObject* object) = 0;
};

/// Data of event 20.
struct HiddenObjectsRequest {
    IObjectCollection* collection = nullptr;
};

/// What a plug-in answers to the host. All calls come on the host's user-interface thread. The
/// operations named Reserved belong to other plug-ins; their order and arguments are the host's.
class IPlugin {
public:
    virtual void Reserved1(std::uint32_t) = 0;
    virtual void Reserved2() = 0;
    virtual void Reserved3(std::uint32_t) = 0;
    virtual void Reserved4(std::uint32_t) = 0;
    virtual bool CanDeleteObjects(const ObjectList* objects, std::list<DeleteMessage>* messages) = 0;
    virtual void OnObjectDestroyed(EditorObject* object) = 0;
    virtual void Reserved5() = 0;
    virtual void Reserved6() = 0;
    virtual void RegisterShortcuts() = 0;
    /// `text` has room for at least 64 bytes.
    virtual void GetCommandText(std::uint32_t pluginNumber, std::uint32_t localCommand, char* text) = 0;
    virtual void OnEditorReady() = 0;
    virtual void OnActivate(bool active) = 0;
    virtual void OnEditorClosing() = 0;
    virtual void OnCommand(std::uint32_t pluginNumber, std::uint32_t localCommand) = 0;
    virtual void OnNew() {}
    virtual PluginCommandId GetPluginId() = 0;
    virtual int GetPluginKind() = 0;
    using Word = std::uint32_t;
    virtual void Reserved7(Word, Word, Word, Word, Word, Word) {}
    virtual void Reserved8(Word, Word, Word, Word, Word, Word) {}
    virtual void Reserved9(Word, Word, Word, Word, Word, Word) {}
    virtual void Reserved10(Word, Word, Word, Word, Word, Word) {}
    virtual void Reserved11(Word, Word, Word, Word, Word, Word) {}
    virtual void Reserved12(Word, Word, Word, Word, Word, Word) {}
    virtual void Reserved13(Word, Word, Word, Word, Word, Word) {}
    virtual void Reserved14(Word, Word, Word, Word, Word, Word) {}
    virtual void Reserved15(Word, Word, Word, Word, Word, Word, Word, Word) {}
    virtual int Reserved16(Word, Word, Word, Word, Word, Word, Word) { return 0; }
    virtual void OnShortcut(Word, int, Word) {}
    virtual void Reserved17(Word, Word, Word) {}
    /// Called for each 3D view while it is drawn.
    virtual void OnRender() {}
    virtual void Reserved18(Word) {}
    /// True if an item was added to the menu.
    virtual bool OnObjectMenu(CMenu* menu, Word, Word, EditorObject* object) = 0;
    virtual bool OnViewMenu(CMenu* menu) = 0;
    virtual void OnEvent(int code, void* data) = 0;
    virtual void OnViewRequest(int code, Word, void* data, bool* result) = 0;
    /// Writes this plug-in's chunks for an object; true if the host counts them as written.
    virtual bool SaveChunks(fs::file&, IHostObject*) { return false; }
    /// Reads one chunk of `size` bytes; false for a chunk that is not this plug-in's to read.
    virtual bool LoadChunk(IHostObject*, fs::file&, std::uint16_t, std::uint32_t) { return false; }
    virtual bool IsOwnChunk(Word, std::uint16_t) { return false; }
    virtual bool Reserved19(Word) = 0;
    virtual void Reserved20(Word, Word) = 0;
    virtual Word Reserved21(Word, Word, Word, Word) = 0;
    virtual ~IPlugin() = default;
};

/// Name and type of a plug-in library's entry point.
constexpr const char* kInitializeMe = "InitializeMe";
using InitializeMeFunction = IPlugin* (*)(IEditor*, std::uintptr_t pluginNumber, IEditorView*);
