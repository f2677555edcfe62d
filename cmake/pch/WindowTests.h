// What tests of windows include.
#pragma once

#include "cmake/pch/Tests.h"
#include "cmake/pch/Windows.h"

#include <QTest>
#include <QWindow>
