// The factory that loads pictures.
#pragma once

#include "gui/graphics/bitmap.h"
