#pragma once
// Reads a palette file of named sets: {"Set": {"name": "<colour text>", ...}, ...}.

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "import/ColorImporter.h"
#include "model/Project.h"

namespace tintwork {

// The decoded file: each set's name with its colours' names and texts, in file order.
struct GenericColorSet {
    std::vector<std::pair<std::string, std::vector<std::pair<std::string, std::string>>>> colors;
};

class GenericJsonImporter : public ColorImporter {
public:
    GenericJsonImporter() = default;

    // One colour set item per set, in file order, its colours sorted by name ("blue2" before
    // "blue10"). A colour text that does not read is dropped, and so is a set left without colours.
    // Throws FileError for an unreadable file and DocumentColorParsingError for text that is not
    // JSON or not an object of objects of texts.
    void importColors(const std::filesystem::path& url, OchreColorProjectItem& group) override;
    // The same import from JSON text already in memory.
    void importText(std::string_view text, OchreColorProjectItem& group);

private:
    void importDocument(std::string_view text, const std::string& sourceName, OchreColorProjectItem& group);
};

}  // namespace tintwork
