#pragma once
// Helpers shared by the template engine's tests.

#include <gtest/gtest.h>

#include <string>

#include "template/Environment.h"
#include "template/Errors.h"

namespace tintwork::stencil::testing {

inline std::string render(const std::string& text, const Map& context = {}) {
    Environment environment;
    return environment.renderTemplate(text, context);
}

// The text of the TemplateError that parsing or rendering gives, or "no error".
inline std::string errorOf(const Environment& environment, const std::string& text, const Map& context = {}) {
    try {
        environment.renderTemplate(text, context);
    } catch (const TemplateError& error) {
        return error.what();
    }
    return "no error";
}

inline std::string errorOf(const std::string& text, const Map& context = {}) {
    Environment environment;
    return errorOf(environment, text, context);
}

}  // namespace tintwork::stencil::testing
