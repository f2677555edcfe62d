#include "files/ValidateMovie.h"

#include "framework/UserNote.h"
#include "plugin/PluginImpl.h"

void ValidateMovie(IPluginImpl& plugin, IFilm* film) {
    if (plugin.ValidateFilm(film)) {
        NoteForUser(std::string("The film \"") + (film->name != nullptr ? film->name : "") +
                    "\" is validated.");
    }
}
