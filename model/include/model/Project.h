#pragma once
// The document in memory: a tree of items, its build and test groups and settings.

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "colour/ColorSpace.h"
#include "model/Alias.h"
#include "model/BuildConfig.h"
#include "model/ColorSet.h"
#include "model/Themeable.h"

namespace tintwork {

class OchreColorProjectItem;
using ProjectItemPtr = std::shared_ptr<OchreColorProjectItem>;

enum class ProjectItemType {
    group,
    color,
    colorSet,
    colorAlias,
    number,
    numberAlias,
    boolean,
    booleanAlias,
    string,
    stringAlias,
    shadow,
    shadowSet,
    shadowAlias,
};

struct OchreColorGroup {
    std::vector<ProjectItemPtr> items;
    bool providesNamespace = false;
    std::string searchFilter;
};

struct OchreColorItem {
    ThemeableColor color;
    AppearanceType appearanceType = AppearanceType::none;
    double autoContrastAmount = defaultAutoContrastAmount;
    bool ignoreColorspaceChange = false;
    ColorSpace colorSpace = ColorSpace::sRGB;
};

struct OchreColorNumber {
    ThemeableNumber value;
    std::optional<double> minValue;
    std::optional<double> maxValue;
    std::optional<long long> steps;
    AppearanceType appearanceType = AppearanceType::none;
    double autoContrastAmount = defaultAutoContrastAmount;
};

struct OchreColorBoolean {
    ThemeableBoolean value;
    AppearanceType appearanceType = AppearanceType::none;
    double autoContrastAmount = defaultAutoContrastAmount;
};

struct OchreColorString {
    ThemeableString value;
    AppearanceType appearanceType = AppearanceType::none;
    double autoContrastAmount = defaultAutoContrastAmount;
};

struct OchreColorShadow {
    ThemeableShadow shadow;
    AppearanceType appearanceType = AppearanceType::none;
    double autoContrastAmount = defaultAutoContrastAmount;
    bool ignoreColorspaceChange = false;
    ColorSpace colorSpace = ColorSpace::sRGB;
};

// The longest chain of aliases that resolution follows.
inline constexpr int maximumAliasChainLength = 256;

// An alias whose chain of aliases is longer than maximumAliasChainLength. Its value
// can't be known, so the flow that asked for it stops instead of leaving it out.
class AliasChainError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A tagged tree node: exactly one payload is set, the one itemType names.
class OchreColorProjectItem {
public:
    OchreColorProjectItem(std::string name, std::string uuid, OchreColorGroup payload);
    OchreColorProjectItem(std::string name, std::string uuid, OchreColorItem payload);
    OchreColorProjectItem(std::string name, std::string uuid, OchreColorSet payload);
    OchreColorProjectItem(std::string name, std::string uuid, OchreColorAlias payload);
    OchreColorProjectItem(std::string name, std::string uuid, OchreColorNumber payload);
    OchreColorProjectItem(std::string name, std::string uuid, OchreColorNumberAlias payload);
    OchreColorProjectItem(std::string name, std::string uuid, OchreColorBoolean payload);
    OchreColorProjectItem(std::string name, std::string uuid, OchreColorBooleanAlias payload);
    OchreColorProjectItem(std::string name, std::string uuid, OchreColorString payload);
    OchreColorProjectItem(std::string name, std::string uuid, OchreColorStringAlias payload);
    OchreColorProjectItem(std::string name, std::string uuid, OchreColorShadow payload);
    OchreColorProjectItem(std::string name, std::string uuid, OchreColorShadowSet payload);
    OchreColorProjectItem(std::string name, std::string uuid, OchreColorShadowAlias payload);

    std::optional<OchreColorGroup> group;
    std::optional<OchreColorItem> color;
    std::optional<OchreColorSet> colorSet;
    std::optional<OchreColorAlias> colorAlias;
    std::optional<OchreColorNumber> number;
    std::optional<OchreColorNumberAlias> numberAlias;
    std::optional<OchreColorBoolean> boolean;
    std::optional<OchreColorBooleanAlias> booleanAlias;
    std::optional<OchreColorString> string;
    std::optional<OchreColorStringAlias> stringAlias;
    std::optional<OchreColorShadow> shadow;
    std::optional<OchreColorShadowSet> shadowSet;
    std::optional<OchreColorShadowAlias> shadowAlias;

    BuildGroupPtr buildGroup;  // reference, not owner
    TestGroupPtr testGroup;    // reference, not owner
    TestPosition testPosition = TestPosition::both;
    bool isExpanded = false;
    std::string name;
    ProjectItemType itemType;
    std::string uuid;

