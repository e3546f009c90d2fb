#include "import/Kiwi.h"

#include <bit>
#include <cstring>

#include "colour/FatalError.h"

namespace tintwork {

// --- values ---

const KiwiValue* KiwiDictionary::find(std::string_view name) const {
    for (const KiwiEntry& entry : entries_) {
        if (entry.name == name) {
            return &entry.value;
        }
    }
    return nullptr;
}

void KiwiDictionary::set(std::string name, KiwiValue value) {
    for (KiwiEntry& entry : entries_) {
        if (entry.name == name) {
            entry.value = std::move(value);
            return;
        }
    }
    entries_.push_back(KiwiEntry{std::move(name), std::move(value)});
}

std::vector<KiwiEntry>::const_iterator KiwiDictionary::begin() const { return entries_.begin(); }
std::vector<KiwiEntry>::const_iterator KiwiDictionary::end() const { return entries_.end(); }

std::optional<double> KiwiValue::number() const {
    return std::visit(
        [](const auto& held) -> std::optional<double> {
            using T = std::decay_t<decltype(held)>;
            if constexpr (std::is_arithmetic_v<T> && !std::is_same_v<T, bool>) {
                return static_cast<double>(held);
            } else {
                return std::nullopt;
            }
        },
        storage);
}

// --- reader ---

void KiwiReader::failAtEnd(std::string_view what) const {
    throw KiwiError("Kiwi data ends early: no room for " + std::string(what) + " at byte " +
                    std::to_string(offset_) + " of " + std::to_string(data_.size()));
}

std::uint8_t KiwiReader::readByte() {
    if (offset_ >= data_.size()) {
        failAtEnd("a byte");
    }
    return static_cast<std::uint8_t>(data_[offset_++]);
}

bool KiwiReader::readBool() { return readByte() != 0; }

std::uint32_t KiwiReader::readVarUInt() {
    std::uint32_t result = 0;
    for (int shift = 0;; shift += 7) {
        const std::uint8_t byte = readByte();
        result |= static_cast<std::uint32_t>(byte & 0x7F) << shift;
        if ((byte & 0x80) == 0) {
            break;
        }
        if (shift == 28) {
            // A fifth byte with its top bit set: one more byte belongs to the number,
            // but none of its bits fit.
            readByte();
            break;
        }
    }
    return result;
}

std::int32_t KiwiReader::readVarInt() {
    const std::uint32_t value = readVarUInt();
    return static_cast<std::int32_t>((value >> 1) ^ (0u - (value & 1u)));
}

float KiwiReader::readVarFloat() {
    const std::uint8_t first = readByte();
    if (first == 0) {
        return 0.0f;
    }
    if (remaining() < 3) {
        failAtEnd("a float");
    }
    std::uint32_t bits = first;
    bits |= static_cast<std::uint32_t>(readByte()) << 8;
    bits |= static_cast<std::uint32_t>(readByte()) << 16;
    bits |= static_cast<std::uint32_t>(readByte()) << 24;
    // The exponent was moved to the lowest byte so that zero fits in one byte.
    return std::bit_cast<float>(std::rotr(bits, 9));
}

std::string KiwiReader::readString() {
    const std::size_t end = data_.find('\0', offset_);
    if (end == std::string_view::npos) {
        failAtEnd("the end of a string");
    }
    std::string text;
    text.reserve(end - offset_);
    for (; offset_ < end; ++offset_) {
        const auto byte = static_cast<unsigned char>(data_[offset_]);
        if (byte < 0x80) {
            text.push_back(static_cast<char>(byte));
        } else {
            // Latin-1: the byte is the code point.
            text.push_back(static_cast<char>(0xC0 | (byte >> 6)));
            text.push_back(static_cast<char>(0x80 | (byte & 0x3F)));
        }
    }
    ++offset_;
    return text;
}

std::uint64_t KiwiReader::readVarUInt64() {
    std::uint64_t result = 0;
    for (int shift = 0; shift < 64; shift += 7) {
        const std::uint8_t byte = readByte();
        result |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
        if ((byte & 0x80) == 0) {
            break;
        }
    }
    return result;
}

std::int64_t KiwiReader::readVarInt64() {
    const std::uint64_t value = readVarUInt64();
    return static_cast<std::int64_t>((value >> 1) ^ (0u - (value & 1u)));
}

// --- schema ---

KiwiSchema::KiwiSchema(std::string_view bytes) {
    KiwiReader reader(bytes);
    read(reader);
}

KiwiSchema::KiwiSchema(KiwiReader& reader) { read(reader); }

void KiwiSchema::read(KiwiReader& reader) {
    const std::uint32_t typeCount = reader.readVarUInt();
    // A type takes at least three bytes (an empty name, its kind, no fields).
    if (typeCount > reader.remaining() / 3) {
        throw KiwiError("Kiwi schema declares " + std::to_string(typeCount) + " types in " +
                        std::to_string(reader.remaining()) + " bytes");
    }
    types.reserve(typeCount);
    for (std::uint32_t i = 0; i < typeCount; ++i) {
        TypeInfo type;
        type.name = reader.readString();
        type.kind = reader.readByte();
        const std::uint32_t fieldCount = reader.readVarUInt();
        // A field takes at least four bytes.
        if (fieldCount > reader.remaining() / 4) {
            throw KiwiError("Kiwi type " + type.name + " declares " + std::to_string(fieldCount) + " fields in " +
                            std::to_string(reader.remaining()) + " bytes");
        }
        for (std::uint32_t j = 0; j < fieldCount; ++j) {
            FieldInfo field;
            field.name = reader.readString();
            field.type = reader.readVarInt();
            field.array = reader.readByte() != 0;
            field.value = reader.readVarUInt();
            type.fields.insert_or_assign(field.value, std::move(field));
        }
        types.push_back(std::move(type));
    }
}

std::optional<int> KiwiSchema::typeIndex(std::string_view name) const {
    for (std::size_t i = 0; i < types.size(); ++i) {
        if (types[i].name == name) {
            return static_cast<int>(i);
        }
    }
    return std::nullopt;
}

// --- decoder ---

namespace {

constexpr std::string_view primitiveNames[] = {"bool", "byte", "int", "uint", "float", "string", "int64", "uint64"};
constexpr int primitiveCount = static_cast<int>(std::size(primitiveNames));

// Counts one level of message or struct nesting for as long as it lives.
class DepthGuard {
public:
    explicit DepthGuard(int& depth) : depth_(depth) {
        if (++depth_ > KiwiDecoder::maxDepth) {
            --depth_;
            throw KiwiError("Kiwi data nests deeper than " + std::to_string(KiwiDecoder::maxDepth) + " levels");
        }
    }
    ~DepthGuard() { --depth_; }
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;

private:
    int& depth_;
};

}  // namespace

KiwiDecoder::KiwiDecoder(KiwiSchema schema)
    : schema_(std::move(schema)),
      schemaConverters_(schema_.types.size(), nullptr),
      primitiveConverters_(primitiveCount, nullptr) {}

void KiwiDecoder::setConverter(const std::string& typeName, KiwiConverter converter) {
    auto [position, inserted] = typeConverters_.insert_or_assign(typeName, std::move(converter));
    (void)inserted;
    const KiwiConverter* stored = &position->second;
    for (std::size_t i = 0; i < schema_.types.size(); ++i) {
        if (schema_.types[i].name == typeName) {
            schemaConverters_[i] = stored;
        }
    }
    for (int i = 0; i < primitiveCount; ++i) {
        if (primitiveNames[i] == typeName) {
            primitiveConverters_[static_cast<std::size_t>(i)] = stored;
        }
    }
}

const KiwiSchema::TypeInfo& KiwiDecoder::typeAt(int typeIndex) const {
    if (typeIndex < 0 || static_cast<std::size_t>(typeIndex) >= schema_.types.size()) {
        throw KiwiError("Kiwi type " + std::to_string(typeIndex) + " is not in the schema of " +
                        std::to_string(schema_.types.size()) + " types");
    }
    return schema_.types[static_cast<std::size_t>(typeIndex)];
}

const KiwiConverter* KiwiDecoder::converterFor(int type) const {
    if (type >= 0) {
        return static_cast<std::size_t>(type) < schemaConverters_.size()
                   ? schemaConverters_[static_cast<std::size_t>(type)]
                   : nullptr;
    }
    return type >= -primitiveCount ? primitiveConverters_[static_cast<std::size_t>(-type - 1)] : nullptr;
}

KiwiDictionary KiwiDecoder::decodeMessage(KiwiReader& reader, int typeIndex) {
    const KiwiSchema::TypeInfo& type = typeAt(typeIndex);
    DepthGuard guard(depth_);
    KiwiDictionary result;
    for (;;) {
        const std::uint32_t id = reader.readVarUInt();
        if (id == 0) {
            break;
        }
        const auto field = type.fields.find(id);
        if (field == type.fields.end()) {
            throw KiwiError("Kiwi message " + type.name + " has no field " + std::to_string(id) + " (byte " +
                            std::to_string(reader.offset()) + ")");
        }
        result.set(field->second.name, decodeField(reader, field->second.type, field->second.array));
    }
    return result;
}

KiwiDictionary KiwiDecoder::decodeStruct(KiwiReader& reader, int typeIndex) {
    const KiwiSchema::TypeInfo& type = typeAt(typeIndex);
    DepthGuard guard(depth_);
    KiwiDictionary result;
    for (const auto& [value, field] : type.fields) {
        result.set(field.name, decodeField(reader, field.type, field.array));
    }
    return result;
}

KiwiValue KiwiDecoder::decodeField(KiwiReader& reader, int type, bool array) {
    if (!array) {
        return decodeSingle(reader, type);
    }
    const std::uint32_t count = reader.readVarUInt();
    // Every element but those of an empty struct takes a byte at least, so a longer count
    // cannot be real; refusing it keeps a corrupt count from reserving memory.
    if (count > reader.remaining()) {
        throw KiwiError("Kiwi array of " + std::to_string(count) + " elements at byte " +
                        std::to_string(reader.offset()) + " is longer than the " +
                        std::to_string(reader.remaining()) + " bytes left");
    }
    KiwiList elements;
    elements.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        elements.push_back(decodeSingle(reader, type));
    }
    return elements;
}

