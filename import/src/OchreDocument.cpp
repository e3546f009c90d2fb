#include "import/OchreDocument.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

#include <pugixml.hpp>

#include "model/FileIO.h"

namespace tintwork {

namespace {

constexpr const char* unreadableMessage = "Unable to read document";
constexpr const char* invalidStructureMessage = "Invalid document structure";
constexpr const char* constantValueLine = "TODO parse constant value";
// Channels beyond this magnitude cannot be converted or printed sensibly; such a colour is not read.
constexpr double largestComponent = 1e6;

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

// The whole text as a finite double.
std::optional<double> parseNumber(std::string_view text) {
    double value = 0.0;
    const char* end = text.data() + text.size();
    auto [stop, error] = std::from_chars(text.data(), end, value);
    if (text.empty() || error != std::errc() || stop != end || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

// The "xsi:type" of an element: the class of a polymorphic entry.
std::string_view typeOf(const pugi::xml_node& node) {
    return node.attribute("xsi:type").value();
}

bool flag(const pugi::xml_node& node, const char* name) {
    return std::strcmp(node.attribute(name).value(), "1") == 0;
}

// The space a profile name stands for; nothing for names this program does not know.
std::optional<ColorSpace> profileSpace(std::string_view profile) {
    if (profile == "sRGB") {
        return ColorSpace::sRGB;
    }
    if (profile == "DisplayP3") {
        return ColorSpace::displayP3;
    }
    if (profile == "extendedSRGB") {
        return ColorSpace::sRGBExtended;
    }
    return std::nullopt;
}

// Blank-separated components; a "{…}" reference is one component even if its name has blanks.
std::vector<std::string> splitComponents(std::string_view text) {
    std::vector<std::string> components;
    std::size_t position = 0;
    while (position < text.size()) {
        if (isBlank(text[position])) {
            ++position;
            continue;
        }
        std::size_t end = position;
        bool inBraces = false;
        while (end < text.size() && (inBraces || !isBlank(text[end]))) {
            if (text[end] == '{') {
                inBraces = true;
            } else if (text[end] == '}') {
                inBraces = false;
            }
            ++end;
        }
        components.emplace_back(text.substr(position, end - position));
        position = end;
    }
    return components;
}

// A "colour" element, by its class; nothing for a class this program does not know.
std::optional<MaterialColour> readColour(const pugi::xml_node& node) {
    if (!node) {
        return std::nullopt;
    }
    MaterialColour colour;
    const std::string_view type = typeOf(node);
    if (type == "Data.ColourName") {
        colour.constantName = node.attribute("name").value();
        return colour;
    }
    if (type != "Data.Colour") {
        return std::nullopt;
    }
    colour.colorSpace = profileSpace(node.attribute("profile").value());
    std::vector<std::string> components = splitComponents(node.attribute("components").value());
    // Red, green and blue are needed; a missing alpha is opaque.
    if (components.size() == 3 || components.size() == 4) {
        colour.red = components[0];
        colour.green = components[1];
        colour.blue = components[2];
        if (components.size() == 4) {
            colour.alpha = components[3];
        }
    }
    return colour;
}

std::optional<OchreDataExpression> readExpression(const pugi::xml_node& node, const char* name) {
    const pugi::xml_attribute attribute = node.attribute(name);
    if (!attribute) {
        return std::nullopt;
    }
    return OchreDataExpression::parse(attribute.value());
}

std::optional<OchreDataConstant> readConstant(const pugi::xml_node& node,
                                              const std::vector<OchreDataConstant>& earlier,
                                              const std::function<void(std::string_view)>& diagnostics) {
    OchreDataConstant constant;
    constant.name = node.attribute("name").value();
    const std::string_view type = typeOf(node);
    if (type == "Data.ConstantColour") {
        constant.type = DataConstantType::color;
        ConstantColor color;
        if (std::optional<MaterialColour> colour = readColour(node.child("colour"))) {
            // A constant may be written in terms of the constants before it.
            color.color = resolveColour(*colour, earlier);
        }
        constant.color = color;
        return constant;
    }
    if (type == "Data.ConstantValue") {
        // Numeric constants are recognised but their values are not read yet.
        if (diagnostics) {
            diagnostics(constantValueLine);
        }
        constant.type = DataConstantType::value;
        constant.value = ConstantValue{};
        return constant;
    }
    return std::nullopt;
}

std::optional<OchreDataMaterialLayer> readMaterialLayer(const pugi::xml_node& node) {
    OchreDataMaterialLayer layer;
    layer.id = node.attribute("id").value();
    layer.name = node.attribute("name").value();
    layer.isHidden = flag(node, "hidden");
    const pugi::xml_node content = node.child("content");
    const std::string_view type = typeOf(content);
    if (type == "Data.MaterialColourGenerator") {
        layer.layerContent = readColour(content.child("colour")).value_or(MaterialColour{});
        return layer;
    }
    if (type == "Data.MaterialGradientGenerator") {
        MaterialGradient gradient;
        for (const pugi::xml_node& vertexNode : content.child("vertexList").children("vertex")) {
            GradientVertex vertex;
            const pugi::xml_node position = vertexNode.child("position");
            vertex.position = {readExpression(position, "x"), readExpression(position, "y"),
                               readExpression(position, "z")};
            vertex.color = readColour(vertexNode.child("colour")).value_or(MaterialColour{});
            gradient.vertices.push_back(std::move(vertex));
        }
        layer.layerContent = std::move(gradient);
        return layer;
    }
    return std::nullopt;
}

OchreDataMaterial readMaterial(const pugi::xml_node& node) {
    OchreDataMaterial material;
    material.name = node.attribute("name").value();
    material.id = node.attribute("id").value();
    material.isShared = flag(node, "shared");
    for (const pugi::xml_node& layerNode : node.child("layerList").children("layer")) {
        if (std::optional<OchreDataMaterialLayer> layer = readMaterialLayer(layerNode)) {
            material.layers.push_back(std::move(*layer));
        }
    }
    return material;
}

std::optional<LayerType> pageLayerType(std::string_view type) {
    static constexpr std::array<std::pair<std::string_view, LayerType>, 7> types = {{
        {"Data.PageVectorGroup", LayerType::vectorGroup},
        {"Data.PageGroup", LayerType::group},
        {"Data.PagePolygonShape", LayerType::polygon},
        {"Data.PageRectangleShape", LayerType::rectangle},
        {"Data.PageSuperellipseShape", LayerType::superellipse},
        {"Data.PageStarShape", LayerType::star},
        {"Data.PageTextShape", LayerType::text},
    }};
    for (const auto& [name, layerType] : types) {
        if (name == type) {
            return layerType;
        }
    }
    return std::nullopt;
}

// The layers of a "layerList"; a layer of unknown content is left out with its sub-layers.
std::vector<OchreDataPageLayer> readPageLayers(const pugi::xml_node& list, int depth) {
    std::vector<OchreDataPageLayer> layers;
    if (depth > DocumentReader::maxLayerDepth) {
        return layers;
    }
    for (const pugi::xml_node& node : list.children("layer")) {
        const pugi::xml_node content = node.child("content");
        const std::optional<LayerType> type = pageLayerType(typeOf(content));
        if (!type) {
            continue;
        }
        OchreDataPageLayer layer;
        layer.id = node.attribute("id").value();
        layer.name = node.attribute("name").value();
        layer.isHidden = flag(node, "hidden");
        layer.isExpanded = flag(node, "expanded");
        layer.layerContent = *type;
        if (*type == LayerType::vectorGroup) {
            if (const pugi::xml_attribute key = content.attribute("materialKey")) {
                layer.materialId = key.value();
            }
        }
        layer.layers = readPageLayers(node.child("layerList"), depth + 1);
        layers.push_back(std::move(layer));
    }
    return layers;
}

// "800 600", "800,600", "800x600": two numbers with a separator between them.
bool readSize(std::string_view text, OchreDocument& document) {
    text = trimmed(text);
    std::size_t separator = 0;
    while (separator < text.size() && !(isBlank(text[separator]) || text[separator] == ',' ||
                                         text[separator] == 'x' || text[separator] == ';')) {
        ++separator;
    }
    std::size_t second = separator;
    while (second < text.size() &&
           (isBlank(text[second]) || text[second] == ',' || text[second] == 'x' || text[second] == ';')) {
        ++second;
    }
    const std::optional<double> width = parseNumber(text.substr(0, separator));
    const std::optional<double> height = parseNumber(text.substr(second));
    if (separator == second || !width || !height) {
        return false;
    }
    document.width = *width;
    document.height = *height;
    return true;
}

}  // namespace

OchreDataExpression OchreDataExpression::parse(std::string_view text) {
    OchreDataExpression expression;
    if (std::optional<double> number = parseNumber(trimmed(text))) {
        expression.value = number;
        expression.type = ExpressionType::value;
    } else {
        expression.equation = std::string(text);
        expression.type = ExpressionType::equation;
    }
    return expression;
}

std::optional<std::string> OchreDataExpression::constantReference() const {
    if (type != ExpressionType::equation || !equation) {
        return std::nullopt;
    }
    const std::string_view text = trimmed(*equation);
    if (text.size() < 3 || text.front() != '{' || text.back() != '}') {
        return std::nullopt;
    }
    const std::string_view name = text.substr(1, text.size() - 2);
    if (name.find_first_of("{}") != std::string_view::npos) {
        return std::nullopt;
    }
    return std::string(name);
}

std::optional<ColorValue> resolveColour(const MaterialColour& colour, const std::vector<OchreDataConstant>& constants) {
    auto constantColour = [&](const std::string& name) -> std::optional<ColorValue> {
        for (const OchreDataConstant& constant : constants) {
            if (constant.name == name && constant.color && constant.color->color) {
                return constant.color->color;
            }
        }
        return std::nullopt;
    };
    if (colour.constantName) {
        return constantColour(*colour.constantName);
    }
    const ColorEncoding encoding = encodingForSpace(colour.colorSpace.value_or(ColorSpace::sRGB));
    // One channel: a number, or the same channel of a constant colour taken into this space.
    auto channel = [&](const std::optional<std::string>& text, int index) -> std::optional<double> {
        if (!text) {
            return std::nullopt;
        }
        const OchreDataExpression expression = OchreDataExpression::parse(*text);
        if (expression.value) {
            return std::abs(*expression.value) <= largestComponent ? expression.value : std::nullopt;
        }
        const std::optional<std::string> reference = expression.constantReference();
        if (!reference) {
            return std::nullopt;
        }
        const std::optional<ColorValue> referenced = constantColour(*reference);
        const std::optional<ColorValue> inSpace = referenced ? referenced->converted(encoding) : std::nullopt;
        if (!inSpace) {
            return std::nullopt;
        }
        return inSpace->rgbaComponents()[static_cast<std::size_t>(index)];
    };
    const std::optional<double> red = channel(colour.red, 0);
    const std::optional<double> green = channel(colour.green, 1);
    const std::optional<double> blue = channel(colour.blue, 2);
    const std::optional<double> alpha = colour.alpha ? channel(colour.alpha, 3) : std::optional<double>(1.0);
    if (!red || !green || !blue || !alpha) {
        return std::nullopt;
    }
    return ColorValue(encoding, *red, *green, *blue, *alpha);
}

OchreDocument DocumentReader::read(const std::filesystem::path& url) const {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(url, error);
    if (error || size > maxFileBytes) {
        throw DocumentReadError(unreadableMessage);
    }
    std::string bytes;
    try {
        bytes = readFileBytes(url);
    } catch (const FileError&) {
        throw DocumentReadError(unreadableMessage);
    }
    return readBytes(bytes);
}

OchreDocument DocumentReader::readBytes(std::string_view bytes) const {
    pugi::xml_document xml;
    if (!xml.load_buffer(bytes.data(), bytes.size(), pugi::parse_default, pugi::encoding_auto)) {
        throw DocumentReadError(unreadableMessage);
    }
    const pugi::xml_node root = xml.document_element();
    OchreDocument document;
    if (std::strcmp(root.name(), "document") != 0 || !readSize(root.attribute("size").value(), document)) {
        throw DocumentReadError(invalidStructureMessage);
    }
    document.id = root.attribute("id").value();

    for (const pugi::xml_node& node : root.child("constantList").children()) {
        if (node.type() != pugi::node_element) {
            continue;
        }
        if (std::optional<OchreDataConstant> constant = readConstant(node, document.constants, diagnostics)) {
            document.constants.push_back(std::move(*constant));
        }
    }
    for (const pugi::xml_node& node : root.child("materialList").children("material")) {
        document.materials.push_back(readMaterial(node));
    }
    for (const pugi::xml_node& node : root.child("pageList").children("page")) {
        OchreDataPage page;
        page.id = node.attribute("id").value();
        page.name = node.attribute("name").value();
        page.layers = readPageLayers(node.child("layerList"), 1);
        document.pages.push_back(std::move(page));
    }
    return document;
}

}  // namespace tintwork
