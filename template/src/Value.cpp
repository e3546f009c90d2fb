#include "template/Value.h"

#include <charconv>
#include <cmath>

namespace tintwork::stencil {

Value::Value(List value) : storage(std::make_shared<const List>(std::move(value))) {}

Value::Value(Map value) : storage(std::make_shared<const Map>(std::move(value))) {}

const List* Value::asList() const {
    const auto* list = std::get_if<ListPtr>(&storage);
    return list != nullptr ? list->get() : nullptr;
}

const Map* Value::asMap() const {
    const auto* map = std::get_if<MapPtr>(&storage);
    return map != nullptr ? map->get() : nullptr;
}

const Record* Value::asRecord() const {
    const auto* record = std::get_if<RecordPtr>(&storage);
    return record != nullptr ? record->get() : nullptr;
}

const LazyValueWrapper* Value::asLazy() const {
    const auto* lazy = std::get_if<LazyValuePtr>(&storage);
    return lazy != nullptr ? lazy->get() : nullptr;
}

Value LazyValueWrapper::value(Context& context) const {
    if (cachedValue) {
        return *cachedValue;
    }
    if (evaluating) {
        return Value();
    }
    evaluating = true;
    try {
        cachedValue = closure(context);
    } catch (...) {
        evaluating = false;
        throw;
    }
    evaluating = false;
    return *cachedValue;
}

RecordPtr Value::recordPointer() const {
    const auto* record = std::get_if<RecordPtr>(&storage);
    return record != nullptr ? *record : nullptr;
}

std::optional<double> Value::toDouble() const {
    if (const auto* integer = asInteger()) {
        return static_cast<double>(*integer);
    }
    if (const auto* number = asDouble()) {
        return *number;
    }
    return std::nullopt;
}

bool Value::isTruthy() const {
    switch (kind()) {
    case Kind::null:
        return false;
    case Kind::boolean:
        return *asBool();
    case Kind::integer:
        return *asInteger() > 0;
    case Kind::number:
        return *asDouble() > 0;
    case Kind::string:
        return !asString()->empty();
    case Kind::list:
        return asList() != nullptr && !asList()->empty();
    case Kind::map:
        return asMap() != nullptr && !asMap()->empty();
    case Kind::record:
        return asRecord() != nullptr;
    case Kind::lazy:
        return true;
    }
    return false;
}

namespace {

std::string formatDouble(double value) {
    if (std::isnan(value)) {
        return "nan";
    }
    if (std::isinf(value)) {
        return value < 0 ? "-inf" : "inf";
    }
    // Positional digits from 1e-4 up to 2^53, where every integer is exact; beyond
    // that range the exponent form (1e-05, 1e+16). Both are the shortest digits that
    // read back to the same value.
    double magnitude = std::fabs(value);
    bool positional = magnitude == 0 || (magnitude >= 1e-4 && magnitude < 9007199254740992.0);
    char buffer[400];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value,
                                positional ? std::chars_format::fixed : std::chars_format::scientific);
    std::string text(buffer, result.ptr);
    if (positional && text.find('.') == std::string::npos) {
        text += ".0";
    }
    return text;
}

}  // namespace

std::string Value::description() const {
    switch (kind()) {
    case Kind::null:
        return "";
    case Kind::boolean:
        return *asBool() ? "true" : "false";
    case Kind::integer:
        return std::to_string(*asInteger());
    case Kind::number:
        return formatDouble(*asDouble());
    case Kind::string:
        return *asString();
    case Kind::list: {
        std::string text = "[";
        bool first = true;
        if (const List* list = asList()) {
            for (const Value& element : *list) {
                if (!first) {
                    text += ", ";
                }
                first = false;
                text += element.debugDescription();
            }
        }
        return text + "]";
    }
    case Kind::map: {
        const Map* map = asMap();
        if (map == nullptr || map->empty()) {
            return "[:]";
        }
        std::string text = "[";
        bool first = true;
        for (const auto& [key, element] : *map) {
            if (!first) {
                text += ", ";
            }
            first = false;
            text += Value(key).debugDescription() + ": " + element.debugDescription();
        }
        return text + "]";
    }
    case Kind::record:
        return asRecord() != nullptr ? asRecord()->description() : "";
    case Kind::lazy:
        return "";
    }
    return "";
}

std::string Value::debugDescription() const {
    if (isNull()) {
        return "nil";
    }
    if (const auto* text = asString()) {
        std::string quoted = "\"";
        for (char character : *text) {
            if (character == '"' || character == '\\') {
                quoted += '\\';
            }
            quoted += character;
        }
        return quoted + "\"";
    }
    return description();
}

bool operator==(const Value& lhs, const Value& rhs) {
    if (lhs.isNumber() && rhs.isNumber()) {
        if (lhs.kind() == Value::Kind::integer && rhs.kind() == Value::Kind::integer) {
            return *lhs.asInteger() == *rhs.asInteger();
        }
        return *lhs.toDouble() == *rhs.toDouble();
    }
    if (lhs.kind() != rhs.kind()) {
        return false;
    }
    switch (lhs.kind()) {
    case Value::Kind::null:
        return true;
    case Value::Kind::boolean:
        return *lhs.asBool() == *rhs.asBool();
    case Value::Kind::string:
        return *lhs.asString() == *rhs.asString();
    case Value::Kind::list:
        return *lhs.asList() == *rhs.asList();
    case Value::Kind::map:
        return *lhs.asMap() == *rhs.asMap();
    case Value::Kind::record:
        return lhs.asRecord() == rhs.asRecord();
    case Value::Kind::lazy:
        return lhs.asLazy() == rhs.asLazy();
    default:
        return false;
    }
}

std::string Record::description() const {
    std::string text = typeName() + "(";
    bool first = true;
    for (const std::string& name : fieldNames()) {
        if (!first) {
            text += ", ";
        }
        first = false;
        std::optional<Value> value = field(name);
        text += name + ": " + (value ? value->debugDescription() : "nil");
    }
    return text + ")";
}

FieldsRecord::FieldsRecord(std::string typeName, std::vector<std::pair<std::string, Value>> values)
    : name(std::move(typeName)), fields(std::move(values)) {}

std::optional<Value> FieldsRecord::field(std::string_view fieldName) const {
    for (const auto& [key, value] : fields) {
        if (key == fieldName) {
            return value;
        }
    }
    return std::nullopt;
}

std::vector<std::string> FieldsRecord::fieldNames() const {
    std::vector<std::string> names;
    names.reserve(fields.size());
    for (const auto& entry : fields) {
        names.push_back(entry.first);
    }
    return names;
}

}  // namespace tintwork::stencil
