#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "TemplateTestSupport.h"
#include "template/TokenParser.h"

namespace tintwork::stencil {
namespace {

using testing::errorOf;

using Templates = std::map<std::string, std::string, std::less<>>;

std::shared_ptr<const Loader> dictionary(Templates templates) {
    return std::make_shared<const DictionaryLoader>(std::move(templates));
}

TEST(IncludeTag, RendersWithTheCurrentOrANamedContext) {
    Environment environment(dictionary({{"item", "<{{ name }}{{ suffix }}>"}}));
    Map context{{"name", "outer"}, {"suffix", "!"}, {"sub", Map{{"name", "inner"}}}, {"file", "item"}};
    EXPECT_EQ(environment.renderTemplate("{% include \"item\" %}{% include file sub %}{% include 'item' nothing %}",
                                         context),
              "<outer!><inner!><outer!>");
    EXPECT_EQ(errorOf(environment, "{% include %}"),
              "'include' tag requires one argument, the template file to be included. A second optional argument "
              "can be used to specify the context that will be passed to the included file");
    EXPECT_EQ(errorOf(environment, "{% include a b c %}"), errorOf(environment, "{% include %}"));
    EXPECT_EQ(errorOf(environment, "{% include name %}", Map{{"name", 3}}), "'name' could not be resolved as a string");
    EXPECT_EQ(errorOf(environment, "{% include \"nope\" %}"),
              "Template named `nope` does not exist in loader DictionaryLoader([\"item\"])");
}

TEST(IncludeTag, ErrorsInIncludedTemplatesNameBothPlaces) {
    Environment environment(dictionary({{"inner", "ok\n  {{ a..b }}"}}));
    try {
        environment.templateFromString("first\n{% include \"inner\" %}", std::string("outer"))->render();
        FAIL() << "expected an error";
    } catch (const TemplateSyntaxError& error) {
        ASSERT_TRUE(error.token.has_value());
        EXPECT_EQ(error.token->sourceMap().filename, "inner");
        ASSERT_EQ(error.stackTrace.size(), 1u);
        EXPECT_EQ(error.stackTrace[0].contents, "include \"inner\"");
        EXPECT_EQ(SimpleErrorReporter().renderError(error),
                  "inner:2:2: error: Unexpected '.' in variable 'a..b'\n  {{ a..b }}\n  ^~~~~~~~~~\n"
                  "outer:2:0: error: Unexpected '.' in variable 'a..b'\n{% include \"inner\" %}\n"
                  "^~~~~~~~~~~~~~~~~~~~~");
    }
    EXPECT_EQ(SimpleErrorReporter().renderError(TemplateSyntaxError("plain")), "plain");
}

TEST(IncludeTag, NeedsALoader) {
    EXPECT_EQ(errorOf("{% include \"x\" %}"), "Template named `x` does not exist. No loaders found");
    EXPECT_EQ(errorOf("{% extends \"x\" %}"), "Template named `x` does not exist. No loaders found");
    Environment environment;
    EXPECT_THROW(environment.loadTemplate("x"), TemplateDoesNotExist);
}

TEST(IncludeTag, SelfInclusionStopsWithAnError) {
    Environment environment(dictionary({{"loop", "x{% include \"loop\" %}"}, {"a", "{% extends \"a\" %}"}}));
    std::string error = errorOf(environment, "{% include \"loop\" %}");
    EXPECT_NE(error.find("nested more than 64 levels"), std::string::npos) << error;
    EXPECT_NE(errorOf(environment, "{% include \"a\" %}").find("nested more than"), std::string::npos);
}

TEST(ExtendsTag, ChildBlocksReplaceParentBlocksAtAnyDepth) {
    Environment environment(dictionary({
        {"base", "<{% block head %}base head{% endblock %}|{% block body %}base body{% endblock %}>"},
        {"middle", "{% extends \"base\" %}{% block body %}middle [{{ block.super }}]{% endblock %}"},
    }));
    EXPECT_EQ(environment.renderTemplate("{% extends \"base\" %}{% block head %}child{% endblock %}"),
              "<child|base body>");
    EXPECT_EQ(environment.renderTemplate("{% extends \"middle\" %}ignored{% block body %}child ({{ block.super }})"
                                         "{% endblock %}"),
              "<base head|child (middle [base body])>");
    EXPECT_EQ(environment.renderTemplate("{% extends \"middle\" %}"), "<base head|middle [base body]>");
}

TEST(ExtendsTag, BlockSuperWorksInsideTagsAndRenderedBlocksCanBeRepeated) {
    Environment environment(dictionary({{"base", "{% block a %}A{% endblock %}-{{ block.a }}"}}));
    EXPECT_EQ(environment.renderTemplate(
                  "{% extends \"base\" %}{% block a %}{% if true %}{{ block.super|lowercase }}{% endif %}{% endblock %}"),
              "a-a");
}

TEST(ExtendsTag, SyntaxErrors) {
    Environment environment(dictionary({{"base", ""}}));
    EXPECT_EQ(errorOf(environment, "{% extends %}"), "'extends' takes one argument, the template file to be extended");
    EXPECT_EQ(errorOf(environment, "{% extends \"base\" %}{% extends \"base\" %}"),
              "'extends' cannot appear more than once in the same template");
    EXPECT_EQ(errorOf(environment, "{% block %}{% endblock %}"), "'block' tag takes one argument, the block name");
    EXPECT_EQ(errorOf(environment, "{% block a b %}{% endblock %}"), "'block' tag takes one argument, the block name");
    EXPECT_EQ(errorOf(environment, "{% block a %}"), "`endblock` was not found.");
}

class FileSystemLoaderTest : public ::testing::Test {
protected:
    void SetUp() override {
        root = std::filesystem::temp_directory_path() / ("tintwork-template-" + std::to_string(::getpid()));
        std::filesystem::create_directories(root / "templates" / "sub");
        write(root / "templates" / "page.stencil", "Hello {{ name }}");
        write(root / "templates" / "sub" / "part.stencil", "part");
        write(root / "secret.txt", "secret");
    }
    void TearDown() override { std::filesystem::remove_all(root); }

