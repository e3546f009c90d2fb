#include "import/FigmaImporter.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "Decompression.h"
#include "ZipArchive.h"
#include "colour/FatalError.h"

namespace tintwork {

namespace {

constexpr std::uint32_t oldestUnsupportedVersion = 14;

std::uint32_t readUInt32(std::string_view bytes, std::size_t offset) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[offset + i])) << (8 * i);
    }
    return value;
}

// The answer of the first "documentColorProfile" entry below `node`, if any.
std::optional<bool> searchColorProfile(const KiwiDictionary& node) {
    for (const KiwiEntry& entry : node) {
        if (entry.name == "documentColorProfile") {
            const std::string* text = entry.value.string();
            return text != nullptr && *text == "DISPLAY_P3";
        }
        if (const KiwiDictionary* child = entry.value.dictionary()) {
            if (std::optional<bool> answer = searchColorProfile(*child)) {
                return answer;
            }
        } else if (const KiwiList* list = entry.value.list()) {
            for (const KiwiValue& element : *list) {
                if (const KiwiDictionary* member = element.dictionary()) {
                    if (std::optional<bool> answer = searchColorProfile(*member)) {
                        return answer;
                    }
                }
            }
        }
    }
    return std::nullopt;
}

}  // namespace

namespace {

// The whole "canvas.fig" of the archive at a path or in memory.
template <typename Source>
std::string readCanvas(const Source& source) {
    std::optional<std::string> canvas;
    try {
        importing::ZipArchive archive(source);
        canvas = archive.read("canvas.fig");
    } catch (const importing::ZipOpenError&) {
        throw DocumentColorParsingError("Unable to open Figma document");
    }
    if (!canvas) {
        throw DocumentColorParsingError("No figma canvas found");
    }
    return std::move(*canvas);
}

}  // namespace

std::size_t FigmaImporter::ColorKeyHash::operator()(const ColorKey& key) const {
    std::size_t hash = static_cast<std::size_t>(key.encoding);
    for (double component : key.components) {
        hash = hash * 1000003u ^ std::hash<double>()(component);
    }
    return hash;
}

FigmaImporter::ColorKey FigmaImporter::colorKey(const ColorValue& color) {
    // Adding zero turns -0.0 into 0.0, which compares equal to it and must hash alike.
    return ColorKey{color.encoding(),
                    {color.red() + 0.0, color.green() + 0.0, color.blue() + 0.0, color.alpha() + 0.0}};
}

void FigmaImporter::importColors(const std::filesystem::path& url, OchreColorProjectItem& group) {
    importCanvas(readCanvas(url), group);
}

void FigmaImporter::importArchive(std::string_view archive, OchreColorProjectItem& group) {
    importCanvas(readCanvas(archive), group);
}

std::string FigmaImporter::decompressChunk(std::string_view chunk, const char* failure, const char* what) {
    importing::Decompressed inflated = importing::inflateRaw(chunk);
    if (inflated.bytes) {
        return std::move(*inflated.bytes);
    }
    if (!inflated.tooLarge) {
        printDiagnostic("Error decoding as zlib " + inflated.error);
        inflated = importing::decompressZstd(chunk);
        if (inflated.bytes) {
            return std::move(*inflated.bytes);
        }
    }
    if (inflated.tooLarge) {
        throw DocumentColorParsingError(std::string(failure) + ": the " + what +
                                        " expands past 1 GiB or past any real document's size");
    }
    printDiagnostic("Error decoding as zstd " + inflated.error);
    throw DocumentColorParsingError(failure);
}

void FigmaImporter::importCanvas(std::string_view canvas, OchreColorProjectItem& group) {
    // 8 bytes of magic (not checked), the version, then two length-prefixed chunks.
    if (canvas.size() < 12) {
        throw DocumentColorParsingError("This Figma document is truncated");
    }
    if (readUInt32(canvas, 8) <= oldestUnsupportedVersion) {
        throw DocumentColorParsingError("This Figma document is too old to convert, re-save it and try again");
    }
    constexpr const char* headerFailure = "Failed to decompress Figma header";
    constexpr const char* dataFailure = "Failed to decompress Figma data";
    if (canvas.size() < 16 || readUInt32(canvas, 12) > canvas.size() - 16) {
        throw DocumentColorParsingError(headerFailure);
    }
    const std::size_t schemaLength = readUInt32(canvas, 12);
    const std::string schemaBytes = decompressChunk(canvas.substr(16, schemaLength), headerFailure, "header");

    std::optional<KiwiSchema> schema;
    try {
        schema.emplace(schemaBytes);
    } catch (const KiwiError& error) {
        throw KiwiError("Unable to read Figma header: " + error.message);
    }

    const std::size_t dataStart = 20 + schemaLength;
    if (canvas.size() < dataStart || readUInt32(canvas, 16 + schemaLength) > canvas.size() - dataStart) {
        throw DocumentColorParsingError(dataFailure);
    }
    const std::size_t dataLength = readUInt32(canvas, 16 + schemaLength);
    const std::string data = decompressChunk(canvas.substr(dataStart, dataLength), dataFailure, "data");

    const std::optional<int> messageType = schema->typeIndex("Message");
    if (!messageType) {
        throw FatalError("The Figma schema has no Message type");
    }
    KiwiDecoder decoder(std::move(*schema));
    decoder.setConverter("GUID", makeGUID);
    decoder.setConverter("Matrix", makeMatrix);
    KiwiDictionary tree;
    try {
        KiwiReader reader(data);
        tree = decoder.decodeMessage(reader, *messageType);
    } catch (const KiwiError& error) {
        throw KiwiError("Unable to read Figma data: " + error.message);
    }

    const bool isDisplayP3 = findColorProfile(tree);
    std::vector<ImportedColor> list;
    collectColors(tree, isDisplayP3, list);
    addImportedColors(list, group);
}

