#pragma once
// Gathers the colours of a Sketch document: its shared swatches first, then every colour
// of every layer's fills, borders, shadows, gradients and text, page by page.

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "colour/ColorSpace.h"
#include "import/ColorImporter.h"
#include "import/ImportedColor.h"
#include "import/SketchDocument.h"
#include "model/Project.h"

namespace tintwork {

class SketchImporter : public ColorImporter {
public:
    SketchImporter() = default;

    // The whole entry of that name in the document's archive; absent when there is none.
    using EntryReader = std::function<std::optional<std::string>(const std::string&)>;

    void importColors(const std::filesystem::path& url, OchreColorProjectItem& group) override;
    // The same import from the bytes of a whole document.
    void importArchive(std::string_view archive, OchreColorProjectItem& group);
    // The same import over entries read by `readEntry`.
    void importEntries(const EntryReader& readEntry, OchreColorProjectItem& group);

    // Fills, borders, shadows and inner shadows, in that order; a gradient without a colour
    // becomes a set named after the layer.
    void collectStyleColors(const SketchStyle& layerStyle, const std::optional<std::string>& layerName,
                            std::vector<ImportedColor>& list, ColorEncoding colorSpace) const;
    // One "Text Color" per top-level attribute that has a colour.
    void collectTextColors(const SketchAttributedString& attributedString, std::vector<ImportedColor>& list,
                           ColorEncoding colorSpace) const;

    // The space to read the colours of a document without a colour profile in (sRGB or
    // Display P3); unset, such a document imports nothing.
    std::optional<ColorSpace> unmanagedColorSpace;

private:
    void collectLayerColors(const SketchPageLayer& layer, std::vector<ImportedColor>& list,
                            ColorEncoding colorSpace) const;
};

}  // namespace tintwork