    static void write(const std::filesystem::path& path, const std::string& text) { std::ofstream(path) << text; }

    std::filesystem::path root;
};

TEST_F(FileSystemLoaderTest, LoadsNamesInsideItsDirectories) {
    auto loader = std::make_shared<const FileSystemLoader>(std::vector<std::filesystem::path>{root / "templates"});
    Environment environment(loader);
    EXPECT_EQ(environment.renderTemplateNamed("page.stencil", Map{{"name", "you"}}), "Hello you");
    EXPECT_EQ(environment.renderTemplate("{% include \"sub/part.stencil\" %}"), "part");
    EXPECT_EQ(environment.loadTemplate("page.stencil"), environment.loadTemplate("page.stencil"));
    EXPECT_EQ(environment.loadTemplate(std::vector<std::string>{"none", "sub/part.stencil"})->name, "sub/part.stencil");
}

TEST_F(FileSystemLoaderTest, SearchesItsDirectoriesInOrder) {
    std::filesystem::create_directories(root / "second");
    write(root / "second" / "page.stencil", "second page");
    write(root / "second" / "only.stencil", "only in second");
    auto loader = std::make_shared<const FileSystemLoader>(
        std::vector<std::filesystem::path>{root / "templates", root / "second"});
    Environment environment(loader);
    EXPECT_EQ(environment.renderTemplateNamed("page.stencil", Map{{"name", "x"}}), "Hello x");
    EXPECT_EQ(environment.renderTemplateNamed("only.stencil"), "only in second");
    EXPECT_EQ(loader->description(),
              "FileSystemLoader([\"" + (root / "templates").string() + "\", \"" + (root / "second").string() + "\"])");
}

TEST_F(FileSystemLoaderTest, RefusesNamesLeavingItsDirectories) {
    auto loader = std::make_shared<const FileSystemLoader>(std::vector<std::filesystem::path>{root / "templates"});
    Environment environment(loader);
    EXPECT_THROW(environment.loadTemplate("../secret.txt"), SuspiciousFileOperation);
    EXPECT_THROW(environment.loadTemplate("sub/../../secret.txt"), SuspiciousFileOperation);
    EXPECT_THROW(environment.loadTemplate((root / "secret.txt").string()), SuspiciousFileOperation);
    try {
        environment.loadTemplate("missing.stencil");
        FAIL();
    } catch (const TemplateDoesNotExist& error) {
        EXPECT_EQ(std::string(error.what()), "Template named `missing.stencil` does not exist in loader FileSystemLoader([\"" +
                                                 (root / "templates").string() + "\"])");
    }
}

TEST(Extension, RegistersCustomTagsAndFilters) {
    auto extension = std::make_shared<Extension>();
    extension->registerSimpleTag("hello", [](Context& context) { return "hi " + context["name"].description(); });
    extension->registerTag("shout", [](TokenParser& parser, const Token& token) -> NodePtr {
        // Reads its argument as a variable, like the exporter's tags.
        auto variable = std::make_shared<Variable>(token.components().size() > 1 ? token.components()[1] : "");
        return std::make_shared<SimpleNode>(
            [variable](Context& context) { return variable->resolve(context).description() + "!"; }, token);
        (void)parser;
    });
    extension->registerFilter("double", [](const Value& value) { return Value(value.description() + value.description()); });
    extension->registerFilter("lowercase", [](const Value&) { return Value("replaced"); });
    Environment environment(nullptr, {extension});
    EXPECT_EQ(environment.renderTemplate("{% hello %} {% shout name %} {{ name|double }} {{ name|lowercase }}",
                                         Map{{"name", "Bo"}}),
              "hi Bo Bo! BoBo replaced");
    EXPECT_EQ(errorOf(environment, "{{ x|doubel }}"), "Unknown filter 'doubel'. Found similar filters: 'double'");
}

TEST(Extension, CustomBlockTagsParseTheirBody) {
    // A tag with an end tag: renders its body twice.
    auto extension = std::make_shared<Extension>();
    extension->registerTag("twice", [](TokenParser& parser, const Token& token) -> NodePtr {
        std::vector<NodePtr> body = parser.parse(TokenParser::until({"endtwice"}));
        if (!parser.nextToken()) {
            throw TemplateSyntaxError("`endtwice` was not found.");
        }
        return std::make_shared<SimpleNode>(
            [body](Context& context) { return renderNodes(body, context) + renderNodes(body, context); }, token);
    });
    Environment environment(nullptr, {extension});
    EXPECT_EQ(environment.renderTemplate("{% twice %}[{{ x }}]{% endtwice %}", Map{{"x", 1}}), "[1][1]");
    EXPECT_EQ(errorOf(environment, "{% twice %}x"), "`endtwice` was not found.");
    EXPECT_EQ(errorOf(environment, "{% for x in xs %}{% twice %}{% break %}{% endtwice %}{% endfor %}"), "no error");
}

TEST(Environment, ParsesOnceAndRendersMany) {
    Environment environment;
    auto parsed = environment.templateFromString("{{ n }}");
    EXPECT_EQ(parsed->render(Map{{"n", 1}}), "1");
    EXPECT_EQ(parsed->render(Map{{"n", 2}}), "2");
}

TEST(Environment, RendersCssLikeTemplate) {
    auto colour = [](std::string name, std::string hex) {
        return Map{{"name", std::move(name)}, {"colorItem", Map{{"color", Map{{"light", std::move(hex)}}}}}};
    };
    Map context{{"items", List{colour("primary-blue", "#0000ff"), Map{{"name", "gap"}, {"number", Map{}}},
                               colour("text", "#111111")}},
                {"exportFileName", "colors"}};
    const std::string css = "/* {{ exportFileName }} */\n"
                            ":root {\n"
                            "{% for item in items where item.colorItem %}\n"
                            "  --{{ item.name }}: {{ item.colorItem.color.light }};\n"
                            "{% endfor %}\n"
                            "}\n";
    Environment environment(nullptr, {}, TrimBehaviour::smart());
    EXPECT_EQ(environment.renderTemplate(css, context),
              "/* colors */\n:root {\n  --primary-blue: #0000ff;\n  --text: #111111;\n}\n");
}

TEST(Environment, RendersSwiftLikeTemplate) {
    Map context{{"items", List{Map{{"name", "accent"}, {"kind", "color"}}, Map{{"name", "spacing"}, {"kind", "number"}},
                               Map{{"name", "title"}, {"kind", "string"}}}}};
    const std::string swift =
        "import SwiftUI\n\n"
        "public enum Tokens {\n"
        "{% for item in items %}\n"
        "    {% if item.kind == \"color\" %}\n"
        "    public static let {{ item.name }} = Color(\"{{ item.name|capitalize }}\")\n"
        "    {% elif item.kind == \"number\" %}\n"
        "    public static let {{ item.name }}: CGFloat = {{ forloop.counter }}\n"
        "    {% else %}\n"
        "    // {{ item.name }} is not exported\n"
        "    {% endif %}\n"
        "{% endfor %}\n"
        "}\n";
    Environment environment(nullptr, {}, TrimBehaviour::smart());
    EXPECT_EQ(environment.renderTemplate(swift, context),
              "import SwiftUI\n\npublic enum Tokens {\n"
              "    public static let accent = Color(\"Accent\")\n"
              "    public static let spacing: CGFloat = 2\n"
              "    // title is not exported\n"
              "}\n");
}

TEST(Environment, RunawayLoopsStopWithAnError) {
    Environment environment;
    environment.renderStepLimit = 100'000;
    std::string error =
        errorOf(environment, "{% for a in 1...999999 %}{% for b in 1...999999 %}x{% endfor %}{% endfor %}");
    EXPECT_EQ(error, "Rendering stopped after 100000 steps");
    // Building ranges and visiting elements count too, with or without a body.
    EXPECT_EQ(errorOf(environment, "{% for a in 1...999 %}{% if 5 in 0...999999 %}{% endif %}{% endfor %}"),
              "Rendering stopped after 100000 steps");
    EXPECT_EQ(errorOf(environment, "{% for a in 1...999 %}{% for b in 1...999 %}{% endfor %}{% endfor %}"),
              "Rendering stopped after 100000 steps");
    EXPECT_EQ(Environment().renderStepLimit, 50'000'000u);
}

TEST(Environment, DeepNestingIsRefused) {
    std::string deep;
    for (int index = 0; index < 1000; ++index) {
        deep += "{% if true %}";
    }
    EXPECT_NE(errorOf(deep).find("nested more than"), std::string::npos);
    EXPECT_NE(errorOf("{% if " + std::string(5000, '(') + "a %}{% endif %}").find("nested too deeply"),
              std::string::npos);
    std::string nots;
    for (int index = 0; index < 5000; ++index) {
        nots += "not ";
    }
    EXPECT_NE(errorOf("{% if " + nots + "a %}{% endif %}").find("nested too deeply"), std::string::npos);
}

}  // namespace
}  // namespace tintwork::stencil
