#include "export/BuildTaskExporter.h"

namespace tintwork {

namespace {

// The message as a quoted string literal, with quotes, backslashes and line breaks escaped.
std::string quotedLiteral(const std::string& text) {
    std::string out = "\"";
    for (char c : text) {
        switch (c) {
            case '"': out += "\\\""; break;
            case '\\': out += "\\\\"; break;
            case '\n': out += "\\n"; break;
            case '\r': out += "\\r"; break;
            case '\t': out += "\\t"; break;
            default: out.push_back(c); break;
        }
    }
    out.push_back('"');
    return out;
}

}  // namespace

std::filesystem::path appendingStoredPath(const std::filesystem::path& folder, std::string_view storedPath) {
    const auto start = storedPath.find_first_not_of('/');
    if (start == std::string_view::npos) {
        return folder;
    }
    return folder / std::filesystem::path(storedPath.substr(start));
}

BuildError::BuildError(std::string messageText)
    : message(std::move(messageText)), description("BuildError(message: " + quotedLiteral(message) + ")") {}

const char* BuildError::what() const noexcept {
    return description.c_str();
}

}  // namespace tintwork
