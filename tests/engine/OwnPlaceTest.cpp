#include "tests/engine/EngineFixture.h"

namespace engine_test {

using engine::Compose;
using engine::Matrix4;
using engine::SceneObject;

/// Films leave objects alone while they are closed, and where they stood when they close.
class OwnPlaceTest : public EngineTest {
protected:
    CFilmObjectTrack& Drive(SceneObject& object, const Vector3& place) {
        CFilmObjectTrack& track = AddActor(object);
        AddVector(track, KeyKind::Position, 0.0f, place);
        AddVector(track, KeyKind::Rotation, 0.0f, {10.0f, 20.0f, 30.0f});
        AddVector(track, KeyKind::Scale, 0.0f, {1.0f, 1.0f, 1.0f});
        return track;
    }
    SceneObject& MakeTurned(const std::string& name, SceneObject* parent = nullptr) {
        SceneObject& object = MakeObject(name, {}, parent);
        object.SetMatrix(Compose({0.1f, 2.3f, -4.7f}, {33.0f, 12.0f, -71.0f}, {1.5f, 1.5f, 1.5f}).m, 0);
        return object;
    }
};

TEST_F(OwnPlaceTest, AFilmThatIsNotActiveLeavesEveryObjectWhereItIs) {
    SceneObject& box = MakeObject("Box");
    CFilmObjectTrack& track = Drive(box, {5.0f, 0.0f, 0.0f});
    film->SetTime(0.0f, -1.0f);
    film->Deactivate();
    box.SetPosition(Vector3{1.0f, 2.0f, 3.0f}.Data(), 0);
    film->SetTime(0.0f, -1.0f);
    track.ApplyAt(0.0f, -1.0f, 0);
    ExpectVector(box.World().Translation(), {1.0f, 2.0f, 3.0f});
    film->Activate();
    film->SetTime(0.0f, -1.0f);
    ExpectVector(box.World().Translation(), {5.0f, 0.0f, 0.0f});
}

TEST_F(OwnPlaceTest, AFilmThatIsNotActiveStillPosesItsCameras) {
    CFilmCameraTrack& camera = AddCamera("Camera");
    AddVector(camera, KeyKind::CameraPosition, 0.0f, {1.0f, 2.0f, 3.0f});
    film->Deactivate();
    film->SetTime(0.0f, -1.0f);
    ExpectVector(camera.eyePoint, {1.0f, 2.0f, 3.0f});
}

TEST_F(OwnPlaceTest, AParentedActorStandsWhereItStoodWhenItsFilmCloses) {
    SceneObject& cart = MakeObject("Cart", {10.0f, 0.0f, 0.0f});
    SceneObject& box = MakeObject("Box", {11.0f, 0.0f, 0.0f}, &cart);
    Drive(box, {50.0f, 60.0f, 70.0f});
    film->SetTime(0.0f, -1.0f);
    ExpectVector(box.World().Translation(), {50.0f, 60.0f, 70.0f});
    film->Deactivate();
    EXPECT_EQ(box.World(), Compose({11.0f, 0.0f, 0.0f}, {}, {1, 1, 1}));
}

TEST_F(OwnPlaceTest, AParentedActorGoesBackToItsPlaceBelowAParentThatWasMovedMeanwhile) {
    SceneObject& cart = MakeObject("Cart", {10.0f, 0.0f, 0.0f});
    SceneObject& box = MakeObject("Box", {11.0f, 0.0f, 0.0f}, &cart);
    Drive(box, {50.0f, 60.0f, 70.0f});
    film->SetTime(0.0f, -1.0f);
    cart.SetPosition(Vector3{0.0f, 5.0f, 0.0f}.Data(), 0);
    film->Deactivate();
    ExpectVector(box.World().Translation(), {1.0f, 5.0f, 0.0f});
}

TEST_F(OwnPlaceTest, AnActorThatLostItsParentMeanwhileGoesBackInTheWorld) {
    SceneObject& cart = MakeObject("Cart", {10.0f, 0.0f, 0.0f});
    SceneObject& box = MakeObject("Box", {11.0f, 0.0f, 0.0f}, &cart);
    Drive(box, {50.0f, 60.0f, 70.0f});
    film->SetTime(0.0f, -1.0f);
    level.DeleteObject(&cart);
    film->Deactivate();
    ExpectVector(box.World().Translation(), {11.0f, 0.0f, 0.0f});
}

TEST_F(OwnPlaceTest, ALookAtAFilmChangesNoBitOfAnyMatrix) {
    SceneObject& ship = MakeTurned("Ship");
    SceneObject& mast = MakeTurned("Mast", &ship);
    SceneObject& sail = MakeTurned("Sail", &mast);
    SceneObject& flag = MakeTurned("Flag", &sail); // goes along and is no actor
    sail.SetPosition(Vector3{0.3f, 0.7f, 1.1f}.Data(), 0);
    flag.SetPosition(Vector3{0.3f, 2.9f, 1.3f}.Data(), 0);
    const std::vector<Matrix4> before{ship.World(), mast.World(), sail.World(), flag.World()};
    Drive(sail, {3.0f, 4.0f, 5.0f}); // the lower one first
    Drive(mast, {-1.0f, 4.0f, 0.0f});
    Drive(ship, {7.0f, 0.0f, 1.0f});
    film->SetTime(0.0f, -1.0f);
    film->SetTime(1.0f, -1.0f);
    film->Deactivate();
    EXPECT_EQ((std::vector<Matrix4>{ship.World(), mast.World(), sail.World(), flag.World()}), before);
}

TEST_F(OwnPlaceTest, AnActorTakenOutOfItsFilmOrReplacedGoesBackAtOnce) {
    SceneObject& cart = MakeObject("Cart");
    SceneObject& box = MakeObject("Box", {1.0f, 0.0f, 0.0f}, &cart);
    SceneObject& crate = MakeObject("Crate", {2.0f, 0.0f, 0.0f}, &cart);
    CFilmObjectTrack& track = Drive(box, {50.0f, 60.0f, 70.0f});
    film->SetTime(0.0f, -1.0f);
    track.SetActor(&crate, false);
    ExpectVector(box.World().Translation(), {1.0f, 0.0f, 0.0f});
    film->SetTime(0.0f, -1.0f);
    ExpectVector(crate.World().Translation(), {50.0f, 60.0f, 70.0f});
    film->RemoveTrack(&track, 1);
    ExpectVector(crate.World().Translation(), {2.0f, 0.0f, 0.0f});
}

TEST_F(OwnPlaceTest, AnActorMadeByAMoveGoesBackToWhereItStoodBeforeIt) {
    SceneObject& cart = MakeObject("Cart", {10.0f, 0.0f, 0.0f});
    SceneObject& box = MakeObject("Box", {11.0f, 0.0f, 0.0f}, &cart);
    SceneObject& other = MakeObject("Other", {5.0f, 0.0f, 0.0f});
    level.Data()->filmManager->currentFilm = film;
    {
        const engine::PlacesBeforeMove before(level, {&cart, &box});
        cart.SetPosition(Vector3{20.0f, 0.0f, 0.0f}.Data(), 0);
        other.SetPosition(Vector3{6.0f, 0.0f, 0.0f}.Data(), 0); // nobody's move
        for (SceneObject* object : {&cart, &box, &other}) {
            Drive(*object, {50.0f, 60.0f, 70.0f});
        }
        const engine::PlacesBeforeMove again(level, {&cart}); // a move inside of it knows no better
        film->SetTime(0.0f, -1.0f);
    }
    film->Deactivate();
    ExpectVector(cart.World().Translation(), {10.0f, 0.0f, 0.0f});
    ExpectVector(box.World().Translation(), {11.0f, 0.0f, 0.0f});
    ExpectVector(other.World().Translation(), {6.0f, 0.0f, 0.0f});
}

TEST_F(OwnPlaceTest, WhereAMovedActorHasNoKeysItIsAsBeforeTheMove) {
    SceneObject& box = MakeObject("Box", {10.0f, 0.0f, 0.0f});
    level.Data()->filmManager->currentFilm = film;
    {
        const engine::PlacesBeforeMove before(level, {&box});
        box.SetPosition(Vector3{20.0f, 0.0f, 0.0f}.Data(), 0);
        AddVector(AddActor(box), KeyKind::Rotation, 0.0f, {10.0f, 20.0f, 30.0f});
        film->SetTime(0.0f, -1.0f);
    }
    ExpectVector(box.World().Translation(), {10.0f, 0.0f, 0.0f});
}

TEST_F(OwnPlaceTest, AnActorThatIsGivenToItsTrackAgainKeepsItsOwnPlace) {
    SceneObject& box = MakeObject("Box", {10.0f, 0.0f, 0.0f});
    CFilmObjectTrack& track = Drive(box, {50.0f, 60.0f, 70.0f});
    film->SetTime(0.0f, -1.0f);
    track.SetActor(&box, true);
    track.ClearKind(KeyKind::Position);
    film->SetTime(0.0f, -1.0f);
    ExpectVector(box.World().Translation(), {10.0f, 0.0f, 0.0f});
    film->Deactivate();
    ExpectVector(box.World().Translation(), {10.0f, 0.0f, 0.0f});
}

TEST_F(OwnPlaceTest, PlacesOfAMoveGoWithIt) {
    SceneObject& box = MakeObject("Box", {10.0f, 0.0f, 0.0f});
    level.Data()->filmManager->currentFilm = nullptr;
    {
        const engine::PlacesBeforeMove closed(level, {&box});
        EXPECT_EQ(level.Data()->PlaceBeforeMove(box), nullptr) << "nothing poses it";
    }
    level.Data()->filmManager->currentFilm = film;
    {
        const engine::PlacesBeforeMove before(level, {&box});
        EXPECT_NE(level.Data()->PlaceBeforeMove(box), nullptr);
    }
    EXPECT_EQ(level.Data()->PlaceBeforeMove(box), nullptr);
}

TEST_F(OwnPlaceTest, ALevelThatGoesInTheMiddleOfAMoveIsLeftAlone) {
    SceneObject& box = MakeObject("Box", {10.0f, 0.0f, 0.0f});
    level.Data()->filmManager->currentFilm = film;
    auto before = std::make_unique<engine::PlacesBeforeMove>(level, ObjectList{&box});
    level.New("");
    before.reset();
    EXPECT_EQ(level.Data()->placesBeforeMove, nullptr);
}

TEST_F(OwnPlaceTest, ALightGoesBackToItsPlaceWhenItsFilmCloses) {
    SceneObject& cart = MakeObject("Cart");
    for (const char* name : {ClassName::GLLight, ClassName::DynLight}) {
        SceneObject& lamp = MakeObject("Lamp", {1.0f, 2.0f, 3.0f}, &cart, name);
        const bool dynamic = name == ClassName::DynLight;
        CFilmTrack& track = AddTrack(dynamic ? film->CreateDynLightTrack() : film->CreateGLLightTrack());
        if (dynamic) {
            static_cast<CFilmDynLightTrack&>(track).lightObject = &lamp;
        } else {
            static_cast<CFilmGLLightTrack&>(track).lightObject = &lamp;
        }
        AddVector(track, KeyKind::Position, 0.0f, {9.0f, 9.0f, 9.0f});
        film->SetTime(0.0f, -1.0f);
        ExpectVector(lamp.World().Translation(), {9.0f, 9.0f, 9.0f});
        film->Deactivate();
        ExpectVector(lamp.World().Translation(), {1.0f, 2.0f, 3.0f});
        film->Activate();
    }
}

TEST_F(OwnPlaceTest, ALightOfAClosedFilmStaysLitWhenItsTrackIsApplied) {
    SceneObject& lamp = MakeObject("Lamp", {1.0f, 2.0f, 3.0f}, nullptr, ClassName::GLLight);
    CFilmTrack& track = AddTrack(film->CreateGLLightTrack());
    AsGLLightTrack(&track)->lightObject = &lamp;
    AddVector(track, KeyKind::Position, 0.0f, {9.0f, 9.0f, 9.0f});
    Add<CFilmFlagsKey>(track, KeyKind::Flags, 0.0f).keyFlags = 0;
    film->Deactivate();
    track.ApplyAt(0.0f, -1.0f, 0);
    EXPECT_TRUE(lamp.light->on);
    ExpectVector(lamp.World().Translation(), {1.0f, 2.0f, 3.0f});
}

TEST_F(OwnPlaceTest, ALightTakenOutOfItsFilmIsToldUnlessItGoesItself) {
    std::vector<const EditorObject*> freed;
    level.SetFreedLightHook([&](const EditorObject* light) { freed.push_back(light); });
    const auto addLight = [&](SceneObject& lamp) -> CFilmTrack& {
        CFilmTrack& track = AddTrack(film->CreateDynLightTrack());
        AsDynLightTrack(&track)->lightObject = &lamp;
        return track;
    };
    SceneObject& lamp = MakeObject("Lamp", {}, nullptr, ClassName::DynLight);
    SceneObject& torch = MakeObject("Torch", {}, nullptr, ClassName::DynLight);
    SceneObject& fire = MakeObject("Fire", {}, nullptr, ClassName::DynLight);
    film->RemoveTrack(&addLight(lamp), 1);
    EXPECT_EQ(freed, (std::vector<const EditorObject*>{&lamp}));
    CFilmTrack& ofTorch = addLight(torch);
    level.DeleteObject(&torch);
    film->RemoveTrack(&ofTorch, 1);
    EXPECT_EQ(freed.size(), 1u);
    addLight(fire);
    Films().DeleteFilm(film->index);
    EXPECT_EQ(freed.back(), &fire);
}

TEST_F(OwnPlaceTest, TheBodyOfTheSunIsNoLightThatAFilmFrees) {
    int freed = 0;
    level.SetFreedLightHook([&](const EditorObject*) { ++freed; });
    SceneObject& helper = MakeObject("Sun", {}, nullptr, ClassName::GLLight);
    auto& sun = *AsGLLightTrack(&AddTrack(film->CreateGLLightTrack()));
    sun.isSun = 1;
    sun.lightObject = &helper;
    film->RemoveTrack(&sun, 1);
    EXPECT_EQ(freed, 0);
}

} // namespace engine_test
