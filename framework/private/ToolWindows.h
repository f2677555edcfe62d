#pragma once

class CDialog;

namespace tool_windows {

// Tells the host's sink, if there is one.
void Offer(CDialog& dialog);

} // namespace tool_windows
