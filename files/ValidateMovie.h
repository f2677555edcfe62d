#pragma once

class IFilm;
class IPluginImpl;

/// Marks a film as validated, as the user asked, and tells him that it is, also when it was before: a mark
/// that nothing shows. Does nothing for null.
void ValidateMovie(IPluginImpl& plugin, IFilm* film);
