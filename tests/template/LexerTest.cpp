#include <gtest/gtest.h>

#include "TemplateTestSupport.h"
#include "template/Errors.h"
#include "template/Token.h"

namespace tintwork::stencil {
namespace {

using testing::errorOf;
using testing::render;

TEST(Lexer, TextWithoutDelimitersIsOneTextToken) {
    auto tokens = Lexer("plain text { not a tag } and {single").tokenize();
    ASSERT_EQ(tokens.size(), 1u);
    EXPECT_EQ(tokens[0].kind, Token::Kind::text);
    EXPECT_EQ(tokens[0].contents, "plain text { not a tag } and {single");
}

TEST(Lexer, CutsTheThreeDelimitersWithTrimmedContents) {
    auto tokens = Lexer("a{{ name }}b{%  if x %}c{# note #}").tokenize();
    ASSERT_EQ(tokens.size(), 6u);
    EXPECT_EQ(tokens[0].kind, Token::Kind::text);
    EXPECT_EQ(tokens[1].kind, Token::Kind::variable);
    EXPECT_EQ(tokens[1].contents, "name");
    EXPECT_EQ(tokens[3].kind, Token::Kind::block);
    EXPECT_EQ(tokens[3].contents, "if x");
    EXPECT_EQ(tokens[5].kind, Token::Kind::comment);
    EXPECT_EQ(tokens[5].contents, "note");
}

TEST(Lexer, UnclosedDelimiterStaysText) {
    auto tokens = Lexer("a {{ b").tokenize();
    ASSERT_EQ(tokens.size(), 1u);
    EXPECT_EQ(tokens[0].contents, "a {{ b");
    EXPECT_EQ(render("x {% if"), "x {% if");
    // Tags after an unclosed opener still count.
    EXPECT_EQ(render("{% a {# b {{ \"c\" }}", {}), "{% a {# b c");
}

TEST(Lexer, QuotedWordsStayWholeInComponents) {
    Token token("now \"yyyy-MM-dd 'at' HH:mm\"", Token::Kind::block);
    EXPECT_EQ(token.components(), (std::vector<std::string>{"now", "\"yyyy-MM-dd 'at' HH:mm\""}));
    Token filter("xs|join:\", \"  \n  y", Token::Kind::variable);
    EXPECT_EQ(filter.components(), (std::vector<std::string>{"xs|join:\", \"", "y"}));
    EXPECT_EQ(smartSplit("a,'b,c', d", ','), (std::vector<std::string>{"a", "'b,c'", " d"}));
}

TEST(Lexer, RecordsLineAndColumnOfEachToken) {
    auto tokens = Lexer("first\n  second {{ x }}\n{% y %}", std::string("t.stencil")).tokenize();
    ASSERT_EQ(tokens.size(), 4u);
    EXPECT_EQ(tokens[0].sourceMap().location.lineNumber, 1u);
    EXPECT_EQ(tokens[1].sourceMap().location.lineNumber, 2u);
    EXPECT_EQ(tokens[1].sourceMap().location.lineOffset, 9);
    EXPECT_EQ(tokens[1].sourceMap().location.content, "  second {{ x }}");
    EXPECT_EQ(tokens[1].sourceMap().filename, "t.stencil");
    EXPECT_EQ(tokens[3].sourceMap().location.lineNumber, 3u);
    EXPECT_EQ(tokens[3].sourceMap().location.lineOffset, 0);
}

// A token keeps its offset, not its line: one long line of many tags costs as much as
// the same tags over many lines, and errors quote only a short excerpt of it.
TEST(Lexer, LongLinesCostTheirLengthAndErrorsQuoteAnExcerpt) {
    std::string line;
    for (int index = 0; index < 20000; ++index) {
        line += "{{ name }}";
    }
    std::string expected;
    for (int index = 0; index < 20000; ++index) {
        expected += "ab";
    }
    EXPECT_EQ(render(line, Map{{"name", "ab"}}), expected);

    // A tag deep inside the line: its column is exact, the quoted line is cut around it.
    Environment environment;
    try {
        environment.templateFromString(line + "{% nosuch %}" + line, std::string("long"));
        FAIL() << "expected an error";
    } catch (const TemplateSyntaxError& error) {
        EXPECT_EQ(error.token->sourceMap().location.lineOffset, 200000);
        const std::string report = SimpleErrorReporter().renderError(error);
        EXPECT_EQ(report.substr(0, report.find('\n')), "long:1:200000: error: Unknown template tag 'nosuch'");
        EXPECT_LT(report.size(), 400u);
        EXPECT_NE(report.find("\n…{{ name }}{{ name }}{{ name }}{{ name }}{% nosuch %}{{ name }}"), std::string::npos)
            << report;
        // The caret stands under the tag within the excerpt.
        const std::string marks = report.substr(report.rfind('\n') + 1);
        EXPECT_EQ(marks, std::string(41, ' ') + "^" + std::string(11, '~'));
    }

    // An unknown tag of a megabyte is named by its start only.
    const std::string huge(1000000, 'x');
    EXPECT_EQ(errorOf("{% " + huge + " %}"), "Unknown template tag '" + std::string(40, 'x') + "…'");
    // Thousands of nested tags on one line reach the nesting bound without copying the line.
    std::string nested;
    for (int index = 0; index < 8000; ++index) {
        nested += "{% if x %}";
    }
    EXPECT_EQ(errorOf(nested), "Tags are nested more than 200 levels deep");
}

TEST(Lexer, WhitespaceMarkersAreReadAndRemoved) {
    auto tokens = Lexer("{%- if x +%}{{+ y -}}{#- c #}").tokenize();
    ASSERT_EQ(tokens.size(), 3u);
    EXPECT_EQ(tokens[0].contents, "if x");
    EXPECT_EQ(tokens[0].whitespace->leading, WhitespaceBehaviour::Behaviour::trim);
    EXPECT_EQ(tokens[0].whitespace->trailing, WhitespaceBehaviour::Behaviour::keep);
    EXPECT_EQ(tokens[1].contents, "y");
    EXPECT_EQ(tokens[1].whitespace->leading, WhitespaceBehaviour::Behaviour::keep);
    EXPECT_EQ(tokens[1].whitespace->trailing, WhitespaceBehaviour::Behaviour::trim);
    EXPECT_EQ(tokens[2].whitespace->leading, WhitespaceBehaviour::Behaviour::trim);
    EXPECT_EQ(tokens[2].whitespace->trailing, WhitespaceBehaviour::Behaviour::unspecified);
}

TEST(Lexer, TrimPatterns) {
    using Trim = TrimBehaviour::Trim;
    EXPECT_EQ(applyLeadingTrim(" \t\n  x\n", Trim::whitespace), "\n  x\n");
    EXPECT_EQ(applyLeadingTrim(" \t\n\n  x", Trim::whitespaceAndOneNewLine), "\n  x");
    EXPECT_EQ(applyLeadingTrim("  x", Trim::whitespaceAndOneNewLine), "  x");
    EXPECT_EQ(applyLeadingTrim(" \n x", Trim::nothing), " \n x");
    EXPECT_EQ(applyTrailingTrim("x\n \t", Trim::whitespace), "x\n");
    EXPECT_EQ(applyTrailingTrim("x\n\n \t", Trim::whitespaceAndOneNewLine), "x\n");
    EXPECT_EQ(applyTrailingTrim("x  ", Trim::whitespaceAndOneNewLine), "x  ");
    EXPECT_EQ(applyTrailingTrim("x\r\n  ", Trim::whitespaceAndOneNewLine), "x");
}

TEST(Lexer, MarkersTrimBlanksAndOneLineFeedAroundEveryDelimiter) {
    Map context{{"x", true}, {"y", "Y"}};
    EXPECT_EQ(render("a\n  {%- if x -%}  \n\nb\n{%- endif %}", context), "a\nb");
    EXPECT_EQ(render("[\n{{- y -}}\n]", context), "[Y]");
    EXPECT_EQ(render("a  \n{#- note -#}\nb", context), "a  b");
}

TEST(Lexer, EnvironmentTrimActsBesideBlockTagsAndPlusKeeps) {
    Environment smart(nullptr, {}, TrimBehaviour::smart());
    Map context{{"xs", List{1, 2}}};
    EXPECT_EQ(smart.renderTemplate("<\n  {% for x in xs %}\n  {{ x }}\n  {% endfor %}\n>", context), "<\n  1\n  2\n>");
    EXPECT_EQ(smart.renderTemplate("a  {{ 1 }}  \nb", context), "a  1  \nb");
    EXPECT_EQ(smart.renderTemplate("a  {%+ if true +%}  \nb{% endif %}", context), "a    \nb");
    Environment plain;
    EXPECT_EQ(plain.renderTemplate("a\n  {% if true %}\nb\n{% endif %}\n"), "a\n  \nb\n\n");
}

}  // namespace
}  // namespace tintwork::stencil
