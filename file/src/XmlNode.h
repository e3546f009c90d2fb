#pragma once
// The writer's own small XML tree and its printer: attributes sorted by name and escaped,
// values trimmed and escaped, two spaces of indent per level, empty elements self-closed.

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tintwork::xml {

struct XmlNode {
    std::string name;
    std::map<std::string, std::string> attributes;
    std::optional<std::string> value;
    std::vector<XmlNode> children;

    explicit XmlNode(std::string nodeName, std::optional<std::string> nodeValue = std::nullopt)
        : name(std::move(nodeName)), value(std::move(nodeValue)) {}

    // Appends a child and returns it.
    XmlNode& add(std::string childName, std::optional<std::string> childValue = std::nullopt);
};

// The text with white space and line breaks removed from both ends.
std::string trimmed(const std::string& text);
// The text with & " ' > < replaced by their entities, in that order.
std::string escaped(const std::string& text);
// Appends the node at `level` (and its children below it) to `out`.
void print(const XmlNode& node, int level, std::string& out);

}  // namespace tintwork::xml
