#include "import/OchreImporter.h"

#include <string>

#include "model/FileIO.h"

namespace tintwork {

namespace {

constexpr const char* unableToOpenMessage = "Unable to open Ochre file";

}  // namespace

void OchreImporter::importColors(const std::filesystem::path& url, OchreColorProjectItem& group) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(url, error);
    if (error || size > DocumentReader::maxFileBytes) {
        throw DocumentColorParsingError(unableToOpenMessage);
    }
    std::string bytes;
    try {
        bytes = readFileBytes(url);
    } catch (const FileError&) {
        throw DocumentColorParsingError(unableToOpenMessage);
    }
    importBytes(bytes, group);
}

void OchreImporter::importBytes(std::string_view bytes, OchreColorProjectItem& group) {
    DocumentReader reader;
    reader.diagnostics = [this](std::string_view line) { printDiagnostic(line); };
    OchreDocument document;
    try {
        document = reader.readBytes(bytes);
    } catch (const DocumentReadError&) {
        throw DocumentColorParsingError(unableToOpenMessage);
    }

    std::vector<ImportedColor> list;
    // Every colour constant is kept, equal ones too: each is a named value of the document.
    for (const OchreDataConstant& constant : document.constants) {
        if (constant.color && constant.color->color) {
            list.push_back({{NamedColor(*constant.color->color, constant.name)}, std::nullopt,
                            ImportedColorType::singleColor});
        }
    }
    for (const OchreDataMaterial& material : document.materials) {
        gatherMaterial(material, document, list);
    }
    addImportedColors(list, group);
}

void OchreImporter::gatherMaterial(const OchreDataMaterial& material, const OchreDocument& document,
                                   std::vector<ImportedColor>& list) const {
    for (const OchreDataMaterialLayer& layer : material.layers) {
        if (const auto* colour = std::get_if<MaterialColour>(&layer.layerContent)) {
            std::optional<ColorValue> value = resolveColour(*colour, document.constants);
            if (!value) {
                continue;
            }
            std::vector<NamedColor> colors{NamedColor(*value, material.name)};
            if (!isDuplicateColor(colors, std::nullopt, ImportedColorType::singleColor, list)) {
                list.push_back({std::move(colors), std::nullopt, ImportedColorType::singleColor});
            }
            continue;
        }
        const auto& gradient = std::get<MaterialGradient>(layer.layerContent);
        std::vector<NamedColor> stops;
        // Stops keep the number of their vertex, so a vertex without a readable colour leaves a gap.
        for (std::size_t index = 0; index < gradient.vertices.size(); ++index) {
            if (std::optional<ColorValue> value = resolveColour(gradient.vertices[index].color, document.constants)) {
                stops.emplace_back(*value, "Gradient Stop " + std::to_string(index + 1));
            }
        }
        if (stops.empty() || isDuplicateColor(stops, material.name, ImportedColorType::set, list)) {
            continue;
        }
        list.push_back({std::move(stops), material.name, ImportedColorType::set});
    }
}

}  // namespace tintwork
