#include "plugin/rules/FilmViewSettings.h"

void FilmViewSettings::Reset() {
    const float cursor = cursorTime;
    *this = FilmViewSettings{};
    cursorTime = cursor;
}

void FilmViewSettings::Apply(const FilmViewSettings& update) {
    const auto names = [&update](std::uint32_t bit) { return (update.mask & bit) != 0; };
    if (names(kMovie)) {
        movieStart = update.movieStart;
        movieEnd = update.movieEnd;
    }
    if (names(kView)) {
        viewStart = update.viewStart;
        viewEnd = update.viewEnd;
    }
    if (names(kLeftWidth)) {
        leftWidth = update.leftWidth;
    }
    if (names(kRowHeight)) {
        rowHeight = update.rowHeight;
    }
    if (names(kTicsDistance)) {
        ticsDistance = update.ticsDistance;
    }
    if (names(kBigTics)) {
        bigTics = update.bigTics;
    }
    if (names(kLabelDistance)) {
        labelDistance = update.labelDistance;
    }
    if (update.mask >= kCursorTime) {
        cursorTime = update.cursorTime;
    }
}
