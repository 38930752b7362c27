// Event objects of the toolkit layer.
#pragma once

#include "gui/base/events.h"
