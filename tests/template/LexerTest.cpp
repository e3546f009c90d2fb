#include <gtest/gtest.h>

#include "template/Environment.h"
#include "template/Token.h"

namespace tintwork::stencil {
namespace {

TEST(Lexer, TextWithoutDelimitersIsOneTextToken) {
    auto tokens = Lexer("plain text { not a tag }").tokenize();
    ASSERT_EQ(tokens.size(), 1u);
    EXPECT_EQ(tokens[0].kind, Token::Kind::text);
    EXPECT_EQ(tokens[0].contents, "plain text { not a tag }");
}

TEST(Lexer, Smoke) {
    Environment environment;
    EXPECT_EQ(environment.renderTemplate("Hello {{ name }}!{% for x in xs %}[{{ x }}]{% endfor %}",
                                         Map{{"name", "World"}, {"xs", List{1, 2.5, "a"}}}),
              "Hello World![1][2.5][a]");
}

}  // namespace
}  // namespace tintwork::stencil
