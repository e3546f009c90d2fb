// Renders a CSS-like template over generated colour records, the shape the
// exporter hands to the engine, and prints wall time and peak memory per size.
#include <sys/resource.h>

#include <chrono>
#include <ctime>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "template/Environment.h"
#include "template/Resolvable.h"
#include "template/TokenParser.h"

using namespace tintwork::stencil;

namespace {

struct Rgba {
    double red, green, blue, alpha;
};

// A colour record exposing a struct by field name without copying it into a map.
class RgbaRecord : public Record {
public:
    explicit RgbaRecord(Rgba value) : colour(value) {}
    std::optional<Value> field(std::string_view name) const override {
        if (name == "red") {
            return Value(colour.red);
        }
        if (name == "green") {
            return Value(colour.green);
        }
        if (name == "blue") {
            return Value(colour.blue);
        }
        if (name == "alpha") {
            return Value(colour.alpha);
        }
        return std::nullopt;
    }
    std::vector<std::string> fieldNames() const override { return {"red", "green", "blue", "alpha"}; }

    Rgba colour;
};

// The item records, built the way the exporter exposes its structs: one record per
// struct, nested records shared, fields answered by name.
class ThemedColorRecord : public Record {
public:
    ThemedColorRecord(RecordPtr lightColour, RecordPtr darkColour)
        : light(std::move(lightColour)), dark(std::move(darkColour)) {}
    std::optional<Value> field(std::string_view name) const override {
        if (name == "light") {
            return Value(light);
        }
        if (name == "dark") {
            return Value(dark);
        }
        return std::nullopt;
    }

    RecordPtr light;
    RecordPtr dark;
};

class ColorItemRecord : public Record {
public:
    explicit ColorItemRecord(RecordPtr themed) : color(std::move(themed)) {}
    std::optional<Value> field(std::string_view name) const override {
        return name == "color" ? std::optional<Value>(Value(color)) : std::nullopt;
    }

    RecordPtr color;
};

class ItemRecord : public Record {
public:
    ItemRecord(std::string itemName, RecordPtr item) : name(std::move(itemName)), colorItem(std::move(item)) {}
    std::optional<Value> field(std::string_view key) const override {
        if (key == "name") {
            return Value(name);
        }
        if (key == "colorItem") {
            return colorItem ? Value(colorItem) : Value();
        }
        if (key == "number" || key == "string" || key == "boolean" || key == "colorSet" || key == "shadowItem" ||
            key == "shadowSet") {
            return Value();
        }
        return std::nullopt;
    }

    std::string name;
    RecordPtr colorItem;
};

List makeItems(std::size_t count) {
    List items;
    items.reserve(count);
    for (std::size_t index = 0; index < count; ++index) {
        double shade = static_cast<double>(index % 256) / 255.0;
        auto light = std::make_shared<const RgbaRecord>(Rgba{shade, 0.5, 1.0 - shade, 1.0});
        auto dark = std::make_shared<const RgbaRecord>(Rgba{1.0 - shade, 0.25, shade, 1.0});
        auto themed = std::make_shared<const ThemedColorRecord>(light, dark);
        items.emplace_back(std::make_shared<const ItemRecord>("colour-" + std::to_string(index),
                                                             std::make_shared<const ColorItemRecord>(themed)));
    }
    return items;
}

// A stand-in for the exporter's colour tags: reads its argument and prints hex.
NodePtr parseHexTag(TokenParser&, const Token& token) {
    auto variable = std::make_shared<const Variable>(token.components().size() > 1 ? token.components()[1] : "");
    return std::make_shared<const SimpleNode>(
        [variable](Context& context) -> std::string {
            auto record = std::dynamic_pointer_cast<const RgbaRecord>(variable->resolve(context).recordPointer());
            if (!record) {
                return "Rendering color failed";
            }
            char buffer[16];
            auto byte = [](double component) { return static_cast<int>(component * 255.0 + 0.5); };
            std::snprintf(buffer, sizeof buffer, "#%02x%02x%02x", byte(record->colour.red), byte(record->colour.green),
                          byte(record->colour.blue));
            return buffer;
        },
        token);
}

const char* const css = ":root {\n"
                        "{% for item in items %}\n"
                        "  --{{ item.name }}: {% colorAsHex item.colorItem.color.light %};\n"
                        "{% endfor %}\n"
                        "}\n"
                        "@media (prefers-color-scheme: dark) {\n"
                        "  :root {\n"
                        "{% for item in items where item.colorItem %}\n"
                        "    --{{ item.name|lowercase }}: {% colorAsHex item.colorItem.color.dark %};\n"
                        "{% endfor %}\n"
                        "  }\n"
                        "}\n";

double cpuMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

double peakMegabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

// A custom template of `bytes` bytes made of `{{ exportFileName }}` tags, either on one
// line or broken into lines of about 80 characters. Parsing and rendering must cost the
// same for both: tokens keep offsets, not copies of their line.
std::string taggedTemplate(std::size_t bytes, bool oneLine) {
    const std::string tag = "{{ exportFileName }}";
    std::string text;
    text.reserve(bytes + bytes / 80 + tag.size());
    std::size_t lineLength = 0;
    while (text.size() < bytes) {
        text += tag;
        lineLength += tag.size();
        if (!oneLine && lineLength >= 80) {
            text += '\n';
            lineLength = 0;
        }
    }
    return text;
}

void benchmarkTemplateShapes(const Environment& environment) {
    std::printf("\n%-22s %12s %12s %14s %14s\n", "template", "wall ms", "CPU ms", "output bytes", "peak RSS MB");
    for (bool oneLine : {false, true}) {
        const std::string text = taggedTemplate(1'000'000, oneLine);
        Map context{{"exportFileName", "colors"}};
        auto start = std::chrono::steady_clock::now();
        double cpuStart = cpuMilliseconds();
        std::string output = environment.templateFromString(text)->render(context);
        double cpu = cpuMilliseconds() - cpuStart;
        auto elapsed = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
        std::printf("%-22s %12.1f %12.1f %14zu %14.1f\n", oneLine ? "1 MB on one line" : "1 MB in 80-char lines",
                    elapsed, cpu, output.size(), peakMegabytes());
    }
}

}  // namespace

int main(int argc, char** argv) {
    auto extension = std::make_shared<Extension>();
    extension->registerTag("colorAsHex", parseHexTag);
    Environment environment(nullptr, {extension}, TrimBehaviour::smart());
    auto parsed = environment.templateFromString(css);
    std::vector<std::size_t> sizes = {10'000, 100'000, 1'000'000};
    if (argc > 1) {
        sizes = {static_cast<std::size_t>(std::strtoull(argv[1], nullptr, 10))};
    }
    // CPU time is printed beside wall time: on a shared machine the wall clock also
    // counts the time other processes held the processor.
    std::printf("%-10s %12s %12s %12s %14s %14s\n", "items", "wall ms", "CPU ms", "CPU ns/item", "output bytes",
                "peak RSS MB");
    for (std::size_t size : sizes) {
        Map context{{"items", makeItems(size)}, {"exportFileName", "colors"}};
        auto start = std::chrono::steady_clock::now();
        double cpuStart = cpuMilliseconds();
        std::string output = parsed->render(context);
        double cpu = cpuMilliseconds() - cpuStart;
        auto elapsed = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
        std::printf("%-10zu %12.1f %12.1f %12.1f %14zu %14.1f\n", size, elapsed, cpu,
                    cpu * 1e6 / static_cast<double>(size), output.size(), peakMegabytes());
    }
    benchmarkTemplateShapes(environment);
    return 0;
}
