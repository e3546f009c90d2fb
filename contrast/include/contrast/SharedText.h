#pragma once
// Immutable text that copies by sharing one buffer. A test task repeats the same
// item names, colour texts and messages in every one of its millions of results, so
// the handle is one pointer wide and a copy only counts a reference.

#include <atomic>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

namespace tintwork {

class SharedText {
public:
    // The empty text; allocates nothing.
    SharedText() = default;
    SharedText(std::string text) : block_(new Block{{1}, std::move(text)}) {}
    SharedText(const char* text) : SharedText(std::string(text)) {}

    SharedText(const SharedText& other) noexcept : block_(other.block_) { retain(); }
    SharedText(SharedText&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
    SharedText& operator=(SharedText other) noexcept {
        std::swap(block_, other.block_);
        return *this;
    }
    ~SharedText() { release(); }

    const std::string& str() const { return block_ ? block_->text : empty(); }
    operator const std::string&() const { return str(); }
    operator std::string_view() const { return str(); }

    friend bool operator==(const SharedText& left, const SharedText& right) { return left.str() == right.str(); }
    friend bool operator==(const SharedText& left, std::string_view right) { return left.str() == right; }
    friend bool operator==(const SharedText& left, const char* right) { return left.str() == right; }
    friend std::ostream& operator<<(std::ostream& out, const SharedText& text) { return out << text.str(); }

private:
    struct Block {
        std::atomic<long> references;
        const std::string text;
    };

    void retain() const noexcept {
        if (block_) {
            block_->references.fetch_add(1, std::memory_order_relaxed);
        }
    }
    void release() noexcept {
        if (block_ && block_->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete block_;
        }
    }
    static const std::string& empty() {
        static const std::string emptyText;
        return emptyText;
    }

    Block* block_ = nullptr;
};

}  // namespace tintwork