    // True when the payload that itemType names is present.
    bool hasPayload() const;
    // The item's appearance type (groups answer none).
    AppearanceType appearanceType() const;
    // The appearance change: sets the payload's appearance type; for the automatic
    // high-contrast types colours (and set members) get generated high-contrast variants.
    void setAppearanceType(AppearanceType type);

    // Resolved values; for aliases the value assembled from the alias's references,
    // under the alias's own name; nullopt for another kind or a broken alias.
    // The default reference gives the light variant (a broken one breaks the alias). Each
    // other variant comes from its own reference (that target's matching variant, else its
    // light one) or, unset or broken, from the default target's stored variant. Chains of
    // aliases are followed; a cycle or a set index out of range is an empty reference,
    // and a chain longer than maximumAliasChainLength throws AliasChainError.
    // A whole-set alias gives setAliasMemberCount members named as its default target's.
    // A colour alias of automatic high contrast derives its high-contrast variants.
    std::optional<ThemeableColor> resolvedColor() const;
    std::optional<std::vector<ThemeableColor>> resolvedColorSet() const;
    std::optional<ThemeableNumber> resolvedNumber() const;
    std::optional<ThemeableBoolean> resolvedBoolean() const;
    std::optional<ThemeableString> resolvedString() const;
    std::optional<ThemeableShadow> resolvedShadow() const;
    std::optional<std::vector<ThemeableShadow>> resolvedShadowSet() const;
};

// Counts of each kind of item in a project's whole tree.
struct OchreColorProjectStatistics {
    int colorItemCount = 0;
    int colorSetCount = 0;
    int colorAliasCount = 0;
    int groupCount = 0;
    int numberCount = 0;
    int numberAliasCount = 0;
    int booleanCount = 0;
    int booleanAliasCount = 0;
    int stringCount = 0;
    int stringAliasCount = 0;
    int shadowCount = 0;
    int shadowSetCount = 0;
    int shadowAliasCount = 0;
};

// The editor's item filter and display mode; the tool only stores them.
enum class FilterType { all, colors, numbers, booleans, strings, shadows };
struct FilterItem {
    FilterType type = FilterType::all;
};
// Stored as the value of the document setting with the key displayModeSettingKey.
enum class AppContentMode { group, table };
inline constexpr std::string_view displayModeSettingKey = "DisplayMode";
// "group" or "table".
std::string_view appContentModeWord(AppContentMode mode);
std::optional<AppContentMode> appContentModeFromWord(std::string_view word);

class OchreColorProject {
public:
    OchreColorProject();

    std::string name;
    std::string projectDescription;
    std::vector<ProjectItemPtr> items;
    std::vector<BuildGroupPtr> buildGroups;
    std::vector<TestGroupPtr> testGroups;
    std::vector<DocumentSetting> settings;
    std::string searchFilter;
    std::string uuid;

    // Depth-first walk in document order: each group before its members.
    void walk(const std::function<void(OchreColorProjectItem&)>& visit) const;
    // The first item with this uuid in walk order, or null.
    OchreColorProjectItem* findItem(const std::string& uuid) const;
    BuildGroupPtr findBuildGroup(const std::string& uuid) const;
    TestGroupPtr findTestGroup(const std::string& uuid) const;
    // Every item attached to the group, depth-first, descending into groups.
    std::vector<ProjectItemPtr> itemsForBuildGroup(const BuildGroup& group) const;
    // itemsForBuildGroup for every build group at once, in one walk of the tree:
    // groups that no item is attached to are absent.
    std::unordered_map<const BuildGroup*, std::vector<ProjectItemPtr>> itemsByBuildGroup() const;
    // The chain of items from the top level down to the item (the item last); empty
    // when the item is not in the tree.
    std::vector<OchreColorProjectItem*> pathToItem(const OchreColorProjectItem& item) const;
    // Links every alias's stored identifiers to the items they name.
    void linkAliases();
    // How many items of each kind the tree holds, groups and their members included.
    OchreColorProjectStatistics statistics() const;
};

// A snapshot of a project's tree for many lookups in a row (an export, a link pass):
// uuid lookup and item paths without a walk per query. Rebuild it after the tree changes.
class ProjectItemIndex {
public:
    explicit ProjectItemIndex(const OchreColorProject& project);

    // The first item with this uuid in walk order, or null.
    OchreColorProjectItem* find(const std::string& uuid) const;
    // As OchreColorProject::pathToItem.
    std::vector<OchreColorProjectItem*> pathToItem(const OchreColorProjectItem& item) const;

private:
    struct Node {
        OchreColorProjectItem* self;
        OchreColorProjectItem* parent;
    };
    std::unordered_map<std::string, OchreColorProjectItem*> byUuid_;
    std::unordered_map<const OchreColorProjectItem*, Node> nodes_;
};

}  // namespace tintwork
