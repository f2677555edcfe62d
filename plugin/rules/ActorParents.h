#pragma once

class EditorObject;
class IFilm;

/// Whether the actor can be attached to the object without ending up attached to itself, as the film attaches
/// actors now.
bool CanAttachWithoutCycle(const IFilm* film, EditorObject* object, const EditorObject* actor);
