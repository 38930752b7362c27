// Reads the small XML dialect of skin files into a tree.
//
// The dialect has elements, double-quoted attributes and plain 8-bit text. Declarations, comments,
// CDATA sections, processing instructions and DOCTYPE are errors. Entities are not decoded.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace editor {

// Deeper nesting fails the parse. This bounds the stack for reading and freeing a tree.
constexpr int kMaxXmlDepth = 256;
// Most elements and attributes together; more fail the parse. A tree takes at most about 200 MB.
constexpr int kMaxXmlItems = 1 << 20;
constexpr std::size_t kMaxEndTagLength = 255;  // a longer name in an end tag fails the parse

struct XmlAttribute {
    std::string name;
    std::string value;
};

struct XmlNode {
    std::string name;
    std::string text;  // the last run of character data, without leading whitespace
    std::vector<XmlAttribute> attributes;  // in document order; names may repeat
    std::vector<XmlNode> children;         // in document order
};

// Reads the element at `start`, after optional whitespace. Returns the position just after it, or
// -1 on any error, including an element that does not end. A zero byte ends the text. On failure
// `node` holds what was read so far.
std::ptrdiff_t parseXml(std::string_view text, std::ptrdiff_t start, XmlNode& node);

// The attributes of one element, as the skin builder sees them. The node must outlive this.
class SkinAttributes {
  public:
    static constexpr std::size_t kMaxNameLength = 63;
    static constexpr std::size_t kMaxValueLength = 127;

    explicit SkinAttributes(const XmlNode& node) : node_(&node) {}

    // Returns the value of the first attribute with this name, ignoring case, or null. An empty
    // name asks for the element's text; that is null if there is none. An attribute whose name or
    // value is too long counts as absent, because half an expression would mean something else.
    const std::string* find(std::string_view name) const;

    static bool fits(const XmlAttribute& attribute);
    const XmlNode& node() const { return *node_; }

  private:
    const XmlNode* node_;
};

}  // namespace editor
