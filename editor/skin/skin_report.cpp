// Runs the skin reader with a builder that writes text instead of creating controls.
#include "editor/skin/skin_report.h"

#include <array>
#include <charconv>
#include <ostream>

#include "editor/skin/picture_files.h"
#include "editor/skin/skin_loader.h"
#include "editor/skin/skin_text.h"
#include "editor/skin/skin_values.h"
#include "platform/message_box.h"

namespace editor {
namespace {

// The shortest decimal form that reads back as the same double, in any locale.
std::string decimal(double value) {
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return std::string(digits.data(), end);
}

std::string hexadecimal(std::uint32_t rgb) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text = "0x";
    for (int shift = 20; shift >= 0; shift -= 4) text += kDigits[(rgb >> shift) & 15u];
    return text;
}

class Report {
  public:
    Report(const std::string& skinFolder, std::ostream& out)
        : folder_(skinFolder), files_(skinFolder), out_(out) {}

    int run() {
        const platform::ScopedMessageHandler handler(
            [this](const std::string& title, const std::string& text, platform::MessageIcon) {
                complain(title, text);
            });
        const SkinLoad result =
            loadSkin(folder_, SkinElements::kAll,
                     [this](const std::string& element, const SkinAttributes& attributes) {
                         writeElement(element, attributes);
                     });
        if (result == SkinLoad::kUnreadable) {
            complain("Cannot read or parse", folder_ + "skin.xml");
        }
        return complaints_;
    }

  private:
    void complain(const std::string& title, const std::string& text) {
        ++complaints_;
        out_ << "! " << title << ": " << text << '\n';
    }

    void writeElement(const std::string& element, const SkinAttributes& attributes) {
        if (equalIgnoringCase(element, "CONSTANTS")) return writeConstants(attributes);
        const SkinElementRule* const rule = findSkinElementRule(element);
        if (!rule) {
            out_ << element << " is not an element of skins: ignored\n";
            return;
        }
        for (const XmlAttribute& attribute : attributes.node().attributes) {
            if (!SkinAttributes::fits(attribute)) complain("Attribute too long", attribute.name);
        }
        const auto values = readSkinElement(
            *rule, attributes, constants_,
            [this](const std::string& fileName) { return files_.find(fileName).has_value(); },
            platform::showMessage);
        if (!values) {
            out_ << element << " is abandoned\n";
            return;
        }
        out_ << element;
        for (const auto& [name, value] : values->numbers) writeValue(name, decimal(value));
        for (const auto& [name, value] : values->pictures) writeValue(name, value);
        for (const auto& [name, value] : values->flags) writeValue(name, value ? "yes" : "no");
        for (const auto& [name, value] : values->colours) writeValue(name, hexadecimal(value));
        out_ << '\n';
    }

    void writeValue(std::string_view name, const std::string& value) {
        out_ << ' ' << name << '=' << value;
    }

    void writeConstants(const SkinAttributes& attributes) {
        if (const std::string* const text = attributes.find("")) {
            evaluateConstants(constants_, *text, platform::showMessage);
        }
        out_ << "CONSTANTS";
        for (const auto& [name, value] : constants_.entries()) writeValue(name, decimal(value));
        out_ << '\n';
    }

    const std::string& folder_;
    PictureFiles files_;
    std::ostream& out_;
    SkinConstantTable constants_;
    int complaints_ = 0;
};

}  // namespace

int reportSkin(const std::string& skinFolder, std::ostream& out) {
    return Report(skinFolder, out).run();
}

}  // namespace editor
