#pragma once
// Immutable text that copies by sharing one buffer. A test task repeats the same
// item names, colour texts and messages in every one of its results.

#include <memory>
#include <ostream>
#include <string>
#include <string_view>

namespace tintwork {

class SharedText {
public:
    // The empty text; allocates nothing.
    SharedText() = default;
    SharedText(std::string text) : text_(std::make_shared<const std::string>(std::move(text))) {}
    SharedText(const char* text) : SharedText(std::string(text)) {}

    const std::string& str() const { return text_ ? *text_ : empty(); }
    operator const std::string&() const { return str(); }
    operator std::string_view() const { return str(); }

    friend bool operator==(const SharedText& left, const SharedText& right) { return left.str() == right.str(); }
    friend bool operator==(const SharedText& left, std::string_view right) { return left.str() == right; }
    friend bool operator==(const SharedText& left, const char* right) { return left.str() == right; }
    friend std::ostream& operator<<(std::ostream& out, const SharedText& text) { return out << text.str(); }

private:
    static const std::string& empty() {
        static const std::string emptyText;
        return emptyText;
    }

    std::shared_ptr<const std::string> text_;
};

}  // namespace tintwork
