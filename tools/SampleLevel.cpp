#include "tools/SampleLevel.h"

#include "host/engine/Math.h"
#include "tools/InUnits.h"

#include <array>

namespace {

/// A mesh object of the harbour. `place` in metres, as the models are; `yaw` in degrees.
struct Prop {
    const char* name;
    const char* mesh;
    Vector3 place;
    float yaw = 0.0f;
    float scale = 1.0f;
    const char* parent = nullptr;
};

constexpr float kHouseFront = -12.2f;
constexpr float kWaterLevel = -1.25f;

const std::array kProps = {
    Prop{"Water", "water", {0, kWaterLevel, 0}},
    Prop{"Quay", "quay", {0, 0, 0}},
    Prop{"Hills", "hills", {0, 0, 0}},
    Prop{"Lighthouse", "lighthouse", {-34, -1.2f, 62}},
    Prop{"House far left", "house_green", {-20.8f, 0, kHouseFront - 0.6f}},
    Prop{"House ochre", "house_ochre", {-14.2f, 0, kHouseFront}},
    Prop{"House rose", "house_rose", {-8.2f, 0, kHouseFront - 0.3f}},
    Prop{"House white", "house_white", {-1.9f, 0, kHouseFront}},
    Prop{"House blue", "house_blue", {4.6f, 0, kHouseFront - 0.4f}},
    Prop{"House green", "house_green", {10.6f, 0, kHouseFront}},
    Prop{"House far right", "house_rose", {16.6f, 0, kHouseFront - 0.5f}},
    Prop{"House corner", "house_ochre", {22.8f, 0, kHouseFront}},
    Prop{"Dock", "dock", {6, 0, 2.5f}},
    Prop{"Crane", "crane", {-12, 0, 0}},
    Prop{"Fishing boat", "fishing_boat", {9.4f, -1.75f, 10}, 4},
    Prop{"Row boat", "row_boat", {3.3f, -1.42f, 6.2f}, -12},
    Prop{"Buoy", "buoy", {-3, -1.0f, 14}},
    Prop{"Lamp post", "lamp_post", {1.6f, 0, 0.4f}},
    Prop{"Lamp post left", "lamp_post", {-7, 0, 0.4f}},
    Prop{"Lamp post right", "lamp_post", {13, 0, 0.4f}, 180},
    Prop{"Crate", "crate", {9.2f, 0, -1.6f}, 8},
    Prop{"Crate behind", "crate", {10.3f, 0, -1.9f}, -14},
    Prop{"Crate on top", "crate", {9.7f, 0.9f, -1.75f}, 31},
    Prop{"Crate small", "crate", {-9.2f, 0, -1.6f}, 20, 0.8f},
    Prop{"Barrel", "barrel", {8.0f, 0, -2.3f}},
    Prop{"Barrel left", "barrel", {-5.2f, 0, -0.5f}},
    Prop{"Barrel middle", "barrel", {-4.5f, 0, -0.9f}, 40},
    Prop{"Barrel right", "barrel", {11.6f, 0, -1.1f}, 75},
    Prop{"Cart", "cart", {-2.2f, 0, -3.4f}, 62},
    Prop{"Fish crate", "fish_crate", {1.0f, 0, -3.9f}, 12},
    Prop{"Fish crate upper", "fish_crate", {1.05f, 0.27f, -3.9f}, 20},
    Prop{"Fish crate dock", "fish_crate", {7.0f, 0, 9.0f}, 84},
    Prop{"Bollard 1", "bollard", {-18, 0.24f, 1.9f}},
    Prop{"Bollard 2", "bollard", {-8, 0.24f, 1.9f}},
    Prop{"Bollard 3", "bollard", {-1, 0.24f, 1.9f}},
    Prop{"Bollard 4", "bollard", {10.5f, 0.24f, 1.9f}},
    Prop{"Bollard 5", "bollard", {17, 0.24f, 1.9f}},
    Prop{"Bench", "bench", {-1.9f, 0, -9.4f}},
    Prop{"Net rack", "net_rack", {13.6f, 0, -5.2f}, -24},
    Prop{"Gull", "gull", {2, 6, 10}},
    Prop{"Gull high", "gull", {-4, 9, 4}},
    Prop{"Sailor", "sailor", {6, 0, 15}, 180},
    Prop{"Harbour master", "harbour_master", {3.5f, 0, -0.9f}, 45},
    Prop{"Suitcase", "suitcase", {6.3f, 0.75f, 15}, 0, 1.0f, "Sailor"},
    Prop{"Barrel on cart", "barrel", {-2.0f, 0.66f, -3.3f}, 15, 0.55f, "Cart"},
    Prop{"Crate on hook", "crate", {-12, 3.0f, 6.75f}, 0, 0.9f},
};

engine::SceneObject* Place(engine::Level& level, const Prop& prop) {
    engine::ObjectSpec spec;
    spec.className = "MeshObject";
    spec.name = prop.name;
    spec.meshName = std::string("models/") + prop.mesh + ".glb";
    spec.matrix =
        engine::Compose(InUnits(prop.place), {0, prop.yaw, 0}, {prop.scale, prop.scale, prop.scale});
    spec.parent = prop.parent != nullptr ? level.FindObject(std::string(prop.parent)) : nullptr;
    return level.CreateObject(spec);
}

void SetSun(engine::Level& level) {
    engine::SunObject* sun = level.Data()->Sun();
    sun->direction = {-0.42f, 0.62f, 0.66f};
    sun->light.color = {1.0f, 0.93f, 0.82f};
    sun->light.intensity = 1.0f;
}

void SetView(engine::Level& level) {
    level.Views().SetCount(1);
    const engine::Matrix4 camera =
        engine::CameraMatrix(InUnits(Vector3{14.0f, 6.5f, 18.0f}), InUnits(Vector3{2.0f, 1.2f, -1.0f}), 0.0f);
    level.Views().At(0)->SetCamera(camera.m);
    level.Views().At(0)->SetProjection(0.9f, ClipPlane::Near, ClipPlane::Far, 0);
}

} // namespace

void BuildHarbour(engine::Level& level) {
    for (const Prop& prop : kProps) {
        Place(level, prop);
    }
    SetSun(level);
    SetView(level);
    MakeHarbourFilms(level);
}
