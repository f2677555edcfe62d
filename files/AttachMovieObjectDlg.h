#pragma once

#include "framework/Dialog.h"
#include "framework/PickMode.h"
#include "plugin/base/Watch.h"
#include "plugin/session/ScenarioWindow.h"

#include <string>

class IPluginImpl;

/// The dialog "Attach movie object": names the object, and the element of its mesh, that an actor's track is
/// attached to. Modeless, made once, owned by the main control. While it is shown, the host's object menu
/// offers "Attach to ..."; only OK writes to the track. The film, the track and the object may go meanwhile:
/// the window closes without the first two and is empty without the last.
class CAttachMovieObjectDlg : public CDialog, public IAttachDialog, public Watched {
    DECLARE_MESSAGE_MAP()

public:
    explicit CAttachMovieObjectDlg(IPluginImpl& newPlugin);

    /// Shows the window with what the track is attached to. The track must be in the current film.
    void Show(CFilmObjectTrack* newTrack);
    /// Closes if its track is in no film that is shown now.
    void OnFilmShown();
    void ForgetTrack(const CFilmTrack* gone);

    bool IsVisible() const override { return IsWindowVisible() != FALSE; }
    CFilmTrack* GetTrack() const override { return LivingTrack(); }
    void SetObject(EditorObject* parent) override;
    void ForgetObject(const EditorObject* gone) override;
    /// The empty name means the whole object.
    void SetElement(const std::string& name);

    EditorObject* GetObject() const { return object; }
    const std::string& GetElement() const { return element; }

protected:
    void OnOK() override;
    void OnCancel() override;
    void OnBrowse();
    void OnDetach();

private:
    IPluginImpl& plugin; ///< outlives the window

    CFilmObjectTrack* LivingTrack() const;
    void Refresh();
    void Announce();
    void Close();
    std::string ElementToStore() const;
    bool MayAttach(const CFilmObjectTrack& living) const;

    EditorObject* object = nullptr;    ///< the parent to be; null for none
    std::string element;               ///< of the object's mesh; empty for the whole object
    CFilmObjectTrack* track = nullptr; ///< compared with those of the film before it is used
    PickMode pick;                     ///< on while the window is shown
};
