#pragma once

// The window's arithmetic has a library of its own; code that knows this place finds it here still.
#include "layout/LayoutGeometry.h"
