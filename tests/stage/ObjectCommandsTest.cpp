#include "host/stage/host/ObjectCommands.h"
#include "host/stage/host/FreeLights.h"
#include "host/stage/host/LevelSession.h"
#include "tests/stage/HostFixture.h"

#include <cmath>

using ::testing::_;

class ObjectCommandsTest : public HostFixture {
protected:
    engine::Matrix4 At(float x, float y, float z) const {
        engine::Matrix4 matrix;
        matrix.SetTranslation({x, y, z});
        return matrix;
    }
    engine::SceneObject* Create(const std::string& name, const char* className = ClassName::Mesh) {
        engine::ObjectSpec spec;
        spec.className = className;
        spec.name = name;
        return commands.Create(spec);
    }
    IFilm* OpenFilm() {
        IFilmManager* films = host.level.Data()->filmManager;
        films->currentFilm = films->GetFilm(films->AllocateFilm());
        return films->currentFilm;
    }

    stage::LevelSession session{host};
    stage::ObjectCommands commands{host, session};
};

TEST_F(ObjectCommandsTest, ANewObjectIsSelectedWhenItIsAnnouncedAndActive) {
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsCreated, nullptr)).WillOnce([&](int, void*) {
        ASSERT_EQ(host.level.selection.size(), 1u);
        EXPECT_EQ(host.level.selection.front()->name, "Lamp");
        EXPECT_TRUE(host.level.selection.front()->GetInfo()->IsActive());
    });
    engine::SceneObject* lamp = Create("Lamp", ClassName::GLLight);
    ASSERT_NE(lamp, nullptr);
    EXPECT_TRUE(lamp->IsLight());
    EXPECT_TRUE(session.IsChanged());
}

TEST_F(ObjectCommandsTest, WithoutALevelNothingIsCreated) {
    host.level.Close();
    EXPECT_EQ(Create("Lamp"), nullptr);
    EXPECT_FALSE(commands.GroupSelected());
    EXPECT_EQ(commands.Duplicate(), 0);
}

TEST_F(ObjectCommandsTest, DuplicatesAreSelectedWithNamesOfTheirOwn) {
    engine::SceneObject* lamp = Create("Lamp", ClassName::GLLight);
    lamp->light->range = 42.0f;
    lamp->SetMatrix(At(1, 2, 3).m, 0);
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsCreated, nullptr)).Times(1);
    EXPECT_EQ(commands.Duplicate(), 1);
    ASSERT_EQ(host.level.selection.size(), 1u);
    auto* copy = static_cast<engine::SceneObject*>(host.level.selection.front());
    EXPECT_NE(copy, lamp);
    EXPECT_EQ(copy->name, "Lamp1");
    EXPECT_NE(copy->id, lamp->id);
    EXPECT_FLOAT_EQ(copy->light->range, 42.0f);
    EXPECT_FLOAT_EQ(copy->GetPosition(0)[2], 3.0f);
}

TEST_F(ObjectCommandsTest, CopiesHangOnEachOtherAsTheirSourcesDo) {
    engine::SceneObject* cart = Create("Cart");
    engine::SceneObject* barrel = Create("Barrel");
    engine::SceneObject* rope = Create("Rope");
    commands.SetParent({barrel}, cart);
    commands.SetParent({rope}, barrel);
    host.level.SetSelection({rope, barrel}); // the child first, and without the cart
    ASSERT_EQ(commands.Duplicate(), 2);
    const engine::SceneObject* barrelCopy = host.level.FindObject("Barrel1");
    const engine::SceneObject* ropeCopy = host.level.FindObject("Rope1");
    ASSERT_NE(barrelCopy, nullptr);
    ASSERT_NE(ropeCopy, nullptr);
    EXPECT_EQ(ropeCopy->Parent(), barrelCopy);
    EXPECT_EQ(barrelCopy->Parent(), cart);
    EXPECT_EQ(rope->Parent(), barrel);
}

TEST_F(ObjectCommandsTest, BodiesOfAPluginAreNotDuplicated) {
    engine::SceneObject* body = Create("Eye", ClassName::CameraPosition);
    body->transient = true;
    EXPECT_EQ(commands.Duplicate(), 0);
    EXPECT_EQ(Count(), 1u);
}

TEST_F(ObjectCommandsTest, CameraPointsCantBeDeletedByTheUser) {
    Create("Eye", ClassName::CameraPosition);
    EXPECT_CALL(first, CanDeleteObjects(_, _)).Times(0);
    commands.DeleteSelected();
    EXPECT_EQ(Count(), 1u);
    ASSERT_EQ(windows.refusals.size(), 1u);
    EXPECT_NE(windows.refusals.front().text.find("Eye"), std::string::npos);
}

