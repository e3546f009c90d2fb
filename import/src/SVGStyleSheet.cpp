#include "import/SVGStyleSheet.h"

namespace tintwork {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

std::string trimmed(std::string_view text) {
    std::size_t begin = 0;
    std::size_t end = text.size();
    while (begin < end && isBlank(text[begin])) {
        ++begin;
    }
    while (end > begin && isBlank(text[end - 1])) {
        --end;
    }
    return std::string(text.substr(begin, end - begin));
}

// The text with every comment ("/*" to the next "*/", or to the end) removed.
std::string withoutComments(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t open = text.find("/*", at);
        if (open == std::string_view::npos) {
            out.append(text.substr(at));
            break;
        }
        out.append(text.substr(at, open - at));
        const std::size_t close = text.find("*/", open + 2);
        if (close == std::string_view::npos) {
            break;
        }
        at = close + 2;
    }
    return out;
}

// Splits `text` at `separator`, keeping empty parts.
std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        if (i == text.size() || text[i] == separator) {
            parts.push_back(text.substr(start, i - start));
            start = i + 1;
        }
    }
    return parts;
}

// Every selector of a list gets its own copy of the list's declarations. A text of many
// selectors sharing many declarations would make that quadratic, so past this many copied
// declarations further rules are left out.
constexpr std::size_t maxCopiedDeclarations = 16u * 1024u * 1024u;

}  // namespace

void SVGStyleSheet::parse(std::string_view source) {
    const std::string text = withoutComments(source);
    std::size_t copied = 0;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t open = text.find('{', at);
        if (open == std::string::npos) {
            break;  // trailing text without a block declares nothing
        }
        // The block runs to the brace that closes this one, counting nested braces.
        std::size_t close = open + 1;
        int depth = 1;
        for (; close < text.size(); ++close) {
            if (text[close] == '{') {
                ++depth;
            } else if (text[close] == '}' && --depth == 0) {
                break;
            }
        }
        const std::string_view selectors = std::string_view(text).substr(at, open - at);
        const std::string_view block = std::string_view(text).substr(open + 1, close - open - 1);
        Declarations parsed;
        for (std::string_view declaration : split(block, ';')) {
            const std::size_t colon = declaration.find(':');
            if (colon == std::string_view::npos) {
                continue;
            }
            parsed[trimmed(declaration.substr(0, colon))] = trimmed(declaration.substr(colon + 1));
        }
        for (std::string_view part : split(selectors, ',')) {
            copied += parsed.size();
            if (copied > maxCopiedDeclarations) {
                return;
            }
            std::string selector = trimmed(part);
            auto [slot, added] = index_.try_emplace(selector, styles.size());
            if (added) {
                styles.emplace_back(std::move(selector), Declarations{});
            }
            for (const auto& [property, value] : parsed) {
                styles[slot->second].second[property] = value;
            }
        }
        at = close + 1;
    }
}

std::vector<std::string> SVGStyleSheet::values(const std::vector<std::string>& properties) const {
    std::vector<std::string> found;
    for (const auto& [selector, declarations] : styles) {
        for (const std::string& property : properties) {
            auto value = declarations.find(property);
            if (value != declarations.end()) {
                found.push_back(value->second);
            }
        }
    }
    return found;
}

const SVGStyleSheet::Declarations* SVGStyleSheet::declarations(const std::string& selector) const {
    auto found = index_.find(selector);
    return found == index_.end() ? nullptr : &styles[found->second].second;
}

}  // namespace tintwork