bool FigmaImporter::findColorProfile(const KiwiDictionary& tree) const {
    return searchColorProfile(tree).value_or(false);
}

void FigmaImporter::collectColors(const KiwiDictionary& node, bool isDisplayP3,
                                  std::vector<ImportedColor>& list) const {
    ColorIndex seen;
    for (const ImportedColor& entry : list) {
        if (entry.type == ImportedColorType::singleColor && entry.colors.size() == 1) {
            seen.insert(colorKey(entry.colors.front().color));
        }
    }
    collectColors(node, isDisplayP3, list, seen);
}

void FigmaImporter::collectColors(const KiwiDictionary& node, bool isDisplayP3, std::vector<ImportedColor>& list,
                                  ColorIndex& seen) const {
    for (const KiwiEntry& entry : node) {
        const KiwiDictionary* dictionary = entry.value.dictionary();
        if (dictionary != nullptr && (entry.name == "color" || entry.name == "backgroundColor")) {
            const KiwiValue* red = dictionary->find("r");
            const KiwiValue* green = dictionary->find("g");
            const KiwiValue* blue = dictionary->find("b");
            const KiwiValue* alpha = dictionary->find("a");
            if (red == nullptr || green == nullptr || blue == nullptr || alpha == nullptr || !red->number() ||
                !green->number() || !blue->number() || !alpha->number()) {
                continue;
            }
            const ColorValue color(isDisplayP3 ? ColorEncoding::displayP3 : ColorEncoding::sRGB, *red->number(),
                                   *green->number(), *blue->number(), *alpha->number());
            // A single colour is a duplicate exactly when an equal colour is in the list, so
            // an index of the colours met answers for isDuplicateColor without a scan.
            if (seen.insert(colorKey(color)).second) {
                list.push_back(ImportedColor{{NamedColor(color, "color")}, std::nullopt, ImportedColorType::singleColor});
            }
        } else if (dictionary != nullptr) {
            collectColors(*dictionary, isDisplayP3, list, seen);
        } else if (const KiwiList* elements = entry.value.list()) {
            for (const KiwiValue& element : *elements) {
                if (const KiwiDictionary* child = element.dictionary()) {
                    collectColors(*child, isDisplayP3, list, seen);
                }
            }
        }
    }
}

KiwiValue FigmaImporter::makeGUID(KiwiValue decoded) {
    auto guid = std::make_shared<GUID>();
    if (const KiwiDictionary* fields = decoded.dictionary()) {
        if (const KiwiValue* session = fields->find("sessionID")) {
            guid->sessionID = *session;
        }
        if (const KiwiValue* local = fields->find("localID")) {
            guid->localID = *local;
        }
    }
    return std::shared_ptr<const KiwiObject>(std::move(guid));
}

KiwiValue FigmaImporter::makeMatrix(KiwiValue decoded) {
    auto matrix = std::make_shared<Matrix>();
    if (const KiwiDictionary* fields = decoded.dictionary()) {
        for (int row = 0; row < 10; ++row) {
            std::vector<KiwiValue> values;
            for (int column = 0; column < 10; ++column) {
                const char key[] = {'m', static_cast<char>('0' + row), static_cast<char>('0' + column), '\0'};
                const KiwiValue* value = fields->find(key);
                if (value == nullptr) {
                    break;
                }
                values.push_back(*value);
            }
            if (values.empty()) {
                break;
            }
            matrix->values.push_back(std::move(values));
        }
    }
    return std::shared_ptr<const KiwiObject>(std::move(matrix));
}

}  // namespace tintwork
