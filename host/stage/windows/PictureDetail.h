#pragma once

namespace stage {

/// How finely the views are drawn while one picture follows the other, as in a film or under the mouse: as
/// finely as this machine draws in time. What stands still is always drawn in full.
class PictureDetail {
public:
    /// For the pictures of all views together: a picture at each refresh of a 60 Hz screen.
    static constexpr double kTargetMs = 16.0;
    static constexpr float kLeast = 0.5f;

    /// All pictures of a turn took so long, drawn with `Detail`. Times that follow a change are let pass
    /// until their mean tells something.
    void Note(double milliseconds);
    /// Pixels drawn for one of the picture along a side, 0.5 to 1.
    float Detail() const { return detail; }

private:
    void Begin(float newDetail);

    float detail = 1.0f;
    double sum = 0.0; ///< milliseconds of the noted pictures
    int count = 0;    ///< of them, since the detail changed
};

} // namespace stage
