#include "tests/plugin/PluginFixture.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t allocations = 0;

} // namespace

// All forms of new and delete of the whole program come here, so that none is paired with another's.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++allocations;
    return std::malloc(size);
}
void* operator new(std::size_t size) {
    if (void* memory = operator new(size, std::nothrow)) {
        return memory;
    }
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}

namespace {

class SetFrameCostTest : public PluginTest {};

} // namespace

TEST_F(SetFrameCostTest, PlayedFrameAllocatesNothing) {
    EditorObject* crate = editor.Create("Crate");
    IFilm* film = OpenFilmWith({crate});
    CFilmCameraTrack* camera = AddCamera(film, "Camera");
    AddKey(camera, KeyKind::CameraPosition, 0);
    AddKey(camera, KeyKind::CameraTarget, 0);
    AddCut(film, "Camera", 0, 10, 0);
    AddKey(film->FindObjectTrack(crate), KeyKind::Position, 5);
    plugin.AttachView(1);
    plugin.isPlaying = 1;
    plugin.SetFrame(0.0f, 0.0f); // what is made once is made now
    editor.quiet = true;
    const std::size_t before = allocations;
    for (int frame = 1; frame < 300; ++frame) {
        plugin.SetFrame(static_cast<float>(frame) / 30.0f, static_cast<float>(frame - 1) / 30.0f);
    }
    EXPECT_EQ(allocations, before);
    EXPECT_GT(before, 0u);
    plugin.isPlaying = 0;
}
