#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <string>

#include "KiwiFixtures.h"
#include "colour/FatalError.h"
#include "import/Kiwi.h"

namespace tintwork {
namespace {

using testing::KiwiTypeDefinition;
using testing::KiwiWriter;

std::string bytesOf(std::initializer_list<unsigned> values) {
    std::string bytes;
    for (unsigned value : values) {
        bytes.push_back(static_cast<char>(value));
    }
    return bytes;
}

// A reader over bytes of its own.
struct OwnedReader {
    explicit OwnedReader(std::string data) : bytes(std::move(data)), reader(bytes) {}
    OwnedReader(const OwnedReader&) = delete;
    OwnedReader& operator=(const OwnedReader&) = delete;
    KiwiReader* operator->() { return &reader; }

    std::string bytes;
    KiwiReader reader;
};

std::uint32_t varUInt(const std::string& bytes, std::size_t* consumed = nullptr) {
    KiwiReader reader(bytes);
    const std::uint32_t value = reader.readVarUInt();
    if (consumed != nullptr) {
        *consumed = reader.offset();
    }
    return value;
}

std::string errorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const KiwiError& error) {
        return error.message;
    }
    return "(no error)";
}

TEST(KiwiReader, ReadsVariableLengthIntegersAtTheirBoundaries) {
    std::size_t consumed = 0;
    EXPECT_EQ(varUInt(bytesOf({0x00})), 0u);
    EXPECT_EQ(varUInt(bytesOf({0x7F})), 127u);
    EXPECT_EQ(varUInt(bytesOf({0x80, 0x01})), 128u);
    EXPECT_EQ(varUInt(bytesOf({0xFF, 0x7F})), 16383u);
    EXPECT_EQ(varUInt(bytesOf({0xFF, 0xFF, 0xFF, 0xFF, 0x0F}), &consumed), 4294967295u);
    EXPECT_EQ(consumed, 5u);
    // Bits past 32 are lost; a set top bit on the fifth byte takes a sixth, which is skipped.
    EXPECT_EQ(varUInt(bytesOf({0xFF, 0xFF, 0xFF, 0xFF, 0x7F})), 4294967295u);
    EXPECT_EQ(varUInt(bytesOf({0x80, 0x80, 0x80, 0x80, 0x81, 0x7F, 0x05}), &consumed), 268435456u);
    EXPECT_EQ(consumed, 6u);

    const auto varInt = [](const std::string& bytes) { return KiwiReader(bytes).readVarInt(); };
    EXPECT_EQ(varInt(bytesOf({0})), 0);
    EXPECT_EQ(varInt(bytesOf({1})), -1);
    EXPECT_EQ(varInt(bytesOf({2})), 1);
    EXPECT_EQ(varInt(bytesOf({3})), -2);
    EXPECT_EQ(varInt(bytesOf({0xFE, 0xFF, 0xFF, 0xFF, 0x0F})), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(varInt(bytesOf({0xFF, 0xFF, 0xFF, 0xFF, 0x0F})), std::numeric_limits<std::int32_t>::min());
}

TEST(KiwiReader, ReadsSixtyFourBitIntegersOfUpToTenBytes) {
    for (std::uint64_t value : {std::uint64_t{0}, std::uint64_t{1} << 32, std::uint64_t{18000000000000000000u},
                                std::numeric_limits<std::uint64_t>::max()}) {
        KiwiWriter out;
        out.varUInt(value).byte(0x2A);
        KiwiReader reader(out.bytes);
        EXPECT_EQ(reader.readVarUInt64(), value);
        EXPECT_EQ(reader.readByte(), 0x2A);
    }
    EXPECT_EQ(KiwiWriter().varUInt(std::numeric_limits<std::uint64_t>::max()).bytes.size(), 10u);
    for (std::int64_t value : {std::int64_t{0}, std::int64_t{-1}, std::int64_t{-5000000000},
                               std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
        KiwiWriter out;
        out.varInt(value);
        EXPECT_EQ(KiwiReader(out.bytes).readVarInt64(), value);
    }
}

TEST(KiwiReader, ReadsFloatsWithZeroInOneByte) {
    OwnedReader zero(bytesOf({0x00, 0x2A}));
    EXPECT_EQ(zero->readVarFloat(), 0.0f);
    EXPECT_EQ(zero->offset(), 1u);
    for (float value : {1.0f, -2.5f, 0.1f, 0.9607843160629272f, std::numeric_limits<float>::max(),
                        std::numeric_limits<float>::infinity()}) {
        KiwiWriter out;
        out.varFloat(value);
        ASSERT_EQ(out.bytes.size(), 4u);
        EXPECT_EQ(KiwiReader(out.bytes).readVarFloat(), value);
    }
    // 1.0 has its exponent byte first: 0x7F after the rotation.
    EXPECT_EQ(OwnedReader(bytesOf({0x7F, 0x00, 0x00, 0x00}))->readVarFloat(), 1.0f);
}

TEST(KiwiReader, ReadsStringsAsLatin1) {
    OwnedReader reader(bytesOf({'a', 'b', 0, 0xC3, 0xA9, 0, 0, 0xFF, 0}));
    EXPECT_EQ(reader->readString(), "ab");
    EXPECT_EQ(reader->readString(), "\u00C3\u00A9");  // two characters, not one é
    EXPECT_EQ(reader->readString(), "");
    EXPECT_EQ(reader->readString(), "\u00FF");
    EXPECT_EQ(reader->remaining(), 0u);
    EXPECT_TRUE(OwnedReader(bytesOf({2}))->readBool());
    EXPECT_FALSE(OwnedReader(bytesOf({0}))->readBool());
}

TEST(KiwiReader, StopsAtTheEndOfTheBufferWithAMessage) {
    EXPECT_EQ(errorOf([] { OwnedReader(std::string())->readByte(); }),
              "Kiwi data ends early: no room for a byte at byte 0 of 0");
    EXPECT_EQ(errorOf([] { OwnedReader(bytesOf({0x80, 0x80}))->readVarUInt(); }),
              "Kiwi data ends early: no room for a byte at byte 2 of 2");
    EXPECT_EQ(errorOf([] { OwnedReader(bytesOf({0xFF, 0xFF, 0xFF, 0xFF, 0xFF}))->readVarUInt(); }),
              "Kiwi data ends early: no room for a byte at byte 5 of 5");
    EXPECT_EQ(errorOf([] { OwnedReader(bytesOf({0x7F, 0x00}))->readVarFloat(); }),
              "Kiwi data ends early: no room for a float at byte 1 of 2");
    EXPECT_EQ(errorOf([] { OwnedReader(std::string("abc"))->readString(); }),
              "Kiwi data ends early: no room for the end of a string at byte 0 of 3");
    EXPECT_EQ(errorOf([] { OwnedReader(bytesOf({0xFF, 0xFF, 0xFF}))->readVarUInt64(); }),
              "Kiwi data ends early: no room for a byte at byte 3 of 3");
}

TEST(KiwiSchema, ReadsTypesAndFieldsInFileOrder) {
    EXPECT_TRUE(KiwiSchema(bytesOf({0})).types.empty());
    const KiwiSchema schema(testing::encodeSchema({
        {"Kind", 0, {{"A", 0, false, 3}, {"B", 0, false, 7}}},
        {"Point", 1, {{"y", -5, false, 2}, {"x", -5, false, 1}, {"tags", -6, true, 3}}},
        {"Twice", 2, {{"first", -1, false, 1}, {"second", -3, false, 1}}},
    }));
    ASSERT_EQ(schema.types.size(), 3u);
    EXPECT_EQ(schema.types[0].name, "Kind");
    EXPECT_EQ(schema.types[0].kind, 0);
    EXPECT_EQ(schema.types[0].fields.at(7).name, "B");
    EXPECT_EQ(schema.types[1].fields.at(1).name, "x");
    EXPECT_EQ(schema.types[1].fields.at(1).type, -5);
    EXPECT_TRUE(schema.types[1].fields.at(3).array);
    // A second field with the same value replaces the first.
    ASSERT_EQ(schema.types[2].fields.size(), 1u);
    EXPECT_EQ(schema.types[2].fields.at(1).name, "second");
    EXPECT_EQ(schema.typeIndex("Twice"), 2);
    EXPECT_EQ(schema.typeIndex("Missing"), std::nullopt);
}

TEST(KiwiSchema, RefusesCountsTheBytesCannotHold) {
    EXPECT_EQ(errorOf([] { KiwiSchema(bytesOf({0xFF, 0xFF, 0xFF, 0xFF, 0x0F, 'A', 0, 2, 0})); }),
              "Kiwi schema declares 4294967295 types in 4 bytes");
    EXPECT_EQ(errorOf([] { KiwiSchema(bytesOf({1, 'A', 0, 2, 0x80, 0x80, 0x04})); }),
              "Kiwi type A declares 65536 fields in 0 bytes");
    EXPECT_EQ(errorOf([] { KiwiSchema(bytesOf({1, 'A', 0, 2, 1, 'f', 0, 1, 0})); }),
              "Kiwi data ends early: no room for a byte at byte 9 of 9");
}

// A decoder over the types, reading `data`.
struct Decoding {
    Decoding(const std::vector<KiwiTypeDefinition>& types, std::string bytes)
        : decoder(KiwiSchema(testing::encodeSchema(types))), data(std::move(bytes)), reader(data) {}
    KiwiDecoder decoder;
    std::string data;
    KiwiReader reader;
};

const std::vector<KiwiTypeDefinition> pointTypes = {
    {"Side", 0, {{"LEFT", 0, false, 1}, {"RIGHT", 0, false, 2}}},
    {"Point", 1, {{"y", -3, false, 2}, {"x", -3, false, 1}}},
    {"Shape", 2, {{"name", -6, false, 1}, {"points", 1, true, 2}, {"side", 0, false, 3}, {"flags", -1, true, 4},
                  {"id", -8, false, 5}, {"raw", -2, false, 6}, {"scale", -5, false, 7}, {"count", -4, false, 8},
                  {"child", 2, false, 9}}},
    {"Deep", 1, {{"inner", 3, false, 1}}},
    {"Odd", 5, {}},
};

TEST(KiwiDecoder, DecodesMessagesStructsEnumsAndArrays) {
    KiwiWriter out;
    out.varUInt(1).string("tri");
    out.varUInt(2).varUInt(2).varInt(1).varInt(-2).varInt(300).varInt(4);  // points (x, y) pairs
    out.varUInt(3).varUInt(2);
    out.varUInt(4).varUInt(3).boolean(true).boolean(false).boolean(true);
    out.varUInt(5).varUInt(std::uint64_t{1} << 40);
    out.varUInt(6).byte(200);
    out.varUInt(7).varFloat(0.5f);
    out.varUInt(8).varUInt(7);
    out.varUInt(9).varUInt(3).varUInt(9).varUInt(9).varUInt(0).varUInt(0);  // child: side unknown, an empty child
    out.varUInt(0);
    Decoding decoding(pointTypes, out.bytes);
    const KiwiDictionary shape = decoding.decoder.decodeMessage(decoding.reader, 2);
    EXPECT_EQ(decoding.reader.remaining(), 0u);

    EXPECT_EQ(*shape.find("name")->string(), "tri");
    const KiwiList& points = *shape.find("points")->list();
    ASSERT_EQ(points.size(), 2u);
    // Struct fields are read in ascending order of value, so x comes first.
    EXPECT_EQ(std::get<std::int32_t>(points[0].dictionary()->find("x")->storage), 1);
    EXPECT_EQ(std::get<std::int32_t>(points[0].dictionary()->find("y")->storage), -2);
    EXPECT_EQ(std::get<std::int32_t>(points[1].dictionary()->find("x")->storage), 300);
    EXPECT_EQ(*shape.find("side")->string(), "RIGHT");
    EXPECT_EQ(shape.find("flags")->list()->size(), 3u);
    EXPECT_EQ(std::get<std::uint64_t>(shape.find("id")->storage), std::uint64_t{1} << 40);
    EXPECT_EQ(std::get<std::uint8_t>(shape.find("raw")->storage), 200);
    EXPECT_EQ(shape.find("scale")->number(), 0.5);
    EXPECT_EQ(std::get<std::uint32_t>(shape.find("count")->storage), 7u);
    const KiwiDictionary& child = *shape.find("child")->dictionary();
    EXPECT_TRUE(child.find("side")->isNull());  // 9 names no member
    EXPECT_TRUE(child.find("child")->dictionary()->empty());
}

TEST(KiwiDecoder, ConvertsValuesByTypeNameAndPerArrayElement) {
    KiwiWriter out;
    out.varUInt(2).varUInt(2).varInt(1).varInt(2).varInt(3).varInt(4);
    out.varUInt(1).string("name").varUInt(0);
    Decoding decoding(pointTypes, out.bytes);
    int pointCalls = 0;
    decoding.decoder.setConverter("Point", [&](KiwiValue value) -> KiwiValue {
        ++pointCalls;
        return std::get<std::int32_t>(value.dictionary()->find("x")->storage);
    });
    decoding.decoder.setConverter("string", [](KiwiValue value) -> KiwiValue { return *value.string() + "!"; });
    const KiwiDictionary shape = decoding.decoder.decodeMessage(decoding.reader, 2);
    EXPECT_EQ(pointCalls, 2);
    EXPECT_EQ(std::get<std::int32_t>((*shape.find("points")->list())[1].storage), 3);
    EXPECT_EQ(*shape.find("name")->string(), "name!");
}

TEST(KiwiDecoder, RefusesDataItCannotRead) {
    const auto decode = [](const std::string& bytes, int type = 2) {
        return errorOf([&] {
            Decoding decoding(pointTypes, bytes);
            decoding.decoder.decodeField(decoding.reader, type, false);
        });
    };
    EXPECT_EQ(decode(bytesOf({0})), "(no error)");
    EXPECT_EQ(decode(bytesOf({1, 'a'})), "Kiwi data ends early: no room for the end of a string at byte 1 of 2");
    EXPECT_EQ(decode(bytesOf({10, 0})), "Kiwi message Shape has no field 10 (byte 1)");
    EXPECT_EQ(decode(bytesOf({2, 0xFF, 0xFF, 0x03, 0, 0})),
              "Kiwi array of 65535 elements at byte 4 is longer than the 2 bytes left");
    EXPECT_EQ(decode(bytesOf({0}), 9), "Kiwi type 9 is not in the schema of 5 types");
    // A struct that holds itself never consumes a byte: only the depth bound ends it.
    EXPECT_EQ(errorOf([] {
                  Decoding decoding({{"Loop", 1, {{"self", 0, false, 1}}}}, "");
                  decoding.decoder.decodeStruct(decoding.reader, 0);
              }),
              "Kiwi data nests deeper than 256 levels");
    std::string nested;
    for (int i = 0; i < 300; ++i) {
        nested += bytesOf({9});
    }
    EXPECT_EQ(decode(nested), "Kiwi data nests deeper than 256 levels");
    std::string shallow;
    for (int i = 0; i < 255; ++i) {
        shallow += bytesOf({9});
    }
    EXPECT_EQ(decode(shallow + std::string(256, '\0')), "(no error)");
    // Empty structs take no bytes, so only the value limit bounds an array of them.
    EXPECT_EQ(errorOf([] {
                  Decoding decoding({{"Empty", 1, {}}, {"Many", 2, {{"items", 0, true, 1}}}},
                                    bytesOf({1, 0xE8, 0x07}) + std::string(1000, '\0'));
                  decoding.decoder.setValueLimit(500);
                  decoding.decoder.decodeMessage(decoding.reader, 1);
              }),
              "Kiwi data holds more than 500 values");
}

TEST(KiwiDecoder, StopsTheProgramForUnknownPrimitivesAndKinds) {
    const auto fatal = [](const std::function<void()>& action) -> std::string {
        try {
            action();
        } catch (const FatalError& error) {
            return error.what();
        }
        return "(no error)";
    };
    Decoding decoding(pointTypes, bytesOf({0, 0, 0}));
    EXPECT_EQ(fatal([&] { decoding.decoder.decodeField(decoding.reader, -9, false); }), "Unknown primitive type");
    EXPECT_EQ(fatal([&] { decoding.decoder.decodeField(decoding.reader, 4, false); }), "Unknown type kind");
    EXPECT_EQ(fatal([&] { decoding.decoder.decodeField(decoding.reader, -7, false); }), "(no error)");
}

}  // namespace
}  // namespace tintwork
