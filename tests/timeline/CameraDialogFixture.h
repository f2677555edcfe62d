#pragma once

#include "framework/Dialog.h"
#include "framework/Resource.h"
#include "plugin/base/PluginResources.h"
#include "tests/timeline/ControlFixture.h"

#include <functional>
#include <string>
#include <vector>

class QWidget;

/// An opened film of 10 seconds with the cameras "Bridge" and "Deck", and the real user at a modal dialog.
class CameraDialogTest : public ControlTest {
protected:
    CameraDialogTest();

    /// Opens a dialog; the user works in its loop once it is active. A dialog that he leaves open is told and
    /// ended with -2.
    int RunDialog(CDialog& dialog, const std::function<void()>& user);
    /// The same for a dialog that a command opens; the user works at `shown`.
    void RunCommand(UINT id, CTrackCtrl* row, const std::function<void()>& user);
    void Key(int key);
    void Click(int id);
    /// The user marks all of a field's text and types another; an empty one empties it.
    void Type(int id, const std::string& text);
    bool IsChecked(int id) const { return shown->IsDlgButtonChecked(id) == BST_CHECKED; }
    std::string Text(int id) const { return shown->GetDlgItemText(id); }
    /// Every control is inside the dialog, no text is cut, and none but group boxes overlap.
    void ExpectTidy() const;
    /// Places of texts, which differ with the fonts of a machine.
    std::vector<CRect> TextAreas() const;

    IFilm* film;
    CFilmCameraTrack* bridge;
    CFilmCameraTrack* deck;
    CDialog* shown = nullptr; ///< what the user works at

private:
    void Work(const std::function<void()>& user);
    QWidget* Window() const;

    ResourceScope resources{PluginResources()};
};
