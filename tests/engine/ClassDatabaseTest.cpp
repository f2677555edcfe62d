#include "host/engine/ClassDatabase.h"

#include "plugin/contract/ClassIds.h"

#include <gtest/gtest.h>

namespace {

using engine::ClassDatabase;

TEST(ClassDatabaseTest, LightsVirtualObjectsAndCameraBodiesAreHelpers) {
    const ClassDatabase classes;
    for (const char* name :
         {ClassName::GLLight, ClassName::DynLight, ClassName::VirtualObject, ClassName::HelperCwO,
          ClassName::CameraPosition, ClassName::CameraTarget, ClassName::CameraControlPoint}) {
        EXPECT_TRUE(classes.IsDerivedFrom(name, ClassName::Helper)) << name;
    }
    EXPECT_FALSE(classes.IsDerivedFrom(ClassName::Mesh, ClassName::Helper));
    EXPECT_FALSE(classes.IsDerivedFrom(ClassName::Gizmo, ClassName::Helper));
    EXPECT_FALSE(classes.IsDerivedFrom(ClassName::DynLight, ClassName::GLLight));
    EXPECT_TRUE(classes.IsDerivedFrom("SkinnedMeshObject", ClassName::Mesh));
}

TEST(ClassDatabaseTest, LightsAreTheTwoKindsOfFilms) {
    EXPECT_TRUE(engine::IsLightClass(ClassName::GLLight));
    EXPECT_TRUE(engine::IsLightClass(ClassName::DynLight));
    EXPECT_FALSE(engine::IsLightClass(ClassName::Helper));
    EXPECT_FALSE(engine::IsLightClass(ClassName::Mesh));
    EXPECT_FALSE(engine::IsLightClass("Nobody"));
}

TEST(ClassDatabaseTest, CameraPointsAreEyeTargetAndHandle) {
    EXPECT_TRUE(engine::IsCameraPointClass(ClassName::CameraPosition));
    EXPECT_TRUE(engine::IsCameraPointClass(ClassName::CameraTarget));
    EXPECT_TRUE(engine::IsCameraPointClass(ClassName::CameraControlPoint));
    EXPECT_FALSE(engine::IsCameraPointClass(ClassName::Helper));
    EXPECT_FALSE(engine::IsCameraPointClass(ClassName::VirtualObject));
}

TEST(ClassDatabaseTest, ClassDerivesFromItselfEvenIfUnknown) {
    const ClassDatabase classes;
    EXPECT_TRUE(classes.IsDerivedFrom(ClassName::Mesh, ClassName::Mesh));
    EXPECT_TRUE(classes.IsDerivedFrom("Nobody", "Nobody"));
    EXPECT_FALSE(classes.IsDerivedFrom("Nobody", ClassName::Mesh));
    EXPECT_EQ(classes.Find("Nobody"), nullptr);
}

TEST(ClassDatabaseTest, RingOfBasesEndsInFalse) {
    ClassDatabase classes;
    classes.Add("A", "B", "");
    classes.Add("B", "A", "");
    EXPECT_FALSE(classes.IsDerivedFrom("A", "C"));
    EXPECT_TRUE(classes.IsDerivedFrom("A", "B"));
}

TEST(ClassDatabaseTest, BasesReachedOnManyWaysHideNoOther) {
    ClassDatabase classes;
    classes.Add("Harbour", "", "").baseNames.assign(100, "SoundEmitter");
    classes.Add("Pier", "Harbour", "").baseNames.push_back("SkinnedMeshObject");
    EXPECT_TRUE(classes.IsDerivedFrom("Pier", ClassName::Mesh));
}

TEST(ClassDatabaseTest, SecondBaseCountsToo) {
    ClassDatabase classes;
    classes.Add("Boat", ClassName::Mesh, "").baseNames.push_back("SoundEmitter");
    EXPECT_TRUE(classes.IsDerivedFrom("Boat", "SoundEmitter"));
    EXPECT_TRUE(classes.IsDerivedFrom("Boat", ClassName::Mesh));
}

} // namespace
