#include <gtest/gtest.h>

#include <cmath>

#include "TemplateTestSupport.h"

namespace tintwork::stencil {
namespace {

using testing::errorOf;
using testing::render;

// A record exposing a C++ struct by field name, as the exporter's records do.
struct Colour {
    double red;
    std::string name;
};

class ColourRecord : public Record {
public:
    explicit ColourRecord(Colour value) : colour(std::move(value)) {}
    std::optional<Value> field(std::string_view name) const override {
        if (name == "red") {
            return Value(colour.red);
        }
        if (name == "name") {
            return Value(colour.name);
        }
        return std::nullopt;
    }
    std::vector<std::string> fieldNames() const override { return {"red", "name"}; }
    std::string typeName() const override { return "Colour"; }

    Colour colour;
};

Map sample() {
    return Map{{"user", Map{{"name", "Kim"}, {"tags", List{"a", "b", "c"}}}},
               {"colour", Value(std::make_shared<ColourRecord>(Colour{0.5, "Sky"}))},
               {"i", 1},
               {"key", "name"},
               {"word", "héllo"}};
}

TEST(Variable, LooksUpKeysIndicesAndFields) {
    Map context = sample();
    EXPECT_EQ(render("{{ user.name }} {{ user.tags.0 }} {{ user.tags.-1 }} {{ user.tags.first }}"
                     " {{ user.tags.last }} {{ user.tags.count }} {{ user.count }}",
                     context),
              "Kim a c a c 3 2");
    EXPECT_EQ(render("{{ colour.red }} {{ colour.name }} [{{ colour.blue }}]", context), "0.5 Sky []");
    EXPECT_EQ(render("{{ word.first }}{{ word.1 }}{{ word.last }}{{ word.count }}", context), "héo5");
    EXPECT_EQ(render("[{{ user.tags.9 }}][{{ missing.deeply.nested }}][{{ i.name }}]", context), "[][][]");
}

TEST(Variable, QuotedStringsTakeAKeyPath) {
    Map context = sample();
    EXPECT_EQ(render("{{ 'abc'.count }} {{ \"abc\".first }}{{ \"abc\".1 }}{{ 'abc'.last }} {{ \"héllo\"[i] }}", context),
              "3 abc é");
    EXPECT_EQ(render("{{ \"a.b\".count }} {{ \"a\\\"b\".count }} {{ \"x.y\" }}"), "3 3 x.y");
}

TEST(Variable, SubscriptsResolveFirst) {
    Map context = sample();
    EXPECT_EQ(render("{{ user[key] }} {{ user.tags[i] }} {{ user.tags[user.tags.count] }}.", context), "Kim b .");
    EXPECT_EQ(render("{{ user[\"name\"] }}", context), "Kim");
    EXPECT_EQ(errorOf("{{ user[nothing] }}", context), "Unable to resolve subscript 'nothing' in variable 'user[nothing]'");
}

TEST(Variable, MalformedNamesFail) {
    EXPECT_EQ(errorOf("{{ a..b }}"), "Unexpected '.' in variable 'a..b'");
    EXPECT_EQ(errorOf("{{ .a }}"), "Unexpected '.' in variable '.a'");
    EXPECT_EQ(errorOf("{{ a. }}"), "Unexpected '.' in variable 'a.'");
    EXPECT_EQ(errorOf("{{ [a] }}"), "Unexpected '[' in variable '[a]'");
    EXPECT_EQ(errorOf("{{ a.[b] }}"), "Unexpected '[' in variable 'a.[b]'");
    EXPECT_EQ(errorOf("{{ a]b }}"), "Unbalanced ']' in variable 'a]b'");
    EXPECT_EQ(errorOf("{{ a[b }}"), "Unbalanced subscript brackets in variable 'a[b'");
    EXPECT_EQ(errorOf("{{ a[b]c }}"), "Unexpected character 'c' in variable 'a[b]c'");
}

TEST(Variable, LiteralsAndPrintedForms) {
    EXPECT_EQ(render("{{ \"text\" }} {{ 'single' }} {{ 42 }} {{ -7 }} {{ 1.5 }} {{ true }} {{ false }} [{{ nil }}]"),
              "text single 42 -7 1.5 true false []");
    EXPECT_EQ(render(R"({{ "say \"hi\" now" }} {{ 'it\'s' }} {{ "a 'b' c" }} {{ x|default:"q \"|\" q" }} {{ "\\" }})"),
              R"(say "hi" now it's a 'b' c q "|" q \)");
    Map context{{"whole", 2.0},          {"quarter", 0.25}, {"big", 1e21},
                {"list", List{"a", 1, Value(), 2.0}}, {"map", Map{{"b", "x"}, {"a", 1}}},
                {"emptyMap", Map{}},     {"nan", std::nan("")}};
    EXPECT_EQ(render("{{ whole }} {{ quarter }} {{ big }} {{ nan }}", context), "2.0 0.25 1e+21 nan");
    EXPECT_EQ(render("{{ list }} {{ map }} {{ emptyMap }}", context), "[\"a\", 1, nil, 2.0] [\"a\": 1, \"b\": \"x\"] [:]");
    EXPECT_EQ(render("{{ colour }}", sample()), "Colour(red: 0.5, name: \"Sky\")");
}

TEST(Variable, RangesNeedIntegerEnds) {
    Map context{{"n", 2}, {"s", "x"}, {"xs", List{1, 2, 3}}};
    EXPECT_EQ(render("{{ 1...n }} {{ 1...xs.count }}", context), "[1, 2] [1, 2, 3]");
    EXPECT_EQ(errorOf("{{ s...3 }}", context), "'from' value is not an Integer (x)");
    EXPECT_EQ(errorOf("{{ 1...missing }}", context), "'to' value is not an Integer (nil)");
    EXPECT_EQ(errorOf("{{ 0...100000000 }}", context), "Range 0...100000000 has more than 1000000 values");
}

TEST(Variable, VariableTagErrors) {
    EXPECT_EQ(errorOf("{{ }}"), "Missing variable name");
    EXPECT_EQ(errorOf("{{}}"), "Missing variable name");
    EXPECT_EQ(errorOf("{{ |lowercase }}"), "Missing variable name");
}

TEST(Variable, LazyValuesAreComputedOnFirstUseOnly) {
    int calls = 0;
    auto lazy = std::make_shared<const LazyValueWrapper>([&calls](Context& context) {
        ++calls;
        return Value(Map{{"greeting", "hi " + context["name"].description()}});
    });
    Map context{{"name", "Kim"}, {"lazy", Value(lazy)}, {"unused", Value(lazy)}};
    EXPECT_EQ(render("{{ lazy.greeting }} {{ lazy.greeting|uppercase }}", context), "hi Kim HI KIM");
    EXPECT_EQ(calls, 1);
}

TEST(Context, InnerScopesShadowOuterOnes) {
    Context context(Map{{"a", 1}, {"b", 2}});
    context.push(Map{{"a", 10}});
    context.set("c", 3);
    EXPECT_EQ(context["a"], Value(10));
    EXPECT_EQ(context["b"], Value(2));
    EXPECT_EQ(context.flatten().size(), 3u);
    Map popped = context.pop();
    EXPECT_EQ(popped.size(), 2u);
    EXPECT_EQ(context["a"], Value(1));
    EXPECT_FALSE(context.lookup("c").has_value());
    context.pop();
    EXPECT_EQ(context.depth(), 1u);
}

}  // namespace
}  // namespace tintwork::stencil
