// Names and string values written into each output language: ordinary text passes
// unchanged, and text that would break the language is escaped (the consumer tests in
// tests/e2e and the native tests hand the results to the real readers).

#include "export/OutputEscapes.h"

#include <gtest/gtest.h>

namespace tintwork {
namespace {

const std::string nul(1, '\0');

TEST(OutputEscapes, CssValuesStayAsWrittenWhenCssReadsThemBack) {
    EXPECT_EQ(cssPropertyValue("Inter"), "Inter");
    EXPECT_EQ(cssPropertyValue("\"Helvetica Neue\", Arial, sans-serif"), "\"Helvetica Neue\", Arial, sans-serif");
    EXPECT_EQ(cssPropertyValue("'Fira Code', monospace"), "'Fira Code', monospace");
    EXPECT_EQ(cssPropertyValue("calc(100% - [x])"), "calc(100% - [x])");
    EXPECT_EQ(cssPropertyValue("grüße ✓"), "grüße ✓");
    // Anything that would end, escape, comment out, trim or reinterpret the value is quoted.
    EXPECT_EQ(cssPropertyValue("a; b"), "\"a; b\"");
    EXPECT_EQ(cssPropertyValue("a}"), "\"a}\"");
    EXPECT_EQ(cssPropertyValue("C:\\"), "\"C:\\\\\"");
    EXPECT_EQ(cssPropertyValue("one\ntwo"), "\"one\\a two\"");
    EXPECT_EQ(cssPropertyValue("it's"), "\"it\\'s\"");
    EXPECT_EQ(cssPropertyValue("it's \"x\""), "\"it\\'s \\\"x\\\"\"");
    EXPECT_EQ(cssPropertyValue("a /* b"), "\"a /* b\"");
    EXPECT_EQ(cssPropertyValue("(a"), "\"(a\"");
    EXPECT_EQ(cssPropertyValue("a)"), "\"a)\"");
    EXPECT_EQ(cssPropertyValue("url(x y)"), "\"url(x y)\"");
    EXPECT_EQ(cssPropertyValue("INHERIT"), "\"INHERIT\"");
    EXPECT_EQ(cssPropertyValue(" padded"), "\" padded\"");
    EXPECT_EQ(cssPropertyValue(""), "\"\"");
    EXPECT_EQ(cssPropertyValue("!important"), "\"!important\"");
    // Interpolation openers of SCSS and LESS are written as hex escapes; NUL as U+FFFD.
    EXPECT_EQ(cssPropertyValue("#{1+1} @{x}"), "\"\\23 {1+1} \\40 {x}\"");
    EXPECT_EQ(cssPropertyValue("a" + nul + "b"), "\"a\\fffd b\"");
}

TEST(OutputEscapes, CssAndScssNamesEscapeWhatIsNotAnIdentifier) {
    EXPECT_EQ(cssIdentifier("brand-primary_2"), "brand-primary_2");
    EXPECT_EQ(cssIdentifier("grün-ton"), "grün-ton");
    EXPECT_EQ(cssIdentifier("50%-(half)"), "50\\%-\\(half\\)");
    EXPECT_EQ(cssIdentifier("a b\"c"), "a\\ b\\\"c");
    EXPECT_EQ(cssIdentifier("a" + nul + "b\tc"), "a\\fffd b\\9 c");
    EXPECT_EQ(scssIdentifier("brand-primary"), "brand-primary");
    EXPECT_EQ(scssIdentifier("3-blue"), "\\33 -blue");
    EXPECT_EQ(scssIdentifier("--7"), "--\\37 ");
    EXPECT_EQ(scssStringContent("Inter"), "Inter");
    EXPECT_EQ(scssStringContent("\"a\\22 b\" #{x}"), "\\\"a\\\\22 b\\\" \\#{x}");
}

TEST(OutputEscapes, LessNamesAreRewrittenAndStringsChooseTheirQuote) {
    EXPECT_EQ(lessIdentifier("brand-primary_2"), "brand-primary_2");
    EXPECT_EQ(lessIdentifier("grün"), "gr_c3__bc_n");
    EXPECT_EQ(lessIdentifier("50%"), "50_25_");
    EXPECT_TRUE(isPlainLessName("brand-primary_2"));
    EXPECT_FALSE(isPlainLessName("grün"));
    EXPECT_EQ(lessEscapedString("Inter"), "~\"Inter\"");
    EXPECT_EQ(lessEscapedString("\"Helvetica Neue\", Arial"), "~'\"Helvetica Neue\", Arial'");
    EXPECT_EQ(lessEscapedString("\"it\\'s\""), "~'\"it\\'s\"'");
    EXPECT_EQ(lessEscapedString("@{x}"), "~\"\\40 {x}\"");
}

TEST(OutputEscapes, SwiftUsesRawStringsUnlessTheValueWouldEndOrEscapeThem) {
    EXPECT_EQ(swiftStringLiteral("Inter"), "#\"Inter\"#");
    EXPECT_EQ(swiftStringLiteral("say \"hi\" \\ it's 100% $x"), "#\"say \"hi\" \\ it's 100% $x\"#");
    EXPECT_EQ(swiftStringLiteral("say \"#hi"), "\"say \\\"#hi\"");
    EXPECT_EQ(swiftStringLiteral("a\\#(b)"), "\"a\\\\#(b)\"");
    EXPECT_EQ(swiftStringLiteral("one\ntwo\t" + nul + "\x01"), "\"one\\ntwo\\t\\0\\u{1}\"");
    EXPECT_EQ(swiftStringLiteral("grüße"), "#\"grüße\"#");
}

TEST(OutputEscapes, KotlinUsesRawStringsUnlessTheValueWouldEndThem) {
    EXPECT_EQ(kotlinStringLiteral("Inter"), "\"\"\"Inter\"\"\"");
    EXPECT_EQ(kotlinStringLiteral("100% $x \\ y"), "\"\"\"100% ${'$'}x \\ y\"\"\"");
    EXPECT_EQ(kotlinStringLiteral("a\"\"\"b"), "\"a\\\"\\\"\\\"b\"");
    EXPECT_EQ(kotlinStringLiteral("ends \""), "\"ends \\\"\"");
    EXPECT_EQ(kotlinStringLiteral("C:\\"), "\"C:\\\\\"");
    EXPECT_EQ(kotlinStringLiteral("$a\nb" + nul), "\"\\$a\\nb\\u0000\"");
}

TEST(OutputEscapes, CommentTextCannotEndTheCommentOrSpliceLines) {
    EXPECT_EQ(commentText("Inter, 100"), "Inter, 100");
    EXPECT_EQ(commentText("a */ b"), "a *\\x2f b");
    EXPECT_EQ(commentText("ends \\"), "ends \\x5c");
    EXPECT_EQ(commentText("one\ntwo" + nul), "one\\ntwo\\x00");
    EXPECT_EQ(commentText("grüße"), "grüße");
}

}  // namespace
}  // namespace tintwork
