#pragma once
// The exporter's own template tags: colours, light-dark pairs, shadows and code-safe
// names in the output languages. A tag that can't do its job renders a short English
// message into the output instead of failing.

#include <array>
#include <string>
#include <string_view>

#include "colour/ColorConverter.h"
#include "export/TemplateRecords.h"

namespace tintwork {

namespace stencil {
class Extension;
}

// The language of a shadow tag.
enum class ColorFormatType { swift, uiKit, appKit, kotlin };

// The failure texts the tags render.
inline constexpr std::string_view colorRenderingFailedText = "Rendering color failed";
inline constexpr std::string_view lightDarkFailedText = "light-dark formatting failed";
inline constexpr std::string_view lightDarkLightConversionText = "light-dark unable to convert light color to ";
inline constexpr std::string_view lightDarkDarkConversionText = "light-dark unable to convert dark color to ";
inline constexpr std::string_view shadowFailedText = "Formatting shadow failed";
inline constexpr std::string_view shadowColorFailedText = "Formatting shadow color failed";
inline constexpr std::string_view nameFailedText = "Formatting name failed";

// Names of the 15 colour tags with the format each prints.
struct ColorTagName {
    std::string_view tag;
    ColorFormat format;
};
extern const std::array<ColorTagName, 15> colorTagNames;

// The format of a lightDark format word, compared lower-cased: "csshex", "cssrgb",
// "cssoklch"; anything else gives cssColor.
ColorFormat lightDarkFormat(std::string_view word);

// The tag texts; a null argument stands for an argument that is missing or of another type.
std::string formatColorTag(const TemplateRGBAColor* color, ColorFormat format);
std::string formatLightDarkTag(const TemplateRGBAColor* light, const TemplateRGBAColor* dark, ColorFormat format);
std::string formatCSSBoxShadowTag(const TemplateShadow* shadow);
std::string formatTintworkShadowTag(const TemplateShadow* shadow, ColorFormatType type);
std::string formatCodeSafeNameTag(const std::string* name);

// Registers all 22 exporter tags on a template extension, and the output-language
// escape filters of OutputEscapes.h.
void registerExporterTags(stencil::Extension& extension);

}  // namespace tintwork
