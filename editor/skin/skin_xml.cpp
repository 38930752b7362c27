// A recursive reader that makes one call per element.
#include "editor/skin/skin_xml.h"

#include <algorithm>
#include <optional>

#include "editor/skin/skin_text.h"

namespace editor {
namespace {

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

class Reader {
  public:
    Reader(std::string_view text, std::size_t position) : text_(text), position_(position) {}

    std::size_t position() const { return position_; }

    bool element(XmlNode& node) {
        if (depth_ == kMaxXmlDepth || !takesOneMore()) return false;
        ++depth_;
        const bool complete = startTag(node);
        --depth_;
        return complete;
    }

  private:
    bool takesOneMore() { return ++items_ <= kMaxXmlItems; }

    char peek() const { return position_ < text_.size() ? text_[position_] : '\0'; }

    bool take(char expected) {
        if (peek() != expected) return false;
        ++position_;
        return true;
    }

    void skipSpace() {
        while (isSpace(peek())) ++position_;
    }

    std::string_view takeName() {
        const std::string_view name = nameAt(text_, position_);
        position_ += name.size();
        return name;
    }

    // Takes the text up to, but not including, `stop`. Returns nothing if the text ends first.
    std::optional<std::string_view> takeUntil(char stop) {
        const char ends[] = {stop, '\0'};
        const std::size_t end = text_.find_first_of({ends, 2}, position_);
        if (end == std::string_view::npos || text_[end] != stop) return std::nullopt;
        const std::string_view taken = text_.substr(position_, end - position_);
        position_ = end;
        return taken;
    }

    bool startTag(XmlNode& node) {
        skipSpace();
        if (!take('<') || !isLetter(peek())) return false;
        node.name = takeName();
        if (!attributes(node)) return false;
        if (take('>')) return content(node);
        if (!take('/')) return false;
        skipSpace();
        return take('>');
    }

    bool attributes(XmlNode& node) {
        for (skipSpace(); startsName(peek()); skipSpace()) {
            const std::string_view name = takeName();
            skipSpace();
            if (!take('=')) continue;  // drop a name without a value
            skipSpace();
            if (!take('"')) return false;
            const auto value = takeUntil('"');
            if (!value || !takesOneMore()) return false;
            ++position_;
            node.attributes.push_back({std::string(name), std::string(*value)});
        }
        return true;
    }

    bool content(XmlNode& node) {
        for (;;) {
            skipSpace();
            const auto stretch = takeUntil('<');
            if (!stretch) return false;
            if (!stretch->empty()) node.text = *stretch;
            if (text_.substr(position_, 2) == "</") return endTag(node.name);
            node.children.emplace_back();
            if (!element(node.children.back())) return false;
        }
    }

    bool endTag(std::string_view startName) {
        position_ += 2;  // "</"
        skipSpace();
        const std::string_view name = takeName();
        if (name.size() > kMaxEndTagLength || !equalIgnoringCase(name, startName)) return false;
        skipSpace();
        return take('>');
    }

    std::string_view text_;
    std::size_t position_;
    int depth_ = 0;
    int items_ = 0;
};

}  // namespace

std::ptrdiff_t parseXml(std::string_view text, std::ptrdiff_t start, XmlNode& node) {
    if (start < 0 || static_cast<std::size_t>(start) > text.size()) return -1;
    Reader reader(text, static_cast<std::size_t>(start));
    return reader.element(node) ? static_cast<std::ptrdiff_t>(reader.position()) : -1;
}

bool SkinAttributes::fits(const XmlAttribute& attribute) {
    return attribute.name.size() <= kMaxNameLength && attribute.value.size() <= kMaxValueLength;
}

const std::string* SkinAttributes::find(std::string_view name) const {
    if (name.empty()) return node_->text.empty() ? nullptr : &node_->text;
    const auto& all = node_->attributes;
    const auto found = std::find_if(all.begin(), all.end(), [name](const XmlAttribute& attribute) {
        return fits(attribute) && equalIgnoringCase(attribute.name, name);
    });
    return found == all.end() ? nullptr : &found->value;
}

}  // namespace editor
