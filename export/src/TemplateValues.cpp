#include "export/TemplateValues.h"

#include <array>
#include <string>
#include <string_view>

namespace tintwork {

using stencil::Value;

namespace {

// A record that reads the fields of a C++ struct it shares ownership of.
template <typename T>
class StructRecord : public stencil::Record {
public:
    explicit StructRecord(std::shared_ptr<const T> shared) : data(std::move(shared)) {}
    std::optional<Value> field(std::string_view name) const override;
    std::vector<std::string> fieldNames() const override;
    std::string typeName() const override;

    std::shared_ptr<const T> data;
};

// A member of the shared struct, kept alive by the same owner.
template <typename Owner, typename Member>
std::shared_ptr<const Member> member(const std::shared_ptr<const Owner>& owner, const Member& value) {
    return std::shared_ptr<const Member>(owner, &value);
}

template <typename T>
Value recordValue(std::shared_ptr<const T> data) {
    return Value(std::make_shared<const StructRecord<T>>(std::move(data)));
}

// Optional members: the record, or null when absent.
template <typename Owner, typename Member>
Value optionalRecord(const std::shared_ptr<const Owner>& owner, const std::optional<Member>& value) {
    return value ? recordValue(member(owner, *value)) : Value();
}

template <typename Owner, typename Member>
Value recordList(const std::shared_ptr<const Owner>& owner, const std::vector<Member>& values) {
    stencil::List list;
    list.reserve(values.size());
    for (const auto& value : values) {
        list.push_back(recordValue(member(owner, value)));
    }
    return Value(std::move(list));
}

template <typename T>
Value plainValue(const T& value) {
    return Value(value);
}

template <typename T>
Value optionalPlain(const std::optional<T>& value) {
    return value ? plainValue(*value) : Value();
}

// Field tables, one per record type, in the records' declared order.

constexpr std::array<std::string_view, 4> variantNames = {"light", "highContrast", "dark", "darkHighContrast"};

template <typename Owner, typename T>
std::optional<Value> themedRecordField(const std::shared_ptr<const Owner>& owner, const TemplateThemed<T>& themed,
                                       std::string_view name) {
    if (name == "light") {
        return recordValue(member(owner, themed.light));
    }
    if (name == "highContrast") {
        return optionalRecord(owner, themed.highContrast);
    }
    if (name == "dark") {
        return optionalRecord(owner, themed.dark);
    }
    if (name == "darkHighContrast") {
        return optionalRecord(owner, themed.darkHighContrast);
    }
    return std::nullopt;
}

template <typename T>
std::optional<Value> themedPlainField(const TemplateThemed<T>& themed, std::string_view name) {
    if (name == "light") {
        return plainValue(themed.light);
    }
    if (name == "highContrast") {
        return optionalPlain(themed.highContrast);
    }
    if (name == "dark") {
        return optionalPlain(themed.dark);
    }
    if (name == "darkHighContrast") {
        return optionalPlain(themed.darkHighContrast);
    }
    return std::nullopt;
}

std::vector<std::string> names(std::initializer_list<std::string_view> list) {
    return {list.begin(), list.end()};
}

}  // namespace

std::string_view templateColorSpaceName(TemplateColorSpace space) {
    switch (space) {
        case TemplateColorSpace::sRGB: return "sRGB";
        case TemplateColorSpace::displayP3: return "displayP3";
        case TemplateColorSpace::extendedSRGB: return "extendedSRGB";
    }
    return "displayP3";
}

// TemplateRGBAColor
template <>
std::optional<Value> StructRecord<TemplateRGBAColor>::field(std::string_view name) const {
    if (name == "red") {
        return Value(data->red);
    }
    if (name == "green") {
        return Value(data->green);
    }
    if (name == "blue") {
        return Value(data->blue);
    }
    if (name == "alpha") {
        return Value(data->alpha);
    }
    if (name == "colorSpace") {
        return Value(templateColorSpaceName(data->colorSpace));
    }
    return std::nullopt;
}
template <>
std::vector<std::string> StructRecord<TemplateRGBAColor>::fieldNames() const {
    return names({"red", "green", "blue", "alpha", "colorSpace"});
}
template <>
std::string StructRecord<TemplateRGBAColor>::typeName() const {
    return "TemplateRGBAColor";
}

// TemplateShadow
template <>
std::optional<Value> StructRecord<TemplateShadow>::field(std::string_view name) const {
    if (name == "x") {
        return Value(data->x);
    }
    if (name == "y") {
        return Value(data->y);
    }
    if (name == "blur") {
        return Value(data->blur);
    }
    if (name == "spread") {
        return Value(data->spread);
    }
    if (name == "color") {
        return recordValue(member(data, data->color));
    }
    return std::nullopt;
}
template <>
std::vector<std::string> StructRecord<TemplateShadow>::fieldNames() const {
    return names({"x", "y", "blur", "spread", "color"});
}
template <>
std::string StructRecord<TemplateShadow>::typeName() const {
    return "TemplateShadow";
}

// TemplateThemedColor
template <>
std::optional<Value> StructRecord<TemplateThemedColor>::field(std::string_view name) const {
    if (name == "name") {
        return optionalPlain(data->name);
    }
    return themedRecordField(data, *data, name);
}
template <>
std::vector<std::string> StructRecord<TemplateThemedColor>::fieldNames() const {
    return names({"light", "highContrast", "dark", "darkHighContrast", "name"});
}
template <>
std::string StructRecord<TemplateThemedColor>::typeName() const {
    return "TemplateThemedColor";
}

// TemplateThemedShadow
template <>
std::optional<Value> StructRecord<TemplateThemedShadow>::field(std::string_view name) const {
    if (name == "name") {
        return optionalPlain(data->name);
    }
    return themedRecordField(data, *data, name);
}
template <>
std::vector<std::string> StructRecord<TemplateThemedShadow>::fieldNames() const {
    return names({"light", "highContrast", "dark", "darkHighContrast", "name"});
}
template <>
std::string StructRecord<TemplateThemedShadow>::typeName() const {
    return "TemplateThemedShadow";
}

// TemplateThemedString, TemplateThemedNumber, TemplateThemedBoolean
template <>
std::optional<Value> StructRecord<TemplateThemedString>::field(std::string_view name) const {
    return themedPlainField(*data, name);
}
template <>
std::vector<std::string> StructRecord<TemplateThemedString>::fieldNames() const {
    return {variantNames.begin(), variantNames.end()};
}
template <>
std::string StructRecord<TemplateThemedString>::typeName() const {
    return "TemplateThemedString";
}
template <>
std::optional<Value> StructRecord<TemplateThemedNumber>::field(std::string_view name) const {
    return themedPlainField(*data, name);
}
template <>
std::vector<std::string> StructRecord<TemplateThemedNumber>::fieldNames() const {
    return {variantNames.begin(), variantNames.end()};
}
template <>
std::string StructRecord<TemplateThemedNumber>::typeName() const {
    return "TemplateThemedNumber";
}
template <>
std::optional<Value> StructRecord<TemplateThemedBoolean>::field(std::string_view name) const {
    return themedPlainField(*data, name);
}
template <>
std::vector<std::string> StructRecord<TemplateThemedBoolean>::fieldNames() const {
    return {variantNames.begin(), variantNames.end()};
}
template <>
std::string StructRecord<TemplateThemedBoolean>::typeName() const {
    return "TemplateThemedBoolean";
}

// The item wrappers.
template <>
std::optional<Value> StructRecord<TemplateColorItem>::field(std::string_view name) const {
    if (name == "color") {
        return recordValue(member(data, data->color));
    }
    return std::nullopt;
}
template <>
std::vector<std::string> StructRecord<TemplateColorItem>::fieldNames() const {
    return names({"color"});
}
template <>
std::string StructRecord<TemplateColorItem>::typeName() const {
    return "TemplateColorItem";
}
template <>
std::optional<Value> StructRecord<TemplateColorSetItem>::field(std::string_view name) const {
    if (name == "colors") {
        return recordList(data, data->colors);
    }
    return std::nullopt;
}
template <>
std::vector<std::string> StructRecord<TemplateColorSetItem>::fieldNames() const {
    return names({"colors"});
}
template <>
std::string StructRecord<TemplateColorSetItem>::typeName() const {
    return "TemplateColorSetItem";
}
template <>
std::optional<Value> StructRecord<TemplateNumberItem>::field(std::string_view name) const {
    if (name == "value") {
        return recordValue(member(data, data->value));
    }
    return std::nullopt;
}
template <>
std::vector<std::string> StructRecord<TemplateNumberItem>::fieldNames() const {
    return names({"value"});
}
template <>
std::string StructRecord<TemplateNumberItem>::typeName() const {
    return "TemplateNumberItem";
}
template <>
std::optional<Value> StructRecord<TemplateBooleanItem>::field(std::string_view name) const {
    if (name == "value") {
        return recordValue(member(data, data->value));
    }
    return std::nullopt;
}
template <>
std::vector<std::string> StructRecord<TemplateBooleanItem>::fieldNames() const {
    return names({"value"});
}
template <>
std::string StructRecord<TemplateBooleanItem>::typeName() const {
    return "TemplateBooleanItem";
}
template <>
std::optional<Value> StructRecord<TemplateStringItem>::field(std::string_view name) const {
    if (name == "value") {
        return recordValue(member(data, data->value));
    }
    return std::nullopt;
}
template <>
std::vector<std::string> StructRecord<TemplateStringItem>::fieldNames() const {
    return names({"value"});
}
template <>
std::string StructRecord<TemplateStringItem>::typeName() const {
    return "TemplateStringItem";
}
template <>
std::optional<Value> StructRecord<TemplateShadowItem>::field(std::string_view name) const {
    if (name == "shadow") {
        return recordValue(member(data, data->shadow));
    }
    return std::nullopt;
}
template <>
std::vector<std::string> StructRecord<TemplateShadowItem>::fieldNames() const {
    return names({"shadow"});
}
template <>
std::string StructRecord<TemplateShadowItem>::typeName() const {
    return "TemplateShadowItem";
}
template <>
std::optional<Value> StructRecord<TemplateShadowSetItem>::field(std::string_view name) const {
    if (name == "shadows") {
        return recordList(data, data->shadows);
    }
    return std::nullopt;
}
template <>
std::vector<std::string> StructRecord<TemplateShadowSetItem>::fieldNames() const {
    return names({"shadows"});
}
template <>
std::string StructRecord<TemplateShadowSetItem>::typeName() const {
    return "TemplateShadowSetItem";
}

// TemplateItem
template <>
std::optional<Value> StructRecord<TemplateItem>::field(std::string_view name) const {
    if (name == "name") {
        return Value(data->name);
    }
    if (name == "colorItem") {
        return optionalRecord(data, data->colorItem);
    }
    if (name == "colorSet") {
        return optionalRecord(data, data->colorSet);
    }
    if (name == "number") {
        return optionalRecord(data, data->number);
    }
    if (name == "boolean") {
        return optionalRecord(data, data->boolean);
    }
    if (name == "string") {
        return optionalRecord(data, data->string);
    }
    if (name == "shadowItem") {
        return optionalRecord(data, data->shadowItem);
    }
    if (name == "shadowSet") {
        return optionalRecord(data, data->shadowSet);
    }
    return std::nullopt;
}
template <>
std::vector<std::string> StructRecord<TemplateItem>::fieldNames() const {
    return names({"name", "colorItem", "colorSet", "number", "boolean", "string", "shadowItem", "shadowSet"});
}
template <>
std::string StructRecord<TemplateItem>::typeName() const {
    return "TemplateItem";
}

Value templateItemsValue(std::shared_ptr<const std::vector<TemplateItem>> items) {
    return recordList(items, *items);
}

Value templateValue(std::shared_ptr<const TemplateRGBAColor> color) {
    return recordValue(std::move(color));
}

Value templateValue(std::shared_ptr<const TemplateShadow> shadow) {
    return recordValue(std::move(shadow));
}

const TemplateRGBAColor* templateRGBAColor(const Value& value) {
    const auto* record = dynamic_cast<const StructRecord<TemplateRGBAColor>*>(value.asRecord());
    return record ? record->data.get() : nullptr;
}

const TemplateShadow* templateShadow(const Value& value) {
    const auto* record = dynamic_cast<const StructRecord<TemplateShadow>*>(value.asRecord());
    return record ? record->data.get() : nullptr;
}

}  // namespace tintwork
