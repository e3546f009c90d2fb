#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>

#include "import/ImageImporter.h"
#include "import/ImportKinds.h"

namespace tintwork {
namespace {

using Rgba = std::array<std::uint8_t, 4>;

// A bitmap filled with one colour, painted over pixel by pixel, row by row.
struct Canvas {
    int width;
    int height;
    std::vector<std::uint8_t> bytes;

    Canvas(int w, int h, Rgba background = {0, 0, 0, 0})
        : width(w), height(h), bytes(static_cast<std::size_t>(w) * static_cast<std::size_t>(h) * 4) {
        paint(0, w * h, background);
    }
    // Sets `count` pixels from index `first` on.
    Canvas& paint(int first, int count, Rgba colour) {
        for (int i = first; i < first + count; ++i) {
            std::memcpy(bytes.data() + static_cast<std::size_t>(i) * 4, colour.data(), 4);
        }
        return *this;
    }
};

std::string encodePng(const std::uint8_t* pixels, int width, int height, int channels) {
    int length = 0;
    stbi_write_png_compression_level = 1;  // fast: the tests write images of a million pixels
    unsigned char* png = stbi_write_png_to_mem(pixels, width * channels, width, height, channels, &length);
    std::string bytes(reinterpret_cast<const char*>(png), static_cast<std::size_t>(length));
    std::free(png);
    return bytes;
}

std::string encodePng(const Canvas& canvas) {
    return encodePng(canvas.bytes.data(), canvas.width, canvas.height, 4);
}

ProjectItemPtr newGroup() {
    return std::make_shared<OchreColorProjectItem>("Root", "ROOT", OchreColorGroup{});
}

ProjectItemPtr importImage(const std::string& bytes) {
    ProjectItemPtr group = newGroup();
    ImageImporter().importBytes(bytes, *group);
    return group;
}

std::vector<std::string> names(const OchreColorProjectItem& group) {
    std::vector<std::string> result;
    for (const ProjectItemPtr& child : group.group->items) {
        result.push_back(child->name);
    }
    return result;
}

// The colour of the group's child `index` as bytes (alpha included).
Rgba bytesOf(const OchreColorProjectItem& group, std::size_t index) {
    const ColorValue& color = group.group->items.at(index)->color->color.lightVariant;
    auto byte = [](double value) { return static_cast<std::uint8_t>(value * 255.0 + 0.5); };
    return {byte(color.red()), byte(color.green()), byte(color.blue()), byte(color.alpha())};
}

std::filesystem::path sharedDir() {
    return TINTWORK_SHARED_DIR;
}

ColorCount counted(double red, double green, double blue, long long count) {
    return {ColorValue::sRGB(red, green, blue), count};
}

TEST(ImageImporter, KeepsColoursCoveringMoreThanAThousandthOfTheImage) {
    // A million pixels: the threshold is 1000, so 1000 pixels are not enough and 1001 are.
    Canvas canvas(1000, 1000);
    canvas.paint(0, 1000, {200, 30, 30, 255}).paint(5000, 1001, {30, 30, 200, 255});
    ProjectItemPtr group = importImage(encodePng(canvas));
    EXPECT_EQ(names(*group), std::vector<std::string>{"Color 1001"});
    EXPECT_EQ(bytesOf(*group, 0), (Rgba{30, 30, 200, 255}));
    const OchreColorItem& item = *group->group->items[0]->color;
    EXPECT_EQ(item.color.lightVariant.encoding(), ColorEncoding::sRGB);
    EXPECT_DOUBLE_EQ(item.color.lightVariant.blue(), 200 / 255.0);
    EXPECT_DOUBLE_EQ(item.autoContrastAmount, 0.5);

    // From 2^20 pixels on, opaque pixels are counted apart from translucent ones; the threshold
    // holds alike: 1048 is a thousandth of 1024 * 1024 (1048.576, truncated).
    Canvas large(1024, 1024);
    large.paint(0, 1048, {200, 30, 30, 255})
        .paint(2000, 1049, {30, 30, 200, 255})
        .paint(4000, 1050, {30, 200, 30, 200})
        .paint(8000, 1048, {200, 200, 30, 200});
    group = importImage(encodePng(large));
    EXPECT_EQ(names(*group), (std::vector<std::string>{"Color 1050", "Color 1049"}));
    EXPECT_EQ(bytesOf(*group, 0), (Rgba{30, 200, 30, 200}));
    EXPECT_EQ(bytesOf(*group, 1), (Rgba{30, 30, 200, 255}));

    // Under a thousand pixels the threshold is 0: a single pixel counts.
    Canvas small(30, 30, {255, 255, 255, 255});
    small.paint(899, 1, {200, 30, 30, 255});
    EXPECT_EQ(names(*importImage(encodePng(small))), (std::vector<std::string>{"Color 899", "Color 1"}));
}

TEST(ImageImporter, CountsOnlyPixelsMoreOpaqueThanFourTenths) {
    // 102/255 is exactly 0.4 and is left out; 103/255 (0.404) is the first alpha above it. The
    // 0.41 of a hand-made example has no 8-bit value: 104.55/255.
    Canvas canvas(10, 10);
    canvas.paint(0, 30, {0, 160, 160, 102}).paint(30, 10, {160, 0, 160, 103});
    ProjectItemPtr group = importImage(encodePng(canvas));
    EXPECT_EQ(names(*group), std::vector<std::string>{"Color 10"});
    EXPECT_EQ(bytesOf(*group, 0), (Rgba{160, 0, 160, 103}));

    // Nothing counted gives an empty group, not an error.
    EXPECT_TRUE(importImage(encodePng(Canvas(4, 4)))->group->items.empty());
}

TEST(ImageImporter, DropsColoursNearAMoreFrequentOne) {
    Canvas canvas(20, 10, {0, 0, 0, 0});
    canvas.paint(0, 50, {255, 0, 0, 255})      // red
        .paint(50, 30, {242, 13, 0, 255})      // (0.95, 0.05, 0): near red, dropped
        .paint(80, 40, {20, 60, 180, 255})     // blue
        .paint(120, 20, {20, 60, 205, 255})    // 25/255 = 0.098 bluer: near, dropped
        .paint(140, 10, {20, 60, 206, 255});   // 26/255 = 0.102 bluer: kept
    EXPECT_EQ(names(*importImage(encodePng(canvas))),
              (std::vector<std::string>{"Color 50", "Color 40", "Color 10"}));
}

TEST(ImageImporter, KeepsOnlyTheMostFrequentGrey) {
    Canvas canvas(10, 10, {0, 0, 0, 0});
    canvas.paint(0, 40, {0, 0, 0, 255})          // black
        .paint(40, 30, {255, 255, 255, 255})    // white: a grey like black, dropped
        .paint(70, 20, {107, 100, 100, 255})    // red 7/255 = 0.027 off: grey, dropped
        .paint(90, 10, {108, 100, 100, 255});   // red 8/255 = 0.031 off: not grey, kept
    ProjectItemPtr group = importImage(encodePng(canvas));
    EXPECT_EQ(names(*group), (std::vector<std::string>{"Color 40", "Color 10"}));
    EXPECT_EQ(bytesOf(*group, 1), (Rgba{108, 100, 100, 255}));
}

TEST(ImageImporter, ThinsOutOnTheExactBoundaries) {
    // Eight-bit pixels never differ by exactly 0.1 (25.5/255) or 0.03 (7.65/255), so the
    // boundaries are checked on colours whose differences are exact in binary.
    auto keptCounts = [](std::vector<ColorCount> colours) {
        std::vector<long long> counts;
        for (const ColorCount& colour : thinOutColors(colours)) {
            counts.push_back(colour.count);
        }
        return counts;
    };
    // A difference of exactly 0.1 in each channel is near.
    EXPECT_EQ(keptCounts({counted(0.1, 0.1, 0.9, 5), counted(0.0, 0.0, 1.0, 4)}), std::vector<long long>{5});
    EXPECT_EQ(keptCounts({counted(0.25, 0.5, 0.5, 5), counted(0.15, 0.5, 0.5, 4)}), std::vector<long long>{5});
    EXPECT_EQ(keptCounts({counted(0.5, 0.5, 0.75, 5), counted(0.5, 0.5, 0.875, 4)}),
              (std::vector<long long>{5, 4}));
    // A red exactly 0.03 above green and blue is not grey; below that it is.
    EXPECT_EQ(keptCounts({counted(0.0, 0.0, 0.0, 5), counted(0.53, 0.5, 0.5, 4)}), (std::vector<long long>{5, 4}));
    EXPECT_EQ(keptCounts({counted(1.0, 1.0, 1.0, 5), counted(0.03, 0.0, 0.0, 4)}), (std::vector<long long>{5, 4}));
    EXPECT_EQ(keptCounts({counted(1.0, 1.0, 1.0, 5), counted(0.0299, 0.0, 0.0, 4)}), std::vector<long long>{5});
    EXPECT_EQ(keptCounts({counted(0.0, 0.0, 0.0, 5), counted(0.75, 0.7575, 0.75, 4)}), std::vector<long long>{5});
    // Each candidate is compared with every colour kept so far, not only the last.
    EXPECT_EQ(keptCounts({counted(1, 0, 0, 9), counted(0, 0, 1, 8), counted(0.95, 0.05, 0, 7)}),
              (std::vector<long long>{9, 8}));
}

TEST(ImageImporter, OrdersEqualCountsByFirstAppearance) {
    for (const auto& [first, second] : {std::pair<Rgba, Rgba>{{250, 10, 10, 255}, {10, 10, 250, 255}},
                                        std::pair<Rgba, Rgba>{{10, 10, 250, 255}, {250, 10, 10, 255}}}) {
        Canvas canvas(4, 2, {10, 250, 10, 255});
        canvas.paint(1, 2, first).paint(5, 1, second).paint(7, 1, second);
        ProjectItemPtr group = importImage(encodePng(canvas));
        ASSERT_EQ(names(*group), (std::vector<std::string>{"Color 4", "Color 2", "Color 2"}));
        EXPECT_EQ(bytesOf(*group, 1), first);
        EXPECT_EQ(bytesOf(*group, 2), second);
    }
}

TEST(ImageImporter, ReadsGreyAndSixteenBitBitmaps) {
    std::vector<std::uint8_t> grey(100, 40);
    std::fill(grey.begin(), grey.begin() + 30, std::uint8_t{230});
    ProjectItemPtr group = importImage(encodePng(grey.data(), 10, 10, 1));
    EXPECT_EQ(names(*group), std::vector<std::string>{"Color 70"});
    EXPECT_EQ(bytesOf(*group, 0), (Rgba{40, 40, 40, 255}));

    std::vector<std::uint8_t> greyAlpha(200);
    for (std::size_t i = 0; i < 100; ++i) {
        greyAlpha[2 * i] = 90;
        greyAlpha[2 * i + 1] = i < 60 ? 255 : 0;
    }
    group = importImage(encodePng(greyAlpha.data(), 10, 10, 2));
    EXPECT_EQ(names(*group), std::vector<std::string>{"Color 60"});
    EXPECT_EQ(bytesOf(*group, 0), (Rgba{90, 90, 90, 255}));

    // Sixteen-bit samples keep their high byte: 0x8000 and 0x1000 are 128 and 16.
    group = importImage(std::string("P5\n3 1\n65535\n\x80\x00\x80\x00\x10\x00", 19));
    EXPECT_EQ(names(*group), std::vector<std::string>{"Color 2"});
    EXPECT_EQ(bytesOf(*group, 0), (Rgba{128, 128, 128, 255}));
    group = importImage(std::string("P6\n2 1\n65535\n\xff\xff\x00\x00\x00\x00\x00\x00\x00\x00\xff\xff", 25));
    EXPECT_EQ(names(*group), (std::vector<std::string>{"Color 1", "Color 1"}));
    EXPECT_EQ(bytesOf(*group, 0), (Rgba{255, 0, 0, 255}));
    EXPECT_EQ(bytesOf(*group, 1), (Rgba{0, 0, 255, 255}));
}

TEST(ImageImporter, RefusesWhatDoesNotDecode) {
    const std::string png = encodePng(Canvas(64, 64, {1, 2, 3, 255}).paint(0, 2000, {200, 100, 50, 255}));
    // The size fields of the header chunk, big-endian after the signature and the chunk's tag.
    auto withSize = [&](std::uint32_t width, std::uint32_t height) {
        std::string bytes = png;
        for (int i = 0; i < 4; ++i) {
            bytes[static_cast<std::size_t>(16 + i)] = static_cast<char>((width >> (24 - 8 * i)) & 0xFF);
            bytes[static_cast<std::size_t>(20 + i)] = static_cast<char>((height >> (24 - 8 * i)) & 0xFF);
        }
        return bytes;
    };
    const std::vector<std::pair<std::string, std::string>> inputs = {
        {"empty", ""},
        {"not an image", "GIF? no, just text\n"},
        {"signature only", png.substr(0, 8)},
        {"truncated", png.substr(0, png.size() / 2)},
        {"zero width", withSize(0, 64)},
        {"50,000 by 50,000", withSize(50000, 50000)},
    };
    for (const auto& [label, bytes] : inputs) {
        ProjectItemPtr group = newGroup();
        try {
            ImageImporter().importBytes(bytes, *group);
            ADD_FAILURE() << label << ": no error";
        } catch (const DocumentColorParsingError& error) {
            EXPECT_EQ(error.message, "Unable to open image file") << label;
        }
        EXPECT_TRUE(group->group->items.empty()) << label;
    }
    ProjectItemPtr group = newGroup();
    EXPECT_THROW(ImageImporter().importColors("/nonexistent/picture.png", *group), DocumentColorParsingError);
}

TEST(ImageImporter, ImportsFilesThroughItsKind) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "tintwork-image-tests";
    std::filesystem::create_directories(folder);
    const std::filesystem::path path = folder / "swatch.png";
    std::ofstream(path, std::ios::binary) << encodePng(Canvas(8, 8, {12, 34, 56, 255}));
    const ImportKind* kind = findImportKind("image");
    ASSERT_NE(kind, nullptr);
    ProjectItemPtr group = importSource(*kind, path, {});
    EXPECT_EQ(group->name, "Image Import - swatch.png");
    EXPECT_EQ(names(*group), std::vector<std::string>{"Color 64"});
}

TEST(ImageImporter, ImportsTheKnownCountsImage) {
    const std::filesystem::path path = sharedDir() / "corpus/images/known-counts.png";
    if (!std::filesystem::exists(path)) {
        GTEST_SKIP() << "no sample corpus beside the checkout";
    }
    // Of known-counts.json: near red (800) joins red, dark grey (500) loses to light grey, the blue
    // 26/255 away (300) stays, purple (10 = a thousandth) and teal at alpha 0.4 are left out.
    ProjectItemPtr group = newGroup();
    ImageImporter().importColors(path, *group);
    EXPECT_EQ(names(*group), (std::vector<std::string>{"Color 4000", "Color 2500", "Color 1200", "Color 400",
                                                        "Color 300", "Color 100", "Color 11"}));
    const std::vector<Rgba> expected = {{30, 80, 200, 255},  {220, 30, 30, 255}, {240, 240, 240, 255},
                                        {50, 180, 80, 255},  {30, 80, 226, 255}, {0, 160, 160, 105},
                                        {255, 200, 0, 255}};
    for (std::size_t i = 0; i < expected.size() && i < group->group->items.size(); ++i) {
        EXPECT_EQ(bytesOf(*group, i), expected[i]) << i;
    }
}

TEST(ImageImporter, ImportsRealPhotosAndFlags) {
    const std::filesystem::path folder = sharedDir() / "corpus/images";
    if (!std::filesystem::exists(folder)) {
        GTEST_SKIP() << "no sample corpus beside the checkout";
    }
    // The tricolour: blue, then white and red of equal count in the order they stand in a row,
    // then a few anti-aliased edge colours above the threshold.
    ProjectItemPtr flag = newGroup();
    ImageImporter().importColors(folder / "flag-fr.png", *flag);
    ASSERT_GE(flag->group->items.size(), 3u);
    EXPECT_EQ(names(*flag)[0], "Color 13695");
    EXPECT_EQ(bytesOf(*flag, 0), (Rgba{0, 35, 149, 255}));
    EXPECT_EQ(bytesOf(*flag, 1), (Rgba{255, 255, 255, 255}));
    EXPECT_EQ(bytesOf(*flag, 2), (Rgba{237, 41, 57, 255}));

    // A photo scatters its colours, so only few pass the threshold; the radix swatches hold many.
    for (const char* name : {"libjpeg-turbo-testorig.jpg", "radix-colors.png", "flag-jp.png", "flag-se.png"}) {
        ProjectItemPtr group = newGroup();
        ImageImporter().importColors(folder / name, *group);
        EXPECT_FALSE(group->group->items.empty()) << name;
        long long previous = -1;
        for (const ProjectItemPtr& item : group->group->items) {
            const long long count = std::stoll(item->name.substr(6));
            EXPECT_TRUE(previous < 0 || count <= previous) << name << ": " << item->name;
            previous = count;
        }
    }
}

}  // namespace
}  // namespace tintwork
