#pragma once
// The errors of the template engine. All derive from TemplateError.

#include <exception>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "template/Token.h"

namespace tintwork::stencil {

class TemplateError : public std::exception {
public:
    explicit TemplateError(std::string text) : message(std::move(text)) {}
    const char* what() const noexcept override { return message.c_str(); }

protected:
    std::string message;
};

// A template that can't be parsed or rendered. Its text is the reason alone.
class TemplateSyntaxError : public TemplateError {
public:
    explicit TemplateSyntaxError(std::string reason, std::optional<Token> token = std::nullopt,
                                 std::vector<Token> stackTrace = {});

    std::string reason;
    std::optional<Token> token;
    // The include and extends tags the error travelled through, innermost first.
    std::vector<Token> stackTrace;
};

// No loader holds any of the names.
class TemplateDoesNotExist : public TemplateError {
public:
    // `loader` is the loader's textual form, or nullopt when there was none.
    TemplateDoesNotExist(std::vector<std::string> templateNames, std::optional<std::string> loader);

    std::vector<std::string> templateNames;
    std::optional<std::string> loader;
};

// A template name that leads out of a loader's directory.
class SuspiciousFileOperation : public TemplateError {
public:
    SuspiciousFileOperation(std::filesystem::path basePath, std::filesystem::path path);

    std::filesystem::path basePath;
    std::filesystem::path path;
};

// Formats an error for a person: "name:line:column: error: reason", the line, and a
// caret under the token; then the same for each step of the stack trace.
class SimpleErrorReporter {
public:
    std::string renderError(const std::exception& error) const;
};

}  // namespace tintwork::stencil
