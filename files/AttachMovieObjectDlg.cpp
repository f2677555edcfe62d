#include "files/AttachMovieObjectDlg.h"

#include "framework/MessageBox.h"
#include "framework/Resource.h"
#include "plugin/base/PluginResources.h"
#include "plugin/PluginImpl.h"
#include "resources/resource.h"

#include <algorithm>

namespace {

/// Labels take '&' for the mark of a shortcut.
std::string LabelText(const std::string& text) {
    std::string label;
    for (const char letter : text) {
        label += letter == '&' ? "&&" : std::string(1, letter);
    }
    return label;
}

std::string NameAndId(const EditorObject& object) {
    return object.name + "(" + std::to_string(object.id) + ")";
}

} // namespace

BEGIN_MESSAGE_MAP(CAttachMovieObjectDlg, CDialog)
ON_COMMAND(IDC_BROWSE_ELEMENT, &CAttachMovieObjectDlg::OnBrowse)
ON_COMMAND(IDC_DETACH_PARENT, &CAttachMovieObjectDlg::OnDetach)
END_MESSAGE_MAP()

CAttachMovieObjectDlg::CAttachMovieObjectDlg(IPluginImpl& newPlugin)
    : CDialog(IDD_ATTACH_OBJECT), plugin(newPlugin) {
    const ResourceScope resources(PluginResources());
    Create(IDD_ATTACH_OBJECT, nullptr); // the main window's: the scenario window may be closed meanwhile
}

void CAttachMovieObjectDlg::Show(CFilmObjectTrack* newTrack) {
    track = newTrack;
    SetObject(track->parentObject);
    SetElement(track->parentElement);
    Refresh();
    Announce();
    ShowWindow(SW_SHOW);
}

/// Rows are made anew all the time and films switched while the window is open; the film is asked each time.
CFilmObjectTrack* CAttachMovieObjectDlg::LivingTrack() const {
    const IFilm* film = plugin.GetCurrentFilm();
    const bool lives = film != nullptr && track != nullptr &&
                       std::ranges::find(film->tracks, static_cast<CFilmTrack*>(track)) != film->tracks.end();
    return lives ? track : nullptr;
}

void CAttachMovieObjectDlg::OnFilmShown() {
    if (LivingTrack() == nullptr) {
        Close();
    }
}

void CAttachMovieObjectDlg::ForgetTrack(const CFilmTrack* gone) {
    if (gone == track) {
        Close();
    }
}

void CAttachMovieObjectDlg::ForgetObject(const EditorObject* gone) {
    if (object != nullptr && gone == object) {
        SetObject(nullptr);
    }
}

void CAttachMovieObjectDlg::Close() {
    pick.End();
    track = nullptr;
    object = nullptr;
    element.clear();
    if (IsVisible()) {
        EndDialog(IDCANCEL);
    }
}

void CAttachMovieObjectDlg::SetObject(EditorObject* parent) {
    object = parent;
    element.clear(); // another object has other elements
    if (IsVisible()) {
        Refresh();
    }
}

void CAttachMovieObjectDlg::SetElement(const std::string& name) {
    element = name;
    if (IsVisible()) {
        Refresh();
    }
}

void CAttachMovieObjectDlg::Refresh() {
    SetDlgItemText(IDC_PARENT_OBJECT, object != nullptr ? LabelText(NameAndId(*object)) : "");
    SetDlgItemText(IDC_PARENT_ELEMENT, LabelText(element));
    for (const int id : {IDC_BROWSE_ELEMENT, IDC_DETACH_PARENT}) {
        if (CWnd* button = GetDlgItem(id)) {
            button->EnableWindow(object != nullptr);
        }
    }
}

/// The choice is made in the host's windows, which must say so.
void CAttachMovieObjectDlg::Announce() {
    const std::string actor = track->actor != nullptr ? " for \"" + track->actor->name + "\"" : "";
    pick.Begin("Right-click an object and choose \"Attach to ...\" to make it the parent" + actor +
                   ". Esc closes \"Attach movie object\".",
               PickMode::By::Menu, [this] { Close(); });
}

void CAttachMovieObjectDlg::OnBrowse() {
    IEditor* editor = plugin.editor;
    if (editor == nullptr || object == nullptr) {
        return;
    }
    const EditorObject* browsed = object;
    const Watch<CAttachMovieObjectDlg> window(this);
    const std::string present = element; // the host's own while it asks, whatever becomes of the dialog
    const std::string name = editor->BrowseMeshElement(object, present);
    if (!window.IsAlive() || object != browsed || name == element) {
        return;
    }
    const MeshElement* record = object->GetMeshElement(object->FindMeshElement(name));
    SetElement(record != nullptr ? record->name : std::string());
}

void CAttachMovieObjectDlg::OnDetach() {
    SetObject(nullptr);
}

/// Helpers have no mesh elements, except for those that stand in for an object.
std::string CAttachMovieObjectDlg::ElementToStore() const {
    const bool hasElements =
        object != nullptr && (!plugin.ObjectDerivesFrom(object, ClassName::Helper) ||
                              plugin.ObjectDerivesFrom(object, ClassName::VirtualObject));
    return hasElements ? element : std::string();
}

/// What the object hangs on may have changed since its menu offered it.
bool CAttachMovieObjectDlg::MayAttach(const CFilmObjectTrack& living) const {
    return object == nullptr || object == living.parentObject || living.actor == nullptr ||
           plugin.CanAttachWithoutCycle(plugin.GetCurrentFilm(), object, living.actor);
}

void CAttachMovieObjectDlg::OnOK() {
    IPluginImpl& films = plugin; // what is told below may let the window go
    CFilmObjectTrack* living = LivingTrack();
    if (living == nullptr) {
        Close();
        return;
    }
    if (!MayAttach(*living)) {
        AfxMessageBox(NameAndId(*object) + " is this actor, or is attached to it.");
        return;
    }
    living->SetParent(object, films.ObjectDerivesFrom(object, ClassName::VirtualObject), ElementToStore());
    pick.End();
    CDialog::OnOK();
    films.SetFrame(films.currentTime, IPluginImpl::kNoPrevious); // the actor stands in another space now
}

void CAttachMovieObjectDlg::OnCancel() {
    pick.End();
    CDialog::OnCancel();
}
