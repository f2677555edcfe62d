#include "timeline/CommandNotes.h"

#include "framework/UserNote.h"
#include "plugin/session/FilmSession.h"
#include "timeline/FilmsMainCtrl.h"
#include "timeline/TimelineCommands.h"

std::string WhyIdle(UINT command, const CFilmsMainCtrl& control) {
    const TimelineCommand* entry = FindTimelineCommand(command);
    if (entry == nullptr) {
        return "";
    }
    if (entry->needsFilm && control.session.GetCurrentFilm() == nullptr) {
        return "No film is open.";
    }
    return entry->whyIdle != nullptr ? entry->whyIdle(control) : "";
}

void NoteIfIdle(UINT command, const CFilmsMainCtrl& control) {
    if (const std::string why = WhyIdle(command, control); !why.empty()) {
        NoteForUser(why);
    }
}
