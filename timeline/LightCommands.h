#pragma once

class IPluginImpl;

/// "Add GL light" and "Add dyn light": a light in front of the active 3D view, with its track. Shows the film
/// anew.
void AddLight(IPluginImpl& plugin, bool gl);
