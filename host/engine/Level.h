#pragma once

#include "host/engine/FilmSink.h"
#include "host/engine/LevelData.h"
#include "host/engine/ViewManager.h"
#include "plugin/contract/Level.h"

#include <functional>
#include <memory>

namespace engine {

class IChunkClient;

/// The level of the editor: one object for the host's life, with or without a level in it.
class Level : public ILevel {
public:
    Level();
    ~Level() override;
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

    void MakeUniqueName(const char* name, EditorObject* object, int zero) override;
    IViewManager* GetViewManager() override { return &views; }
    ILevelData* GetLevelData() override { return data.get(); }

    /// Closes what is open and starts an empty level with a sun. `folder` is the level's folder, "" before
    /// the first save.
    void New(const std::string& folder);
    /// Drops the level; GetLevelData is null from then on.
    void Close();
    /// Closes what is open and takes this data, which was made for this level.
    void Replace(std::unique_ptr<LevelData> newData);
    LevelData* Data() const { return data.get(); }
    ViewManager& Views() { return views; }
    /// The level's folder with a separator at its end, or "". It is the root object's name, before which
    /// plug-ins write files of their own; a level without a folder has the unsaved folder's name there.
    void SetFolder(const std::string& folder);
    const std::string& Folder() const { return folder; }
    /// An absolute folder for what belongs to levels without one; "" for none.
    void SetUnsavedFolder(const std::string& folder);

    /// The operations below do nothing, or give null, while no level exists.
    /// With `names`, which must be of this level, the name comes from there: for many objects at once.
    SceneObject* CreateObject(const ObjectSpec& spec, UniqueNames* names = nullptr);
    void DeleteObject(EditorObject* object);
    /// A name like `name` that no other object has, at once. Empty names become "Object".
    void Rename(SceneObject* object, const std::string& name);
    bool SetParent(SceneObject* object, SceneObject* parent);
    SceneObject* FindObject(int id) const;
    SceneObject* FindObject(const std::string& name) const;
    /// All objects in the order of their making, appended to the list.
    void CollectObjects(ObjectList& objects) const;

    /// The selection: objects stand in it once, and bit 0 of their info's flags tells it.
    void ClearSelection();
    void AddToSelection(EditorObject* object);
    void Deselect(EditorObject* object);
    void SetSelection(const ObjectList& objects);
    bool IsSelected(const EditorObject* object) const;

    /// Services of the host; none is owned, each may be null.
    void SetMeshLibrary(IMeshLibrary* library) { meshLibrary = library; }
    IMeshLibrary* MeshLibrary() const { return meshLibrary; }
    void SetChunkClient(IChunkClient* client) { chunkClient = client; }
    IChunkClient* ChunkClient() const { return chunkClient; }
    void SetFilmSink(IFilmSink* sink) { filmSink = sink; }
    IFilmSink* FilmSink() const { return filmSink; }
    void SetSoundDuration(SoundDurationFunction function) { soundDuration = function; }
    SoundDurationFunction SoundDuration() const { return soundDuration; }
    /// Called with each object that is about to go, whatever the reason: plug-ins free their data then.
    void SetDestroyHook(std::function<void(EditorObject*)> hook) { destroyHook = std::move(hook); }
    void OnDestroying(EditorObject* object);
    /// Called with a light whose track was taken out of its film, or whose film was deleted, while it stays
    /// in the level.
    void SetFreedLightHook(std::function<void(EditorObject*)> hook) { freedLightHook = std::move(hook); }
    void OnLightFreed(EditorObject* object);
    /// Called before a film's rows are made anew, again and again: plug-ins then write down defaults for what
    /// they show for the first time, which is nothing that the user has done.
    void SetShowHook(std::function<void()> hook) { showHook = std::move(hook); }
    void OnShowing();
    /// Called when a film gets a track that it is not given for being shown: that is the user's doing, also
    /// where it comes with something that looks like showing.
    void SetEditHook(std::function<void()> hook) { editHook = std::move(hook); }
    void OnEdited();
    /// Called when a plug-in asks an object for an animation that it hasn't; never with the empty name.
    void SetUnknownAnimationHook(std::function<void(const SceneObject&, const std::string&)> hook) {
        unknownAnimationHook = std::move(hook);
    }
    void OnUnknownAnimation(const SceneObject& object, const std::string& animation);

private:
    std::unique_ptr<LevelData> data;
    ViewManager views;
    std::string folder;
    std::string unsavedFolder;
    IMeshLibrary* meshLibrary = nullptr;
    IChunkClient* chunkClient = nullptr;
    IFilmSink* filmSink = nullptr;
    SoundDurationFunction soundDuration = nullptr;
    std::function<void(EditorObject*)> destroyHook;
    std::function<void(EditorObject*)> freedLightHook;
    std::function<void()> showHook;
    std::function<void()> editHook;
    std::function<void(const SceneObject&, const std::string&)> unknownAnimationHook;
};

} // namespace engine
