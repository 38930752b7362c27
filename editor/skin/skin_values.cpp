// Reads the numbers, pictures, yes/no values and colours of one element.
#include "editor/skin/skin_values.h"

#include <algorithm>

#include "editor/skin/skin_text.h"

namespace editor {
namespace {

template <typename Value>
std::optional<Value> lookUp(const SkinValues::Named<Value>& values, std::string_view name) {
    const auto found = std::find_if(values.begin(), values.end(),
                                    [name](const auto& value) { return value.first == name; });
    return found == values.end() ? std::nullopt : std::optional<Value>(found->second);
}

class ElementReader {
  public:
    ElementReader(const SkinElementRule& rule, const SkinAttributes& attributes,
                  SkinConstantTable& constants, const LoadPicture& loadPicture,
                  const platform::MessageHandler& report)
        : rule_(rule),
          attributes_(attributes),
          constants_(constants),
          loadPicture_(loadPicture),
          report_(report) {}

    std::optional<SkinValues> read() {
        for (const auto name : skinAttributeNames(rule_.required)) {
            if (!attributes_.find(name)) {
                showError("Missing tag", name);
                return std::nullopt;
            }
            if (readAttribute(name) != Outcome::kRead) return std::nullopt;
        }
        for (const auto list : {rule_.optional, rule_.finishing}) {
            for (const auto name : skinAttributeNames(list)) {
                if (readAttribute(name) == Outcome::kNoPicture) return std::nullopt;
            }
        }
        return std::move(values_);
    }

  private:
    enum class Outcome { kRead, kNoValue, kNoPicture };

    Outcome readAttribute(std::string_view name) {
        const std::string* const text = attributes_.find(name);
        if (!text) return Outcome::kNoValue;
        switch (skinAttributeKind(name)) {
            case SkinAttributeKind::kNumber:
                return readNumber(name, *text);
            case SkinAttributeKind::kPicture:
                return readPicture(name, *text);
            case SkinAttributeKind::kYesNo:
                return readYesNo(name, *text);
            case SkinAttributeKind::kColour:
                return readColour(name, *text);
        }
        return Outcome::kNoValue;
    }

    Outcome readNumber(std::string_view name, const std::string& expression) {
        const auto value = evaluateStatement(constants_, expression);
        if (!value) {
            showError("Error calculating value of tag", name);
            return Outcome::kNoValue;
        }
        values_.numbers.emplace_back(name, *value);
        return Outcome::kRead;
    }

    Outcome readPicture(std::string_view name, const std::string& fileName) {
        if (!loadPicture_(fileName)) {
            report_(rule_.noPictureTitle, fileName, platform::MessageIcon::kNone);
            return Outcome::kNoPicture;
        }
        values_.pictures.emplace_back(name, fileName);
        return Outcome::kRead;
    }

    Outcome readYesNo(std::string_view name, const std::string& value) {
        const char first = value.empty() ? '\0' : value.front();
        values_.flags.emplace_back(name, first == 'y' || first == 'Y' || first == '1');
        return Outcome::kRead;
    }

    Outcome readColour(std::string_view name, const std::string& value) {
        const auto colour = parseSkinColour(value);
        if (!colour) return Outcome::kNoValue;
        values_.colours.emplace_back(name, *colour);
        return Outcome::kRead;
    }

    void showError(const std::string& what, std::string_view name) const {
        std::string text = what + " ";
        text.append(name).append(" for object ").append(attributes_.node().name);
        report_("Skin Error", text, platform::MessageIcon::kError);
    }

    const SkinElementRule& rule_;
    const SkinAttributes& attributes_;
    SkinConstantTable& constants_;
    const LoadPicture& loadPicture_;
    const platform::MessageHandler& report_;
    SkinValues values_;
};

int hexDigit(char c) {
    if (isDigit(c)) return c - '0';
    const char lower = lowerCase(c);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

}  // namespace

std::optional<double> SkinValues::number(std::string_view name) const {
    return lookUp(numbers, name);
}

std::optional<std::string> SkinValues::picture(std::string_view name) const {
    return lookUp(pictures, name);
}

std::optional<bool> SkinValues::flag(std::string_view name) const {
    return lookUp(flags, name);
}

std::optional<std::uint32_t> SkinValues::colour(std::string_view name) const {
    return lookUp(colours, name);
}

std::optional<SkinValues> readSkinElement(const SkinElementRule& rule,
                                          const SkinAttributes& attributes,
                                          SkinConstantTable& constants,
                                          const LoadPicture& loadPicture,
                                          const platform::MessageHandler& report) {
    return ElementReader(rule, attributes, constants, loadPicture, report).read();
}

std::optional<std::uint32_t> parseSkinColour(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
    if (text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X") text.remove_prefix(2);
    if (text.empty() || hexDigit(text.front()) < 0) return std::nullopt;

    std::uint32_t value = 0;
    for (const char c : text) {
        const int digit = hexDigit(c);
        if (digit < 0) break;
        value = value * 16u + static_cast<std::uint32_t>(digit);
    }
    return (negative ? 0u - value : value) & 0xFFFFFFu;
}

}  // namespace editor
