#include "export/AndroidResourceExporter.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <map>
#include <unordered_set>

#include "export/CodeName.h"
#include "export/NumberFormat.h"
#include "export/TemplateExporter.h"
#include "export/TemplateRecords.h"
#include "model/FileIO.h"

namespace tintwork {

namespace {

// A small element tree printed by the document file's rules: two-space indent,
// attributes sorted by name, trimmed and escaped values, self-closed empty elements.
struct XmlNode {
    std::string name;
    std::map<std::string, std::string> attributes;
    std::string value;
    std::vector<XmlNode> children;

    XmlNode& add(std::string childName, std::map<std::string, std::string> childAttributes, std::string childValue = {}) {
        children.push_back({std::move(childName), std::move(childAttributes), std::move(childValue), {}});
        return children.back();
    }
};

std::string escapeXml(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        switch (c) {
            case '&': out += "&amp;"; break;
            case '"': out += "&quot;"; break;
            case '\'': out += "&apos;"; break;
            case '>': out += "&gt;"; break;
            case '<': out += "&lt;"; break;
            default: out += c; break;
        }
    }
    return out;
}

std::string_view trimmed(std::string_view text) {
    const auto isSpace = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v'; };
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

void printNode(const XmlNode& node, int level, std::string& out) {
    const std::string indent(static_cast<std::size_t>(level) * 2, ' ');
    out += indent + "<" + node.name;
    for (const auto& [key, value] : node.attributes) {
        out += " " + key + "=\"" + escapeXml(value) + "\"";
    }
    const std::string value = escapeXml(trimmed(node.value));
    if (node.children.empty()) {
        out += value.empty() ? "/>\n" : ">" + value + "</" + node.name + ">\n";
        return;
    }
    out += ">" + value + "\n";
    for (const XmlNode& child : node.children) {
        printNode(child, level + 1, out);
    }
    out += indent + "</" + node.name + ">\n";
}

// A number as a resource: whole numbers in the integer range are integers, anything
// else a float item, since the resource compiler rejects a fraction in <integer>.
bool isWholeInteger(double value) {
    return std::isfinite(value) && value == std::trunc(value) && value >= std::numeric_limits<int>::min() &&
           value <= std::numeric_limits<int>::max();
}

std::string numberText(double value) {
    if (isWholeInteger(value)) {
        return std::to_string(static_cast<long long>(value));
    }
    return roundTripDoubleText(value);
}

// A length in density-independent pixels: "8dp", "0.5dp".
std::string dpText(double value) {
    return formatDecimalNumber(value) + "dp";
}

// Collects the attribute declarations, the value resources and the dark style side by side.
class ResourceWriter {
public:
    explicit ResourceWriter(const BuildTask& task) : task_(task) {}

    void addItem(const TemplateItem& item) {
        const std::string name = androidResourceName(item.name);
        if (item.colorItem) {
            addColor(name, item.colorItem->color);
        } else if (item.colorSet) {
            XmlNode array{"array", {{"name", name}}, {}, {}};
            for (std::size_t i = 0; i < item.colorSet->colors.size(); ++i) {
                const TemplateThemedColor& member = item.colorSet->colors[i];
                const std::string memberName = partName(item.name, member.name.value_or(std::to_string(i + 1)));
                addColor(memberName, member);
                array.add("item", {}, "@color/" + memberName);
            }
            declarations_.push_back(std::move(array));
        } else if (item.number) {
            const TemplateThemedNumber& value = item.number->value;
            if (isWholeInteger(value.light) && isWholeInteger(variantOf(value))) {
                addValue(name, "integer", "integer", {}, numberText(value.light), numberText(variantOf(value)));
            } else {
                addValue(name, "item", "float", {{"type", "dimen"}, {"format", "float"}}, numberText(value.light),
                         numberText(variantOf(value)));
            }
        } else if (item.boolean) {
            const TemplateThemedBoolean& value = item.boolean->value;
            addValue(name, "bool", "boolean", {}, value.light ? "true" : "false", variantOf(value) ? "true" : "false");
        } else if (item.string) {
            const TemplateThemedString& value = item.string->value;
            addValue(name, "string", "string", {}, androidStringText(value.light), androidStringText(variantOf(value)));
        } else if (item.shadowItem) {
            addShadow(name, item.shadowItem->shadow);
        } else if (item.shadowSet) {
            for (std::size_t i = 0; i < item.shadowSet->shadows.size(); ++i) {
                const TemplateThemedShadow& member = item.shadowSet->shadows[i];
                addShadow(partName(item.name, member.name.value_or(std::to_string(i + 1))), member);
            }
        }
    }

    XmlNode document() && {
        XmlNode resources{"resources", {}, {}, {}};
        for (XmlNode& node : attributes_) {
            resources.children.push_back(std::move(node));
        }
        for (XmlNode& node : declarations_) {
            resources.children.push_back(std::move(node));
        }
        resources.children.push_back(std::move(darkStyle_));
        return resources;
    }

private:
    template <typename T>
    static const T& variantOf(const TemplateThemed<T>& value) {
        return value.dark ? *value.dark : value.light;
    }

    // The resource name of a set member or shadow part: the item's code name and
    // the part joined by the task's transform.
    std::string partName(const std::string& codeName, const std::string& part) const {
        if (task_.nameTransform == BuildNameTransform::none) {
            return androidResourceName(codeName + "_" + part);
        }
        std::string joined = codeName;
        appendCodeNamePart(joined, part, task_.nameTransform);
        return androidResourceName(joined);
    }

    // One value: its attribute (so that the style may set it), its resource and its dark style item.
    void addValue(const std::string& name, const std::string& element, const std::string& format,
                  std::map<std::string, std::string> extraAttributes, const std::string& light,
                  const std::string& dark) {
        if (declaredAttributes_.insert(name).second) {
            attributes_.push_back({"attr", {{"name", name}, {"format", format}}, {}, {}});
        }
        extraAttributes["name"] = name;
        declarations_.push_back({element, std::move(extraAttributes), light, {}});
        darkStyle_.add("item", {{"name", name}}, dark);
    }

    void addColor(const std::string& name, const TemplateThemedColor& color) {
        addValue(name, "color", "color", {}, androidColorText(colorValue(color.light)),
                 androidColorText(colorValue(variantOf(color))));
    }

    void addShadow(const std::string& name, const TemplateThemedShadow& shadow) {
        const TemplateShadow& light = shadow.light;
        const TemplateShadow& dark = variantOf(shadow);
        addValue(partName(name, "color"), "color", "color", {}, androidColorText(colorValue(light.color)),
                 androidColorText(colorValue(dark.color)));
        const std::pair<const char*, double TemplateShadow::*> lengths[] = {
            {"x", &TemplateShadow::x}, {"y", &TemplateShadow::y}, {"blur", &TemplateShadow::blur},
            {"spread", &TemplateShadow::spread}};
        for (const auto& [part, member] : lengths) {
            addValue(partName(name, part), "dimen", "dimension", {}, dpText(light.*member), dpText(dark.*member));
        }
    }

    const BuildTask& task_;
    std::vector<XmlNode> attributes_;
    std::vector<XmlNode> declarations_;
    std::unordered_set<std::string> declaredAttributes_;
    XmlNode darkStyle_{"style", {{"name", "Dark"}}, {}, {}};
};

}  // namespace

AndroidResourceExporter::AndroidResourceExporter(std::shared_ptr<OchreColorProject> documentProject)
    : project(std::move(documentProject)) {}

void AndroidResourceExporter::exportTo(const std::filesystem::path& folder, const BuildTask& task,
                                       const std::vector<ProjectItemPtr>& items, const std::filesystem::path&) {
    const std::filesystem::path target = folder / task.exportFileNameWithExtension();
    removeItemIgnoringErrors(target);

    // The same flattening and code names as the template outputs, so that a colour
    // has one name across Compose, Swift and resources.
    TemplateExporter flattener(project, std::string());
    std::unordered_set<std::string> seenItems;
    for (const ProjectItemPtr& item : items) {
        if (item) {
            flattener.addItem(*item, task, seenItems);
        }
    }
    writeFileBytes(target, resourceText(flattener.itemsForExport, task));
}

std::string AndroidResourceExporter::resourceText(const std::vector<TemplateItem>& items, const BuildTask& task) {
    ResourceWriter writer(task);
    for (const TemplateItem& item : items) {
        writer.addItem(item);
    }
    std::string out = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
    printNode(std::move(writer).document(), 0, out);
    return out;
}

std::string androidResourceName(std::string_view codeName) {
    std::string out;
    bool pendingSeparator = false;
    for (std::size_t i = 0; i < codeName.size(); ++i) {
        const unsigned char c = static_cast<unsigned char>(codeName[i]);
        const bool keep = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
        if (!keep) {
            // A multi-byte character counts once: skip its continuation bytes.
            while (i + 1 < codeName.size() && (static_cast<unsigned char>(codeName[i + 1]) & 0xC0) == 0x80) {
                ++i;
            }
            pendingSeparator = true;
            continue;
        }
        if (pendingSeparator && !out.empty() && out.back() != '_' && c != '_') {
            out += '_';
        }
        pendingSeparator = false;
        out += static_cast<char>(c);
    }
    if (out.empty()) {
        return "unnamed";
    }
    if (out.front() >= '0' && out.front() <= '9') {
        out.insert(0, "color");
    }
    return out;
}

std::string androidColorText(const ColorValue& color) {
    const ColorValue srgb = color.converted(ColorEncoding::sRGB).value_or(color);
    const auto channel = [](double value) {
        if (!std::isfinite(value)) {
            return 0;
        }
        const double scaled = std::round(value * 255.0);
        return static_cast<int>(std::clamp(scaled, 0.0, 255.0));
    };
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "#%02X%02X%02X%02X", channel(srgb.alpha()), channel(srgb.red()),
                  channel(srgb.green()), channel(srgb.blue()));
    return buffer;
}

std::string androidStringText(std::string_view text) {
    // Android drops the blanks around an unquoted string anyway; trimming first lets a
    // leading "@" or "?" be seen and escaped.
    text = trimmed(text);
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        switch (c) {
            case '\\': out += "\\\\"; break;
            case '\'': out += "\\'"; break;
            case '"': out += "\\\""; break;
            case '\n': out += "\\n"; break;
            case '\t': out += "\\t"; break;
            case '@':
            case '?': out += (i == 0) ? std::string("\\") + c : std::string(1, c); break;
            default:
                if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
                    // XML cannot hold other control characters, NUL included; Android reads \uXXXX.
                    static constexpr char digits[] = "0123456789abcdef";
                    const auto code = static_cast<unsigned char>(c);
                    out += "\\u00";
                    out += digits[code >> 4];
                    out += digits[code & 0xF];
                } else {
                    out += c;
                }
                break;
        }
    }
    return out;
}

}  // namespace tintwork