KiwiValue KiwiDecoder::decodeSingle(KiwiReader& reader, int type) {
    if (++valueCount_ > valueLimit_) {
        throw KiwiError("Kiwi data holds more than " + std::to_string(valueLimit_) + " values");
    }
    KiwiValue value;
    if (type < 0) {
        value = decodePrimitive(reader, type);
    } else {
        const KiwiSchema::TypeInfo& info = typeAt(type);
        switch (info.kind) {
            case static_cast<std::uint8_t>(KiwiSchema::Kind::enumeration): {
                const auto member = info.fields.find(reader.readVarUInt());
                if (member != info.fields.end()) {
                    value = member->second.name;
                }
                break;
            }
            case static_cast<std::uint8_t>(KiwiSchema::Kind::structure):
                value = decodeStruct(reader, type);
                break;
            case static_cast<std::uint8_t>(KiwiSchema::Kind::message):
                value = decodeMessage(reader, type);
                break;
            default:
                throw FatalError("Unknown type kind");
        }
    }
    if (const KiwiConverter* converter = converterFor(type)) {
        return (*converter)(std::move(value));
    }
    return value;
}

KiwiValue KiwiDecoder::decodePrimitive(KiwiReader& reader, int type) {
    switch (type) {
        case KiwiSchema::boolType: return reader.readBool();
        case KiwiSchema::byteType: return reader.readByte();
        case KiwiSchema::intType: return reader.readVarInt();
        case KiwiSchema::uintType: return reader.readVarUInt();
        case KiwiSchema::floatType: return reader.readVarFloat();
        case KiwiSchema::stringType: return reader.readString();
        case KiwiSchema::int64Type: return reader.readVarInt64();
        case KiwiSchema::uint64Type: return reader.readVarUInt64();
        default: throw FatalError("Unknown primitive type");
    }
}

}  // namespace tintwork
