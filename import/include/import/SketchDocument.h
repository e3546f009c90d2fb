#pragma once
// The records of a Sketch document that the Sketch importer reads. Each stands for a JSON
// object; keys not listed are ignored, and optional fields may be absent or null.

#include <optional>
#include <string_view>
#include <string>
#include <vector>

namespace tintwork {

struct SketchColor {
    double alpha = 1.0;
    double blue = 0.0;
    double green = 0.0;
    double red = 0.0;
};

struct SketchSwatch {
    std::optional<std::string> name;
    std::optional<SketchColor> value;
};

struct SketchSharedSwatches {
    std::optional<std::vector<SketchSwatch>> swatches;  // key "objects"
};

struct SketchPageInfo {
    std::string path;  // key "_ref"
    std::string type;  // key "_class"
};

struct SketchDocument {
    std::vector<SketchPageInfo> pages;
    int colorSpace = 0;  // 0 unmanaged (also when absent), 1 sRGB, 2 Display P3
    std::optional<SketchSharedSwatches> sharedSwatches;
};

struct SketchGradientStop {
    double position = 0.0;  // a fraction from 0 to 1
    std::optional<SketchColor> color;
};

struct SketchGradient {
    std::vector<SketchGradientStop> stops;
};

// A fill or a border.
struct SketchStyleFill {
    std::optional<SketchColor> color;
    std::optional<SketchGradient> gradient;
};
using SketchStyleBorder = SketchStyleFill;

struct SketchShadow {
    std::optional<SketchColor> color;
};

struct SketchStyle {
    std::optional<std::vector<SketchStyleFill>> fills;
    std::optional<std::vector<SketchStyleBorder>> borders;
    std::optional<std::vector<SketchShadow>> shadows;
    std::optional<std::vector<SketchShadow>> innerShadows;
};

struct SketchAttributes {
    std::optional<SketchColor> colorAttribute;  // key "MSAttributedStringColorAttribute"
};

struct SketchTopLevelAttribute {
    std::optional<SketchAttributes> attributes;
    long long length = 0;
};

struct SketchAttributedString {
    std::string content;  // key "string"
    std::optional<std::vector<SketchTopLevelAttribute>> attributes;
};

struct SketchPageLayer {
    std::optional<std::string> type;  // key "_class"
    std::optional<bool> isVisible;
    std::optional<std::string> name;
    std::optional<SketchStyle> style;
    std::optional<std::vector<SketchPageLayer>> layers;
    std::optional<SketchAttributedString> attributedString;
};

struct SketchPage {
    std::optional<std::string> type;  // key "_class"
    std::vector<SketchPageLayer> layers;
};

// Decode the JSON text of "document.json" and of a page; absent when the text is not JSON,
// nests deeper than 256 levels, or lacks a required field or has a field of the wrong type.
std::optional<SketchDocument> decodeSketchDocument(std::string_view text);
std::optional<SketchPage> decodeSketchPage(std::string_view text);

}  // namespace tintwork
