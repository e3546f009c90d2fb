#include "XmlNode.h"

#include <array>
#include <string_view>

namespace tintwork::xml {

namespace {

constexpr std::string_view indentCharacters = "  ";

// White space and line breaks, ASCII and the Unicode ones, as UTF-8 sequences.
// clang-format off
constexpr std::array<std::string_view, 25> whiteSpace = {
    " ",            "\t",           "\n",           "\v",           "\f",
    "\r",           "\xC2\x85",     "\xC2\xA0",     "\xE1\x9A\x80", "\xE2\x80\x80",
    "\xE2\x80\x81", "\xE2\x80\x82", "\xE2\x80\x83", "\xE2\x80\x84", "\xE2\x80\x85",
    "\xE2\x80\x86", "\xE2\x80\x87", "\xE2\x80\x88", "\xE2\x80\x89", "\xE2\x80\x8A",
    "\xE2\x80\xA8", "\xE2\x80\xA9", "\xE2\x80\xAF", "\xE2\x81\x9F", "\xE3\x80\x80",
};
// clang-format on

std::size_t leadingSpace(std::string_view text) {
    for (std::string_view space : whiteSpace) {
        if (text.starts_with(space)) {
            return space.size();
        }
    }
    return 0;
}

std::size_t trailingSpace(std::string_view text) {
    for (std::string_view space : whiteSpace) {
        if (text.ends_with(space)) {
            return space.size();
        }
    }
    return 0;
}

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
    std::size_t position = 0;
    while ((position = text.find(from, position)) != std::string::npos) {
        text.replace(position, from.size(), to);
        position += to.size();
    }
}

void appendIndent(std::string& out, int level) {
    for (int i = 0; i < level; ++i) {
        out += indentCharacters;
    }
}

}  // namespace

XmlNode& XmlNode::add(std::string childName, std::optional<std::string> childValue) {
    children.emplace_back(std::move(childName), std::move(childValue));
    return children.back();
}

std::string trimmed(const std::string& text) {
    std::string_view view = text;
    while (std::size_t size = leadingSpace(view)) {
        view.remove_prefix(size);
    }
    while (std::size_t size = trailingSpace(view)) {
        view.remove_suffix(size);
    }
    return std::string(view);
}

std::string escaped(const std::string& text) {
    std::string result = text;
    replaceAll(result, "&", "&amp;");
    replaceAll(result, "\"", "&quot;");
    replaceAll(result, "'", "&apos;");
    replaceAll(result, ">", "&gt;");
    replaceAll(result, "<", "&lt;");
    return result;
}

void print(const XmlNode& node, int level, std::string& out) {
    appendIndent(out, level);
    out += '<';
    out += node.name;
    for (const auto& [attribute, attributeValue] : node.attributes) {
        out += ' ';
        out += attribute;
        out += "=\"";
        out += escaped(attributeValue);
        out += '"';
    }
    const std::string value = node.value ? escaped(trimmed(*node.value)) : std::string();
    if (node.children.empty()) {
        if (value.empty()) {
            out += "/>\n";
            return;
        }
        out += '>';
        out += value;
        out += "</";
        out += node.name;
        out += ">\n";
        return;
    }
    out += '>';
    out += value;
    out += '\n';
    for (const XmlNode& child : node.children) {
        print(child, level + 1, out);
    }
    appendIndent(out, level);
    out += "</";
    out += node.name;
    out += ">\n";
}

}  // namespace tintwork::xml
