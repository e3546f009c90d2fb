#include "DtcgReader.h"

#include <algorithm>
#include <functional>
#include <iostream>
#include <set>
#include <unordered_set>
#include <utility>

#include "ImportHelpers.h"
#include "model/Uuid.h"

namespace tintwork::dtcg {

namespace {

// References inside one value are followed this deep; a longer chain is a failure.
constexpr std::size_t maxExpansionDepth = 32;
// References inside one token's value may bring in this many JSON values.
constexpr std::size_t maxExpandedValues = 100'000;
// $extends may copy this many JSON values in one file before the file is refused.
constexpr std::size_t maxExtendedValues = 2'000'000;

std::string joined(const std::vector<std::string>& names) {
    std::string path;
    for (const std::string& name : names) {
        if (!path.empty()) {
            path += '.';
        }
        path += name;
    }
    return path;
}

bool startsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

std::string lowercasedASCII(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c + ('a' - 'A'));
        }
    }
    return text;
}

// "{a.b.c}" as a whole value: the path inside the braces.
std::optional<std::string> curlyReference(const JsonValue& value) {
    if (!value.isString() || value.text.size() < 2 || value.text.front() != '{' || value.text.back() != '}') {
        return std::nullopt;
    }
    std::string inner = value.text.substr(1, value.text.size() - 2);
    if (inner.find_first_of("{}") != std::string::npos) {
        return std::nullopt;
    }
    return inner;
}

// {"$ref": "#/a/b"}: the pointer text.
const JsonValue* pointerReference(const JsonValue& value) {
    if (!value.isObject()) {
        return nullptr;
    }
    return value.find("$ref");
}

bool containsReference(const JsonValue& value, std::size_t depth = 0) {
    if (curlyReference(value) || pointerReference(value) != nullptr) {
        return true;
    }
    if (depth > maxJsonDepth) {
        return false;
    }
    return std::any_of(value.members.begin(), value.members.end(),
                       [&](const JsonMember& member) { return containsReference(member.value, depth + 1); });
}

// The segments of a JSON pointer inside this document ("#/a/b~1c" gives a, b/c).
std::optional<std::vector<std::string>> pointerSegments(const std::string& pointer, std::string& failure) {
    if (!startsWith(pointer, "#/")) {
        failure = "$ref: \"" + pointer + "\" is not a JSON pointer into this file (it must start with \"#/\")";
        return std::nullopt;
    }
    std::vector<std::string> segments(1);
    for (std::size_t i = 2; i < pointer.size(); ++i) {
        const char c = pointer[i];
        if (c == '/') {
            segments.emplace_back();
        } else if (c == '~') {
            const char next = i + 1 < pointer.size() ? pointer[i + 1] : '\0';
            if (next != '0' && next != '1') {
                failure = "$ref: \"" + pointer + "\": \"~\" must be followed by 0 or 1";
                return std::nullopt;
            }
            segments.back() += next == '0' ? '~' : '/';
            ++i;
        } else {
            segments.back() += c;
        }
    }
    return segments;
}

bool isGroupObject(const JsonValue& value) {
    return value.isObject() && value.find("$value") == nullptr;
}

// Counts values, to bound what $extends copies.
std::size_t valueCount(const JsonValue& value) {
    std::size_t count = 1;
    for (const JsonMember& member : value.members) {
        count += valueCount(member.value);
    }
    return count;
}

// Deep merge for $extends: members of `local` replace inherited ones of the same
// name, nested groups merge, new members follow the inherited ones.
void mergeInto(JsonValue& inherited, const JsonValue& local) {
    for (const JsonMember& member : local.members) {
        if (member.key == "$extends") {
            continue;
        }
        JsonValue* existing = inherited.find(member.key);
        if (existing != nullptr && isGroupObject(*existing) && isGroupObject(member.value)) {
            mergeInto(*existing, member.value);
        } else if (existing != nullptr) {
            *existing = member.value;
        } else {
            inherited.members.push_back(member);
        }
    }
}

bool isItemGroup(const OchreColorProjectItem& item) {
    return item.itemType == ProjectItemType::group && item.group.has_value();
}

int slotIndex(ColorSource slot) {
    for (int i = 0; i < 4; ++i) {
        if (aliasVariantOrder[i] == slot) {
            return i;
        }
    }
    return 0;
}

AppearanceType appearanceFor(bool dark, bool highContrast, bool darkHighContrast) {
    if (darkHighContrast || (dark && highContrast)) {
        return AppearanceType::lightDarkHighContrast;
    }
    if (dark) {
        return AppearanceType::lightAndDark;
    }
    return highContrast ? AppearanceType::highContrast : AppearanceType::none;
}

template <typename T>
AppearanceType appearanceOfVariants(const Themeable<T>& value) {
    return appearanceFor(value.darkVariant.has_value(), value.lightVariantHighContrast.has_value(),
                         value.darkVariantHighContrast.has_value());
}

template <typename Alias>
AppearanceType appearanceOfReferences(const Alias& alias) {
    auto set = [&](ColorSource source) { return alias.referencedProjectItems[slotIndex(source)] != nullptr; };
    return appearanceFor(set(ColorSource::dark), set(ColorSource::lightHighContrast),
                         set(ColorSource::darkHighContrast));
}

// Every alias payload's four references, whatever its family.
OchreColorProjectItem** aliasReferences(OchreColorProjectItem& item) {
    switch (item.itemType) {
        case ProjectItemType::colorAlias: return item.colorAlias ? item.colorAlias->referencedProjectItems : nullptr;
        case ProjectItemType::shadowAlias: return item.shadowAlias ? item.shadowAlias->referencedProjectItems : nullptr;
        case ProjectItemType::numberAlias: return item.numberAlias ? item.numberAlias->referencedProjectItems : nullptr;
        case ProjectItemType::stringAlias: return item.stringAlias ? item.stringAlias->referencedProjectItems : nullptr;
        case ProjectItemType::booleanAlias:
            return item.booleanAlias ? item.booleanAlias->referencedProjectItems : nullptr;
        default: return nullptr;
    }
}

