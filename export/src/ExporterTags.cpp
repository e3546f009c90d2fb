// The exporter's tag nodes and their registration on a template extension.

#include "export/ExporterTags.h"

#include <memory>
#include <optional>

#include "export/OutputEscapes.h"
#include "export/TemplateValues.h"
#include "template/Extension.h"
#include "template/Resolvable.h"
#include "template/TokenParser.h"

namespace tintwork {

namespace {

using stencil::Context;
using stencil::Token;
using stencil::Value;
using VariablePtr = std::shared_ptr<const stencil::Variable>;

// The tag argument at `position` of the token's words, absent when the tag has none.
VariablePtr argument(const Token& token, std::size_t position) {
    const auto& words = token.components();
    if (words.size() <= position) {
        return nullptr;
    }
    try {
        return std::make_shared<const stencil::Variable>(words[position]);
    } catch (...) {
        // A malformed name renders the tag's failure text, like one that resolves to nothing.
        return nullptr;
    }
}

// The word at `position`, or empty.
std::string word(const Token& token, std::size_t position) {
    const auto& words = token.components();
    return words.size() > position ? words[position] : std::string();
}

// Resolves an argument; any failure of the lookup counts as no value.
Value resolved(const VariablePtr& variable, Context& context) {
    if (!variable) {
        return {};
    }
    try {
        return variable->resolve(context);
    } catch (...) {
        return {};
    }
}

class ColorFormatterNode : public stencil::Node {
public:
    ColorFormatterNode(ColorFormat colorFormat, VariablePtr colorVariable, std::optional<Token> tagToken)
        : Node(std::move(tagToken)), format(colorFormat), color(std::move(colorVariable)) {}
    std::string render(Context& context) const override {
        const Value value = resolved(color, context);
        return formatColorTag(templateRGBAColor(value), format);
    }

    ColorFormat format;
    VariablePtr color;
};

class LightDarkFormatterNode : public stencil::Node {
public:
    LightDarkFormatterNode(VariablePtr lightVariable, VariablePtr darkVariable, std::optional<Token> tagToken,
                           ColorFormat colorFormat)
        : Node(std::move(tagToken)),
          lightColor(std::move(lightVariable)),
          darkColor(std::move(darkVariable)),
          format(colorFormat) {}
    std::string render(Context& context) const override {
        const Value light = resolved(lightColor, context);
        const Value dark = resolved(darkColor, context);
        return formatLightDarkTag(templateRGBAColor(light), templateRGBAColor(dark), format);
    }

    VariablePtr lightColor;
    VariablePtr darkColor;
    ColorFormat format;
};

class CSSBoxShadowFormatterNode : public stencil::Node {
public:
    CSSBoxShadowFormatterNode(VariablePtr shadowVariable, std::optional<Token> tagToken)
        : Node(std::move(tagToken)), shadow(std::move(shadowVariable)) {}
    std::string render(Context& context) const override {
        const Value value = resolved(shadow, context);
        return formatCSSBoxShadowTag(templateShadow(value));
    }

    VariablePtr shadow;
};

class TintworkShadowFormatterNode : public stencil::Node {
public:
    TintworkShadowFormatterNode(VariablePtr shadowVariable, std::optional<Token> tagToken, ColorFormatType language)
        : Node(std::move(tagToken)), shadow(std::move(shadowVariable)), type(language) {}
    std::string render(Context& context) const override {
        const Value value = resolved(shadow, context);
        return formatTintworkShadowTag(templateShadow(value), type);
    }

    VariablePtr shadow;
    ColorFormatType type;
};

class CodeNameFormatterNode : public stencil::Node {
public:
    CodeNameFormatterNode(VariablePtr nameVariable, std::optional<Token> tagToken)
        : Node(std::move(tagToken)), name(std::move(nameVariable)) {}
    std::string render(Context& context) const override {
        const Value value = resolved(name, context);
        return formatCodeSafeNameTag(value.asString());
    }

    VariablePtr name;
};

struct ShadowTagName {
    std::string_view tag;
    ColorFormatType type;
};

constexpr std::array<ShadowTagName, 4> tintworkShadowTagNames = {{
    {"shadowAsSwiftUITintworkShadow", ColorFormatType::swift},
    {"shadowAsSwiftAppKitTintworkShadow", ColorFormatType::appKit},
    {"shadowAsSwiftUIKitTintworkShadow", ColorFormatType::uiKit},
    {"shadowAsKotlinTintworkShadow", ColorFormatType::kotlin},
}};

}  // namespace

void registerExporterTags(stencil::Extension& extension) {
    for (const auto& [tag, format] : colorTagNames) {
        extension.registerTag(std::string(tag), [format = format](stencil::TokenParser&, const Token& token) {
            return std::make_shared<const ColorFormatterNode>(format, argument(token, 1), token);
        });
    }
    extension.registerTag("lightDark", [](stencil::TokenParser&, const Token& token) {
        return std::make_shared<const LightDarkFormatterNode>(argument(token, 1), argument(token, 2), token,
                                                              lightDarkFormat(word(token, 3)));
    });
    extension.registerTag("shadowAsCSSBoxShadow", [](stencil::TokenParser&, const Token& token) {
        return std::make_shared<const CSSBoxShadowFormatterNode>(argument(token, 1), token);
    });
    for (const auto& [tag, type] : tintworkShadowTagNames) {
        extension.registerTag(std::string(tag), [type = type](stencil::TokenParser&, const Token& token) {
            return std::make_shared<const TintworkShadowFormatterNode>(argument(token, 1), token, type);
        });
    }
    extension.registerTag("codeSafeName", [](stencil::TokenParser&, const Token& token) {
        return std::make_shared<const CodeNameFormatterNode>(argument(token, 1), token);
    });
    registerOutputEscapeFilters(extension);
}

}  // namespace tintwork
