// Gives precompiled headers a target to belong to.
#include "tests/support/precompiled.h"
