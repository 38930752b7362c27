// A menu that keeps itself alive until it closes.
#include "editor/views/pop_up_menu.h"

namespace editor {

using namespace VSTGUI;

void popUpMenu(CFrame& frame, const CPoint& where, const std::vector<std::string>& lines,
               int checked, const std::function<void(int line)>& chosen) {
    const auto menu = makeOwned<COptionMenu>();
    // Create the items here: addEntry(title) would turn the title "-" into a separator.
    for (const std::string& line : lines) {
        if (line.empty()) {
            menu->addSeparator();
        } else {
            menu->addEntry(new CMenuItem(UTF8String(line)));
        }
    }
    if (checked != kNoLine) {
        menu->setCurrent(checked);
        menu->checkEntryAlone(checked);
    }
    const auto whenClosed = [chosen, menu](COptionMenu* closed) {
        if (closed->getLastResult() >= 0) chosen(closed->getLastResult());
    };
    const auto show = [&frame, where, menu, whenClosed] { menu->popup(&frame, where, whenClosed); };
    if (!frame.doAfterEventProcessing(show)) show();
}

}  // namespace editor
