#pragma once

/// Numbers by which Stage works the windows of the film plug-in, as a script or a test would: its commands
/// and controls, as its resources have them.
namespace stage::films_id {

// Controls of the window "Scenario".
constexpr unsigned kTimeline = 1234;
constexpr unsigned kTimeBar = 10;
constexpr unsigned kRuler = 20; ///< the bar of the rows has the same
constexpr unsigned kRow = 55;

// Commands of the timeline.
constexpr unsigned kSettings = 36797;
constexpr unsigned kRemoveKey = 36814;
constexpr unsigned kSetMovieFrame = 36818;
constexpr unsigned kPlay = 36820;
constexpr unsigned kStop = 36821;
constexpr unsigned kAddKey = 36827;
constexpr unsigned kToBegin = 36833;
constexpr unsigned kCopyKey = 36836;
constexpr unsigned kFrameBack = 36840;
constexpr unsigned kFrameForward = 36841;
constexpr unsigned kAddCamera = 36842;
constexpr unsigned kKeyBack = 36851;
constexpr unsigned kKeyForward = 36852;
constexpr unsigned kPasteKey = 36869;

// Fields of the settings of the timeline and of the box for a frame.
constexpr unsigned kAxisBegin = 1758;
constexpr unsigned kAxisEnd = 1759;
constexpr unsigned kAxisShown = 1760;
constexpr unsigned kTicFrames = 1772;
constexpr unsigned kFrameNumber = 1811;

// Controls of the panel.
constexpr unsigned kFilmList = 1744;
constexpr unsigned kFilmAdd = 1745;
constexpr unsigned kFilmDelete = 1746;

} // namespace stage::films_id
