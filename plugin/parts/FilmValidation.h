#pragma once

class EditorObject;
class FilmSession;
class IFilm;

/// Marks the film as one that may be posed whole. False for null.
bool ValidateFilm(IFilm* film);

/// As a level is written: marks all its films, and leaves an empty report beside the level, whose root
/// object's name the report's begins with. A report that can't be opened is left out.
void WriteValidationFile(const FilmSession& session, const EditorObject& root);
