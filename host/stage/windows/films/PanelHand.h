#pragma once

#include <functional>

class CWnd;
class IFilm;
class IFilmManager;
class QAbstractItemView;

namespace stage {

/// Works the list of films in the plug-in's panel from outside, by the numbers of its controls. The panel is
/// looked for at each call.
class PanelHand {
public:
    /// `panelForm` opens the panel if need be and gives its form, or null.
    explicit PanelHand(std::function<CWnd*()> panelForm) : form(std::move(panelForm)) {}

    /// Presses "Add". The film that this has made and opened, null if none.
    IFilm* Add(const IFilmManager& manager) const;
    /// Chooses a film in the list, or "<none>" with null. False without the panel or the film.
    bool Choose(const IFilmManager& manager, const IFilm* film) const;
    /// As a double click on the chosen film, which shows the window "Scenario".
    void ShowTimeline() const;
    /// The list is written anew.
    void Refresh() const;
    /// Presses "Delete", which deletes the chosen film. False if it is still there.
    bool Delete(const IFilmManager& manager, const IFilm* film) const;
    /// The widget of the list; null without the panel.
    QAbstractItemView* List() const;

private:
    CWnd* Page() const;
    void Tell(unsigned control, unsigned code) const;

    std::function<CWnd*()> form;
};

} // namespace stage
