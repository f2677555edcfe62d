#pragma once

#include <string>

class CFilmsMainCtrl;

// Why a command of the timeline will change nothing as things stand; empty where it does something. Asked
// with a film open where the command needs one.

std::string WhyNobodyComes(const CFilmsMainCtrl& control);
std::string WhyNobodyGoes(const CFilmsMainCtrl& control);
std::string WhyNothingStops(const CFilmsMainCtrl& control);
std::string WhyNoUndo(const CFilmsMainCtrl& control);
/// Of the first selected key, which the two buttons for marks go by.
std::string WhyNoKeyToMark(const CFilmsMainCtrl& control);
std::string WhyNoMarkToClear(const CFilmsMainCtrl& control);
std::string WhyNoCameraFrame(const CFilmsMainCtrl& control);
std::string WhyNoTrackParameters(const CFilmsMainCtrl& control);
std::string WhyNoDuration(const CFilmsMainCtrl& control);
