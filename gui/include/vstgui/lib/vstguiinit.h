// init() and exit() of the toolkit layer.
#pragma once

#include "gui/windows/library.h"
