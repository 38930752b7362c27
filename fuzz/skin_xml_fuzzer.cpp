// Parses any bytes as a skin. If they parse, the skin must read back the same once written, and is
// then built.
#include <cstddef>
#include <string>
#include <string_view>

#include "editor/skin/skin_values.h"
#include "editor/skin/skin_xml.h"
#include "fuzz/support/target.h"
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
            editor::readSkinElement(
                *rule, attributes, constants, [](const std::string& name) { return !name.empty(); },
                platform::showMessage);
        } else if (const auto* const text = attributes.find("")) {
            editor::evaluateConstants(constants, *text, platform::showMessage);
        }
    }
}

void run(std::string_view text) {
    editor::XmlNode node;
    const std::ptrdiff_t end = editor::parseXml(text, 0, node);
    fuzz::require(end == -1 || (end > 0 && end <= static_cast<std::ptrdiff_t>(text.size())),
                  "parsing ends within the text");
    if (end < 0) return;

    const std::string document = written(node);
    editor::XmlNode again;
    fuzz::require(
        editor::parseXml(document, 0, again) == static_cast<std::ptrdiff_t>(document.size()),
        "what is written is read");
    fuzz::require(written(again) == document, "what is written is read the same");
    readElements(node);
}

const fuzz::Registered registered("skin_xml", run);

}  // namespace
