#pragma once

class QEvent;

namespace pick_mode {

// True if the event is the Escape that gave up what waits for the user; nobody else gets it then.
bool TakesEscape(const QEvent& event);

} // namespace pick_mode
