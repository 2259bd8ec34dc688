#pragma once

// The file list lives with the other views; this name stays for code that knows it here.
#include "ui/views/FileListView.h"
