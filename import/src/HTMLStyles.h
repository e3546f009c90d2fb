#pragma once
// The style text of an HTML page: its style elements and style attributes.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tintwork::importing {

// The texts of a page's style elements and style attributes, each in document order.
struct PageStyles {
    std::vector<std::string> styleElements;
    std::vector<std::string> styleAttributes;
};

// Parses the page; nullopt when it can't be parsed, which includes pages whose tree would
// be too deep or too large for the parser to build safely.
std::optional<PageStyles> pageStyles(std::string_view text);

}  // namespace tintwork::importing
