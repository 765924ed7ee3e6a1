// The two ends of grey.
#pragma once

#include "tests/support/Pictures.h"

constexpr Pixel black = Color(0, 0, 0);
constexpr Pixel white = Color(255, 255, 255);
