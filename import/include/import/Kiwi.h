#pragma once
// Kiwi, a schema-driven binary serialisation whose documents carry their own schema:
// a reader of its primitives, the schema section, and a decoder that walks a message
// by schema into a generic tree of dictionaries, lists and scalars.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "import/ColorImporter.h"

namespace tintwork {

// Kiwi data that cannot be read: it ends early, nests too deeply, or names what its
// schema does not hold. The import stops with this message.
class KiwiError : public DocumentColorParsingError {
public:
    using DocumentColorParsingError::DocumentColorParsingError;
};

// What a type converter turns a decoded value into (a GUID, a matrix, ...).
struct KiwiObject {
    virtual ~KiwiObject() = default;
};

struct KiwiValue;
struct KiwiEntry;
using KiwiList = std::vector<KiwiValue>;

// A decoded message or struct: field name to value, in the order the fields were read.
// Setting a name again replaces its value in place.
class KiwiDictionary {
public:
    const KiwiValue* find(std::string_view name) const;
    void set(std::string name, KiwiValue value);
    std::size_t size() const;
    bool empty() const;
    std::vector<KiwiEntry>::const_iterator begin() const;
    std::vector<KiwiEntry>::const_iterator end() const;

private:
    std::vector<KiwiEntry> entries_;
};

// One dynamically typed decoded value. Null stands for an enum value the schema does not
// name. int64 and uint64 come from the 64-bit integer types of newer schemas.
struct KiwiValue {
    using Storage = std::variant<std::monostate, bool, std::uint8_t, std::int32_t, std::uint32_t, std::int64_t,
                                 std::uint64_t, float, std::string, KiwiList, KiwiDictionary,
                                 std::shared_ptr<const KiwiObject>>;
    Storage storage;

    KiwiValue() = default;
    template <typename T>
        requires(!std::is_same_v<std::decay_t<T>, KiwiValue> && std::is_constructible_v<Storage, T>)
    KiwiValue(T value) : storage(std::move(value)) {}  // implicit, like the variant it wraps

    bool isNull() const { return std::holds_alternative<std::monostate>(storage); }
    const KiwiDictionary* dictionary() const { return std::get_if<KiwiDictionary>(&storage); }
    const KiwiList* list() const { return std::get_if<KiwiList>(&storage); }
    const std::string* string() const { return std::get_if<std::string>(&storage); }
    // The value as a double when it is one of the number kinds (not a boolean).
    std::optional<double> number() const;
    // The converter's result when it is of type T.
    template <typename T>
    const T* object() const {
        const auto* held = std::get_if<std::shared_ptr<const KiwiObject>>(&storage);
        return held != nullptr ? dynamic_cast<const T*>(held->get()) : nullptr;
    }
};

struct KiwiEntry {
    std::string name;
    KiwiValue value;
};

inline std::size_t KiwiDictionary::size() const { return entries_.size(); }
inline bool KiwiDictionary::empty() const { return entries_.empty(); }

// Reads Kiwi primitives from a byte buffer it does not own. Reading past the end
// throws KiwiError; nothing is ever read outside the buffer.
class KiwiReader {
public:
    explicit KiwiReader(std::string_view data) : data_(data) {}
    // The reader would outlive a temporary buffer.
    explicit KiwiReader(std::string&&) = delete;

    std::uint8_t readByte();
    // One byte; any non-zero value is true.
    bool readBool();
    // A variable-length integer of up to five bytes (a set top bit on the fifth makes a
    // sixth byte, which is skipped); bits beyond 32 are lost.
    std::uint32_t readVarUInt();
    // readVarUInt, zigzag-decoded.
    std::int32_t readVarInt();
    // A single zero byte is 0.0; otherwise four bytes, lowest first, rotated right by 9 bits.
    float readVarFloat();
    // Bytes up to a zero byte (consumed), each taken as the Latin-1 character of its value;
    // returned as UTF-8.
    std::string readString();
    // A variable-length integer of up to ten bytes.
    std::uint64_t readVarUInt64();
    // readVarUInt64, zigzag-decoded.
    std::int64_t readVarInt64();

