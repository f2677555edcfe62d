#pragma once

#include "host/engine/Level.h"

/// Fills an empty level with the harbour: its objects, lights and films. The level needs its mesh library
/// and folder set, with the made models and sounds in it.
void BuildHarbour(engine::Level& level);

/// The films "Intro" (24 seconds) and "Epilogue" (9 seconds) of the harbour's objects.
void MakeHarbourFilms(engine::Level& level);
