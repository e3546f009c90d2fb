#include "HTMLStyles.h"

#include <algorithm>
#include <cctype>

#include <gumbo.h>

namespace tintwork::importing {

namespace {

// The HTML parser builds its tree without limits and frees it recursively; misnested
// formatting tags can make it copy elements once per open tag. This estimate of the tree's
// depth and of those copies, from a plain scan of the tags, keeps pages that would exhaust
// memory or the stack away from the parser: they count as pages that could not be parsed.
bool withinParserLimits(std::string_view text) {
    constexpr std::size_t maxDepth = 4000;
    constexpr std::size_t maxCopies = 2'000'000;
    static const std::vector<std::string> voidOrOptional = {
        "area", "base", "br", "col", "embed", "hr", "img", "input", "link", "meta", "source", "track", "wbr",
        "param", "keygen", "p", "li", "dt", "dd", "tr", "td", "th", "option", "optgroup", "rb", "rt", "rp",
        "thead", "tbody", "tfoot", "colgroup", "caption", "html", "head", "body"};
    static const std::vector<std::string> formatting = {"a", "b", "big", "code", "em", "font", "i",
                                                         "nobr", "s", "small", "strike", "strong", "tt", "u"};
    static const std::vector<std::string> rawText = {"script", "style", "textarea", "title", "xmp",
                                                     "iframe", "noembed", "noframes", "noscript", "plaintext"};
    const auto contains = [](const std::vector<std::string>& names, const std::string& name) {
        return std::find(names.begin(), names.end(), name) != names.end();
    };
    const auto lower = [](std::string_view part) {
        std::string out(part);
        std::transform(out.begin(), out.end(), out.begin(), [](unsigned char c) { return std::tolower(c); });
        return out;
    };
    std::size_t depth = 0;
    std::size_t openFormatting = 0;
    std::size_t copies = 0;
    std::size_t at = 0;
    while ((at = text.find('<', at)) != std::string_view::npos) {
        ++at;
        if (text.substr(at, 3) == "!--") {
            const std::size_t close = text.find("-->", at + 3);
            at = close == std::string_view::npos ? text.size() : close + 3;
            continue;
        }
        const bool closing = at < text.size() && text[at] == '/';
        const std::size_t nameStart = closing ? at + 1 : at;
        std::size_t nameEnd = nameStart;
        while (nameEnd < text.size() && std::isalnum(static_cast<unsigned char>(text[nameEnd]))) {
            ++nameEnd;
        }
        if (nameEnd == nameStart || !std::isalpha(static_cast<unsigned char>(text[nameStart]))) {
            continue;
        }
        const std::string name = lower(text.substr(nameStart, nameEnd - nameStart));
        at = nameEnd;
        const bool isFormatting = contains(formatting, name);
        if (closing) {
            if (isFormatting && openFormatting > 0) {
                --openFormatting;
            }
            if (!contains(voidOrOptional, name) && depth > 0) {
                --depth;
            }
            continue;
        }
        copies += openFormatting;
        if (isFormatting) {
            ++openFormatting;
        }
        if (!contains(voidOrOptional, name)) {
            ++depth;
        }
        if (depth > maxDepth || copies > maxCopies) {
            return false;
        }
        if (contains(rawText, name)) {
            // Script and style text is no markup: skip to the element's end tag.
            std::size_t close = at;
            while ((close = text.find("</", close)) != std::string_view::npos &&
                   lower(text.substr(close + 2, name.size())) != name) {
                close += 2;
            }
            at = close == std::string_view::npos ? text.size() : close;
        }
    }
    return true;
}

// The text of a node's text children, joined.
std::string textOf(const GumboNode& node) {
    std::string text;
    const GumboVector& children = node.v.element.children;
    for (unsigned int i = 0; i < children.length; ++i) {
        const auto* child = static_cast<const GumboNode*>(children.data[i]);
        if (child->type == GUMBO_NODE_TEXT || child->type == GUMBO_NODE_CDATA || child->type == GUMBO_NODE_WHITESPACE) {
            text += child->v.text.text;
        }
    }
    return text;
}

}  // namespace

std::optional<PageStyles> pageStyles(std::string_view text) {
    if (!withinParserLimits(text)) {
        return std::nullopt;
    }
    GumboOutput* output = gumbo_parse_with_options(&kGumboDefaultOptions, text.data(), text.size());
    if (output == nullptr || output->root == nullptr) {
        if (output != nullptr) {
            gumbo_destroy_output(&kGumboDefaultOptions, output);
        }
        return std::nullopt;
    }
    PageStyles styles;
    // Depth first in document order, with a stack of its own rather than recursion.
    std::vector<const GumboNode*> pending{output->root};
    while (!pending.empty()) {
        const GumboNode* node = pending.back();
        pending.pop_back();
        if (node->type != GUMBO_NODE_ELEMENT && node->type != GUMBO_NODE_TEMPLATE) {
            continue;
        }
        if (node->v.element.tag == GUMBO_TAG_STYLE) {
            styles.styleElements.push_back(textOf(*node));
        }
        if (const GumboAttribute* style = gumbo_get_attribute(&node->v.element.attributes, "style")) {
            styles.styleAttributes.emplace_back(style->value);
        }
        const GumboVector& children = node->v.element.children;
        for (unsigned int i = children.length; i > 0; --i) {
            pending.push_back(static_cast<const GumboNode*>(children.data[i - 1]));
        }
    }
    gumbo_destroy_output(&kGumboDefaultOptions, output);
    return styles;
}

}  // namespace tintwork::importing
