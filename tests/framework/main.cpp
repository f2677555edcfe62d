#include "framework/FilmsApplication.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    FilmsApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