// Makes an alias a plain item holding what it resolves to now; the object stays the
// same, so aliases that point at it keep working. False when it resolves to nothing.
bool makePlain(OchreColorProjectItem& item) {
    switch (item.itemType) {
        case ProjectItemType::colorAlias:
            if (auto color = item.resolvedColor()) {
                OchreColorItem payload;
                payload.color = *color;
                payload.appearanceType = appearanceOfVariants(*color);
                payload.colorSpace = importing::spaceOfEncoding(color->lightVariant.encoding());
                item.colorAlias.reset();
                item.color = std::move(payload);
                item.itemType = ProjectItemType::color;
                return true;
            }
            return false;
        case ProjectItemType::shadowAlias:
            if (auto shadow = item.resolvedShadow()) {
                OchreColorShadow payload;
                payload.shadow = *shadow;
                payload.appearanceType = appearanceOfVariants(*shadow);
                payload.colorSpace = importing::spaceOfEncoding(shadow->lightVariant.color.encoding());
                item.shadowAlias.reset();
                item.shadow = std::move(payload);
                item.itemType = ProjectItemType::shadow;
                return true;
            }
            return false;
        case ProjectItemType::numberAlias:
            if (auto number = item.resolvedNumber()) {
                OchreColorNumber payload;
                payload.value = *number;
                payload.appearanceType = appearanceOfVariants(*number);
                item.numberAlias.reset();
                item.number = std::move(payload);
                item.itemType = ProjectItemType::number;
                return true;
            }
            return false;
        case ProjectItemType::stringAlias:
            if (auto text = item.resolvedString()) {
                OchreColorString payload;
                payload.value = *text;
                payload.appearanceType = appearanceOfVariants(*text);
                item.stringAlias.reset();
                item.string = std::move(payload);
                item.itemType = ProjectItemType::string;
                return true;
            }
            return false;
        default: return true;
    }
}

bool isAlias(const OchreColorProjectItem& item) {
    return aliasReferences(const_cast<OchreColorProjectItem&>(item)) != nullptr;
}

// The plain item an alias ends at for one appearance. Aliases point at plain items only:
// a document stores no identifier for an alias, so an alias of an alias would not survive
// being written and read back.
OchreColorProjectItem* plainTarget(OchreColorProjectItem* item, ColorSource slot) {
    for (int hop = 0; item != nullptr && hop < 64; ++hop) {
        OchreColorProjectItem** references = aliasReferences(*item);
        if (references == nullptr) {
            return item;
        }
        OchreColorProjectItem* next = references[slotIndex(slot)];
        item = next != nullptr ? next : references[0];
    }
    return nullptr;
}

}  // namespace

Reader::Reader(ImportOptions options) : options_(std::move(options)) {}

// ---------------------------------------------------------------- messages

void Reader::violation(std::size_t file, const std::string& path, const std::string& message) const {
    throw ImportSourceError(files_[file].path, path.empty() ? message : path + ": " + message);
}

void Reader::warn(std::size_t file, const std::string& text) const {
    const std::string line = "warning: " + files_[file].name + ": " + text;
    if (options_.diagnostics) {
        options_.diagnostics(line);
    } else {
        std::cout << line << '\n';
    }
}

void Reader::dropToken(Token& token, const std::string& message) {
    if (options_.strict) {
        violation(token.file, token.path, message);
    }
    token.failed = true;
    ++files_[token.file].dropped;
    warn(token.file, token.path + ": " + message + "; token skipped");
}

bool Reader::report(Token& token, const Issues& issues) {
    if (options_.strict && issues.first()) {
        violation(token.file, token.path, *issues.first());
    }
    if (issues.failed()) {
        dropToken(token, *issues.failure());
        return false;
    }
    return true;
}

// ---------------------------------------------------------------- reading

void Reader::addFile(const std::filesystem::path& path, std::string_view text) {
    File file;
    file.path = path;
    file.name = path.filename().string();
    try {
        file.root = parseJson(text);
    } catch (const JsonSyntaxError& error) {
        throw ImportSourceError(path, error.what());
    }
    if (!file.root.isObject()) {
        const std::size_t start = std::min(text.find_first_not_of(" \t\r\n"), text.size());
        throw ImportSourceError(path, lineAndColumn(text, start) + ": the top level is " +
                                          std::string(file.root.kindName()) + ", not an object");
    }
    files_.push_back(std::move(file));
    const std::size_t index = files_.size() - 1;
    if (!options_.strict && text.find("\"$value\"") == std::string_view::npos &&
        text.find("\"value\"") != std::string_view::npos) {
        // Files of the early drafts wrote "value" and "type" without the "$".
        rewriteUnprefixed(files_[index].root, 0);
    }
    if (text.find("\"$extends\"") != std::string_view::npos) {
        resolveExtends(index);
    }
    groups_.push_back(Group{});
    files_[index].rootGroup = groups_.size() - 1;
    collect(index, files_[index].root, {}, std::nullopt, std::string(), files_[index].rootGroup, 0);
}

void Reader::rewriteUnprefixed(JsonValue& node, std::size_t depth) {
    if (!node.isObject() || depth > maxJsonDepth) {
        return;
    }
    if (node.find("value") != nullptr) {
        for (JsonMember& member : node.members) {
            if (member.key == "value" || member.key == "type" || member.key == "description") {
                member.key.insert(0, "$");
            }
        }
        return;
    }
    for (JsonMember& member : node.members) {
        rewriteUnprefixed(member.value, depth + 1);
    }
}

