#include "framework/Wnd.h"
#include "host/stage/windows/ToolWindows.h"
#include "tests/whole/StageFixture.h"

#include <cmath>
#include <random>

using engine::operator-;
using engine::operator*;

namespace {

constexpr float kMostDegrees = 0.05f;

/// Degrees of the turn from one orientation to another; both without shear and mirror.
float AngleBetween(const engine::Matrix4& a, const engine::Matrix4& b) {
    float largest = 0.0f;
    for (int row = 0; row < 3; ++row) {
        const Vector3 way = engine::Normalized(a.Axis(row), {}) - engine::Normalized(b.Axis(row), {});
        largest = std::max(largest, engine::Length(way)); // the chord, near the angle for small ones
    }
    return largest / engine::kRadiansPerDegree;
}

} // namespace

/// Turns of an actor of a film with "Animate object" on, at a time with and without keys.
class TurnsInStageTest : public StageTest {
protected:
    static constexpr UINT kAnimate = 36823;
    static constexpr UINT kMoveToBegin = 36833;
    static constexpr UINT kFrameForward = 36841;
    static constexpr UINT kFrameBack = 36840;

    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(OpenScenario("Epilogue"));
        engine::Matrix4 matrix;
        matrix.SetTranslation({0, 30, 0});
        crate =
            window->commands.Create({ClassName::Mesh, "Crate", "models/crate.glb", matrix, nullptr, true});
        Send(kAnimate);
        Move(crate, 0, 30, 0);
        Send(kMoveToBegin);
        Send(kFrameForward);
        ASSERT_NE(Film("Epilogue")->FindObjectTrack(crate), nullptr);
    }
    void Send(UINT id) { window->toolWindows->Docks().front()->Window()->SendMessage(WM_COMMAND, id); }
    engine::Matrix4 Turned(const Vector3& angles) const {
        return engine::Compose(crate->World().Translation(), angles, {1, 1, 1});
    }
    void Put(const engine::Matrix4& world) { window->commands.Move({{crate, world}}); }
    /// As the panel does: all three angles at once.
    void Type(const Vector3& angles) { Put(Turned(angles)); }
    /// As the gizmo does: about an axis of the world in steps of 15 degrees or what is left.
    void Drag(int axis, float degrees) {
        const engine::Matrix4 start = crate->World();
        const int steps = std::max(1, static_cast<int>(std::ceil(std::abs(degrees) / 15.0f)));
        for (int step = 1; step <= steps; ++step) {
            Vector3 angles;
            angles.Data()[axis] = degrees * static_cast<float>(step) / static_cast<float>(steps);
            engine::Matrix4 world = Multiply(Unplaced(start), ExactTurn(angles));
            world.SetTranslation(start.Translation());
            Put(world);
        }
    }
    /// The rotation key at the cursor gets the angles, as the attributes window gives them.
    void Key(const Vector3& angles) {
        CFilmTrack* track = Film("Epilogue")->FindObjectTrack(crate);
        for (IFilmKey* key : track->keys) {
            if (key->kind == KeyKind::Rotation && key->time > 0.0f) {
                key->SetValue(angles.Data());
            }
        }
        track->NotifyKeysChanged(KeyKind::Rotation);
        Scrub();
    }
    void Scrub() {
        Send(kFrameForward);
        Send(kFrameBack);
    }
    /// The orientation outlives looking elsewhere and a move along.
    void ExpectHeld(const engine::Matrix4& wanted, const std::string& what) {
        worst = std::max(worst, AngleBetween(crate->World(), wanted));
        Scrub();
        worst = std::max(worst, AngleBetween(crate->World(), wanted));
        engine::Matrix4 next = crate->World();
        next.SetTranslation({std::fmod(next.Translation().x + 2.0f, 100.0f), 30.0f, 0.0f});
        Put(next);
        Scrub();
        const float after = AngleBetween(crate->World(), wanted);
        worst = std::max(worst, after);
        ASSERT_LE(worst, kMostDegrees) << what;
    }
    static std::string Text(const Vector3& v) {
        return std::to_string(v.x) + " " + std::to_string(v.y) + " " + std::to_string(v.z);
    }
    /// Rotation about one axis with exact zeros and ones at the quarters, as a snapped drag gives it.
    static engine::Matrix4 ExactTurn(const Vector3& angles) {
        const int axis = angles.x != 0.0f ? 0 : angles.y != 0.0f ? 1 : 2;
        const double radians = static_cast<double>(angles.Data()[axis]) * 0.017453292519943295;
        const auto s = static_cast<float>(std::round(std::sin(radians) * 1e7) / 1e7);
        const auto c = static_cast<float>(std::round(std::cos(radians) * 1e7) / 1e7);
        engine::Matrix4 turn;
        const int first = (axis + 1) % 3;
        const int second = (axis + 2) % 3;
        turn.m[4 * first + first] = turn.m[4 * second + second] = c;
        turn.m[4 * first + second] = s;
        turn.m[4 * second + first] = -s;
        return turn;
    }
    static engine::Matrix4 Unplaced(engine::Matrix4 matrix) {
        matrix.SetTranslation({});
        return matrix;
    }

    engine::SceneObject* crate = nullptr;
    float worst = 0.0f;
};

