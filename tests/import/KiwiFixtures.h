#pragma once
// Writers for test documents: a Kiwi encoder, Figma canvases with DEFLATE or zstd
// chunks, and ZIP archives. Used by the import tests and the Figma benchmark.

#include <zip.h>
#include <zlib.h>
#include <zstd.h>

#include <array>
#include <bit>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tintwork::testing {

// Kiwi primitives, appended to a byte string.
class KiwiWriter {
public:
    KiwiWriter& byte(std::uint8_t value) {
        bytes.push_back(static_cast<char>(value));
        return *this;
    }
    KiwiWriter& boolean(bool value) { return byte(value ? 1 : 0); }
    KiwiWriter& varUInt(std::uint64_t value) {
        do {
            std::uint8_t next = value & 0x7F;
            value >>= 7;
            byte(value != 0 ? (next | 0x80) : next);
        } while (value != 0);
        return *this;
    }
    KiwiWriter& varInt(std::int64_t value) {
        return varUInt((static_cast<std::uint64_t>(value) << 1) ^ static_cast<std::uint64_t>(value >> 63));
    }
    KiwiWriter& varFloat(float value) {
        const std::uint32_t bits = std::rotl(std::bit_cast<std::uint32_t>(value), 9);
        if ((bits & 0xFF) == 0) {
            return byte(0);
        }
        for (int i = 0; i < 4; ++i) {
            byte(static_cast<std::uint8_t>(bits >> (8 * i)));
        }
        return *this;
    }
    KiwiWriter& string(std::string_view text) {
        bytes.append(text);
        return byte(0);
    }

    std::string bytes;
};

struct KiwiFieldDefinition {
    std::string name;
    int type = 0;
    bool array = false;
    std::uint32_t value = 0;
};

struct KiwiTypeDefinition {
    std::string name;
    std::uint8_t kind = 0;  // 0 enum, 1 struct, 2 message
    std::vector<KiwiFieldDefinition> fields;
};

inline std::string encodeSchema(const std::vector<KiwiTypeDefinition>& types) {
    KiwiWriter out;
    out.varUInt(types.size());
    for (const KiwiTypeDefinition& type : types) {
        out.string(type.name).byte(type.kind).varUInt(type.fields.size());
        for (const KiwiFieldDefinition& field : type.fields) {
            out.string(field.name).varInt(field.type).boolean(field.array).varUInt(field.value);
        }
    }
    return out.bytes;
}

inline std::string deflateRaw(std::string_view input, int level = 6) {
    z_stream stream{};
    if (deflateInit2(&stream, level, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::runtime_error("deflateInit2");
    }
    std::string output(deflateBound(&stream, static_cast<uLong>(input.size())), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(input.data()));
    stream.avail_in = static_cast<uInt>(input.size());
    stream.next_out = reinterpret_cast<Bytef*>(output.data());
    stream.avail_out = static_cast<uInt>(output.size());
    deflate(&stream, Z_FINISH);
    output.resize(stream.total_out);
    deflateEnd(&stream);
    return output;
}

inline std::string zstdCompress(std::string_view input) {
    std::string output(ZSTD_compressBound(input.size()), '\0');
    output.resize(ZSTD_compress(output.data(), output.size(), input.data(), input.size(), 3));
    return output;
}

// A raw DEFLATE stream of `mebibytes` MiB of zeros, about a thousand times smaller:
// one compressed MiB, flushed so that it does not depend on what came before, repeated.
inline std::string deflateBomb(std::size_t mebibytes) {
    const std::string zeros(std::size_t{1} << 20, '\0');
    z_stream stream{};
    deflateInit2(&stream, 9, Z_DEFLATED, -MAX_WBITS, 9, Z_DEFAULT_STRATEGY);
    std::string block(std::size_t{1} << 16, '\0');
    const auto run = [&](int flush) {
        stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(zeros.data()));
        stream.avail_in = static_cast<uInt>(flush == Z_FINISH ? 0 : zeros.size());
        stream.next_out = reinterpret_cast<Bytef*>(block.data());
        stream.avail_out = static_cast<uInt>(block.size());
        deflate(&stream, flush);
        return block.substr(0, block.size() - stream.avail_out);
    };
    run(Z_FULL_FLUSH);  // the first block differs: it has no earlier zero to refer to
    const std::string repeated = run(Z_FULL_FLUSH);
    std::string output;
    output.reserve(repeated.size() * mebibytes + 16);
    for (std::size_t i = 0; i < mebibytes; ++i) {
        output += repeated;
    }
    output += run(Z_FINISH);
    deflateEnd(&stream);
    return output;
}

