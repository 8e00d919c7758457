#pragma once

// Former place of these window helpers; they live in gui/ now.
#include "gui/RecordsetModel.h"