TEST_F(TurnsInStageTest, AnActorTurnedByAQuarterAboutTheUpAxisStandsWhenItIsMovedNext) {
    Type({0, 90, 0});
    const engine::Matrix4 wanted = crate->World();
    ASSERT_NO_FATAL_FAILURE(ExpectHeld(wanted, "a quarter"));
    EXPECT_NEAR(crate->World().Axis(2).x, 1.0f, 1e-5f);
}

TEST_F(TurnsInStageTest, ATurnOfMoreThanAQuarterInOneMoveIsRecordedAsItWas) {
    Type({0, 170, 0});
    ASSERT_NO_FATAL_FAILURE(ExpectHeld(Turned({0, 170, 0}), "170"));
    Type({-100, 20, 170});
    ASSERT_NO_FATAL_FAILURE(ExpectHeld(Turned({-100, 20, 170}), "three"));
}

TEST_F(TurnsInStageTest, TenThousandTurnsTypedDraggedAndKeyedKeepTheirOrientation) {
    constexpr int kTurns = 10000;
    std::mt19937 random(7);
    std::uniform_real_distribution<float> angle(-180.0f, 180.0f);
    Type({0, 5, 0}); // from here on a key stands at the cursor
    std::vector<Vector3> wanted;
    for (int x = -2; x <= 2; ++x) { // all exact quarters
        for (int y = -2; y <= 2; ++y) {
            for (int z = -2; z <= 2; ++z) {
                wanted.push_back(Vector3{90.0f * static_cast<float>(x), 90.0f * static_cast<float>(y),
                                         90.0f * static_cast<float>(z)});
            }
        }
    }
    for (int turn = 0; turn < kTurns; ++turn) {
        const auto i = static_cast<std::size_t>(turn);
        Vector3 angles =
            i / 3 < wanted.size() ? wanted[i / 3] : Vector3{angle(random), angle(random), angle(random)};
        if (turn % 4 == 3) {
            angles.y = std::copysign(90.0f, angles.y);
        }
        if (turn % 3 == 0) {
            Type(angles);
            ASSERT_NO_FATAL_FAILURE(ExpectHeld(Turned(angles), "typed " + Text(angles)));
        } else if (turn % 3 == 1) {
            const int axis = turn % 7 % 3;
            const float degrees = turn % 2 == 0 ? 90.0f : angles.x;
            Vector3 about;
            about.Data()[axis] = degrees;
            const engine::Matrix4 end = Multiply(Unplaced(crate->World()), ExactTurn(about));
            Drag(axis, degrees);
            ASSERT_NO_FATAL_FAILURE(ExpectHeld(end, "dragged " + Text(about)));
        } else {
            Key(angles);
            ASSERT_NO_FATAL_FAILURE(ExpectHeld(Turned(angles), "keyed " + Text(angles)));
        }
    }
    RecordProperty("worst_degrees", std::to_string(worst));
}
