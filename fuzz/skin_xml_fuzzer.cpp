// Parses any bytes as a skin; what parses must read the same once written out, and is then built.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "editor/skin_values.h"
#include "editor/skin_xml.h"
#include "platform/message_box.h"

namespace {

std::string written(const editor::XmlNode& node) {
    std::string text = '<' + node.name;
    for (const auto& attribute : node.attributes) {
        text += ' ' + attribute.name + "=\"" + attribute.value + '"';
    }
    if (node.text.empty() && node.children.empty()) return text + "/>";
    text += '>';
    for (const auto& child : node.children) text += written(child);
    return text + node.text + "</" + node.name + '>';
}

void readElements(const editor::XmlNode& root) {
    const platform::ScopedMessageHandler silent(
        [](const std::string&, const std::string&, platform::MessageIcon) {});
    editor::SkinConstantTable constants;
    for (const auto& child : root.children) {
        const editor::SkinAttributes attributes(child);
        if (const auto* const rule = editor::findSkinElementRule(child.name)) {
            editor::readSkinElement(*rule, attributes, constants,
                                    [](const std::string& name) { return !name.empty(); });
        } else if (const auto* const text = attributes.find("")) {
            editor::evaluateConstants(constants, *text, platform::showMessage);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    editor::XmlNode node;
    const std::ptrdiff_t end = editor::parseXml(text, 0, node);
    if (end < -1 || end == 0 || end > static_cast<std::ptrdiff_t>(size)) std::abort();
    if (end < 0) return 0;

    const std::string document = written(node);
    editor::XmlNode again;
    const std::ptrdiff_t endAgain = editor::parseXml(document, 0, again);
    if (endAgain != static_cast<std::ptrdiff_t>(document.size())) std::abort();
    if (written(again) != document) std::abort();

    readElements(node);
    return 0;
}
