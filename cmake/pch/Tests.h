// What nearly every test includes.
#pragma once

#include "cmake/pch/Standard.h"

#include <fstream>
#include <random>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