TEST_F(ObjectCommandsTest, DeletionMarksTheLevelOnlyIfSomethingWent) {
    Create("Crate");
    host.level.New("");
    session.New();
    engine::SceneObject* crate = Make("Crate");
    host.Select({crate});
    EXPECT_CALL(first, CanDeleteObjects(_, _)).WillOnce(::testing::Return(false));
    commands.DeleteSelected();
    EXPECT_FALSE(session.IsMarkedChanged());
    EXPECT_CALL(first, CanDeleteObjects(_, _)).WillOnce(::testing::Return(true));
    commands.DeleteSelected();
    EXPECT_TRUE(session.IsMarkedChanged());
    EXPECT_EQ(Count(), 0u);
}

TEST_F(ObjectCommandsTest, ARenamedObjectKeepsNamesUnique) {
    engine::SceneObject* crate = Create("Crate");
    engine::SceneObject* barrel = Create("Barrel");
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsRenamed, nullptr)).Times(1);
    EXPECT_TRUE(commands.Rename(*barrel, "Crate"));
    EXPECT_EQ(barrel->name, "Crate1");
    EXPECT_FALSE(commands.Rename(*crate, ""));
    EXPECT_TRUE(commands.Rename(*crate, "Crate")); // no change, no event
    EXPECT_EQ(crate->name, "Crate");
}

TEST_F(ObjectCommandsTest, GroupsNeedTwoFreeObjects) {
    engine::SceneObject* crate = Create("Crate");
    engine::SceneObject* barrel = Create("Barrel");
    host.Select({crate});
    EXPECT_FALSE(commands.GroupSelected());
    host.Select({crate, barrel});
    EXPECT_TRUE(commands.GroupSelected());
    EXPECT_FALSE(commands.GroupSelected());
    EXPECT_EQ(commands.WithGroups({barrel}), (ObjectList{barrel, crate}));
    EXPECT_TRUE(commands.UngroupSelected());
    EXPECT_FALSE(commands.UngroupSelected());
    EXPECT_EQ(commands.WithGroups({barrel}), (ObjectList{barrel}));
}

TEST_F(ObjectCommandsTest, AParentKeepsTheWorldMatrixAndRingsAreRefused) {
    engine::SceneObject* cart = Create("Cart");
    engine::SceneObject* crate = Create("Crate");
    cart->SetMatrix(At(10, 0, 0).m, 0);
    crate->SetMatrix(At(11, 1, 0).m, 0);
    EXPECT_CALL(first, OnEvent(EventCode::ObjectSetChanged, nullptr)).Times(1);
    EXPECT_EQ(commands.SetParent({crate}, cart), "");
    EXPECT_FLOAT_EQ(crate->GetPosition(0)[0], 11.0f);
    EXPECT_EQ(commands.SetParent({cart}, crate), "Crate hangs on Cart: it can't be its parent too");
    EXPECT_EQ(commands.SetParent({crate}, cart), "") << "it has it already";
    EXPECT_EQ(cart->parent, nullptr);
}

TEST_F(ObjectCommandsTest, MovingTheSelectionSendsEventFourteenAndNoRequest) {
    engine::SceneObject* crate = Create("Crate");
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsMoved, nullptr)).WillOnce([&](int, void*) {
        EXPECT_FLOAT_EQ(crate->GetPosition(0)[0], 5.0f); // already there
    });
    EXPECT_CALL(first, OnViewRequest(ViewRequest::ObjectsMoved, _, _, _)).Times(0);
    commands.Move({{crate, At(5, 0, 0)}});
    EXPECT_EQ(windows.objectMoves, 1);
}

TEST_F(ObjectCommandsTest, MovingOthersSendsRequestTenAndNoEvent) {
    engine::SceneObject* crate = Create("Crate");
    host.Select({});
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsMoved, _)).Times(0);
    EXPECT_CALL(first, OnViewRequest(ViewRequest::ObjectsMoved, _, _, _))
        .WillOnce([&](int, auto, void* data, bool*) {
            EXPECT_EQ(*static_cast<ObjectList*>(data), (ObjectList{crate}));
        });
    commands.Move({{crate, At(5, 0, 0)}});
}

TEST_F(ObjectCommandsTest, ParentAndChildMovedTogetherBothArrive) {
    engine::SceneObject* cart = Create("Cart");
    engine::SceneObject* crate = Create("Crate");
    commands.SetParent({crate}, cart);
    host.Select({crate, cart});
    commands.Move({{crate, At(1, 2, 3)}, {cart, At(10, 0, 0)}});
    EXPECT_FLOAT_EQ(cart->GetPosition(0)[0], 10.0f);
    EXPECT_FLOAT_EQ(crate->GetPosition(0)[0], 1.0f);
    EXPECT_FLOAT_EQ(crate->GetPosition(0)[2], 3.0f);
}

TEST_F(ObjectCommandsTest, ChildrenThatWentAlongAreToldAsChangedOutsideWhileNoFilmIsOpen) {
    engine::SceneObject* cart = Create("Cart");
    engine::SceneObject* crate = Create("Crate");
    commands.SetParent({crate}, cart);
    host.Select({cart});
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsChangedOutside, _)).WillOnce([&](int, void* data) {
        EXPECT_EQ(*static_cast<ObjectList*>(data), (ObjectList{crate}));
    });
    commands.Move({{cart, At(10, 0, 0)}});
    EXPECT_FLOAT_EQ(crate->GetPosition(0)[0], 10.0f);
}

