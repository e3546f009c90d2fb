#pragma once
// The standard Design Tokens reader's engine: the files of one call, their tokens in
// file order, references between them and the items made of them.

#include <cstddef>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "DtcgJson.h"
#include "DtcgValues.h"
#include "import/ImportKinds.h"
#include "model/Project.h"

namespace tintwork::dtcg {

class Reader {
public:
    explicit Reader(ImportOptions options);

    // Reads one file's text. Text that is no JSON, or whose top level is no object,
    // throws ImportSourceError naming the file; in strict mode so does the first
    // rule of the format the file breaks.
    void addFile(const std::filesystem::path& path, std::string_view text);
    // Resolves references (across all files when `acrossFiles`, else within each file)
    // and makes the items of every token.
    void resolve(bool acrossFiles);
    // Appends the items of one file, in file order, to `group` (a group item).
    void fillGroup(std::size_t file, OchreColorProjectItem& group);
    // Merges the tokens of `variantFile`, already filled into `variant`, into the
    // items of `baseFile` in `base` as the `slot` variant, matching by token path.
    // Matched items leave `variant`.
    void mergeFile(std::size_t baseFile, OchreColorProjectItem& base, std::size_t variantFile,
                   OchreColorProjectItem& variant, ColorSource slot);
    // Applies groups named "light", "dark", "high contrast" and "dark high contrast" at
    // the top of one file's group (or one level below), as the dialect's reader does.
    void applyAppearanceGroups(std::size_t file, OchreColorProjectItem& root);
    // Turns every alias in `root` whose target is not in the tree into a plain item, and
    // prints the per-file summary lines. Call once, after the last merge.
    void finish(const std::vector<OchreColorProjectItem*>& roots);

    std::size_t fileCount() const { return files_.size(); }

private:
    struct Token {
        std::size_t file = 0;
        std::vector<std::string> names;
        std::string path;
        const JsonValue* node = nullptr;
        const JsonValue* value = nullptr;
        std::optional<TokenType> type;
        std::string unknownType;  // a $type word (own or inherited) the format does not define
        bool ownType = false;
        std::optional<std::size_t> target;
        std::unique_ptr<JsonValue> pointed;  // what a JSON pointer reached that is not a token
        const JsonValue* literal = nullptr;  // the value at the end of the reference chain
        enum class State : unsigned char { pending, resolving, done } state = State::pending;
        bool failed = false;
        bool skipped = false;  // a type this reader does not import
        ProjectItemPtr item;
    };

    struct Group {
        std::string name;
    struct Entry {
            bool isToken;
            std::size_t index;
        };
        std::vector<Entry> entries;
    };

    struct File {
        std::filesystem::path path;
        std::string name;
        JsonValue root;
        std::size_t rootGroup = 0;
        std::unordered_map<std::string, std::size_t> tokenAt;
        // Skipped tokens by type word, in order of first appearance.
        std::vector<std::pair<std::string, std::size_t>> skipped;
        std::size_t dropped = 0;
        std::size_t unmatched = 0;
    };


    // ---- reading ----
    void rewriteUnprefixed(JsonValue& node, std::size_t depth);
    void resolveExtends(std::size_t file);
    void collect(std::size_t file, const JsonValue& node, const std::vector<std::string>& names,
                 std::optional<TokenType> inherited, const std::string& inheritedUnknown, std::size_t group, std::size_t depth);
    void addToken(std::size_t file, const JsonValue& node, std::vector<std::string> names,
                  std::optional<TokenType> inherited, const std::string& inheritedUnknown, std::size_t group);
    void checkCommonProperties(std::size_t file, const std::string& path, const JsonValue& node, bool isToken,
                               bool isTop);

    // ---- resolving ----
    void resolveToken(std::size_t index);
    std::optional<std::size_t> findTarget(std::size_t index, std::string& failure);
    void buildItem(std::size_t index);
    std::optional<JsonValue> expandReferences(const Token& token, const JsonValue& value, std::size_t depth,
                                              Issues& issues);
    const JsonValue* literalOf(std::size_t index);
    std::optional<std::size_t> tokenAtPath(std::size_t file, const std::string& path) const;

    // ---- messages ----
    [[noreturn]] void violation(std::size_t file, const std::string& path, const std::string& message) const;
    // Reports a token's issues: strict mode fails on the first, otherwise a failure
    // drops the token with a warning. True when the token stays.
    bool report(Token& token, const Issues& issues);
    void dropToken(Token& token, const std::string& message);
    void warn(std::size_t file, const std::string& text) const;

    // ---- merging ----
    void setVariantFrom(OchreColorProjectItem& base, const OchreColorProjectItem& variant, ColorSource slot);
    OchreColorProjectItem* counterpart(const OchreColorProjectItem* target, std::size_t baseFile,
                                       const std::string& basePrefix, std::size_t variantFile,
                                       const std::string& variantPrefix) const;
    void mergeGroups(OchreColorProjectItem& base, OchreColorProjectItem& variant, ColorSource slot,
                     std::size_t baseFile, const std::string& basePrefix, std::size_t variantFile,
                     const std::string& variantPrefix);

    ImportOptions options_;
    std::vector<File> files_;
    std::vector<Token> tokens_;
    std::vector<Group> groups_;
    bool acrossFiles_ = false;
    // How many value references are being followed inside one another.
    std::size_t nesting_ = 0;
    // How many more values the references of the current token may bring in.
    std::size_t expansionBudget_ = 0;
    std::unordered_map<const OchreColorProjectItem*, std::size_t> tokenOfItem_;
    // Items taken out of the tree by a merge, kept alive until finish() so that
    // aliases that still point at them can be made plain.
    std::vector<ProjectItemPtr> removed_;
};

}  // namespace tintwork::dtcg
