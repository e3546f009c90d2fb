#pragma once
// The small CSS reader for an SVG document's own style sheets: rules of selectors and
// declarations, without at-rules, nesting or selector matching.

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tintwork {

class SVGStyleSheet {
public:
    // One selector's declarations, property name to value text.
    using Declarations = std::map<std::string, std::string>;

    // Reads rules from `text` into `styles`. Comments are dropped; a selector list is split
    // at commas; a later value of a property replaces an earlier one of the same selector.
    // A block never closed runs to the end of the text.
    void parse(std::string_view text);

    // The value texts of the named properties: rule by rule, in the order the selectors
    // first appeared, and within a rule in the order of `properties`.
    std::vector<std::string> values(const std::vector<std::string>& properties) const;

    // The declarations of one selector, or null.
    const Declarations* declarations(const std::string& selector) const;

    // Selector text and its declarations, in first-appearance order.
    std::vector<std::pair<std::string, Declarations>> styles;

private:
    std::unordered_map<std::string, std::size_t> index_;
};

}  // namespace tintwork
