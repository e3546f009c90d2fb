#pragma once
// Reads a palette file whose entries are single colours or families of numbered shades:
// {"white": "#ffffff", "red": {"50": "#ffebee", ..., "a700": "#d50000"}, "gray": ["#f8f9fa", ...]}.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "import/ColorImporter.h"
#include "model/Project.h"

namespace tintwork {

// The number a name ends in: its last run of digits, with where that run starts.
struct TrailingNumber {
    std::string digits;
    std::size_t position = 0;
};
std::optional<TrailingNumber> trailingNumber(std::string_view name);

class MaterialJSONImporter : public ColorImporter {
public:
    MaterialJSONImporter() = default;

    // Entries in file order: a text is a colour item named by its key; an object is a colour
    // set named by its key, its shades ordered by the number in their names (shades of one
    // prefix together, "50"…"900" then "a100"…"a700"); an array is a set whose shades are named
    // by their index from "0". A colour text that does not read is dropped, and so is a set left
    // without colours; other values are passed over. Throws FileError for an unreadable file and
    // DocumentColorParsingError for text that is not JSON or whose top level is not an object.
    void importColors(const std::filesystem::path& url, OchreColorProjectItem& group) override;
    // The same import from JSON text already in memory.
    void importText(std::string_view text, OchreColorProjectItem& group);

private:
    void importDocument(std::string_view text, const std::string& sourceName, OchreColorProjectItem& group);
};

}  // namespace tintwork
