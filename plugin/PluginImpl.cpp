#include "plugin/PluginImpl.h"

#include "files/base/Log.h"

namespace {

/// The object that GetPlugin answers, and the ones made before it.
std::list<IPluginImpl*>& LivingPlugins() {
    static std::list<IPluginImpl*> plugins;
    return plugins;
}

} // namespace

IPluginImpl& GetPlugin() {
    return *LivingPlugins().back();
}

IPluginImpl::IPluginImpl() {
    LivingPlugins().push_back(this);
    for (int index = 0; index < IFilmManager::kFilms; ++index) {
        ResetFilmViewSettings(index);
    }
}

IPluginImpl::~IPluginImpl() {
    ClearLevelState();
    if (keyAttributesDlg) {
        keyAttributesDlg->Destroy();
        keyAttributesDlg.reset();
    }
    LivingPlugins().remove(this);
}

void IPluginImpl::Initialize(IEditor* newEditor, std::uint32_t pluginNumber, IEditorView* newView) {
    pluginId = PluginCommandId::FromPluginNumber(pluginNumber);
    editor = newEditor;
    view = newView;
    level = view->GetLevel();
}

void IPluginImpl::OnEditorReady() {
    commandBar.Load();
    editor->AddListenerA(this);
    editor->AddListenerB(this);
    FindLightClasses();
    menus.Load();
}

void IPluginImpl::FindLightClasses() {
    for (const EditorClassDescriptor& descriptor : editor->GetEditorClasses()) {
        const std::string name = descriptor.name;
        if (name == ClassName::GLLight) {
            glLightClass = &descriptor;
        } else if (name == ClassName::DynLight) {
            dynLightClass = &descriptor;
        }
    }
}

void IPluginImpl::OnEditorClosing() {
    isPlaying = 0; // a film that still plays must not run on without its host
    if (editor != nullptr) {
        editor->RemoveListenerA(this);
        editor->RemoveListenerB(this);
    }
    ClearLevelState();
}

void IPluginImpl::ClearLevelState() {
    LevelChanges();
    objectMatrices.clear();
    attachedViews.clear();
    levelParams.Clear();
    lightHelpers.DeleteHelpers();
    trackVisualizer.Reset();
    cameraHelpers.Reset();
    if (keyAttributesDlg) {
        keyAttributesDlg->Reset();
    }
    virtualObjects.clear();
    framesPerSecond = kFramesPerSecond;
}

void IPluginImpl::OnNew() {
    DebugPrint("[Films::IPluginImpl::OnNew]\n");
    ClearLevelState();
    LeaveFilm();
    isPlaying = 0;
    for (int index = 0; index < IFilmManager::kFilms; ++index) {
        ResetFilmViewSettings(index);
    }
    if (IMainCtrl* control = GetMainCtrl()) {
        control->Reset();
    }
    if (currentFilm != nullptr) {
        LeaveFilm(); // opened while the user was told of missing key parameters
    }
    RewindTime();
    SetAnimateObjects(false);
}

void IPluginImpl::OnLevelLoaded() {
    LevelChanges();
    if (keyAttributesDlg) {
        keyAttributesDlg->Reset(); // before the rows look for its record, which went with the old level
    }
    LeaveFilm();
    isPlaying = 0;
    RewindTime();
    SetAnimateObjects(false);
    ILevelData* data = GetLevelData();
    if (data == nullptr) {
        return;
    }
    for (int index = 0; index < IFilmManager::kFilms; ++index) {
        if (IFilm* film = GetFilmByIndex(index)) {
            filmViewSettings[static_cast<std::size_t>(index)].movieStart = 0.0f;
            filmViewSettings[static_cast<std::size_t>(index)].movieEnd = film->length;
            film->OnLevelLoaded();
        }
    }
    lightHelpers.PairWithTracks(data);
    RefreshMoviesPanel();
    RebuildMatrices();
    if (data->filmManager != nullptr) {
        data->filmManager->SetFramesPerSecond(framesPerSecond);
    }
}

/// The level went: no film is told.
void IPluginImpl::LeaveFilm() {
    if (IMainCtrl* control = GetMainCtrl()) {
        control->ClearUndo();
    }
    currentFilm = nullptr;
    RebuildWindow();
}

void IPluginImpl::RewindTime() {
    const float previous = currentTime;
    currentTime = 0.0f;
    if (scenarioDlg != nullptr) {
        scenarioDlg->SetTime(0.0f);
    }
    SetFrame(0.0f, previous);
}

void IPluginImpl::OnObjectDestroyed(EditorObject* object) {
    if (object == nullptr) {
        return;
    }
    delete GetParams(object);
    if (EditorObjectInfo* info = object->GetInfo()) {
        info->SetPluginData(kPluginKind, nullptr);
    }
    objectMatrices.RemoveAll(object);
    virtuals.ForgetObject(object);
    lightHelpers.ForgetObject(object);
    if (contextObject == object) {
        contextObject = nullptr;
    }
    moves.ForgetObject(object);
    cameraHelpers.ForgetObject(object);
    IMainCtrl* control = GetMainCtrl();
    if (IAttachDialog* dialog = control != nullptr ? control->GetAttachDialog() : nullptr) {
        dialog->ForgetObject(object);
    }
}
