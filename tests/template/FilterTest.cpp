#include <gtest/gtest.h>

#include "TemplateTestSupport.h"

namespace tintwork::stencil {
namespace {

using testing::errorOf;
using testing::render;

TEST(Filters, DefaultGivesTheFirstPresentValue) {
    Map context{{"name", "Ann"}, {"fallback", "Bob"}, {"nothing", Value()}, {"blank", ""}};
    EXPECT_EQ(render("{{ name|default:\"x\" }} {{ missing|default:\"x\" }} {{ nothing|default:fallback }}", context),
              "Ann x Bob");
    EXPECT_EQ(render("{{ missing|default:other,fallback }} [{{ blank|default:\"x\" }}]", context), "Bob []");
    EXPECT_EQ(render("{% for u in missing|default:names %}{{ u }}{% endfor %}", Map{{"names", List{"p", "q"}}}), "pq");
}

TEST(Filters, CaseFiltersChangeTextsAndListsOfTexts) {
    Map context{{"word", "stencil Ünïcode"}, {"words", List{"ab", "cd"}}, {"n", 5}};
    EXPECT_EQ(render("{{ word|capitalize }}|{{ word|uppercase }}|{{ word|lowercase }}", context),
              "Stencil Ünïcode|STENCIL ÜNÏCODE|stencil ünïcode");
    EXPECT_EQ(render("{{ \"hELLO\"|capitalize }} {{ words|uppercase }} {{ words|capitalize|join:\"+\" }}", context),
              "HELLO [\"AB\", \"CD\"] Ab+Cd");
    EXPECT_EQ(render("{{ n|uppercase }}[{{ missing|uppercase }}]", context), "5[]");
    // Letters whose case takes more than one letter.
    EXPECT_EQ(render("{{ \"straße ﬁn\"|uppercase }} {{ \"ßa\"|capitalize }} {{ \"İ\"|lowercase }}"), "STRASSE FIN SSa i\u0307");
}

TEST(Filters, JoinAndSplit) {
    Map context{{"xs", List{"a", 1, 2.5}}, {"csv", "a,b,,c"}, {"text", "one two"}};
    EXPECT_EQ(render("{{ xs|join }} {{ xs|join:\", \" }} {{ xs|join:' | ' }}", context), "a12.5 a, 1, 2.5 a | 1 | 2.5");
    EXPECT_EQ(render("{{ xs | join: \", \" }} {{ missing | default: \"x\" , \"y\" }}", context), "a, 1, 2.5 x");
    EXPECT_EQ(render("{{ xs|join : \"-\" }}{% for x in missing | default : xs %}{{ x }}{% endfor %}", context),
              "a-1-2.5a12.5");
    EXPECT_EQ(render("{{ text|split }} {{ csv|split:\",\" }} {{ csv|split:\",\"|join:\"-\" }}", context),
              "[\"one\", \"two\"] [\"a\", \"b\", \"\", \"c\"] a-b--c");
    EXPECT_EQ(render("{{ text|join:\",\" }} {{ xs|split }}", context), "one two [\"a\", 1, 2.5]");
    EXPECT_EQ(errorOf("{{ xs|join:\"a\",\"b\" }}", context), "'join' filter takes at most one argument");
    EXPECT_EQ(errorOf("{{ csv|split:\"a\",\"b\" }}", context), "'split' filter takes at most one argument");
}

TEST(Filters, IndentLeavesBlankLinesEmpty) {
    Map context{{"text", "a\nb\n\nc"}};
    EXPECT_EQ(render("{{ text|indent }}", context), "a\n    b\n\n    c");
    EXPECT_EQ(render("{{ text|indent:2,\"-\",true }}", context), "--a\n--b\n\n--c");
    EXPECT_EQ(render("{% filter indent:1,\"\\t\" %}x\ny{% endfilter %}"), "x\n\\ty");
    EXPECT_EQ(errorOf("{{ text|indent:1,\" \",true,4 }}", context), "'indent' filter can take at most 3 arguments");
    EXPECT_EQ(errorOf("{{ text|indent:\"2\" }}", context), "'indent' filter width argument must be an Integer (2)");
    EXPECT_EQ(errorOf("{{ text|indent:2,3 }}", context), "'indent' filter indentation argument must be a String (3)");
    EXPECT_EQ(errorOf("{{ text|indent:missing }}", context), "'indent' filter width argument must be an Integer (nil)");
    EXPECT_EQ(errorOf("{{ text|indent:2,\" \",1 }}", context), "'indent' filter indentFirst argument must be a Bool");
}

TEST(Filters, FilterAppliesTheNamedFilter) {
    Map context{{"name", "ann"}, {"which", "uppercase"}};
    EXPECT_EQ(render("{{ name|filter:\"capitalize\" }} {{ name|filter:which }}", context), "Ann ANN");
    EXPECT_EQ(errorOf("{{ name|filter }}", context), "'filter' filter takes one argument");
    EXPECT_EQ(errorOf("{{ name|filter:\"a\",\"b\" }}", context), "'filter' filter takes one argument");
    EXPECT_EQ(errorOf("{{ name|filter:\"upercase\" }}", context),
              "Unknown filter 'upercase'. Found similar filters: 'uppercase'");
}

TEST(Filters, UnknownFiltersSuggestNearNames) {
    EXPECT_EQ(errorOf("{{ x|uppercased }}"), "Unknown filter 'uppercased'. Found similar filters: 'uppercase'");
    EXPECT_EQ(errorOf("{{ x|jion }}"), "Unknown filter 'jion'. Found similar filters: 'join'");
    std::string far = errorOf("{{ x|nosuch }}");
    EXPECT_EQ(far.rfind("Unknown filter 'nosuch'. Found similar filters: '", 0), 0u) << far;
    EXPECT_EQ(errorOf("{% if x|nosuch %}{% endif %}").rfind("Unknown filter 'nosuch'", 0), 0u);
}

TEST(Filters, SimpleFiltersTakeNoArguments) {
    EXPECT_EQ(errorOf("{{ x|uppercase:1 }}", Map{{"x", "a"}}), "Can't invoke filter with an argument");
}

}  // namespace
}  // namespace tintwork::stencil
