#include "host/stage/host/StandingPlace.h"
#include "tests/stage/CubeMesh.h"

#include <cmath>
#include <gtest/gtest.h>

/// A cube of 100 units that stands in the origin on the ground. What is new takes 30 units to each side, and
/// 60 up.
class StandingPlaceTest : public ::testing::Test {
protected:
    StandingPlaceTest() {
        level.SetMeshLibrary(&library);
        level.New("");
        AddCube({0, 50, 0}, {50, 50, 50});
    }
    /// Half its sides.
    void AddCube(const Vector3& place, const Vector3& halves) {
        engine::ObjectSpec spec;
        spec.className = "MeshObject";
        spec.name = "Cube";
        spec.meshName = "cube";
        spec.matrix = engine::Compose(place, {0, 0, 0}, halves);
        level.CreateObject(spec);
    }
    glm::vec3 Place(const glm::vec3& from, const glm::vec3& to) const {
        return stage::StandingPlace(picker, {from, glm::normalize(to - from)}, 500.0f, room);
    }
    static void Expect(const glm::vec3& place, const glm::vec3& wanted) {
        for (int axis = 0; axis < 3; ++axis) {
            EXPECT_NEAR(place[axis], wanted[axis], 0.05f) << axis;
        }
    }

    const stage::Room room{{-30, 0, -30}, {30, 60, 30}};
    CubeLibrary library;
    engine::Level level;
    stage::ScenePicker picker{level};
};

TEST_F(StandingPlaceTest, OnTheGroundAndOnTopOfThings) {
    Expect(Place({300, 200, 500}, {300, 0, 100}), {300, 0, 100});
    Expect(Place({0, 500, 500}, {10, 100, 20}), {10, 100, 20});
    Expect(Place({10, 500, 20}, {10, 100, 20}), {10, 100, 20});
}

TEST_F(StandingPlaceTest, BeforeASideOnTheGroundBelow) {
    // The side at z = 50, the room's 30, and 1 to be clear of it.
    Expect(Place({0, 100, 500}, {0, 40, 50}), {0, 0, 81});
    Expect(Place({0, 40, 500}, {0, 40, 50}), {0, 0, 81});
    Expect(Place({500, 100, 0}, {50, 40, 0}), {81, 0, 0});
}

TEST_F(StandingPlaceTest, BeforeASideByTheCornerThatReachesFarthest) {
    // Along (-1, 0, -1) / sqrt(2) the corner (-30, -30) reaches 30 * sqrt(2), so x and z go back 30 and 1 /
    // sqrt(2).
    Expect(Place({350, 40, 310}, {50, 40, 10}), {80.707f, 0, 40.707f});
}

TEST_F(StandingPlaceTest, BeforeASideOnWhatIsBelowIt) {
    AddCube({0, 10, 200}, {100, 10, 140}); // a floor 20 high before the cube, from z = 60 on
    Expect(Place({0, 100, 500}, {0, 60, 50}), {0, 20, 81});
}

TEST_F(StandingPlaceTest, NotInsideWhatIsSeenFromBelow) {
    AddCube({0, 310, 0}, {200, 10, 200}); // a roof whose underside is at 300
    Expect(Place({0, 150, 0}, {0, 300, 0}), {0, 100, 0});
    Expect(Place({180, 10, 0}, {180, 300, 0}), {180, 0, 0});
}

TEST_F(StandingPlaceTest, SlopesCarry) {
    // A cube turned by 45 degrees: its edge is up at 100 + 50 * sqrt(2), the slope meets (535.355, 135.355,
    // 0).
    engine::ObjectSpec spec;
    spec.className = "MeshObject";
    spec.name = "Slope";
    spec.meshName = "cube";
    spec.matrix = engine::Compose({500, 100, 0}, {0, 0, 45}, {50, 50, 50});
    level.CreateObject(spec);
    const float along = 500.0f + 25.0f * std::sqrt(2.0f);
    const float up = 100.0f + 25.0f * std::sqrt(2.0f);
    Expect(Place({1000, 600, 0}, {along, up, 0}), {along, up, 0});
}

TEST_F(StandingPlaceTest, InTheAirWhereNothingIsMet) {
    Expect(Place({0, 200, 500}, {0, 200, 1000}), {0, 200, 1000});
}
