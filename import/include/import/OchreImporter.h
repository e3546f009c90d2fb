#pragma once
// Takes the colours of a drawing document of the sister product: its colour constants, then
// its materials' colour layers and gradients.

#include <filesystem>
#include <string_view>
#include <vector>

#include "import/ColorImporter.h"
#include "import/ImportedColor.h"
#include "import/OchreDocument.h"
#include "model/Project.h"

namespace tintwork {

class OchreImporter : public ColorImporter {
public:
    OchreImporter() = default;

    // One colour item per colour constant (under its name), then per material its colour layers
    // (under the material's name, unless an equal colour came before) and gradients (a set named
    // after the material, stops "Gradient Stop 1", ...). Any failure to read the file or the
    // document throws "Unable to open Ochre file".
    void importColors(const std::filesystem::path& url, OchreColorProjectItem& group) override;
    // The same import from the file's bytes.
    void importBytes(std::string_view bytes, OchreColorProjectItem& group);

    // Appends the colours of one material's layers to `list`.
    void gatherMaterial(const OchreDataMaterial& material, const OchreDocument& document,
                        std::vector<ImportedColor>& list) const;
};

}  // namespace tintwork
