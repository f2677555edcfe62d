#pragma once

#include <QString>

class CWnd;

namespace stage {

/// Chooses the line of this text in a list of a plug-in's form, as a click does: the plug-in hears of it, and
/// opens or closes a film. False if no list has one line of this text, or it is chosen already.
bool ChooseLine(CWnd& form, const QString& text);

} // namespace stage