void Reader::resolveExtends(std::size_t fileIndex) {
    File& file = files_[fileIndex];
    std::set<std::vector<std::string>> done;
    std::set<std::vector<std::string>> visiting;
    std::size_t copied = 0;

    // Groups are found again by their path after every change, since a merge moves values.
    auto groupAt = [&](const std::vector<std::string>& names) -> JsonValue* {
        JsonValue* node = &file.root;
        for (const std::string& name : names) {
            node = node->find(name);
            if (node == nullptr) {
                return nullptr;
            }
        }
        return node;
    };
    auto fail = [&](const std::vector<std::string>& names, const std::string& message) {
        if (options_.strict) {
            violation(fileIndex, joined(names), message);
        }
        warn(fileIndex, joined(names) + ": " + message + "; $extends ignored");
    };

    std::function<void(const std::vector<std::string>&, std::size_t)> resolveTree;
    std::function<void(const std::vector<std::string>&)> resolveOne =
        [&](const std::vector<std::string>& names) {
            if (done.contains(names)) {
                return;
            }
            if (visiting.contains(names)) {
                throw std::logic_error("cycle");
            }
            JsonValue* group = groupAt(names);
            const JsonValue* extends = group ? group->find("$extends") : nullptr;
            if (extends == nullptr) {
                done.insert(names);
                return;
            }
            std::vector<std::string> targetNames;
            std::string failure;
            if (std::optional<std::string> curly = curlyReference(*extends)) {
                std::string part;
                for (char c : *curly) {
                    if (c == '.') {
                        targetNames.push_back(part);
                        part.clear();
                    } else {
                        part += c;
                    }
                }
                targetNames.push_back(part);
            } else if (const JsonValue* pointer = extends->isString() && startsWith(extends->text, "#")
                                                      ? extends
                                                      : pointerReference(*extends);
                       pointer != nullptr && pointer->isString()) {
                std::optional<std::vector<std::string>> segments = pointerSegments(pointer->text, failure);
                if (!segments) {
                    fail(names, "$extends: " + failure.substr(6));
                    group = groupAt(names);
                    group->members.erase(std::remove_if(group->members.begin(), group->members.end(),
                                                        [](const JsonMember& m) { return m.key == "$extends"; }),
                                         group->members.end());
                    done.insert(names);
                    return;
                }
                targetNames = *segments;
            } else {
                failure = "$extends: expected a reference to a group such as \"{colors.base}\"";
            }
            const JsonValue* target = failure.empty() ? groupAt(targetNames) : nullptr;
            if (failure.empty() && target == nullptr) {
                failure = "$extends: no group " + extends->text + (extends->isString() ? "" : "");
            } else if (failure.empty() && !isGroupObject(*target)) {
                failure = "$extends: " + joined(targetNames) + " is a token, not a group";
            } else if (failure.empty() && targetNames.size() <= names.size() &&
                       std::equal(targetNames.begin(), targetNames.end(), names.begin())) {
                failure = "$extends: a group cannot extend itself or a group that holds it";
            }
            if (failure.empty()) {
                visiting.insert(names);
                try {
                    resolveTree(targetNames, 0);
                } catch (const std::logic_error&) {
                    failure = "$extends: circular chain of $extends through " + joined(targetNames);
                }
                visiting.erase(names);
            }
            group = groupAt(names);
            if (!failure.empty()) {
                fail(names, failure);
                group->members.erase(std::remove_if(group->members.begin(), group->members.end(),
                                                    [](const JsonMember& m) { return m.key == "$extends"; }),
                                     group->members.end());
                done.insert(names);
                return;
            }
            JsonValue merged = *groupAt(targetNames);
            copied += valueCount(merged);
            if (copied > maxExtendedValues) {
                throw ImportSourceError(file.path, joined(names) + ": $extends copies more than " +
                                                       std::to_string(maxExtendedValues) + " values");
            }
            mergeInto(merged, *group);
            *group = std::move(merged);
            done.insert(names);
        };
    resolveTree = [&](const std::vector<std::string>& names, std::size_t depth) {
        if (depth > maxJsonDepth) {
            return;
        }
        resolveOne(names);
        const JsonValue* group = groupAt(names);
        if (group == nullptr) {
            return;
        }
        std::vector<std::string> keys;
        for (const JsonMember& member : group->members) {
            if (!member.key.empty() && member.key.front() != '$' && isGroupObject(member.value)) {
                keys.push_back(member.key);
            }
        }
        for (const std::string& key : keys) {
            std::vector<std::string> child = names;
            child.push_back(key);
            resolveTree(child, depth + 1);
        }
    };
    try {
        resolveTree({}, 0);
    } catch (const std::logic_error&) {
        // A cycle through the top level; each group involved was reported where it was found.
    }
}

void Reader::checkCommonProperties(std::size_t file, const std::string& path, const JsonValue& node, bool isToken,
                                   bool isTop) {
    if (!options_.strict) {
        return;
    }
    for (const JsonMember& member : node.members) {
        const std::string& key = member.key;
        const std::string where = path.empty() ? key : path + "." + key;
        if (key.empty() || key.front() != '$') {
            if (key.find_first_of(".{}") != std::string::npos) {
                violation(file, where, "names must not contain \".\", \"{\" or \"}\"");
            }
            continue;
        }
        if (key == "$type") {
            if (!member.value.isString()) {
                violation(file, path, "$type: expected a string, found " + std::string(member.value.kindName()));
            }
            if (!tokenTypeNamed(member.value.text)) {
                violation(file, path, "$type: unknown type \"" + member.value.text + "\"");
            }
        } else if (key == "$description") {
            if (!member.value.isString()) {
                violation(file, path,
                          "$description: expected a string, found " + std::string(member.value.kindName()));
            }
        } else if (key == "$extensions") {
            if (!member.value.isObject()) {
                violation(file, path,
                          "$extensions: expected an object, found " + std::string(member.value.kindName()));
            }
        } else if (key == "$deprecated") {
            if (!member.value.isString() && !member.value.isBoolean()) {
                violation(file, path, "$deprecated: expected a boolean or a string, found " +
                                          std::string(member.value.kindName()));
            }
        } else if (key == "$value" && isToken) {
        } else if ((key == "$extends" || key == "$root") && !isToken) {
        } else if (key == "$schema" && isTop) {
        } else {
            violation(file, path.empty() ? key : path, "unknown property " + key);
        }
    }
}

void Reader::collect(std::size_t file, const JsonValue& node, const std::vector<std::string>& names,
                     std::optional<TokenType> inherited, const std::string& inheritedUnknown, std::size_t group,
                     std::size_t depth) {
    const std::string path = joined(names);
    checkCommonProperties(file, path, node, false, names.empty());
    std::string inheritedUnknownWord = inheritedUnknown;
    if (const JsonValue* type = node.find("$type"); type != nullptr && type->isString()) {
        inherited = tokenTypeNamed(type->text);
        if (!inherited) {
            inherited = legacyTokenTypeNamed(type->text);
        }
        inheritedUnknownWord = inherited ? std::string() : type->text;
    }
    for (const JsonMember& member : node.members) {
        std::vector<std::string> childNames = names;
        childNames.push_back(member.key);
        if (member.key == "$root") {
            if (!member.value.isObject() || member.value.find("$value") == nullptr) {
                if (options_.strict) {
                    violation(file, joined(childNames), "$root must be a token with a $value");
                }
                continue;
            }
            addToken(file, member.value, std::move(childNames), inherited, inheritedUnknownWord, group);
            continue;
        }
        if (!member.key.empty() && member.key.front() == '$') {
            continue;
        }
        if (!member.value.isObject()) {
            if (options_.strict) {
                violation(file, joined(childNames), "expected a token or a group (an object), found " +
                                                        std::string(member.value.kindName()));
            }
            continue;
        }
        if (member.value.find("$value") != nullptr) {
            addToken(file, member.value, std::move(childNames), inherited, inheritedUnknownWord, group);
            continue;
        }
        if (depth >= maxJsonDepth) {
            continue;
        }
        groups_.push_back(Group{member.key, {}});
        const std::size_t child = groups_.size() - 1;
        groups_[group].entries.push_back({false, child});
        // The tokens inherit the group's $type when it names a type; an unknown word
        // marks them as of that unknown type.
        std::optional<TokenType> childType = inherited;
        std::string childUnknown = inheritedUnknownWord;
        if (const JsonValue* type = member.value.find("$type"); type != nullptr && type->isString()) {
            childType = tokenTypeNamed(type->text);
            if (!childType) {
                childType = legacyTokenTypeNamed(type->text);
            }
            childUnknown = childType ? std::string() : type->text;
        }
        collect(file, member.value, childNames, childType, childUnknown, child, depth + 1);
    }
}

