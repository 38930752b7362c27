// Reads the small XML dialect of skin files into a tree.
//
// Elements, double-quoted attributes and text; no declaration, comment, CDATA section, processing
// instruction or DOCTYPE anywhere, and no entity is decoded. Text is plain 8-bit.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace editor {

// Elements nested deeper fail the parse, so reading and freeing a tree stay within any stack.
constexpr int kMaxXmlDepth = 256;
// More elements and attributes together fail the parse: a tree takes up to 200 MB.
constexpr int kMaxXmlItems = 1 << 20;
constexpr std::size_t kMaxEndTagLength = 255;  // a longer name in an end tag fails the parse

struct XmlAttribute {
    std::string name;
    std::string value;
};

struct XmlNode {
    std::string name;
    std::string text;  // the last stretch of character data, its leading whitespace dropped
    std::vector<XmlAttribute> attributes;  // in document order; names may repeat
    std::vector<XmlNode> children;         // in document order
};

// Reads the element that begins at start, whitespace before it skipped. Returns the position just
// after it, or -1 on any error, the end of the text inside the element included. A zero byte ends
// the text. On failure node holds what was read so far.
std::ptrdiff_t parseXml(std::string_view text, std::ptrdiff_t start, XmlNode& node);

// How the skin builder sees the attributes of one element. Refers to the node, which must outlive
// it.
class SkinAttributes {
  public:
    static constexpr std::size_t kMaxNameLength = 63;
    static constexpr std::size_t kMaxValueLength = 127;

    explicit SkinAttributes(const XmlNode& node) : node_(&node) {}

    // The value of the first attribute with this name, compared without regard to case, or null.
    // An empty name asks for the text of the element; null when it has none. An attribute with an
    // over-long name or value is rejected as a whole: half an expression would be another one.
    const std::string* find(std::string_view name) const;

    static bool fits(const XmlAttribute& attribute);
    const XmlNode& node() const { return *node_; }

  private:
    const XmlNode* node_;
};

}  // namespace editor
