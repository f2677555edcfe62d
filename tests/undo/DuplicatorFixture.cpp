#include "tests/undo/DuplicatorFixture.h"

DuplicatorTest::DuplicatorTest()
    : bars(MakeRow(KeyKind::Position, boxTrack)), boxes(MakeRow(KeyKind::Sound, boxTrack)),
      cameras(MakeRow(KeyKind::Camera, film->mainTrack)), duplicator(timeline.keyDuplicator) {
    cameras.subIndex = 2;
    StartWatching();
}
