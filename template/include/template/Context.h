#pragma once
// The stack of values a template renders with. Lookups search the innermost scope
// first; loops, includes and blocks push a scope and pop it when done.

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "template/Value.h"

namespace tintwork::stencil {

class Environment;
struct RenderState;

class Context {
public:
    // A context with one scope; without an environment, a default one is used.
    explicit Context(Map dictionary = {}, const Environment* environment = nullptr);
    Context(Map dictionary, const Environment& environment);
    ~Context();
    Context(Context&&) noexcept;
    Context& operator=(Context&&) noexcept;
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    // The value of a key, innermost scope first; nullopt when no scope holds it.
    std::optional<Value> lookup(std::string_view key) const;
    // The value of a key, or null.
    Value operator[](std::string_view key) const;
    // The stored value of a key without copying it, or nullptr.
    const Value* find(std::string_view key) const;
    // Sets a key in the innermost scope.
    void set(std::string key, Value value);
    // The innermost scope's entry for a key, created null if absent; stays valid until
    // that scope is popped.
    Value& slot(const std::string& key);
    // Opens and closes a scope.
    void push(Map dictionary = {});
    Map pop();
    // All scopes merged, inner keys winning.
    Map flatten() const;
    std::size_t depth() const { return dictionaries.size(); }

    const Environment& environment() const { return *env; }

    // Engine bookkeeping for loops, blocks and nesting depth.
    RenderState& state() { return *renderState; }

private:
    // A deque: opening a scope never moves the others, so slots stay valid.
    std::deque<Map> dictionaries;
    const Environment* env;
    std::unique_ptr<RenderState> renderState;
};

// Opens a scope for the lifetime of the guard.
class ScopeGuard {
public:
    ScopeGuard(Context& target, Map dictionary = {}) : context(target) { context.push(std::move(dictionary)); }
    ~ScopeGuard() { context.pop(); }
    ScopeGuard(const ScopeGuard&) = delete;
    ScopeGuard& operator=(const ScopeGuard&) = delete;

private:
    Context& context;
};

}  // namespace tintwork::stencil
