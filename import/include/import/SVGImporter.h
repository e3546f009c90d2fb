#pragma once
// Reads the colours of an SVG drawing: fill and stroke attributes, gradient stops and the
// drawing's own style sheets, each colour once.

#include <filesystem>
#include <string_view>

#include "import/ColorImporter.h"
#include "model/Project.h"

namespace tintwork {

class SVGImporter : public ColorImporter {
public:
    SVGImporter() = default;

    // Reads the file; an unreadable file throws FileError, text that is not XML
    // "SVG is invalid", XML without an element "SVG has no root element, unable to parse".
    // Every element below the root is read, depth first in document order: the stroke and
    // fill of drawing elements, the stop colour of the others (gradient stops), and the
    // stroke and fill values of style sheets. Each colour is listed once, under the name
    // of its first use.
    void importColors(const std::filesystem::path& url, OchreColorProjectItem& group) override;
    // The same import from SVG text already in memory.
    void importText(std::string_view text, OchreColorProjectItem& group);
};

}  // namespace tintwork
