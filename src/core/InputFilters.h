#pragma once

// Former place of the keystroke filters and the key filters of text boxes:
// the filters live in core/FiltrosTecla.h, the key filters in gui/Teclado.h.
#include "core/FiltrosTecla.h"
#include "gui/Teclado.h"