    std::size_t offset() const { return offset_; }
    std::size_t remaining() const { return data_.size() - offset_; }

private:
    [[noreturn]] void failAtEnd(std::string_view what) const;

    std::string_view data_;
    std::size_t offset_ = 0;
};

class KiwiSchema {
public:
    enum class Kind : std::uint8_t { enumeration = 0, structure = 1, message = 2 };

    // Primitive type numbers; schema types are 0 and up.
    static constexpr int boolType = -1;
    static constexpr int byteType = -2;
    static constexpr int intType = -3;
    static constexpr int uintType = -4;
    static constexpr int floatType = -5;
    static constexpr int stringType = -6;
    static constexpr int int64Type = -7;
    static constexpr int uint64Type = -8;

    struct FieldInfo {
        std::string name;
        int type = 0;               // index into types, or a primitive below zero
        bool array = false;
        std::uint32_t value = 0;    // a message's field id, or an enum member's value
    };

    struct TypeInfo {
        std::string name;
        std::uint8_t kind = 0;      // a Kind; other values are kept and refused when decoding
        std::map<std::uint32_t, FieldInfo> fields;  // by value; a repeated value replaces the earlier field
    };

    KiwiSchema() = default;
    // Decodes the schema section in the buffer.
    explicit KiwiSchema(std::string_view bytes);
    // Decodes the schema section at the reader's position, leaving the reader after it.
    explicit KiwiSchema(KiwiReader& reader);

    // The index of the first type of that name.
    std::optional<int> typeIndex(std::string_view name) const;

    std::vector<TypeInfo> types;

private:
    void read(KiwiReader& reader);
};

// Turns a decoded value into another value.
using KiwiConverter = std::function<KiwiValue(KiwiValue)>;

class KiwiDecoder {
public:
    // Messages and structs nest at most this deep.
    static constexpr int maxDepth = 256;
    // By default a decoder builds at most this many values (each takes some tens of bytes),
    // so that data of many tiny values cannot grow a tree without bound.
    static constexpr std::size_t defaultValueLimit = std::size_t{1} << 25;

    explicit KiwiDecoder(KiwiSchema schema);

    // Every value decoded as the type of that name (a schema type or a primitive's name,
    // "bool" to "uint64") goes through the converter; in an array, each element does.
    void setConverter(const std::string& typeName, KiwiConverter converter);

    // Field id, value, ... up to a zero id. An id the type does not have throws KiwiError:
    // its size is unknown, so nothing after it could be read.
    KiwiDictionary decodeMessage(KiwiReader& reader, int typeIndex);
    // Every field in ascending order of value.
    KiwiDictionary decodeStruct(KiwiReader& reader, int typeIndex);
    KiwiValue decodeField(KiwiReader& reader, int type, bool array);

    const KiwiSchema& schema() const { return schema_; }
    // Decoding more values than this, over all calls, throws KiwiError.
    void setValueLimit(std::size_t limit) { valueLimit_ = limit; }

private:
    KiwiValue decodeSingle(KiwiReader& reader, int type);
    KiwiValue decodePrimitive(KiwiReader& reader, int type);
    const KiwiSchema::TypeInfo& typeAt(int typeIndex) const;
    const KiwiConverter* converterFor(int type) const;

    KiwiSchema schema_;
    std::map<std::string, KiwiConverter, std::less<>> typeConverters_;
    std::vector<const KiwiConverter*> schemaConverters_;     // by type index
    std::vector<const KiwiConverter*> primitiveConverters_;  // by -type - 1
    int depth_ = 0;
    std::size_t valueCount_ = 0;
    std::size_t valueLimit_ = defaultValueLimit;
};

}  // namespace tintwork