void Reader::addToken(std::size_t file, const JsonValue& node, std::vector<std::string> names,
                      std::optional<TokenType> inherited, const std::string& inheritedUnknown, std::size_t group) {
    Token token;
    token.file = file;
    token.path = joined(names);
    token.names = std::move(names);
    token.node = &node;
    token.value = node.find("$value");
    checkCommonProperties(file, token.path, node, true, false);
    if (const JsonValue* type = node.find("$type"); type != nullptr && type->isString()) {
        token.ownType = true;
        token.type = tokenTypeNamed(type->text);
        if (!token.type) {
            token.type = legacyTokenTypeNamed(type->text);
        }
        if (!token.type) {
            token.unknownType = type->text;
        }
    } else {
        token.type = inherited;
        token.unknownType = inheritedUnknown;
    }
    tokens_.push_back(std::move(token));
    const std::size_t index = tokens_.size() - 1;
    files_[file].tokenAt.emplace(tokens_[index].path, index);
    groups_[group].entries.push_back({true, index});
}

// ---------------------------------------------------------------- resolving

std::optional<std::size_t> Reader::tokenAtPath(std::size_t file, const std::string& path) const {
    auto lookIn = [&](std::size_t f) -> std::optional<std::size_t> {
        const auto& map = files_[f].tokenAt;
        if (auto found = map.find(path); found != map.end()) {
            return found->second;
        }
        // A reference to a group with a $root token means that token.
        if (!options_.strict) {
            if (auto found = map.find(path + ".$root"); found != map.end()) {
                return found->second;
            }
        }
        return std::nullopt;
    };
    if (auto own = lookIn(file)) {
        return own;
    }
    if (acrossFiles_) {
        for (std::size_t f = 0; f < files_.size(); ++f) {
            if (f != file) {
                if (auto other = lookIn(f)) {
                    return other;
                }
            }
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> Reader::findTarget(std::size_t index, std::string& failure) {
    Token& token = tokens_[index];
    if (std::optional<std::string> path = curlyReference(*token.value)) {
        if (path->empty() || path->front() == '.' || path->back() == '.' ||
            path->find("..") != std::string::npos) {
            failure = "malformed reference \"" + token.value->text + "\"";
            return std::nullopt;
        }
        std::optional<std::size_t> target = tokenAtPath(token.file, *path);
        if (!target) {
            failure = "reference to missing token {" + *path + "}";
        }
        return target;
    }
    const JsonValue* pointer = pointerReference(*token.value);
    if (pointer == nullptr) {
        return std::nullopt;
    }
    if (!pointer->isString()) {
        failure = "$ref: expected a JSON pointer string, found " + std::string(pointer->kindName());
        return std::nullopt;
    }
    std::optional<std::vector<std::string>> segments = pointerSegments(pointer->text, failure);
    if (!segments) {
        return std::nullopt;
    }
    const JsonValue* node = &files_[token.file].root;
    std::vector<std::string> names;
    const JsonValue* tokenNode = nullptr;
    std::size_t tokenDepth = 0;
    for (const std::string& segment : *segments) {
        if (node->isObject() && node->find("$value") != nullptr && tokenNode == nullptr) {
            tokenNode = node;
            tokenDepth = names.size();
        }
        if (node->isArray()) {
            std::size_t position = 0;
            const bool digits = !segment.empty() && std::all_of(segment.begin(), segment.end(), [](char c) {
                return c >= '0' && c <= '9';
            }) && segment.size() < 10;
            position = digits ? std::stoul(segment) : node->members.size();
            node = position < node->members.size() ? &node->members[position].value : nullptr;
        } else {
            node = node->find(segment);
        }
        if (node == nullptr) {
            failure = "$ref: \"" + pointer->text + "\" points at nothing";
            return std::nullopt;
        }
        names.push_back(segment);
    }
    if (node->isObject() && node->find("$value") != nullptr) {
        tokenNode = node;
        tokenDepth = names.size();
    }
    if (tokenNode != nullptr && (tokenDepth == names.size() ||
                                 (tokenDepth + 1 == names.size() && names.back() == "$value"))) {
        names.resize(tokenDepth);
        if (auto target = files_[token.file].tokenAt.find(joined(names)); target != files_[token.file].tokenAt.end()) {
            return target->second;
        }
        failure = "$ref: \"" + pointer->text + "\" points at a token this reader does not know";
        return std::nullopt;
    }
    if (tokenNode == nullptr && isGroupObject(*node)) {
        failure = "$ref: \"" + pointer->text + "\" points at a group, not a token or value";
        return std::nullopt;
    }
    token.pointed = std::make_unique<JsonValue>(*node);
    return std::nullopt;
}

void Reader::resolve(bool acrossFiles) {
    acrossFiles_ = acrossFiles;
    for (std::size_t i = 0; i < tokens_.size(); ++i) {
        resolveToken(i);
    }
}

void Reader::resolveToken(std::size_t index) {
    std::vector<std::size_t> chain;
    std::size_t current = index;
    while (true) {
        Token& token = tokens_[current];
        if (token.state == Token::State::done) {
            break;
        }
        if (token.state == Token::State::resolving) {
            // A cycle: every token on it fails by naming the loop.
            auto start = std::find(chain.begin(), chain.end(), current);
            std::string loop;
            for (auto it = start; it != chain.end(); ++it) {
                loop += tokens_[*it].path + " -> ";
            }
            loop += token.path;
            for (auto it = start; it != chain.end(); ++it) {
                if (!tokens_[*it].failed) {
                    dropToken(tokens_[*it], "reference cycle " + loop);
                }
            }
            break;
        }
        token.state = Token::State::resolving;
        chain.push_back(current);
        std::string failure;
        std::optional<std::size_t> target = findTarget(current, failure);
        if (!failure.empty()) {
            dropToken(token, failure);
            break;
        }
        if (!target) {
            break;
        }
        token.target = target;
        current = *target;
    }
    for (auto it = chain.rbegin(); it != chain.rend(); ++it) {
        buildItem(*it);
        tokens_[*it].state = Token::State::done;
    }
}

const JsonValue* Reader::literalOf(std::size_t index) {
    resolveToken(index);
    return tokens_[index].literal;
}

std::optional<JsonValue> Reader::expandReferences(const Token& token, const JsonValue& value, std::size_t depth,
                                                  Issues& issues) {
    if (depth > maxExpansionDepth) {
        issues.fail("$value: references nested deeper than " + std::to_string(maxExpansionDepth) + " levels");
        return std::nullopt;
    }
    auto follow = [&](std::optional<std::size_t> target, const std::string& name) -> std::optional<JsonValue> {
        if (!target) {
            issues.fail("$value: reference to missing token " + name);
            return std::nullopt;
        }
        if (tokens_[*target].state == Token::State::resolving) {
            issues.fail("$value: reference cycle through " + tokens_[*target].path);
            return std::nullopt;
        }
        if (++nesting_ > maxExpansionDepth) {
            --nesting_;
            issues.fail("$value: references nested deeper than " + std::to_string(maxExpansionDepth) + " levels");
            return std::nullopt;
        }
        const JsonValue* literal = literalOf(*target);
        --nesting_;
        if (literal == nullptr) {
            issues.fail("$value: references " + tokens_[*target].path + ", which could not be read");
            return std::nullopt;
        }
        return expandReferences(token, *literal, depth + 1, issues);
    };
    if (std::optional<std::string> path = curlyReference(value)) {
        return follow(tokenAtPath(token.file, *path), "{" + *path + "}");
    }
    if (const JsonValue* pointer = pointerReference(value)) {
        std::string failure;
        std::optional<std::vector<std::string>> segments =
            pointer->isString() ? pointerSegments(pointer->text, failure) : std::nullopt;
        if (!segments) {
            issues.fail("$value: " + (failure.empty() ? std::string("$ref must be a string") : failure));
            return std::nullopt;
        }
        const JsonValue* node = &files_[token.file].root;
        for (const std::string& segment : *segments) {
            if (node->isArray()) {
                const bool digits = !segment.empty() && segment.size() < 10 &&
                                    std::all_of(segment.begin(), segment.end(), [](char c) { return c >= '0' && c <= '9'; });
                const std::size_t position = digits ? std::stoul(segment) : node->members.size();
                node = position < node->members.size() ? &node->members[position].value : nullptr;
            } else {
                node = node->find(segment);
            }
            if (node == nullptr) {
                issues.fail("$value: $ref \"" + pointer->text + "\" points at nothing");
                return std::nullopt;
            }
        }
        if (const JsonValue* inner = node->find("$value")) {
            node = inner;
        }
        return expandReferences(token, *node, depth + 1, issues);
    }
    if (expansionBudget_ == 0) {
        issues.fail("$value: references bring in more than " + std::to_string(maxExpandedValues) + " values");
        return std::nullopt;
    }
    --expansionBudget_;
    JsonValue copy;
    copy.kind = value.kind;
    copy.boolean = value.boolean;
    copy.number = value.number;
    copy.text = value.text;
    copy.members.reserve(value.members.size());
    for (const JsonMember& member : value.members) {
        std::optional<JsonValue> expanded = expandReferences(token, member.value, depth + 1, issues);
        if (!expanded) {
            return std::nullopt;
        }
        copy.members.push_back({member.key, std::move(*expanded)});
    }
    return copy;
}

void Reader::buildItem(std::size_t index) {
    Token& token = tokens_[index];
    if (token.failed || token.state == Token::State::done) {
        return;
    }
    File& file = files_[token.file];
    auto countSkipped = [&](const std::string& word) {
        token.skipped = true;
        auto entry = std::find_if(file.skipped.begin(), file.skipped.end(),
                                  [&](const auto& pair) { return pair.first == word; });
        if (entry == file.skipped.end()) {
            file.skipped.emplace_back(word, 1);
        } else {
            ++entry->second;
        }
    };
    const std::string name = token.names.size() >= 2 && token.names.back() == "$root"
                                  ? token.names[token.names.size() - 2]
                                  : (token.names.back() == "$root" ? std::string("root") : token.names.back());

    if (token.target) {
        Token& target = tokens_[*token.target];
        if (target.failed) {
            dropToken(token, "references " + target.path + ", which could not be read");
            return;
        }
        token.literal = target.literal;
        if (!token.ownType) {
            token.type = target.type;
            token.unknownType = target.unknownType;
        } else if (token.type && target.type && *token.type != *target.type) {
            dropToken(token, "references " + target.path + ", a " + std::string(tokenTypeName(*target.type)) +
                                 " token, not " + std::string(tokenTypeName(*token.type)));
            return;
        }
        if (!token.type) {
            if (options_.strict) {
                violation(token.file, token.path, "unknown type \"" + token.unknownType + "\"");
            }
            countSkipped(token.unknownType.empty() ? "untyped" : token.unknownType);
            return;
        }
        if (!isImportedType(*token.type) || target.skipped || !target.item) {
            countSkipped(std::string(tokenTypeName(*token.type)));
            return;
        }
        OchreColorProjectItem* referenced = plainTarget(target.item.get(), ColorSource::light);
        if (referenced == nullptr) {
            dropToken(token, "references " + target.path + ", which could not be read");
            return;
        }
        auto makeSetAlias = [&](auto alias) {
            alias.aliasTypes[0] = AliasSetType::item(referenced->uuid);
            alias.referencedProjectItems[0] = referenced;
            return alias;
        };
        auto makeItemAlias = [&](auto alias) {
            alias.aliasTypes[0] = ItemAliasType::item(referenced->uuid);
            alias.referencedProjectItems[0] = referenced;
            return alias;
        };
        switch (*token.type) {
            case TokenType::color:
                token.item = std::make_shared<OchreColorProjectItem>(name, newUUID(), makeSetAlias(OchreColorAlias{}));
                break;
            case TokenType::shadow:
                token.item =
                    std::make_shared<OchreColorProjectItem>(name, newUUID(), makeSetAlias(OchreColorShadowAlias{}));
                break;
            case TokenType::fontFamily:
                token.item =
                    std::make_shared<OchreColorProjectItem>(name, newUUID(), makeItemAlias(OchreColorStringAlias{}));
                break;
            default:
                if (referenced->itemType == ProjectItemType::boolean ||
                    referenced->itemType == ProjectItemType::booleanAlias) {
                    token.item = std::make_shared<OchreColorProjectItem>(name, newUUID(),
                                                                         makeItemAlias(OchreColorBooleanAlias{}));
                } else {
                    token.item = std::make_shared<OchreColorProjectItem>(name, newUUID(),
                                                                         makeItemAlias(OchreColorNumberAlias{}));
                }
                break;
        }
        tokenOfItem_[token.item.get()] = index;
        return;
    }

    token.literal = token.pointed ? token.pointed.get() : token.value;
    if (!token.type) {
        if (token.unknownType.empty()) {
            dropToken(token, "no $type on the token or the groups above it");
            return;
        }
        if (options_.strict) {
            violation(token.file, token.path, "unknown type \"" + token.unknownType + "\"");
        }
        countSkipped(token.unknownType);
        return;
    }
    if (!isImportedType(*token.type) && !options_.strict) {
        countSkipped(std::string(tokenTypeName(*token.type)));
        return;
    }
    Issues issues;
    std::optional<JsonValue> expanded;
    const JsonValue* value = token.literal;
    if (containsReference(*value)) {
        // Values reached inside this one share its budget.
        if (nesting_ == 0) {
            expansionBudget_ = maxExpandedValues;
        }
        expanded = expandReferences(token, *value, 0, issues);
        if (!expanded) {
            report(token, issues);
            return;
        }
        value = &*expanded;
    }
    const std::string where = "$value";
    const TokenType type = *token.type;
    if (!isImportedType(type)) {
        if (options_.strict) {
            checkSkippedValue(type, *value, where, issues);
            report(token, issues);
        }
        countSkipped(std::string(tokenTypeName(type)));
        return;
    }
    ProjectItemPtr item;
    switch (type) {
        case TokenType::color:
            if (std::optional<TokenColor> color = readColor(*value, where, issues)) {
                OchreColorItem payload;
                payload.color.name = name;
                payload.color.uuid = newUUID();
                payload.color.lightVariant = color->color;
                payload.colorSpace = color->space;
                item = std::make_shared<OchreColorProjectItem>(name, newUUID(), std::move(payload));
            }
            break;
        case TokenType::shadow:
            if (std::optional<ShadowDetails> shadow = readShadow(*value, where, issues)) {
                OchreColorShadow payload;
                payload.shadow.name = name;
                payload.shadow.uuid = newUUID();
                payload.shadow.lightVariant = *shadow;
                payload.colorSpace = importing::spaceOfEncoding(shadow->color.encoding());
                item = std::make_shared<OchreColorProjectItem>(name, newUUID(), std::move(payload));
            }
            break;
        case TokenType::fontFamily:
            if (std::optional<std::string> family = readFontFamily(*value, where, issues)) {
                OchreColorString payload;
                payload.value.lightVariant = *family;
                item = std::make_shared<OchreColorProjectItem>(name, newUUID(), std::move(payload));
            }
            break;
        default: {
            std::optional<double> number;
            switch (type) {
                case TokenType::dimension: number = readDimension(*value, where, issues); break;
                case TokenType::fontWeight: number = readFontWeight(*value, where, issues); break;
                case TokenType::duration: number = readDuration(*value, where, issues); break;
                default: number = readNumber(*value, where, issues); break;
            }
            if (!number) {
                break;
            }
            // The program's own Design Tokens files mark booleans as numbers with an extension.
            const JsonValue* extensions = token.node->find("$extensions");
            const JsonValue* kind = extensions ? extensions->find("com.korvid.ochre-type") : nullptr;
            if (kind != nullptr && kind->isString() && kind->text == "boolean") {
                OchreColorBoolean payload;
                payload.value.lightVariant = *number == 1.0;
                item = std::make_shared<OchreColorProjectItem>(name, newUUID(), std::move(payload));
            } else {
                OchreColorNumber payload;
                payload.value.lightVariant = *number;
                item = std::make_shared<OchreColorProjectItem>(name, newUUID(), std::move(payload));
            }
            break;
        }
    }
    if (!report(token, issues) || !item) {
        return;
    }
    token.item = std::move(item);
    tokenOfItem_[token.item.get()] = index;
}

// ---------------------------------------------------------------- the tree

void Reader::fillGroup(std::size_t file, OchreColorProjectItem& root) {
    // An explicit stack keeps deep files off the call stack.
    struct Frame {
        std::size_t group;
        OchreColorProjectItem* item;
        std::size_t next;
    };
    std::vector<Frame> stack{{files_[file].rootGroup, &root, 0}};
    // Groups are attached to their parent when they are finished and hold something.
    std::vector<ProjectItemPtr> pending{nullptr};
    while (!stack.empty()) {
        Frame& frame = stack.back();
        const Group& group = groups_[frame.group];
        if (frame.next == group.entries.size()) {
            ProjectItemPtr finished = pending.back();
            pending.pop_back();
            stack.pop_back();
            if (finished && !stack.empty() && !finished->group->items.empty()) {
                stack.back().item->group->items.push_back(std::move(finished));
            }
            continue;
        }
        const Group::Entry entry = group.entries[frame.next++];
        if (entry.isToken) {
            const Token& token = tokens_[entry.index];
            // A group's $root token stands just before the group, under the group's name.
            if (token.item && !(token.names.back() == "$root" && frame.item != &root)) {
                frame.item->group->items.push_back(token.item);
            }
            continue;
        }
        for (const Group::Entry& inner : groups_[entry.index].entries) {
            if (inner.isToken && tokens_[inner.index].names.back() == "$root" && tokens_[inner.index].item) {
                frame.item->group->items.push_back(tokens_[inner.index].item);
            }
        }
        OchreColorGroup payload;
        payload.providesNamespace = true;
        auto child = std::make_shared<OchreColorProjectItem>(groups_[entry.index].name, newUUID(), std::move(payload));
        OchreColorProjectItem* childItem = child.get();
        pending.push_back(std::move(child));
        stack.push_back({entry.index, childItem, 0});
    }
}

// ---------------------------------------------------------------- merging

void Reader::setVariantFrom(OchreColorProjectItem& base, const OchreColorProjectItem& variant, ColorSource slot) {
    switch (base.itemType) {
        case ProjectItemType::color:
            if (auto color = variant.resolvedColor()) {
                base.color->color.setVariant(slot, color->lightVariant);
                base.color->appearanceType = appearanceOfVariants(base.color->color);
            }
            break;
        case ProjectItemType::shadow:
            if (auto shadow = variant.resolvedShadow()) {
                base.shadow->shadow.setVariant(slot, shadow->lightVariant);
                base.shadow->appearanceType = appearanceOfVariants(base.shadow->shadow);
            }
            break;
        case ProjectItemType::number:
            if (auto number = variant.resolvedNumber()) {
                base.number->value.setVariant(slot, number->lightVariant);
                base.number->appearanceType = appearanceOfVariants(base.number->value);
            }
            break;
        case ProjectItemType::boolean:
            if (auto boolean = variant.resolvedBoolean()) {
                base.boolean->value.setVariant(slot, boolean->lightVariant);
                base.boolean->appearanceType = appearanceOfVariants(base.boolean->value);
            }
            break;
        case ProjectItemType::string:
            if (auto text = variant.resolvedString()) {
                base.string->value.setVariant(slot, text->lightVariant);
                base.string->appearanceType = appearanceOfVariants(base.string->value);
            }
            break;
        default: break;
    }
}

OchreColorProjectItem* Reader::counterpart(const OchreColorProjectItem* target, std::size_t baseFile,
                                           const std::string& basePrefix, std::size_t variantFile,
                                           const std::string& variantPrefix) const {
    auto found = tokenOfItem_.find(target);
    if (found == tokenOfItem_.end()) {
        return nullptr;
    }
    const Token& token = tokens_[found->second];
    if (token.file == variantFile && startsWith(token.path, variantPrefix)) {
        const std::string path = basePrefix + token.path.substr(variantPrefix.size());
        auto base = files_[baseFile].tokenAt.find(path);
        if (base == files_[baseFile].tokenAt.end() || !tokens_[base->second].item) {
            return nullptr;
        }
        return tokens_[base->second].item.get();
    }
    // A target outside the merged part stays where it is.
    return token.file == variantFile && variantFile != baseFile ? nullptr : const_cast<OchreColorProjectItem*>(target);
}

namespace {

// Item families that can take each other's values.
int family(const OchreColorProjectItem& item) {
    switch (item.itemType) {
        case ProjectItemType::color:
        case ProjectItemType::colorAlias: return 1;
        case ProjectItemType::number:
        case ProjectItemType::numberAlias: return 2;
        case ProjectItemType::boolean:
        case ProjectItemType::booleanAlias: return 3;
        case ProjectItemType::string:
        case ProjectItemType::stringAlias: return 4;
        case ProjectItemType::shadow:
        case ProjectItemType::shadowAlias: return 5;
        case ProjectItemType::group: return 6;
        default: return 0;
    }
}

}  // namespace

void Reader::mergeGroups(OchreColorProjectItem& base, OchreColorProjectItem& variant, ColorSource slot,
                         std::size_t baseFile, const std::string& basePrefix, std::size_t variantFile,
                         const std::string& variantPrefix) {
    struct Pair {
        OchreColorProjectItem* base;
        OchreColorProjectItem* variant;
    };
    std::vector<Pair> aliasPairs;
    std::unordered_set<const OchreColorProjectItem*> matched;

    // Pairs items by name, group by group; plain items take their value at once.
    std::function<void(OchreColorProjectItem&, OchreColorProjectItem&, std::size_t)> pairUp =
        [&](OchreColorProjectItem& a, OchreColorProjectItem& b, std::size_t depth) {
            if (depth > maxJsonDepth) {
                return;
            }
            std::unordered_map<std::string_view, std::vector<std::size_t>> byName;
            for (std::size_t i = 0; i < b.group->items.size(); ++i) {
                byName[b.group->items[i]->name].push_back(i);
            }
            for (const ProjectItemPtr& baseChild : a.group->items) {
                auto candidates = byName.find(baseChild->name);
                if (candidates == byName.end()) {
                    continue;
                }
                for (std::size_t position : candidates->second) {
                    OchreColorProjectItem& variantChild = *b.group->items[position];
                    if (matched.contains(&variantChild) || family(variantChild) != family(*baseChild)) {
                        continue;
                    }
                    matched.insert(&variantChild);
                    if (isItemGroup(*baseChild)) {
                        pairUp(*baseChild, variantChild, depth + 1);
                    } else if (isAlias(*baseChild)) {
                        aliasPairs.push_back({baseChild.get(), &variantChild});
                    } else {
                        setVariantFrom(*baseChild, variantChild, slot);
                    }
                    break;
                }
            }
        };
    pairUp(base, variant, 0);

    // Aliases second, so that plain items already carry this appearance.
    for (const Pair& pair : aliasPairs) {
        OchreColorProjectItem* const* references = aliasReferences(*pair.variant);
        OchreColorProjectItem* target = nullptr;
        if (references != nullptr && references[0] != nullptr) {
            target = plainTarget(counterpart(references[0], baseFile, basePrefix, variantFile, variantPrefix), slot);
        }
        if (target == nullptr) {
            if (makePlain(*pair.base)) {
                setVariantFrom(*pair.base, *pair.variant, slot);
            }
            continue;
        }
        const int slotNumber = slotIndex(slot);
        OchreColorProjectItem& item = *pair.base;
        switch (item.itemType) {
            case ProjectItemType::colorAlias:
                item.colorAlias->aliasTypes[slotNumber] = AliasSetType::item(target->uuid);
                item.colorAlias->referencedProjectItems[slotNumber] = target;
                item.colorAlias->appearanceType = appearanceOfReferences(*item.colorAlias);
                break;
            case ProjectItemType::shadowAlias:
                item.shadowAlias->aliasTypes[slotNumber] = AliasSetType::item(target->uuid);
                item.shadowAlias->referencedProjectItems[slotNumber] = target;
                item.shadowAlias->appearanceType = appearanceOfReferences(*item.shadowAlias);
                break;
            case ProjectItemType::numberAlias:
                item.numberAlias->aliasTypes[slotNumber] = ItemAliasType::item(target->uuid);
                item.numberAlias->referencedProjectItems[slotNumber] = target;
                item.numberAlias->appearanceType = appearanceOfReferences(*item.numberAlias);
                break;
            case ProjectItemType::stringAlias:
                item.stringAlias->aliasTypes[slotNumber] = ItemAliasType::item(target->uuid);
                item.stringAlias->referencedProjectItems[slotNumber] = target;
                item.stringAlias->appearanceType = appearanceOfReferences(*item.stringAlias);
                break;
            case ProjectItemType::booleanAlias:
                item.booleanAlias->aliasTypes[slotNumber] = ItemAliasType::item(target->uuid);
                item.booleanAlias->referencedProjectItems[slotNumber] = target;
                item.booleanAlias->appearanceType = appearanceOfReferences(*item.booleanAlias);
                break;
            default: break;
        }
    }

    // Matched items leave the variant tree; emptied groups go with them.
    std::function<void(OchreColorProjectItem&, std::size_t)> prune = [&](OchreColorProjectItem& group,
                                                                         std::size_t depth) {
        std::vector<ProjectItemPtr> kept;
        for (ProjectItemPtr& child : group.group->items) {
            if (isItemGroup(*child) && depth < maxJsonDepth) {
                prune(*child, depth + 1);
                if (child->group->items.empty()) {
                    removed_.push_back(std::move(child));
                    continue;
                }
                kept.push_back(std::move(child));
            } else if (matched.contains(child.get())) {
                removed_.push_back(std::move(child));
            } else {
                kept.push_back(std::move(child));
            }
        }
        group.group->items = std::move(kept);
    };
    prune(variant, 0);
}

void Reader::mergeFile(std::size_t baseFile, OchreColorProjectItem& base, std::size_t variantFile,
                       OchreColorProjectItem& variant, ColorSource slot) {
    mergeGroups(base, variant, slot, baseFile, "", variantFile, "");
    std::size_t left = 0;
    std::function<void(const OchreColorProjectItem&)> count = [&](const OchreColorProjectItem& item) {
        if (isItemGroup(item)) {
            for (const ProjectItemPtr& child : item.group->items) {
                count(*child);
            }
        } else {
            ++left;
        }
    };
    count(variant);
    files_[variantFile].unmatched += left;
}

void Reader::applyAppearanceGroups(std::size_t file, OchreColorProjectItem& root) {
    auto apply = [&](OchreColorProjectItem& holder, const std::string& prefix) {
        auto find = [&](std::string_view name) -> ProjectItemPtr {
            for (const ProjectItemPtr& child : holder.group->items) {
                if (isItemGroup(*child) && lowercasedASCII(child->name) == name) {
                    return child;
                }
            }
            return nullptr;
        };
        ProjectItemPtr light = find("light");
        if (!light) {
            return false;
        }
        const std::string basePrefix = prefix + light->name + ".";
        struct Variant {
            const char* name;
            ColorSource slot;
        };
        for (const Variant& variant : {Variant{"dark", ColorSource::dark},
                                       Variant{"high contrast", ColorSource::lightHighContrast},
                                       Variant{"dark high contrast", ColorSource::darkHighContrast}}) {
            if (ProjectItemPtr group = find(variant.name)) {
                mergeGroups(*light, *group, variant.slot, file, basePrefix, file, prefix + group->name + ".");
            }
        }
        std::erase_if(holder.group->items, [&](const ProjectItemPtr& child) {
            if (isItemGroup(*child) && child->group->items.empty()) {
                removed_.push_back(child);
                return true;
            }
            return false;
        });
        std::vector<ProjectItemPtr>& top = root.group->items;
        if (top.size() == 1 && lowercasedASCII(top.front()->name) == "light" && isItemGroup(*top.front())) {
            ProjectItemPtr only = top.front();
            removed_.push_back(only);
            top = only->group->items;
        }
        return true;
    };
    if (apply(root, "")) {
        return;
    }
    std::vector<ProjectItemPtr> children = root.group->items;
    for (const ProjectItemPtr& child : children) {
        if (isItemGroup(*child)) {
            apply(*child, child->name + ".");
        }
    }
}

void Reader::finish(const std::vector<OchreColorProjectItem*>& roots) {
    // Aliases whose target left the tree take the value they resolve to now.
    std::unordered_set<const OchreColorProjectItem*> live;
    std::vector<OchreColorProjectItem*> aliases;
    std::vector<OchreColorProjectItem*> stack(roots.begin(), roots.end());
    while (!stack.empty()) {
        OchreColorProjectItem* item = stack.back();
        stack.pop_back();
        live.insert(item);
        if (isItemGroup(*item)) {
            for (const ProjectItemPtr& child : item->group->items) {
                stack.push_back(child.get());
            }
        } else if (isAlias(*item)) {
            aliases.push_back(item);
        }
    }
    // An alias whose target is itself a dangling alias resolves through it while the
    // removed items are still alive, so one pass in any order serves.
    for (OchreColorProjectItem* item : aliases) {
        OchreColorProjectItem** references = aliasReferences(*item);
        const bool dangling = references != nullptr &&
                              std::any_of(references, references + 4, [&](OchreColorProjectItem* target) {
                                  return target != nullptr && !live.contains(target);
                              });
        if (dangling && !makePlain(*item)) {
            // Nothing to resolve to: the references are cut so that none points at a freed item.
            for (int slot = 0; slot < 4; ++slot) {
                if (references[slot] != nullptr && !live.contains(references[slot])) {
                    references[slot] = nullptr;
                }
            }
        }
    }
    removed_.clear();
    for (std::size_t f = 0; f < files_.size(); ++f) {
        const File& file = files_[f];
        if (!file.skipped.empty()) {
            std::size_t total = 0;
            std::string list;
            for (const auto& [word, count] : file.skipped) {
                total += count;
                list += (list.empty() ? "" : ", ") + word + " " + std::to_string(count);
            }
            warn(f, "skipped " + std::to_string(total) + (total == 1 ? " token" : " tokens") +
                        " of types the document cannot hold: " + list);
        }
        if (file.unmatched > 0) {
            warn(f, std::to_string(file.unmatched) + (file.unmatched == 1 ? " token has" : " tokens have") +
                        " no counterpart in the base file and " + (file.unmatched == 1 ? "was" : "were") +
                        " left out");
        }
    }
}

}  // namespace tintwork::dtcg
