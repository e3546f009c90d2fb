#include "import/SketchImporter.h"

#include <memory>

#include "ZipArchive.h"
#include "colour/FatalError.h"

namespace tintwork {

namespace {

ColorValue makeColor(const SketchColor& color, ColorEncoding space) {
    return ColorValue(space, color.red, color.green, color.blue, color.alpha);
}

void addSingle(const SketchColor& color, const std::string& name, ColorEncoding space,
               std::vector<ImportedColor>& list) {
    std::vector<NamedColor> colors{NamedColor(makeColor(color, space), name)};
    if (!isDuplicateColor(colors, std::nullopt, ImportedColorType::singleColor, list)) {
        list.push_back(ImportedColor{std::move(colors), std::nullopt, ImportedColorType::singleColor});
    }
}

// The encoding of a selectable colour space; Sketch documents only hold sRGB or Display P3.
ColorEncoding encodingOf(ColorSpace space) {
    if (space == ColorSpace::sRGB) {
        return ColorEncoding::sRGB;
    }
    if (space == ColorSpace::displayP3) {
        return ColorEncoding::displayP3;
    }
    throw FatalError("Sketch Colors don't come in extended SRGB");
}

// The archive at a path or in memory; a failure to open it is reported in the archive
// library's words.
template <typename Source>
std::unique_ptr<importing::ZipArchive> openArchive(const Source& source) {
    try {
        return std::make_unique<importing::ZipArchive>(source);
    } catch (const importing::ZipOpenError& error) {
        throw DocumentColorParsingError(error.what());
    }
}

}  // namespace

void SketchImporter::importColors(const std::filesystem::path& url, OchreColorProjectItem& group) {
    const auto archive = openArchive(url);
    importEntries([&](const std::string& name) { return archive->read(name); }, group);
}

void SketchImporter::importArchive(std::string_view archiveBytes, OchreColorProjectItem& group) {
    const auto archive = openArchive(archiveBytes);
    importEntries([&](const std::string& name) { return archive->read(name); }, group);
}

void SketchImporter::importEntries(const EntryReader& readEntry, OchreColorProjectItem& group) {
    const std::optional<std::string> documentText = readEntry("document.json");
    if (!documentText) {
        throw DocumentColorParsingError("No document found in Sketch file");
    }
    const std::optional<SketchDocument> document = decodeSketchDocument(*documentText);
    if (!document) {
        throw DocumentColorParsingError("Unable to decode Sketch file");
    }

    std::optional<ColorEncoding> space;
    if (document->colorSpace == 1) {
        space = ColorEncoding::sRGB;
    } else if (document->colorSpace == 2) {
        space = ColorEncoding::displayP3;
    } else if (document->colorSpace == 0 && unmanagedColorSpace) {
        space = encodingOf(*unmanagedColorSpace);
    }
    std::vector<ImportedColor> list;
    if (space) {
        if (document->sharedSwatches && document->sharedSwatches->swatches) {
            for (const SketchSwatch& swatch : *document->sharedSwatches->swatches) {
                if (swatch.value) {
                    addSingle(*swatch.value, swatch.name.value_or("Swatch"), *space, list);
                }
            }
        }
        for (const SketchPageInfo& info : document->pages) {
            const std::optional<std::string> pageText = readEntry(info.path + ".json");
            if (!pageText) {
                continue;
            }
            // A page that does not decode costs only its own colours.
            const std::optional<SketchPage> page = decodeSketchPage(*pageText);
            if (!page) {
                continue;
            }
            for (const SketchPageLayer& layer : page->layers) {
                collectLayerColors(layer, list, *space);
            }
        }
    }
    addImportedColors(list, group);
}

void SketchImporter::collectLayerColors(const SketchPageLayer& layer, std::vector<ImportedColor>& list,
                                        ColorEncoding colorSpace) const {
    // Hidden layers count like visible ones.
    if (layer.style) {
        collectStyleColors(*layer.style, layer.name, list, colorSpace);
    }
    if (layer.attributedString) {
        collectTextColors(*layer.attributedString, list, colorSpace);
    }
    if (layer.layers) {
        for (const SketchPageLayer& child : *layer.layers) {
            collectLayerColors(child, list, colorSpace);
        }
    }
}

void SketchImporter::collectStyleColors(const SketchStyle& layerStyle, const std::optional<std::string>& layerName,
                                        std::vector<ImportedColor>& list, ColorEncoding colorSpace) const {
    const std::string name = layerName.value_or("Color");
    const auto collectPaints = [&](const std::optional<std::vector<SketchStyleFill>>& paints) {
        if (!paints) {
            return;
        }
        for (const SketchStyleFill& paint : *paints) {
            if (paint.color) {
                addSingle(*paint.color, name, colorSpace, list);
                continue;
            }
            if (!paint.gradient) {
                continue;
            }
            // Stops in file order, whatever their positions say.
            std::vector<NamedColor> stops;
            for (const SketchGradientStop& stop : paint.gradient->stops) {
                if (stop.color) {
                    stops.emplace_back(makeColor(*stop.color, colorSpace), "Color " + std::to_string(stops.size() + 1));
                }
            }
            if (!isDuplicateColor(stops, layerName, ImportedColorType::set, list)) {
                list.push_back(ImportedColor{std::move(stops), layerName, ImportedColorType::set});
            }
        }
    };
    collectPaints(layerStyle.fills);
    collectPaints(layerStyle.borders);
    for (const auto* shadows : {&layerStyle.shadows, &layerStyle.innerShadows}) {
        if (!*shadows) {
            continue;
        }
        for (const SketchShadow& shadow : **shadows) {
            if (shadow.color) {
                addSingle(*shadow.color, name, colorSpace, list);
            }
        }
    }
}

void SketchImporter::collectTextColors(const SketchAttributedString& attributedString,
                                       std::vector<ImportedColor>& list, ColorEncoding colorSpace) const {
    if (!attributedString.attributes) {
        return;
    }
    for (const SketchTopLevelAttribute& attribute : *attributedString.attributes) {
        if (attribute.attributes && attribute.attributes->colorAttribute) {
            addSingle(*attribute.attributes->colorAttribute, "Text Color", colorSpace, list);
        }
    }
}

}  // namespace tintwork
