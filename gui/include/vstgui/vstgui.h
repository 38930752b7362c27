// Includes the whole toolkit layer except the headers in lib/.
#pragma once

#define VSTGUI_VERSION_MAJOR 4
#define VSTGUI_VERSION_MINOR 14

#include "gui/base/button_state.h"
#include "gui/base/color.h"
#include "gui/base/geometry.h"
#include "gui/base/reference.h"
#include "gui/base/timer.h"
#include "gui/base/utf8_string.h"
#include "gui/controls/control.h"
#include "gui/controls/knob.h"
#include "gui/controls/menu_item.h"
#include "gui/controls/option_menu.h"
#include "gui/controls/param_display.h"
#include "gui/controls/push_buttons.h"
#include "gui/controls/slider.h"
#include "gui/controls/splash_screen.h"
#include "gui/controls/switches.h"
#include "gui/controls/text_edit.h"
#include "gui/controls/text_label.h"
#include "gui/controls/vu_meter.h"
#include "gui/graphics/bitmap.h"
#include "gui/graphics/draw_context.h"
#include "gui/graphics/font.h"
#include "gui/views/frame.h"
#include "gui/views/view.h"
#include "gui/views/view_container.h"

// The toolkit requires this macro in the class of a control. The layer needs nothing there.
#define CLASS_METHODS(name, parent)
