#include <gtest/gtest.h>

#include <regex>

#include "TemplateTestSupport.h"

namespace tintwork::stencil {
namespace {

using testing::errorOf;
using testing::render;

Map numbers() { return Map{{"xs", List{1, 2, 3}}, {"empty", List{}}}; }

TEST(ForTag, IteratesWithForloopKeys) {
    EXPECT_EQ(render("{% for x in xs %}{{ forloop.counter }}{{ forloop.counter0 }}{{ forloop.first }}"
                     "{{ forloop.last }}{{ forloop.length }}{{ x }};{% endfor %}",
                     numbers()),
              "10truefalse31;21falsefalse32;32falsetrue33;");
}

TEST(ForTag, EmptyRendersWhenNothingIsIterated) {
    Map context = numbers();
    EXPECT_EQ(render("{% for x in empty %}{{ x }}{% empty %}none{% endfor %}", context), "none");
    EXPECT_EQ(render("{% for x in missing %}{{ x }}{% empty %}none{% endfor %}", context), "none");
    EXPECT_EQ(render("{% for x in xs where x > 5 %}{{ x }}{% empty %}none{% endfor %}", context), "none");
    EXPECT_EQ(render("{% for x in xs %}{{ x }}{% empty %}none{% endfor %}", context), "123");
}

TEST(ForTag, WhereDropsElementsBeforeCounting) {
    EXPECT_EQ(render("{% for x in xs where x != 2 %}{{ x }}/{{ forloop.length }} {% endfor %}", numbers()),
              "1/2 3/2 ");
}

TEST(ForTag, SeveralLoopVariablesUnpackTuplesAndMapEntries) {
    Map context{{"pairs", List{List{"a", 1}, List{"b", 2, "extra"}}},
                {"map", Map{{"b", 2}, {"a", 1}}},
                {"short", List{List{"a"}}}};
    EXPECT_EQ(render("{% for k, v in pairs %}{{ k }}={{ v }} {% endfor %}", context), "a=1 b=2 ");
    EXPECT_EQ(render("{% for key,value in map %}{{ key }}={{ value }} {% endfor %}", context), "a=1 b=2 ");
    EXPECT_EQ(render("{% for entry in map %}{{ entry.0 }}:{{ entry.1 }} {% endfor %}", context), "a:1 b:2 ");
    EXPECT_EQ(errorOf("{% for a, b in short %}{% endfor %}", context),
              "Tuple '[\"a\"]' has less values than loop variables");
}

TEST(ForTag, IteratesRangesRecordsAndStrings) {
    auto record = std::make_shared<FieldsRecord>("Point", std::vector<std::pair<std::string, Value>>{{"x", 1}, {"y", 2}});
    Map context{{"point", Value(record)}, {"word", "héllo"}, {"n", 3}};
    EXPECT_EQ(render("{% for i in 1...n %}{{ i }}{% endfor %}|{% for i in 3...1 %}{{ i }}{% endfor %}", context),
              "123|321");
    EXPECT_EQ(render("{% for name, value in point %}{{ name }}{{ value }}{% endfor %}", context), "x1y2");
    // Several loop variables unpack a record's field values in field order.
    Map records{{"points", List{Value(record), Value(record)}}};
    EXPECT_EQ(render("{% for x, y in points %}({{ x }},{{ y }}){% endfor %}", records), "(1,2)(1,2)");
    EXPECT_EQ(render("{% for c in word %}[{{ c }}]{% endfor %}", context), "[h][é][l][l][o]");
}

TEST(ForTag, BreakAndContinueActOnTheInnermostOrLabelledLoop) {
    Map context = numbers();
    EXPECT_EQ(render("{% for x in xs %}{% if x == 2 %}{% break %}{% endif %}{{ x }}{% endfor %}", context), "1");
    EXPECT_EQ(render("{% for x in xs %}{% if x == 2 %}{% continue %}{% endif %}{{ x }}{% endfor %}", context), "13");
    EXPECT_EQ(render("{% outer: for x in xs %}{% for y in xs %}{% if y == 2 %}{% continue outer %}{% endif %}"
                     "{{ x }}{{ y }} {% endfor %}{% endfor %}",
                     context),
              "11 21 31 ");
    EXPECT_EQ(render("{% outer: for x in xs %}{% for y in xs %}{% if x == 2 %}{% break outer %}{% endif %}"
                     "{{ x }}{{ y }} {% endfor %}{% endfor %}after",
                     context),
              "11 12 13 after");
}

TEST(ForTag, LabelledLoopIsReachableFromTheInnerLoop) {
    Map context{{"xs", List{1, 2}}};
    EXPECT_EQ(render("{% outer: for x in xs %}{% for y in xs %}{{ forloop.outer.counter }}{{ outer.counter }}"
                     "{{ forloop.counter }}{{ forloop.outer.label }} {% endfor %}{% endfor %}",
                     context),
              "111outer 112outer 221outer 222outer ");
}

TEST(ForTag, SyntaxErrors) {
    const std::string syntax = "'for' statements should use the syntax: `for <x> in <y> [where <condition>]`.";
    EXPECT_EQ(errorOf("{% for x xs %}{% endfor %}"), syntax);
    EXPECT_EQ(errorOf("{% for x in %}{% endfor %}"), syntax);
    EXPECT_EQ(errorOf("{% for in xs %}{% endfor %}"), syntax);
    EXPECT_EQ(errorOf("{% for x in xs where %}{% endfor %}"), syntax);
    EXPECT_EQ(errorOf("{% for x in xs %}"), "`endfor` was not found.");
    EXPECT_EQ(errorOf("{% for x in xs %}{% empty %}"), "`endfor` was not found.");
}

TEST(LoopTermination, FailsOutsideLoopsAndWithBadLabels) {
    EXPECT_EQ(errorOf("{% break %}"), "'break' can be used only inside loop body");
    EXPECT_EQ(errorOf("{% continue %}"), "'continue' can be used only inside loop body");
    EXPECT_EQ(errorOf("{% for x in xs %}{% break a b %}{% endfor %}"), "'break' can accept only one parameter");
    EXPECT_EQ(errorOf("{% for x in xs %}{% continue a b %}{% endfor %}"), "'continue' can accept only one parameter");
    EXPECT_EQ(errorOf("{% for x in xs %}{% break nope %}{% endfor %}", numbers()),
              "No loop labeled 'nope' is currently running");
    EXPECT_EQ(errorOf("{% for x in empty %}{% empty %}{% break %}{% endfor %}", numbers()),
              "No loop is currently running");
}

TEST(IfTag, ChoosesTheFirstTrueBranch) {
    const std::string text = "{% if n == 1 %}one{% elif n == 2 %}two{% elif n > 2 %}many{% else %}none{% endif %}";
    EXPECT_EQ(render(text, Map{{"n", 1}}), "one");
    EXPECT_EQ(render(text, Map{{"n", 2}}), "two");
    EXPECT_EQ(render(text, Map{{"n", 7}}), "many");
    EXPECT_EQ(render(text, Map{{"n", 0}}), "none");
    EXPECT_EQ(render("{% if missing %}yes{% endif %}"), "");
    EXPECT_EQ(errorOf("{% if x %}"), "`endif` was not found.");
    EXPECT_EQ(errorOf("{% if x %}{% else %}"), "`endif` was not found.");
}

TEST(IfNotTag, RendersWhenFalseOrMissing) {
    EXPECT_EQ(render("{% ifnot x %}no{% else %}yes{% endif %}", Map{{"x", false}}), "no");
    EXPECT_EQ(render("{% ifnot x %}no{% else %}yes{% endif %}"), "no");
    EXPECT_EQ(render("{% ifnot x %}no{% else %}yes{% endif %}", Map{{"x", 1}}), "yes");
    EXPECT_EQ(render("{% ifnot a and b %}no{% endif %}", Map{{"a", true}, {"b", false}}), "no");
    EXPECT_EQ(errorOf("{% ifnot %}{% endif %}"), "'ifnot' statements should use the following syntax 'ifnot condition'.");
    EXPECT_EQ(errorOf("{% ifnot x %}"), "`endif` was not found.");
}

TEST(NowTag, FormatsTheCurrentDate) {
    EXPECT_TRUE(std::regex_match(render("{% now %}"), std::regex(R"(\d{4}-\d\d-\d\d at \d\d:\d\d)")));
    EXPECT_TRUE(std::regex_match(render("{% now \"yyyy/MM/dd HH:mm:ss ''x''\" %}"),
                                 std::regex(R"(\d{4}/\d\d/\d\d \d\d:\d\d:\d\d 'x')")));
    EXPECT_EQ(errorOf("{% now \"a\" \"b\" %}"), "'now' tags may only have one argument: the format string.");
}

TEST(FilterTag, PassesTheBodyThroughTheFilters) {
    EXPECT_EQ(render("{% filter lowercase|capitalize %}HELLO {{ name }}{% endfilter %}", Map{{"name", "WORLD"}}),
              "Hello world");
    EXPECT_EQ(render("{% filter split:\",\"|join:\"; \" %}a,b,c{% endfilter %}"), "a; b; c");
    EXPECT_EQ(errorOf("{% filter %}x{% endfilter %}"), "'filter' tag takes one argument, the filter expression");
    EXPECT_EQ(errorOf("{% filter a b %}x{% endfilter %}"), "'filter' tag takes one argument, the filter expression");
    EXPECT_EQ(errorOf("{% filter uppercase %}x"), "`endfilter` was not found.");
}

TEST(Tags, UnknownTagNamesTheWord) {
    EXPECT_EQ(errorOf("{% frobnicate x %}"), "Unknown template tag 'frobnicate'");
    EXPECT_EQ(errorOf("{%%}"), "Unknown template tag ''");
    EXPECT_EQ(errorOf("{% endfor %}"), "Unknown template tag 'endfor'");
    EXPECT_EQ(errorOf("{% label: if x %}{% endif %}"), "Unknown template tag 'label:'");
}

TEST(Tags, SyntaxErrorsCarryTheOffendingToken) {
    Environment environment;
    try {
        environment.templateFromString("line one\n  {% for x in xs %}\n{% if x %}", std::string("page"));
        FAIL() << "expected an error";
    } catch (const TemplateSyntaxError& error) {
        EXPECT_EQ(error.reason, "`endif` was not found.");
        ASSERT_TRUE(error.token.has_value());
        EXPECT_EQ(error.token->contents, "if x");
        EXPECT_EQ(error.token->sourceMap().location.lineNumber, 3u);
        EXPECT_EQ(SimpleErrorReporter().renderError(error),
                  "page:3:0: error: `endif` was not found.\n{% if x %}\n^~~~~~~~~~");
    }
    // Columns count characters, not bytes.
    try {
        environment.templateFromString("«é» {% if %}{% endif %}", std::string("page"));
        FAIL() << "expected an error";
    } catch (const TemplateSyntaxError& error) {
        EXPECT_EQ(SimpleErrorReporter().renderError(error),
                  "page:1:4: error: 'if' expression error: end\n«é» {% if %}{% endif %}\n    ^~~~~~~~");
    }
}

TEST(Tags, RenderErrorsCarryTheNodeToken) {
    Environment environment;
    auto parsed = environment.templateFromString("ok\n{% for x in xs %}{% if x < \"a\" %}{% endif %}{% endfor %}");
    try {
        parsed->render(Map{{"xs", List{1}}});
        FAIL() << "expected an error";
    } catch (const TemplateSyntaxError& error) {
        ASSERT_TRUE(error.token.has_value());
        EXPECT_EQ(error.token->contents, "if x < \"a\"");
        EXPECT_EQ(error.token->sourceMap().location.lineNumber, 2u);
        EXPECT_EQ(error.token->sourceMap().location.lineOffset, 17);
    }
}

}  // namespace
}  // namespace tintwork::stencil
