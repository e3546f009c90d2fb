#include "import/SVGImporter.h"

#include <array>
#include <cctype>
#include <string>

#include <pugixml.hpp>

#include "SingleColorList.h"
#include "SourceText.h"
#include "import/SVGColor.h"
#include "import/SVGStyleSheet.h"

namespace tintwork {

namespace {

enum class ElementKind { known, style, unknown };

// The element kinds whose fill and stroke count; every other element, a gradient's stop
// among them, is read for its stop colour instead.
ElementKind kindOf(const pugi::xml_node& element) {
    static constexpr std::array<std::string_view, 12> drawing = {
        "g", "path", "circle", "ellipse", "rect", "defs", "lineargradient", "radialgradient",
        "polyline", "polygon", "text", "use"};
    std::string name = element.name();
    for (char& c : name) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    if (name == "style") {
        return ElementKind::style;
    }
    for (std::string_view known : drawing) {
        if (name == known) {
            return ElementKind::known;
        }
    }
    return ElementKind::unknown;
}

using importing::SingleColorList;

std::string_view trimmedView(std::string_view text) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front()))) {
        text.remove_prefix(1);
    }
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) {
        text.remove_suffix(1);
    }
    return text;
}

// A declaration value without a trailing "!important", which takes no part in the colour.
std::string_view withoutPriority(std::string_view value) {
    const std::size_t bang = value.rfind('!');
    if (bang == std::string_view::npos) {
        return value;
    }
    std::string word(trimmedView(value.substr(bang + 1)));
    for (char& c : word) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return word == "important" ? trimmedView(value.substr(0, bang)) : value;
}

// The text of a style element: its text and character-data children, joined.
std::string elementText(const pugi::xml_node& element) {
    std::string text;
    for (const pugi::xml_node& child : element.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            text += child.value();
        }
    }
    return text;
}

// Reads the named properties of an element's style attribute, a declaration list
// such as "fill:#fff;stroke:none", the way the attributes of the same name are read.
void readStyleAttribute(const pugi::xml_node& element, const std::vector<std::string>& properties,
                        const std::vector<const char*>& names, SingleColorList& list) {
    const pugi::xml_attribute style = element.attribute("style");
    if (!style || *style.value() == '\0') {
        return;
    }
    SVGStyleSheet sheet;
    sheet.parse(std::string("element{") + style.value() + "}");
    const SVGStyleSheet::Declarations* declarations = sheet.declarations("element");
    if (declarations == nullptr) {
        return;
    }
    for (std::size_t i = 0; i < properties.size(); ++i) {
        auto value = declarations->find(properties[i]);
        if (value == declarations->end()) {
            continue;
        }
        if (auto color = SVGColor(withoutPriority(value->second)).nsColor) {
            list.add(*color, names[i]);
        }
    }
}

// The colour of an attribute: a named colour or colour text; none when missing, empty or unreadable.
std::optional<ColorValue> readColorAttribute(const pugi::xml_node& element, const char* name) {
    const pugi::xml_attribute attribute = element.attribute(name);
    if (!attribute) {
        return std::nullopt;
    }
    return SVGColor(attribute.value()).nsColor;
}

// Reads the colours one element carries, by its kind.
void readElement(const pugi::xml_node& element, SingleColorList& list) {
    switch (kindOf(element)) {
        case ElementKind::style: {
            SVGStyleSheet sheet;
            sheet.parse(elementText(element));
            for (const std::string& value : sheet.values({"stroke", "fill"})) {
                if (auto color = SVGColor(withoutPriority(value)).nsColor) {
                    list.add(*color, "Style Color");
                }
            }
            break;
        }
        case ElementKind::unknown:
            if (auto color = readColorAttribute(element, "stop-color")) {
                list.add(*color, "Gradient Color");
            }
            readStyleAttribute(element, {"stop-color"}, {"Gradient Color"}, list);
            break;
        case ElementKind::known:
            if (auto color = readColorAttribute(element, "stroke")) {
                list.add(*color, "stroke");
            }
            if (auto color = readColorAttribute(element, "fill")) {
                list.add(*color, "fill");
            }
            readStyleAttribute(element, {"stroke", "fill"}, {"stroke", "fill"}, list);
            break;
    }
}

// Reads every element below `node` (not `node` itself).
void walkChildren(const pugi::xml_node& node, SingleColorList& list) {
    // Depth first in document order, without recursion: a deeply nested drawing must not
    // exhaust the stack. Each element is read before its children.
    pugi::xml_node current = node.first_child();
    while (current && current != node && !list.overflowed()) {
        if (current.type() == pugi::node_element) {
            readElement(current, list);
            if (current.first_child()) {
                current = current.first_child();
                continue;
            }
        }
        while (current != node && !current.next_sibling()) {
            current = current.parent();
        }
        if (current == node) {
            break;
        }
        current = current.next_sibling();
    }
}

}  // namespace

void SVGImporter::importText(std::string_view text, OchreColorProjectItem& group) {
    pugi::xml_document document;
    const pugi::xml_parse_result result = document.load_buffer(text.data(), text.size(), pugi::parse_default);
    if (!result && result.status != pugi::status_no_document_element) {
        throw DocumentColorParsingError("SVG is invalid");
    }
    // Without an element, text that doesn't even begin as markup (a picture, JSON) is no
    // XML at all; markup of comments and declarations alone lacks the root element.
    if (!result) {
        std::string_view start = trimmedView(text);
        if (start.substr(0, 3) == "\xEF\xBB\xBF") {
            start = trimmedView(start.substr(3));
        }
        if (!start.empty() && start.front() != '<') {
            throw DocumentColorParsingError("SVG is invalid");
        }
    }
    const pugi::xml_node root = document.document_element();
    if (!root) {
        throw DocumentColorParsingError("SVG has no root element, unable to parse");
    }
    SingleColorList list;
    walkChildren(root, list);
    if (list.overflowed()) {
        printDiagnostic(importing::tooManyColorsLine());
    }
    addImportedColors(list.entries(), group);
}

void SVGImporter::importColors(const std::filesystem::path& url, OchreColorProjectItem& group) {
    importText(importing::readSourceFile(url), group);
}

}  // namespace tintwork
