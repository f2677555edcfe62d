#include "tests/timeline/CloneFixture.h"

#include "tests/support/DrawRecorder.h"

#include <algorithm>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

void CloneTest::TakeClone(CTrackCtrl& row, float time) {
    HoverAt(row, time);
    PressAt(row, time, MK_SHIFT);
    StartWatching();
}

std::vector<std::string> CloneTest::Lines(CTrackCtrl& row) {
    DrawRecorder recorder;
    return recorder.Paint(row);
}

std::vector<std::string> CloneTest::Frames(CTrackCtrl& row) {
    std::vector<std::string> found = Lines(row);
    std::erase_if(found,
                  [](const std::string& line) { return line.find("brush none") == std::string::npos; });
    return found;
}

std::string CloneTest::GhostFrame(int x) {
    return "rect " + std::to_string(x - 8) + ",0," + std::to_string(x + 8) + ",20 pen 0/0/000000 brush none";
}

CTrackKey* CloneTest::KeyAt(const CTrackCtrl& row, float time) {
    const auto found = std::ranges::find(row.keys, time, &CTrackKey::time);
    return found != row.keys.end() ? *found : nullptr;
}

void CloneTest::ExpectNoClone(const CTrackCtrl& row, float onlyTime) const {
    EXPECT_THAT(TimesOf(row), ElementsAre(onlyTime));
    EXPECT_FALSE(duplicator.HasSource());
    EXPECT_THAT(Edits(), IsEmpty());
}
