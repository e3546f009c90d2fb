// Lexes, parses and renders arbitrary template text against a small context, with a
// loader that also serves the input itself so include and extends can recurse.
#include <cstddef>
#include <cstdint>
#include <string>

#include "template/Environment.h"
#include "template/Errors.h"

using namespace tintwork::stencil;

namespace {

Map fuzzContext() {
    auto record = std::make_shared<FieldsRecord>(
        "TemplateRGBAColor", std::vector<std::pair<std::string, Value>>{{"red", 1.0}, {"green", 0.5}, {"alpha", 1}});
    Map colour{{"name", "primary"}, {"colorItem", Map{{"color", Map{{"light", Value(record)}}}}}};
    return Map{{"items", List{colour, Map{{"name", "gap"}, {"number", 4.5}}}},
               {"exportFileName", "colors"},
               {"n", 3},
               {"text", "a,b\nc"},
               {"flag", true},
               {"map", Map{{"k", "v"}, {"z", List{1, 2}}}}};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    auto loader = std::make_shared<const DictionaryLoader>(std::map<std::string, std::string, std::less<>>{
        {"self", text}, {"base", "<{% block a %}A{% endblock %}{% block b %}B{% endblock %}>"}});
    Environment environment(loader);
    // A smaller work budget than the default keeps each input well inside the
    // fuzzer's time limit under the sanitizers.
    environment.renderStepLimit = 200'000;
    try {
        environment.renderTemplate(text, fuzzContext());
    } catch (const TemplateError& error) {
        // Parse and render failures are documented outcomes; their report works out
        // line, column and excerpt from the token's offset, which must stay in bounds.
        static_cast<void>(SimpleErrorReporter().renderError(error));
    }
    return 0;
}
