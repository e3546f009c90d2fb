#include <gtest/gtest.h>

#include "TemplateTestSupport.h"

namespace tintwork::stencil {
namespace {

using testing::errorOf;
using testing::render;

std::string truth(const std::string& condition, const Map& context = {}) {
    return render("{% if " + condition + " %}T{% else %}F{% endif %}", context);
}

TEST(IfExpression, TruthOfValues) {
    Map context{{"yes", true},      {"no", false},        {"zero", 0},          {"negative", -1},
                {"positive", 2},    {"half", 0.5},        {"blank", ""},        {"word", "a"},
                {"none", List{}},   {"some", List{1}},    {"emptyMap", Map{}},  {"map", Map{{"k", 1}}},
                {"nothing", Value()}};
    EXPECT_EQ(truth("yes", context), "T");
    EXPECT_EQ(truth("no", context), "F");
    EXPECT_EQ(truth("zero", context), "F");
    EXPECT_EQ(truth("negative", context), "F");
    EXPECT_EQ(truth("positive", context), "T");
    EXPECT_EQ(truth("half", context), "T");
    EXPECT_EQ(truth("blank", context), "F");
    EXPECT_EQ(truth("word", context), "T");
    EXPECT_EQ(truth("none", context), "F");
    EXPECT_EQ(truth("some", context), "T");
    EXPECT_EQ(truth("emptyMap", context), "F");
    EXPECT_EQ(truth("map", context), "T");
    EXPECT_EQ(truth("nothing", context), "F");
    EXPECT_EQ(truth("missing", context), "F");
    EXPECT_EQ(truth("true"), "T");
    EXPECT_EQ(truth("false"), "F");
}

TEST(IfExpression, OperatorsCompareNumbersStringsAndBooleans) {
    Map context{{"n", 3}, {"d", 3.0}, {"s", "abc"}, {"b", true}, {"xs", List{1, "two"}}, {"m", Map{{"key", 1}}}};
    EXPECT_EQ(truth("n == 3", context), "T");
    EXPECT_EQ(truth("n == d", context), "T");
    EXPECT_EQ(truth("s == \"abc\"", context), "T");
    EXPECT_EQ(truth("s == 'abc'", context), "T");
    EXPECT_EQ(truth("b == true", context), "T");
    EXPECT_EQ(truth("n != 4", context), "T");
    EXPECT_EQ(truth("n == \"3\"", context), "F");
    EXPECT_EQ(truth("n > 2", context), "T");
    EXPECT_EQ(truth("n >= 3", context), "T");
    EXPECT_EQ(truth("n < 3", context), "F");
    EXPECT_EQ(truth("n <= 2.5", context), "F");
    EXPECT_EQ(truth("\"b\" in s", context), "T");
    EXPECT_EQ(truth("\"two\" in xs", context), "T");
    EXPECT_EQ(truth("3 in xs", context), "F");
    EXPECT_EQ(truth("\"key\" in m", context), "T");
    EXPECT_EQ(truth("2 in 1...3", context), "T");
    EXPECT_EQ(truth("s|uppercase == \"ABC\"", context), "T");
    EXPECT_EQ(truth("s | uppercase == \"ABC\"", context), "T");
    EXPECT_EQ(errorOf("{% if s < 1 %}{% endif %}", context), "'<' can only compare numbers, not \"abc\" and 1");
}

TEST(IfExpression, BindingPowersFollowTheOperatorTable) {
    Map context{{"a", true}, {"b", false}, {"c", true}, {"xs", List{true}}};
    // or binds tighter than in: a in (b or c).
    EXPECT_EQ(truth("a in xs or b", context), "F");
    EXPECT_EQ(truth("(a in xs) or b", context), "T");
    // and tighter than or.
    EXPECT_EQ(truth("a or b and b", context), "T");
    EXPECT_EQ(truth("(a or b) and b", context), "F");
    // not tighter than and, looser than comparisons: not (a == b).
    EXPECT_EQ(truth("not a and b", context), "F");
    EXPECT_EQ(truth("not b and c", context), "T");
    EXPECT_EQ(truth("not a == b", context), "T");
    EXPECT_EQ(truth("not not a", context), "T");
    EXPECT_EQ(truth("((a)) and (not b)", context), "T");
    EXPECT_EQ(truth("(a and b) == false", context), "T");
}

TEST(IfExpression, ErrorTexts) {
    EXPECT_EQ(errorOf("{% if %}{% endif %}"), "'if' expression error: end");
    EXPECT_EQ(errorOf("{% if a and %}{% endif %}"), "'if' expression error: end");
    EXPECT_EQ(errorOf("{% if and a %}{% endif %}"),
              "'if' expression error: infix operator 'and' doesn't have a left hand side");
    EXPECT_EQ(errorOf("{% if a not b %}{% endif %}"),
              "'if' expression error: prefix operator 'not' was called with a left hand side");
    EXPECT_EQ(errorOf("{% if a b %}{% endif %}"), "'if' expression error: dangling token");
    EXPECT_EQ(errorOf("{% if a) %}{% endif %}"), "'if' expression error: missing opening bracket");
    EXPECT_EQ(errorOf("{% if (a %}{% endif %}"), "'if' expression error: missing closing bracket");
    EXPECT_EQ(errorOf("{% if () %}{% endif %}"), "'if' expression error: end");
    EXPECT_EQ(errorOf("{% if x %}{% elif %}{% endif %}"), "'if' expression error: end");
}

TEST(InlineCondition, PrintsValueOrElseAndPrintsConditions) {
    Map context{{"n", 1}, {"name", "Ann"}};
    EXPECT_EQ(render("{{ name if n == 1 }}|{{ name if n == 2 }}|{{ name if n == 2 else \"nobody\" }}", context),
              "Ann||nobody");
    EXPECT_EQ(render("{{ n == 1 }} {{ not n }}", context), "true false");
    EXPECT_EQ(errorOf("{{ if n }}", context), "Variable tags must include at least 1 argument");
}

}  // namespace
}  // namespace tintwork::stencil
