// Strict mode: token files written from the format's rules, one valid file per area and
// one invalid file per broken rule, each failing with its token path and the rule.
#include <filesystem>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "import/DtcgImporter.h"
#include "import/ImportKinds.h"
#include "model/FileIO.h"

namespace tintwork {
namespace {

const std::filesystem::path data = std::filesystem::path(TINTWORK_SOURCE_DIR) / "tests/import/data/dtcg/strict";

// The error of a strict import, or "" when it succeeds.
std::string strictError(const std::filesystem::path& path, int* warnings = nullptr) {
    ImportOptions options;
    options.strict = true;
    options.diagnostics = [&](std::string_view) {
        if (warnings != nullptr) {
            ++*warnings;
        }
    };
    try {
        std::vector<ProjectItemPtr> groups = DtcgImporter::importAll({path}, options);
    } catch (const ImportSourceError& error) {
        EXPECT_EQ(error.source, path);
        return error.what();
    }
    return "";
}

TEST(DtcgStrict, ValidFilesImportWithoutComplaint) {
    for (const char* name : {"colors", "types", "references"}) {
        SCOPED_TRACE(name);
        int warnings = 0;
        EXPECT_EQ(strictError(data / "valid" / (std::string(name) + ".tokens.json"), &warnings), "");
        // Only the count of composite tokens the document cannot hold.
        EXPECT_LE(warnings, 1);
    }
}

TEST(DtcgStrict, EachBrokenRuleFailsNamingItsToken) {
    const std::map<std::string, std::string> expected = {
        {"color-space", "c: $value: unknown colorSpace \"foo\""},
        {"color-range", "c: $value.components[1]: 120 is outside 0 to 100 for hsl"},
        {"color-hue", "c: $value.components[2]: 360 is outside 0 to 360 (exclusive) for oklch"},
        {"color-hex", "c: $value.hex: \"#fff\" is not a 6-digit hex colour"},
        {"color-alpha", "c: $value.alpha: 1.5 is outside 0 to 1"},
        {"color-count", "c: $value.components: expected 3 components for srgb, found 4 values"},
        {"color-component", "c: $value.components[1]: expected a number or \"none\", found a string"},
        {"color-missing", "c: $value: missing components"},
        {"color-string",
         "c: $value: a colour must be an object with colorSpace and components, found the text \"#ff0000\""},
        {"dimension-unit", "d: $value.unit: unknown unit \"em\", expected \"px\" or \"rem\""},
        {"dimension-string", "d: $value: a dimension must be an object with value and unit, found the text \"4px\""},
        {"dimension-missing", "d: $value: missing unit"},
        {"number-string", "n: $value: expected a number, found the text \"1\""},
        {"fontweight-range", "w: $value: font weight 1200 is outside 1 to 1000"},
        {"fontweight-keyword", "w: $value: unknown font weight \"boldest\""},
        {"duration-unit", "t: $value.unit: unknown unit \"min\", expected \"ms\" or \"s\""},
        {"fontfamily-number", "f: $value[1]: expected a font name, found a number"},
        {"cubicbezier-range", "e: $value[0]: 1.5 is outside 0 to 1"},
        {"strokestyle-keyword", "s: $value: unknown stroke style \"wavy\""},
        {"border-width", "b: $value: missing width"},
        {"transition-timing", "t: $value.timingFunction: expected an array of 4 numbers"},
        {"shadow-color", "s: $value: missing color"},
        {"shadow-offset", "s: $value: missing offsetX"},
        {"gradient-position", "g: $value[0].position: 1.5 is outside 0 to 1"},
        {"typography-size", "t: $value: missing fontSize"},
        {"type-unknown", "g: $type: unknown type \"colour\""},
        {"type-missing", "g.x: no $type on the token or the groups above it"},
        {"name-dot", "g.a.b: names must not contain \".\", \"{\" or \"}\""},
        {"name-dollar", "g: unknown property $color"},
        {"description-number", "g: $description: expected a string, found a number"},
        {"deprecated-number", "x: $deprecated: expected a boolean or a string, found a number"},
        {"extensions-array", "x: $extensions: expected an object, found an array"},
        {"member-number", "g.x: expected a token or a group (an object), found a number"},
        {"reference-missing", "a: reference to missing token {b}"},
        {"reference-cycle", "a: reference cycle a -> b -> a"},
        {"reference-type", "b: references a, a number token, not color"},
        {"reference-group", "r: reference to missing token {g}"},
        {"pointer-escape", "r: $ref: \"#/a~2\": \"~\" must be followed by 0 or 1"},
        {"pointer-relative", "r: $ref: \"a\" is not a JSON pointer into this file (it must start with \"#/\")"},
        {"pointer-nothing", "r: $ref: \"#/b\" points at nothing"},
        {"extends-missing", "g: $extends: no group {nothing}"},
        {"extends-cycle", "b: $extends: circular chain of $extends through a"},
        {"extends-token", "g: $extends: t is a token, not a group"},
        {"root-group", "g.$root: $root must be a token with a $value"},
    };
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(data / "invalid")) {
        ++files;
        const std::string name = entry.path().filename().string();
        const std::string key = name.substr(0, name.find('.'));
        SCOPED_TRACE(name);
        auto message = expected.find(key);
        ASSERT_NE(message, expected.end()) << "no expected message; got: " << strictError(entry.path());
        EXPECT_EQ(strictError(entry.path()), message->second);
        // Without --strict the file still imports, the bad token dropped or read leniently.
        ImportOptions lenient;
        lenient.diagnostics = [](std::string_view) {};
        EXPECT_NO_THROW(DtcgImporter::importAll({entry.path()}, lenient));
    }
    EXPECT_EQ(files, expected.size());
}

}  // namespace
}  // namespace tintwork
