#pragma once

/// What the library shows to others beside its entry point; see films.map.
#define FILMS_PLUGIN_API __attribute__((visibility("default")))
