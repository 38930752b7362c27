// The pixels behind a bitmap.
#pragma once

#include "gui/graphics/bitmap.h"
