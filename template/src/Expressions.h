#pragma once
// The boolean expressions of if, elif, ifnot, where and inline conditions, and the
// precedence-climbing parser that builds them.

#include <string>
#include <vector>

#include "template/Resolvable.h"
#include "template/Token.h"

namespace tintwork::stencil {

class TokenParser;

// Joins words split around "|" ("a | lowercase") back into one filter expression.
std::vector<std::string> joinFilterWords(const std::vector<std::string>& components);

// Builds an expression from the words of a condition; throws TemplateSyntaxError.
ExpressionPtr parseIfExpression(const std::vector<std::string>& components, const TokenParser& parser,
                                const Token& token);

// Negates an expression (for ifnot).
ExpressionPtr makeNotExpression(ExpressionPtr expression);

}  // namespace tintwork::stencil
