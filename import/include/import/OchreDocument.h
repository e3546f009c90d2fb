#pragma once
// The drawing documents of the sister product, read into records as far as importing their
// colours needs: constants, materials with colour and gradient layers, and the page tree.

#include <filesystem>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "colour/ColorSpace.h"
#include "colour/ColorValue.h"

namespace tintwork {

// A document that could not be read; the description is the message itself.
class DocumentReadError : public std::runtime_error {
public:
    explicit DocumentReadError(const std::string& text) : std::runtime_error(text), message(text) {}

    std::string message;
};

enum class ExpressionType { value, equation };

// A number, or the text of a formula kept as it stands.
struct OchreDataExpression {
    std::optional<double> value;
    std::optional<std::string> equation;
    ExpressionType type = ExpressionType::value;

    // A number when the whole text (blanks around it aside) is a finite one, otherwise an equation.
    static OchreDataExpression parse(std::string_view text);
    // The constant an equation of the form "{Name}" refers to; nothing for numbers and other formulas.
    std::optional<std::string> constantReference() const;
};

// A colour as a document writes it: a reference to a constant, or four channel expressions
// in a colour space.
struct MaterialColour {
    std::optional<std::string> red;
    std::optional<std::string> green;
    std::optional<std::string> blue;
    std::optional<std::string> alpha;
    std::optional<ColorSpace> colorSpace;
    std::optional<std::string> constantName;
};

enum class DataConstantType { color, value };

struct ConstantColor {
    std::optional<ColorValue> color;
};

struct ConstantValue {
    double value = 0.0;
    std::optional<double> min;
    std::optional<double> max;
    std::optional<double> steps;
};

struct OchreDataConstant {
    std::string name;
    DataConstantType type = DataConstantType::color;
    std::optional<ConstantColor> color;
    std::optional<ConstantValue> value;
};

struct GradientPosition {
    std::optional<OchreDataExpression> x;
    std::optional<OchreDataExpression> y;
    std::optional<OchreDataExpression> z;
};

struct GradientVertex {
    GradientPosition position;
    MaterialColour color;
};

struct MaterialGradient {
    std::vector<GradientVertex> vertices;
};

using MaterialLayerType = std::variant<MaterialColour, MaterialGradient>;

struct OchreDataMaterialLayer {
    std::string id;
    std::string name;
    bool isHidden = false;
    MaterialLayerType layerContent;
};

struct OchreDataMaterial {
    std::string name;
    std::string id;
    bool isShared = false;
    std::vector<OchreDataMaterialLayer> layers;
};

// What a page layer draws; shapes are recognised but their geometry is not read.
enum class LayerType { vectorGroup, star, text, superellipse, polygon, group, rectangle };

struct OchreDataPageLayer {
    std::string id;
    std::string name;
    bool isHidden = false;
    bool isExpanded = false;
    LayerType layerContent = LayerType::group;
    std::optional<std::string> materialId;  // of a vector group
    std::vector<OchreDataPageLayer> layers;
};

struct OchreDataPage {
    std::string id;
    std::string name;
    std::vector<OchreDataPageLayer> layers;
};

struct OchreDocument {
    std::string id;
    std::vector<OchreDataConstant> constants;
    std::vector<OchreDataPage> pages;
    std::vector<OchreDataMaterial> materials;
    double width = 0.0;
    double height = 0.0;
};

// The colour `colour` stands for: its constant's colour, or its channels evaluated (numbers, or
// "{Name}" taking the same channel of a constant colour) in its space (sRGB when it names none).
// Nothing when a constant is missing or a channel is missing or not understood.
std::optional<ColorValue> resolveColour(const MaterialColour& colour, const std::vector<OchreDataConstant>& constants);

class DocumentReader {
public:
    DocumentReader() = default;

    // Reads the file. Throws DocumentReadError: "Unable to read document" for a file that cannot
    // be read or is no XML, "Invalid document structure" without a "document" root with a size.
    OchreDocument read(const std::filesystem::path& url) const;
    // The same from the file's bytes.
    OchreDocument readBytes(std::string_view bytes) const;

    // Receives the reader's diagnostic lines; unset, they go nowhere.
    std::function<void(std::string_view)> diagnostics;

    static constexpr std::uintmax_t maxFileBytes = 256u * 1024u * 1024u;
    // Page layers nested deeper than this are left out.
    static constexpr int maxLayerDepth = 256;
};

}  // namespace tintwork
