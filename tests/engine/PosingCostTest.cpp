#include "tests/engine/EngineFixture.h"
#include "host/engine/CurveChannel.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t allocations = 0;

} // namespace

// All forms of new and delete of the whole program come here, so that none is paired with another's.
__attribute__((noinline)) void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++allocations;
    return std::malloc(size);
}
__attribute__((noinline)) void* operator new(std::size_t size) {
    if (void* memory = operator new(size, std::nothrow)) {
        return memory;
    }
    throw std::bad_alloc();
}
__attribute__((noinline)) void operator delete(void* memory) noexcept {
    std::free(memory);
}
__attribute__((noinline)) void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
__attribute__((noinline)) void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}

namespace engine_test {

class PosingCostTest : public EngineTest {
protected:
    /// `objects` actors with three channels of `keys` keys a second apart, a robot with clips and a camera.
    void Fill(int objects, int keys) {
        for (int i = 0; i < objects; ++i) {
            CFilmObjectTrack& track = AddActor(MakeObject("Box"));
            for (const int kind : {KeyKind::Position, KeyKind::Rotation, KeyKind::Scale}) {
                for (int k = 0; k < keys; ++k) {
                    AddVector(track, kind, static_cast<float>(k), {1.0f, static_cast<float>(k), 2.0f},
                              BezierMethod::Smooth);
                }
            }
        }
    }
    void FillWithAllTracks() {
        Fill(3, 20);
        engine::SceneObject& robot = MakeObject("Robot", {}, nullptr, "MeshObject", "robot.glb");
        CFilmObjectTrack& track = AddActor(robot);
        Add<CFilmAnimationKey>(track, KeyKind::Animation, 0.0f, 5.0f).animationName = "Lift";
        Add<CFilmAnimationKey>(track, KeyKind::Animation, 6.0f, 9.0f).animationName = "Turn";
        Add<CFilmSoundKey>(track, KeyKind::Sound, 3.0f);
        CFilmCameraTrack& camera = AddCamera("Camera with a name that is no short string");
        for (int k = 0; k < 10; ++k) {
            auto& eye = Add<CFilmLinkedKey>(camera, KeyKind::CameraPosition, static_cast<float>(k));
            eye.linkObject = k % 2 == 0 ? &robot : nullptr;
            AddVector(camera, KeyKind::CameraTarget, static_cast<float>(k), {});
            AddScalar(camera, KeyKind::Roll, static_cast<float>(k), 1.0f);
        }
        auto& cut = Add<CFilmCameraKey>(*film->mainTrack, KeyKind::Camera, 0.0f, 10.0f);
        cut.cameraName = camera.cameraName;
        auto& light = *AsDynLightTrack(&AddTrack(film->CreateDynLightTrack()));
        light.lightObject = &MakeObject("Light", {}, nullptr, ClassName::DynLight);
        AddVector(light, KeyKind::Color, 0.0f, {1.0f, 0.0f, 0.0f});
        level.SetFilmSink(nullptr);
    }
    std::size_t SegmentsFor(float time) {
        const std::size_t before = engine::SegmentsBuilt();
        film->SetTime(time, -1.0f);
        return engine::SegmentsBuilt() - before;
    }
};

TEST_F(PosingCostTest, SetTimeAllocatesNothing) {
    FillWithAllTracks();
    film->SetTime(0.0f, -1.0f); // what is prepared once
    const std::size_t before = allocations;
    for (int frame = 1; frame < 300; ++frame) {
        film->SetTime(static_cast<float>(frame) / 30.0f, static_cast<float>(frame - 1) / 30.0f);
    }
    for (int i = 0; i < 100; ++i) {
        film->SetTime(static_cast<float>(i * 37 % 100) / 10.0f, -1.0f);
    }
    EXPECT_EQ(allocations - before, 0u);
}

TEST_F(PosingCostTest, DraggedKeyCausesNoAllocationInSetTime) {
    Fill(2, 50);
    film->SetTime(0.0f, -1.0f);
    IFilmKey& key = *film->tracks.back()->keys.front();
    const std::size_t before = allocations;
    for (int i = 0; i < 60; ++i) {
        key.SetTime(static_cast<float>(i) + 0.5f);
        film->SetTime(static_cast<float>(i), -1.0f);
    }
    EXPECT_EQ(allocations - before, 0u);
}

TEST_F(PosingCostTest, CostOfAFrameGrowsWithChannelsAndNotWithKeys) {
    Fill(4, 10);
    EXPECT_EQ(SegmentsFor(0.5f), 12u); // 4 objects with 3 channels
    EXPECT_EQ(SegmentsFor(0.6f), 0u);  // the same segments go on
    EXPECT_EQ(SegmentsFor(1.5f), 12u);
    EXPECT_EQ(SegmentsFor(0.2f), 12u);
    Fill(4, 400);
    EXPECT_EQ(SegmentsFor(3.5f), 24u);
    EXPECT_EQ(SegmentsFor(3.6f), 0u);
}

TEST_F(PosingCostTest, ChangedKeyCostsOnlyItsOwnChannel) {
    Fill(4, 10);
    film->SetTime(0.5f, -1.0f);
    static_cast<CFilmVectorKey&>(*film->tracks.back()->keys.front()).SetTime(0.1f);
    EXPECT_EQ(SegmentsFor(0.5f), 1u);
}

} // namespace engine_test
