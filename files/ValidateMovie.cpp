#include "files/ValidateMovie.h"

#include "framework/UserNote.h"
#include "plugin/PluginImpl.h"

void ValidateMovie(IFilm* film) {
    if (GetPlugin().ValidateFilm(film)) {
        NoteForUser(std::string("The film \"") + (film->name != nullptr ? film->name : "") +
                    "\" is validated.");
    }
}
