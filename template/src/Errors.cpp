#include "template/Errors.h"

#include <algorithm>

#include "Text.h"


namespace tintwork::stencil {

TemplateSyntaxError::TemplateSyntaxError(std::string why, std::optional<Token> where, std::vector<Token> trace)
    : TemplateError(why), reason(std::move(why)), token(std::move(where)), stackTrace(std::move(trace)) {}

namespace {

std::string joinNames(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t index = 0; index < names.size(); ++index) {
        if (index > 0) {
            text += ", ";
        }
        text += names[index];
    }
    return text;
}

std::string doesNotExistText(const std::vector<std::string>& names, const std::optional<std::string>& loader) {
    std::string text = "Template named `" + joinNames(names) + "`";
    if (!loader) {
        return text + " does not exist. No loaders found";
    }
    return text + " does not exist in loader " + *loader;
}

}  // namespace

TemplateDoesNotExist::TemplateDoesNotExist(std::vector<std::string> names, std::optional<std::string> loaderText)
    : TemplateError(doesNotExistText(names, loaderText)), templateNames(std::move(names)),
      loader(std::move(loaderText)) {}

SuspiciousFileOperation::SuspiciousFileOperation(std::filesystem::path base, std::filesystem::path target)
    : TemplateError("Path `" + target.string() + "` is located outside of base path `" + base.string() + "`"),
      basePath(std::move(base)), path(std::move(target)) {}

namespace {

std::string describeToken(const Token& token, const std::string& reason) {
    const SourceMap map = token.sourceMap();
    std::string text = map.filename.value_or("") + ":" + std::to_string(map.location.lineNumber) + ":" +
                       std::to_string(map.location.lineOffset) + ": error: " + reason + "\n";
    text += map.location.content + "\n";
    // The excerpt is short, so splitting it into characters costs little; the caret
    // goes under the token's first one.
    const std::vector<std::string> characters = text::characters(map.location.content);
    const std::size_t offset = std::min(map.location.contentOffset, characters.size());
    for (std::size_t index = 0; index < offset; ++index) {
        text += characters[index] == "\t" ? '\t' : ' ';
    }
    text += "^";
    // Tildes under the rest of the token within the excerpt: up to its closing
    // delimiter for a tag, or the length of a text.
    std::size_t end = characters.size();
    if (token.kind != Token::Kind::text) {
        const char* closer = token.kind == Token::Kind::variable ? "}}" : token.kind == Token::Kind::block ? "%}" : "#}";
        for (std::size_t index = offset; index + 1 < characters.size(); ++index) {
            if (characters[index] == std::string(1, closer[0]) && characters[index + 1] == std::string(1, closer[1])) {
                end = index + 2;
                break;
            }
        }
    } else {
        end = std::min(end, offset + text::characterCount(token.contents));
    }
    if (end > offset + 1) {
        text += std::string(end - offset - 1, '~');
    }
    return text;
}

}  // namespace

std::string SimpleErrorReporter::renderError(const std::exception& error) const {
    const auto* syntaxError = dynamic_cast<const TemplateSyntaxError*>(&error);
    if (syntaxError == nullptr || !syntaxError->token) {
        return error.what();
    }
    std::string text = describeToken(*syntaxError->token, syntaxError->reason);
    for (const Token& step : syntaxError->stackTrace) {
        text += '\n';
        text += describeToken(step, syntaxError->reason);
    }
    return text;
}

}  // namespace tintwork::stencil
