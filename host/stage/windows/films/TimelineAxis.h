#pragma once

#include <optional>

namespace stage {

class TimelineHand;

/// What the timeline says of its axis in its settings.
struct AxisState {
    double begin = 0.0; ///< seconds
    double end = 0.0;   ///< seconds
    double shown = 0.0; ///< seconds that are drawn
    int ticFrames = 0;  ///< frames from tic to tic, what a line of scrolling goes
};

/// Zooms and scrolls the time of the window "Scenario" by its settings and its scroll bar. The timeline
/// doesn't say where the part that it shows begins, so all steps are relative. As with the settings
/// themselves, what is shown is kept in the level; the film's length stays what it is.
class TimelineAxis {
public:
    /// `filmLength` in seconds.
    TimelineAxis(const TimelineHand& timelineHand, float filmLength, int framesPerSecond);

    /// Nothing without the window, or if its settings can't be written back as they are.
    std::optional<AxisState> Read() const;
    /// Shows that many seconds times what is shown now. `fraction` (0 to 1 across the ruler) keeps its time,
    /// to within a tic.
    void Zoom(double factor, double fraction) const;
    /// By a part of what is shown, forwards if it is positive.
    void Pan(double part) const;
    void ShowAll() const;
    /// Gives the film the length, and shows so many seconds from where the axis stands.
    void Show(double seconds) const;

private:
    void Scroll(double seconds, const AxisState& state) const;
    void DragToBegin() const;

    const TimelineHand& hand;
    float length;
    int rate;
};

} // namespace stage
