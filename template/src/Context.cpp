#include "template/Context.h"

#include "RenderState.h"
#include "template/Environment.h"

namespace tintwork::stencil {

namespace {

const Environment& defaultEnvironment() {
    static const Environment environment;
    return environment;
}

}  // namespace

Context::Context(Map dictionary, const Environment* environment)
    : env(environment != nullptr ? environment : &defaultEnvironment()), renderState(std::make_unique<RenderState>()) {
    dictionaries.push_back(std::move(dictionary));
    renderState->stepLimit = env->renderStepLimit;
}

Context::Context(Map dictionary, const Environment& environment) : Context(std::move(dictionary), &environment) {}

Context::~Context() = default;
Context::Context(Context&&) noexcept = default;
Context& Context::operator=(Context&&) noexcept = default;

const Value* Context::find(std::string_view key) const {
    for (auto scope = dictionaries.rbegin(); scope != dictionaries.rend(); ++scope) {
        auto found = scope->find(key);
        if (found != scope->end()) {
            return &found->second;
        }
    }
    return nullptr;
}

std::optional<Value> Context::lookup(std::string_view key) const {
    if (const Value* value = find(key)) {
        return *value;
    }
    // Blocks already rendered stay reachable as block.<name> outside their block.
    if (key == "block" && !renderState->renderedBlocks.empty()) {
        return Value(renderState->renderedBlocks);
    }
    return std::nullopt;
}

Value Context::operator[](std::string_view key) const {
    if (const Value* value = find(key)) {
        return *value;
    }
    return lookup(key).value_or(Value());
}

Value& Context::slot(const std::string& key) { return dictionaries.back()[key]; }

void Context::set(std::string key, Value value) { dictionaries.back()[std::move(key)] = std::move(value); }

void Context::push(Map dictionary) { dictionaries.push_back(std::move(dictionary)); }

Map Context::pop() {
    // The outermost scope stays, so a stray pop can't leave the context without one.
    if (dictionaries.size() <= 1) {
        return {};
    }
    Map top = std::move(dictionaries.back());
    dictionaries.pop_back();
    return top;
}

Map Context::flatten() const {
    Map merged;
    for (const Map& scope : dictionaries) {
        for (const auto& [key, value] : scope) {
            merged[key] = value;
        }
    }
    return merged;
}

}  // namespace tintwork::stencil
