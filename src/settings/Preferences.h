#pragma once

// The settings table, the window's placement and the repairing step, for code that takes them together.
#include "RepairingStep.h"
#include "SettingsTable.h"
#include "WindowPlacement.h"
