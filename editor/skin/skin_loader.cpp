// Finds the GUI element of a skin file and walks its children.
#include "editor/skin/skin_loader.h"

#include "editor/skin/skin_text.h"
#include "platform/file.h"
#include "platform/message_box.h"

namespace editor {
namespace {

// Searches the top-level elements. Ignores everything after GUI.
SkinLoad findGui(const std::string& text, XmlNode& gui) {
    auto result = SkinLoad::kUnreadable;
    std::ptrdiff_t position = 0;
    for (;;) {
        XmlNode node;
        position = parseXml(text, position, node);
        if (position < 0) return result;
        if (equalIgnoringCase(node.name, "GUI")) {
            gui = std::move(node);
            return SkinLoad::kBuilt;
        }
        result = SkinLoad::kGuiMissing;
    }
}

}  // namespace

SkinLoad loadSkin(const std::string& skinFolder, SkinElements elements, const SkinBuilder& build) {
    const auto text = platform::readFile(skinFolder + "skin.xml", kMaxSkinFileBytes);
    if (!text) return SkinLoad::kUnreadable;

    XmlNode gui;
    const SkinLoad result = findGui(*text, gui);
    if (result == SkinLoad::kGuiMissing) {
        platform::showMessage("XML error", "<GUI> node missing", platform::MessageIcon::kError);
    }
    for (const XmlNode& child : gui.children) {
        const bool wanted =
            elements == SkinElements::kAll || equalIgnoringCase(child.name, "background");
        if (wanted) build(child.name, SkinAttributes(child));
    }
    return result;
}

}  // namespace editor
