#pragma once

#include "keys/attributes/KeyAttributes.h"

// Rows of a record and back, by kind. Names, order and categories of the rows and the order of the writes are
// fixed: rows are found by name and category, and records answer to setters one by one.

void FillCamera(AttrRows& rows, CFilmCameraKey& record);
/// Asks the user about a name that no camera of the record's own film has: with the film of the window, every
/// camera would be missed while another film is being opened.
void ApplyCamera(const AttrRows& rows, CFilmCameraKey& record, const AttrScope& scope);

void FillAnimation(AttrRows& rows, CFilmAnimationKey& record);
/// Writes nothing where the track's object doesn't know the sequence.
void ApplyAnimation(const AttrRows& rows, CFilmAnimationKey& record);

/// Effects at a place: kinds 2, 3, 4 and 7.
void FillPlacedFx(AttrRows& rows, CFilmFxKey& record);
void ApplyPlacedFx(const AttrRows& rows, CFilmFxKey& record);
/// Effects of the whole picture: kinds 5 and 6.
void FillScreenFx(AttrRows& rows, CFilmFxKey& record);
void ApplyScreenFx(const AttrRows& rows, CFilmFxKey& record);

void FillSpeech(AttrRows& rows, CFilmSpeechKey& record);
void ApplySpeech(const AttrRows& rows, CFilmSpeechKey& record);
void FillSound(AttrRows& rows, CFilmSoundKey& record);
void ApplySound(const AttrRows& rows, CFilmSoundKey& record);

/// Position, rotation and scale.
void FillVector(AttrRows& rows, CFilmVectorKey& record);
void ApplyVector(const AttrRows& rows, CFilmVectorKey& record);

void FillJavaMethod(AttrRows& rows, CFilmJavaKey& record);
void ApplyJavaMethod(const AttrRows& rows, CFilmJavaKey& record);

void FillColor(AttrRows& rows, CFilmVectorKey& record);
void ApplyColor(const AttrRows& rows, CFilmVectorKey& record);

void FillFlags(AttrRows& rows, CFilmFlagsKey& record);
void ApplyFlags(const AttrRows& rows, CFilmFlagsKey& record);

/// A camera's eye and target.
void FillCameraPoint(AttrRows& rows, CFilmLinkedKey& record);
void ApplyCameraPoint(const AttrRows& rows, CFilmLinkedKey& record, const AttrScope& scope);

/// Roll and field of view.
void FillScalar(AttrRows& rows, CFilmScalarKey& record);
void ApplyScalar(const AttrRows& rows, CFilmScalarKey& record);