TEST_F(ObjectCommandsTest, ChildrenThatWentAlongAreToldAsMovedWhileAFilmIsOpen) {
    engine::SceneObject* cart = Create("Cart");
    engine::SceneObject* crate = Create("Crate");
    commands.SetParent({crate}, cart);
    host.Select({cart});
    OpenFilm();
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsMoved, nullptr)).Times(1);
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsChangedOutside, _)).Times(0);
    EXPECT_CALL(first, OnViewRequest(ViewRequest::ObjectsMoved, _, _, _))
        .WillOnce([&](int, auto, void* data, bool*) {
            EXPECT_EQ(*static_cast<ObjectList*>(data), (ObjectList{crate}));
            EXPECT_FLOAT_EQ(crate->GetPosition(0)[0], 20.0f);
        });
    commands.Move({{cart, At(20, 0, 0)}});
}

TEST_F(ObjectCommandsTest, WithAFilmOpenALargeTurnIsToldAsSmallOnes) {
    engine::SceneObject* cart = Create("Cart");
    engine::SceneObject* crate = Create("Crate");
    crate->SetMatrix(At(0, 0, 1).m, 0);
    commands.SetParent({crate}, cart);
    host.Select({cart});
    OpenFilm();
    std::vector<float> turns;
    std::vector<float> ofChild;
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsMoved, nullptr)).WillRepeatedly([&](int, void*) {
        turns.push_back(cart->World().Axis(0).z); // minus the sine of the turn about y
        EXPECT_FLOAT_EQ(cart->GetPosition(0)[1], 5.0f) << "the place is that of the end from the first on";
    });
    EXPECT_CALL(first, OnViewRequest(ViewRequest::ObjectsMoved, _, _, _))
        .WillRepeatedly([&](int, auto, void*, bool*) { ofChild.push_back(crate->World().Axis(0).z); });
    commands.Move({{cart, engine::Compose({0, 5, 0}, {0, 60, 0}, {1, 1, 1})}});
    ASSERT_EQ(turns.size(), 2u); // 30 and 60 degrees
    EXPECT_NEAR(turns[0], -0.5f, 1e-5f);
    EXPECT_NEAR(turns[1], -0.8660254f, 1e-5f);
    EXPECT_EQ(ofChild, turns);
}

TEST_F(ObjectCommandsTest, WithoutAFilmALargeTurnIsToldOnce) {
    engine::SceneObject* cart = Create("Cart");
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsMoved, nullptr)).Times(1);
    commands.Move({{cart, engine::Compose({}, {0, 170, 0}, {1, 1, 1})}});
}

TEST_F(ObjectCommandsTest, AnObjectThatGoesInTheMiddleOfATurnEndsIt) {
    engine::SceneObject* cart = Create("Cart");
    OpenFilm();
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsMoved, nullptr)).Times(1).WillOnce([&](int, void*) {
        host.level.DeleteObject(cart);
    });
    commands.Move({{cart, engine::Compose({}, {0, 170, 0}, {1, 1, 1})}});
    EXPECT_EQ(Count(), 0u);
}

TEST_F(ObjectCommandsTest, LightsKeptByAPluginAndInNoFilmAreListedAsLeftOut) {
    engine::SceneObject* lamp = Create("Lamp", ClassName::GLLight);
    engine::SceneObject* torch = Create("Torch", ClassName::DynLight);
    Create("Sun", ClassName::GLLight)->transient = true;
    Create("Plain", ClassName::GLLight);
    IFilm* film = OpenFilm();
    CFilmTrack* track = film->CreateDynLightTrack();
    film->AddTrack(track);
    AsDynLightTrack(track)->lightObject = torch;
    EXPECT_CALL(first, OnEvent(EventCode::CollectHiddenObjects, _)).WillRepeatedly([&](int, void* data) {
        auto& request = *static_cast<HiddenObjectsRequest*>(data);
        request.collection->Add(lamp);
        request.collection->Add(torch);
        request.collection->Add(host.level.FindObject("Sun"));
    });
    EXPECT_EQ(stage::LightsWithoutFilm(host), std::vector<std::string>{"Lamp"});
    windows.reports.clear();
    film->RemoveTrack(track, 1);
    EXPECT_EQ(windows.reports, std::vector<std::string>{stage::FreedLightText("Torch")});
    EXPECT_EQ(stage::LightsWithoutFilm(host), (std::vector<std::string>{"Lamp", "Torch"}));
}

TEST_F(ObjectCommandsTest, MatricesThatAreNotFiniteMoveNothing) {
    engine::SceneObject* crate = Create("Crate");
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsMoved, _)).Times(0);
    commands.Move({{crate, At(NAN, 0, 0)}, {nullptr, At(1, 0, 0)}});
    EXPECT_FLOAT_EQ(crate->GetPosition(0)[0], 0.0f);
}
