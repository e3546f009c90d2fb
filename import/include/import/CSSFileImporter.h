#pragma once
// Reads the colours of a style sheet or an HTML page by searching its text for colour
// expressions (hex, color(), rgb(), hsl(), oklab(), oklch()), then turns families of
// numbered names (--brand-100, --brand-200, ...) into colour sets.

#include <filesystem>
#include <string_view>

#include "import/ColorImporter.h"
#include "model/Project.h"

namespace tintwork {

class CSSFileImporter : public ColorImporter {
public:
    CSSFileImporter() = default;

    // Reads the file as UTF-8 ("Unable to read document" when that fails). A file whose
    // extension is "html" in any case is searched only in its style elements and style
    // attributes; when it can't be parsed as HTML, a diagnostic line says so and the whole
    // text is searched.
    void importColors(const std::filesystem::path& url, OchreColorProjectItem& group) override;
    // The same import from text already in memory, as HTML or as a style sheet.
    void importText(std::string_view text, bool asHTML, OchreColorProjectItem& group);

    // Replaces each family of 3 to 32 colour items of `group` whose names differ only in a
    // number at the same place by a colour set named by the rest of the name (one trailing
    // "-" removed), members in ascending order of their numbers and named by them. The set
    // takes the place of the family's first member.
    static void detectColorSets(OchreColorProjectItem& group);
};

}  // namespace tintwork
