// What tests of properties include, for the compiler to read once. A test includes what it uses all the same.
#pragma once

#include "tests/support/generators.h"
#include "tests/support/precompiled.h"

#include <rapidcheck/gtest.h>