// A small schema shaped like Figma's: a "Message" of "NodeChange"s with paints, background
// colours, a colour profile enum, GUID and Matrix structs and 64-bit integer fields.
inline std::vector<KiwiTypeDefinition> figmaLikeSchema() {
    constexpr int floatType = -5;
    return {
        {"DocumentColorProfile", 0, {{"SRGB", 0, false, 0}, {"DISPLAY_P3", 0, false, 1}}},
        {"Color", 1, {{"r", floatType, false, 1}, {"g", floatType, false, 2}, {"b", floatType, false, 3},
                      {"a", floatType, false, 4}}},
        {"GUID", 1, {{"sessionID", -4, false, 1}, {"localID", -4, false, 2}}},
        {"Matrix", 1, {{"m00", floatType, false, 1}, {"m01", floatType, false, 2}, {"m02", floatType, false, 3},
                       {"m10", floatType, false, 4}, {"m11", floatType, false, 5}, {"m12", floatType, false, 6}}},
        {"Paint", 2, {{"color", 1, false, 1}, {"opacity", floatType, false, 2}}},
        {"LooseColor", 2, {{"r", floatType, false, 1}, {"g", floatType, false, 2}, {"b", floatType, false, 3},
                           {"a", floatType, false, 4}}},
        {"NodeChange", 2, {{"guid", 2, false, 1}, {"name", -6, false, 2}, {"fillPaints", 4, true, 3},
                           {"backgroundColor", 1, false, 4}, {"documentColorProfile", 0, false, 5},
                           {"transform", 3, false, 6}, {"color", 5, false, 7}, {"size", -7, false, 8},
                           {"count", -8, false, 9}}},
        {"Message", 2, {{"type", -4, false, 1}, {"nodeChanges", 6, true, 2}, {"sessionID", -7, false, 3}}},
    };
}

using RGBA = std::array<float, 4>;

struct FigmaNode {
    std::string name;
    std::vector<RGBA> fills;
    std::optional<RGBA> background;
    std::optional<std::uint32_t> profile;  // 0 SRGB, 1 DISPLAY_P3, others unnamed
    // A "color" message with only these components ("r", "g", "b" or "a").
    std::vector<std::pair<char, float>> looseColor;
};

// The Kiwi message of a document of these nodes, in the schema above.
inline std::string encodeFigmaMessage(const std::vector<FigmaNode>& nodes) {
    KiwiWriter out;
    const auto color = [&](const RGBA& rgba) {
        for (float component : rgba) {
            out.varFloat(component);
        }
    };
    out.varUInt(1).varUInt(1);
    out.varUInt(3).varInt(-(std::int64_t{1} << 40));
    out.varUInt(2).varUInt(nodes.size());
    std::uint32_t localID = 0;
    for (const FigmaNode& node : nodes) {
        out.varUInt(1).varUInt(7).varUInt(++localID);
        out.varUInt(2).string(node.name);
        out.varUInt(6);
        for (float value : {1.0f, 0.0f, 10.5f, 0.0f, 1.0f, -3.0f}) {
            out.varFloat(value);
        }
        out.varUInt(8).varInt(std::int64_t{-5000000000});
        out.varUInt(9).varUInt(std::uint64_t{18000000000000000000u});
        if (!node.fills.empty()) {
            out.varUInt(3).varUInt(node.fills.size());
            for (const RGBA& fill : node.fills) {
                out.varUInt(1);
                color(fill);
                out.varUInt(2).varFloat(1.0f).varUInt(0);
            }
        }
        if (node.background) {
            out.varUInt(4);
            color(*node.background);
        }
        if (node.profile) {
            out.varUInt(5).varUInt(*node.profile);
        }
        if (!node.looseColor.empty()) {
            out.varUInt(7);
            for (const auto& [component, value] : node.looseColor) {
                out.varUInt(std::string_view("rgba").find(component) + 1).varFloat(value);
            }
            out.varUInt(0);
        }
        out.varUInt(0);
    }
    out.varUInt(0);
    return out.bytes;
}

// The bytes of a canvas.fig: magic, version, then both chunks with their lengths.
inline std::string makeCanvas(std::uint32_t version, std::string_view schemaChunk, std::string_view dataChunk) {
    std::string canvas = "fig-kiwi";
    const auto put32 = [&](std::uint32_t value) {
        for (int i = 0; i < 4; ++i) {
            canvas.push_back(static_cast<char>((value >> (8 * i)) & 0xFF));
        }
    };
    put32(version);
    put32(static_cast<std::uint32_t>(schemaChunk.size()));
    canvas.append(schemaChunk);
    put32(static_cast<std::uint32_t>(dataChunk.size()));
    canvas.append(dataChunk);
    return canvas;
}

// Writes a ZIP archive of the entries (name, bytes), compressed with DEFLATE.
inline void writeZip(const std::filesystem::path& path, const std::vector<std::pair<std::string, std::string>>& entries) {
    std::filesystem::remove(path);
    int error = 0;
    zip_t* archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
    if (archive == nullptr) {
        throw std::runtime_error("zip_open");
    }
    for (const auto& [name, bytes] : entries) {
        zip_source_t* source = zip_source_buffer(archive, bytes.data(), bytes.size(), 0);
        if (source == nullptr || zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8) < 0) {
            zip_source_free(source);
            zip_discard(archive);
            throw std::runtime_error("zip_file_add");
        }
    }
    if (zip_close(archive) != 0) {
        zip_discard(archive);
        throw std::runtime_error("zip_close");
    }
}

}  // namespace tintwork::testing
