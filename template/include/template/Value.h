#pragma once
// The dynamic value that templates read: null, bool, integer, double, string, list,
// map and record. Lists, maps and records are shared and immutable, so copying a
// Value is cheap.

#include <concepts>
#include <functional>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace tintwork::stencil {

class Value;
class Record;
class Context;
class LazyValueWrapper;

using List = std::vector<Value>;
using Map = std::map<std::string, Value, std::less<>>;
using ListPtr = std::shared_ptr<const List>;
using MapPtr = std::shared_ptr<const Map>;
using RecordPtr = std::shared_ptr<const Record>;
using LazyValuePtr = std::shared_ptr<const LazyValueWrapper>;

class Value {
public:
    // The kinds, in the order of the underlying variant.
    enum class Kind { null, boolean, integer, number, string, list, map, record, lazy };

    Value() noexcept = default;
    Value(std::nullptr_t) noexcept {}
    Value(bool value) : storage(value) {}
    template <std::integral T>
        requires(!std::same_as<T, bool> && !std::same_as<T, char>)
    Value(T value) : storage(static_cast<std::int64_t>(value)) {}
    Value(double value) : storage(value) {}
    Value(std::string value) : storage(std::move(value)) {}
    Value(std::string_view value) : storage(std::string(value)) {}
    Value(const char* value) : storage(std::string(value)) {}
    Value(List value);
    Value(Map value);
    Value(ListPtr value) : storage(std::move(value)) {}
    Value(MapPtr value) : storage(std::move(value)) {}
    Value(RecordPtr value) : storage(std::move(value)) {}
    Value(LazyValuePtr value) : storage(std::move(value)) {}
    template <class R>
        requires std::derived_from<R, Record>
    Value(std::shared_ptr<R> record) : storage(RecordPtr(std::move(record))) {}

    Kind kind() const { return static_cast<Kind>(storage.index()); }
    bool isNull() const { return kind() == Kind::null; }
    bool isNumber() const { return kind() == Kind::integer || kind() == Kind::number; }

    // Typed access: null when the value is of another kind.
    const bool* asBool() const { return std::get_if<bool>(&storage); }
    const std::int64_t* asInteger() const { return std::get_if<std::int64_t>(&storage); }
    const double* asDouble() const { return std::get_if<double>(&storage); }
    const std::string* asString() const { return std::get_if<std::string>(&storage); }
    const List* asList() const;
    const Map* asMap() const;
    const Record* asRecord() const;
    const LazyValueWrapper* asLazy() const;
    // The shared record, for a cast to the caller's own record type.
    RecordPtr recordPointer() const;
    // An integer or a double as a double.
    std::optional<double> toDouble() const;

    // The template's truth test: present, not false, a number above zero, a non-empty
    // string, list or map; records are true.
    bool isTruthy() const;
    // The printed form: "" for null, integers without fraction, doubles in shortest
    // round-trip form ("1.0"), true/false, ["a", 1] for lists, ["k": v] for maps.
    std::string description() const;
    // The form inside a list or map: strings quoted, null as nil.
    std::string debugDescription() const;

    friend bool operator==(const Value& lhs, const Value& rhs);

private:
    std::variant<std::monostate, bool, std::int64_t, double, std::string, ListPtr, MapPtr, RecordPtr, LazyValuePtr>
        storage;
};

// A context value computed on first use and then kept; variables resolve it when
// they reach it.
class LazyValueWrapper {
public:
    explicit LazyValueWrapper(std::function<Value(Context&)> function) : closure(std::move(function)) {}
    // The value, computed with the rendering context the first time. A closure that
    // reaches its own value while computing it sees null.
    Value value(Context& context) const;

    const std::function<Value(Context&)> closure;

private:
    mutable std::optional<Value> cachedValue;
    mutable bool evaluating = false;
};

// An object whose fields templates reach by name. Subclass it to expose a C++ struct
// without copying it into a map.
class Record {
public:
    virtual ~Record() = default;
    // The field of that name, or nullopt when the record has none.
    virtual std::optional<Value> field(std::string_view name) const = 0;
    // The stored fields' names in order; used by `for` over a record and by description.
    virtual std::vector<std::string> fieldNames() const { return {}; }
    // The name shown in the printed form.
    virtual std::string typeName() const { return "Record"; }
    // The printed form: TypeName(field: value, ...).
    virtual std::string description() const;
};

// A record made of name/value pairs, for small ad-hoc records.
class FieldsRecord : public Record {
public:
    FieldsRecord(std::string typeName, std::vector<std::pair<std::string, Value>> fields);
    std::optional<Value> field(std::string_view name) const override;
    std::vector<std::string> fieldNames() const override;
    std::string typeName() const override { return name; }

private:
    std::string name;
    std::vector<std::pair<std::string, Value>> fields;
};

// Convenience builders.
inline Value makeList(List values) { return Value(std::move(values)); }
inline Value makeMap(Map values) { return Value(std::move(values)); }

}  // namespace tintwork::stencil
