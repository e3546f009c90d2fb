#include "import/SketchDocument.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <limits>
#include <stdexcept>

#include "SourceText.h"

namespace tintwork {

namespace {

using nlohmann::json;

constexpr std::size_t maxJsonDepth = 256;

// A record that does not have the shape it is decoded as.
struct ShapeError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The value under `key` when the key is there and not null.
const json* member(const json& object, const char* key) {
    const auto found = object.find(key);
    if (found == object.end() || found->is_null()) {
        return nullptr;
    }
    return &*found;
}

const json& required(const json& object, const char* key) {
    const json* value = member(object, key);
    if (value == nullptr) {
        throw ShapeError(std::string("missing ") + key);
    }
    return *value;
}

const json& asObject(const json& value) {
    if (!value.is_object()) {
        throw ShapeError("not an object");
    }
    return value;
}

double asDouble(const json& value) {
    if (!value.is_number()) {
        throw ShapeError("not a number");
    }
    return value.get<double>();
}

// A whole number; a number with a fraction is no integer.
long long asInteger(const json& value) {
    if (value.is_number_integer()) {
        return value.get<long long>();
    }
    if (value.is_number_unsigned()) {
        throw ShapeError("integer out of range");
    }
    const double number = asDouble(value);
    if (std::trunc(number) != number || std::fabs(number) > 9.0e15) {
        throw ShapeError("not an integer");
    }
    return static_cast<long long>(number);
}

std::string asString(const json& value) {
    if (!value.is_string()) {
        throw ShapeError("not a string");
    }
    return value.get<std::string>();
}

bool asBool(const json& value) {
    if (!value.is_boolean()) {
        throw ShapeError("not a boolean");
    }
    return value.get<bool>();
}

template <typename T, typename Decode>
std::vector<T> asList(const json& value, Decode decode) {
    if (!value.is_array()) {
        throw ShapeError("not a list");
    }
    std::vector<T> list;
    list.reserve(value.size());
    for (const json& element : value) {
        list.push_back(decode(element));
    }
    return list;
}

template <typename T, typename Decode>
std::optional<T> optional(const json& object, const char* key, Decode decode) {
    const json* value = member(object, key);
    if (value == nullptr) {
        return std::nullopt;
    }
    return decode(*value);
}

SketchColor decodeColor(const json& value) {
    asObject(value);
    SketchColor color;
    color.alpha = asDouble(required(value, "alpha"));
    color.blue = asDouble(required(value, "blue"));
    color.green = asDouble(required(value, "green"));
    color.red = asDouble(required(value, "red"));
    return color;
}

SketchGradientStop decodeStop(const json& value) {
    asObject(value);
    SketchGradientStop stop;
    stop.position = asDouble(required(value, "position"));
    stop.color = optional<SketchColor>(value, "color", decodeColor);
    return stop;
}

SketchStyleFill decodeFill(const json& value) {
    asObject(value);
    SketchStyleFill fill;
    fill.color = optional<SketchColor>(value, "color", decodeColor);
    fill.gradient = optional<SketchGradient>(value, "gradient", [](const json& gradient) {
        asObject(gradient);
        return SketchGradient{asList<SketchGradientStop>(required(gradient, "stops"), decodeStop)};
    });
    return fill;
}

SketchShadow decodeShadow(const json& value) {
    asObject(value);
    return SketchShadow{optional<SketchColor>(value, "color", decodeColor)};
}

SketchStyle decodeStyle(const json& value) {
    asObject(value);
    SketchStyle style;
    const auto fills = [](const json& list) { return asList<SketchStyleFill>(list, decodeFill); };
    const auto shadows = [](const json& list) { return asList<SketchShadow>(list, decodeShadow); };
    style.fills = optional<std::vector<SketchStyleFill>>(value, "fills", fills);
    style.borders = optional<std::vector<SketchStyleBorder>>(value, "borders", fills);
    style.shadows = optional<std::vector<SketchShadow>>(value, "shadows", shadows);
    style.innerShadows = optional<std::vector<SketchShadow>>(value, "innerShadows", shadows);
    return style;
}

SketchTopLevelAttribute decodeTopLevelAttribute(const json& value) {
    asObject(value);
    SketchTopLevelAttribute attribute;
    attribute.attributes = optional<SketchAttributes>(value, "attributes", [](const json& attributes) {
        asObject(attributes);
        return SketchAttributes{optional<SketchColor>(attributes, "MSAttributedStringColorAttribute", decodeColor)};
    });
    attribute.length = asInteger(required(value, "length"));
    return attribute;
}

SketchAttributedString decodeAttributedString(const json& value) {
    asObject(value);
    SketchAttributedString text;
    text.content = asString(required(value, "string"));
    text.attributes = optional<std::vector<SketchTopLevelAttribute>>(
        value, "attributes", [](const json& list) { return asList<SketchTopLevelAttribute>(list, decodeTopLevelAttribute); });
    return text;
}

SketchPageLayer decodeLayer(const json& value) {
    asObject(value);
    SketchPageLayer layer;
    layer.type = optional<std::string>(value, "_class", asString);
    layer.isVisible = optional<bool>(value, "isVisible", asBool);
    layer.name = optional<std::string>(value, "name", asString);
    layer.style = optional<SketchStyle>(value, "style", decodeStyle);
    layer.layers = optional<std::vector<SketchPageLayer>>(
        value, "layers", [](const json& list) { return asList<SketchPageLayer>(list, decodeLayer); });
    layer.attributedString = optional<SketchAttributedString>(value, "attributedString", decodeAttributedString);
    return layer;
}

template <typename Decode>
auto decodeText(std::string_view text, Decode decode) -> std::optional<decltype(decode(json()))> {
    if (importing::firstTooDeepBracket(text, maxJsonDepth)) {
        return std::nullopt;
    }
    const json value = json::parse(text, nullptr, false);
    if (value.is_discarded()) {
        return std::nullopt;
    }
    try {
        return decode(value);
    } catch (const ShapeError&) {
        return std::nullopt;
    } catch (const json::exception&) {
        return std::nullopt;
    }
}

}  // namespace

std::optional<SketchDocument> decodeSketchDocument(std::string_view text) {
    return decodeText(text, [](const json& value) {
        asObject(value);
        SketchDocument document;
        document.pages = asList<SketchPageInfo>(required(value, "pages"), [](const json& page) {
            asObject(page);
            return SketchPageInfo{asString(required(page, "_ref")), asString(required(page, "_class"))};
        });
        // Documents written before colour profiles existed have no colour space: unmanaged.
        const long long space = optional<long long>(value, "colorSpace", asInteger).value_or(0);
        document.colorSpace = space >= std::numeric_limits<int>::min() && space <= std::numeric_limits<int>::max()
                                  ? static_cast<int>(space)
                                  : -1;
        document.sharedSwatches = optional<SketchSharedSwatches>(value, "sharedSwatches", [](const json& container) {
            asObject(container);
            return SketchSharedSwatches{optional<std::vector<SketchSwatch>>(container, "objects", [](const json& list) {
                return asList<SketchSwatch>(list, [](const json& swatch) {
                    asObject(swatch);
                    return SketchSwatch{optional<std::string>(swatch, "name", asString),
                                        optional<SketchColor>(swatch, "value", decodeColor)};
                });
            })};
        });
        return document;
    });
}

std::optional<SketchPage> decodeSketchPage(std::string_view text) {
    return decodeText(text, [](const json& value) {
        asObject(value);
        SketchPage page;
        page.type = optional<std::string>(value, "_class", asString);
        page.layers = asList<SketchPageLayer>(required(value, "layers"), decodeLayer);
        return page;
    });
}

}  // namespace tintwork
