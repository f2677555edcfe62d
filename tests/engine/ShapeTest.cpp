#include "host/engine/Shape.h"

#include "host/engine/References.h"

#include <gtest/gtest.h>

namespace {

using engine::Shape;
using engine::ShapeKind;
using engine::ShapeName;
using engine::ShapeOf;

TEST(ShapeTest, AShapeAndItsNameAreOne) {
    const Shape cone{ShapeKind::Cone, {100.0f, 250.5f, 30.0f}, 0x0a10ff};
    EXPECT_EQ(ShapeName(cone), "shape:cone 100 250.5 30 #0a10ff");
    const std::optional<Shape> read = ShapeOf("shape:cone 100 250.5 30 #0a10ff");
    ASSERT_TRUE(read.has_value());
    EXPECT_TRUE(*read == cone);
}

TEST(ShapeTest, EachKindHasAName) {
    for (const char* kind : {"box", "plane", "sphere", "cylinder", "cone", "capsule"}) {
        const std::string name = std::string("shape:") + kind + " 1 2 3 #ffffff";
        ASSERT_TRUE(ShapeOf(name).has_value()) << kind;
        EXPECT_EQ(ShapeName(*ShapeOf(name)), name);
    }
}

TEST(ShapeTest, NumbersComeBackToTheLastBit) {
    Shape shape;
    shape.size = {0.1f, 33.333332f, 999999.94f};
    EXPECT_TRUE(ShapeOf(ShapeName(shape)) == shape);
}

class NoShapeTest : public testing::TestWithParam<const char*> {};

TEST_P(NoShapeTest, WhatIsNotWhollyAShapeIsAFile) {
    EXPECT_FALSE(ShapeOf(GetParam()).has_value());
}

INSTANTIATE_TEST_SUITE_P(
    Names, NoShapeTest,
    testing::Values("", "box", "shape:", "shape:box", "shape:box 1 2 3", "shape:box 1 2 #ffffff",
                    "shape:box 1 2 3 #ffffff ", "shape:box 1 2 3 #ffffff 4", "shape:box 1 2 3 ffffff",
                    "shape:box 1 2 3 #ffff", "shape:box 1 2 3 #ggffff", "shape:torus 1 2 3 #ffffff",
                    "shape:box 0 2 3 #ffffff", "shape:box -1 2 3 #ffffff", "shape:box nan 2 3 #ffffff",
                    "shape:box inf 2 3 #ffffff", "shape:box 1 2000000 3 #ffffff", "shape:box 1,5 2 3 #ffffff",
                    "Shape:box 1 2 3 #ffffff", "models/shape:box 1 2 3 #ffffff", "shape:box.glb"));

TEST(ShapeTest, AShapeKeepsItsNameInAnotherFolder) {
    const std::string name = ShapeName(Shape());
    EXPECT_EQ(engine::RebasedReference(name, "/a/", "/b/"), name);
    EXPECT_EQ(engine::RebasedReference("shape:box.glb", "/a/", "/b/"), "../a/shape:box.glb") << "a file";
}

} // namespace
