#pragma once

// What nearly every test of a window needs.

#include "tests/support/KeyPress.h"
#include "tests/support/TestPlatform.h"
#include "tests/support/Testing.h"

#include <QtTest>
#include <QtWidgets>
