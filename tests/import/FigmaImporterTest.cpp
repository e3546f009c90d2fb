#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "KiwiFixtures.h"
#include "colour/FatalError.h"
#include "import/FigmaImporter.h"
#include "import/ImportKinds.h"

namespace tintwork {
namespace {

using testing::FigmaNode;
using testing::RGBA;

std::filesystem::path scratchFolder() {
    std::filesystem::path folder = std::filesystem::temp_directory_path() / "tintwork-figma-tests";
    std::filesystem::create_directories(folder);
    return folder;
}

enum class Codec { deflate, zstd };

std::string compress(const std::string& bytes, Codec codec) {
    return codec == Codec::deflate ? testing::deflateRaw(bytes) : testing::zstdCompress(bytes);
}

std::string canvasOf(const std::vector<FigmaNode>& nodes, std::uint32_t version = 20, Codec schemaCodec = Codec::deflate,
                     Codec dataCodec = Codec::deflate) {
    return testing::makeCanvas(version, compress(testing::encodeSchema(testing::figmaLikeSchema()), schemaCodec),
                               compress(testing::encodeFigmaMessage(nodes), dataCodec));
}

std::filesystem::path writeFigma(const std::string& name, const std::string& canvas) {
    const std::filesystem::path path = scratchFolder() / name;
    testing::writeZip(path, {{"canvas.fig", canvas}, {"meta.json", "{}"}});
    return path;
}

struct Imported {
    std::vector<ColorValue> colors;
    std::vector<std::string> names;
    std::vector<std::string> diagnostics;
};

Imported importCanvas(const std::string& canvas) {
    Imported result;
    FigmaImporter importer;
    importer.diagnostics = [&](std::string_view line) { result.diagnostics.emplace_back(line); };
    OchreColorProjectItem group("Figma Import", "GROUP", OchreColorGroup{});
    importer.importCanvas(canvas, group);
    for (const ProjectItemPtr& item : group.group->items) {
        result.colors.push_back(item->color->color.lightVariant);
        result.names.push_back(item->name);
    }
    return result;
}

std::string failureOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const DocumentColorParsingError& error) {
        return error.message;
    }
    return "(no error)";
}

std::filesystem::path corpusFile(const std::string& name) {
    return std::filesystem::path(TINTWORK_SHARED_DIR) / "corpus" / "figma" / name;
}

TEST(FigmaImporter, ImportsTheColoursOfRealDocuments) {
    if (!std::filesystem::exists(corpusFile("fig2sketch-corners.fig"))) {
        GTEST_SKIP() << "no shared corpus";
    }
    std::vector<std::string> diagnostics;
    const auto importFile = [&](const std::string& name) {
        const ImportKind* kind = findImportKind("figma");
        ImportOptions options;
        options.diagnostics = [&](std::string_view line) { diagnostics.emplace_back(line); };
        return importSource(*kind, corpusFile(name), options);
    };

    // Version 106: a schema with 64-bit integer fields, a DEFLATE header and a zstd data chunk.
    const ProjectItemPtr corners = importFile("fig2sketch-corners.fig");
    EXPECT_EQ(corners->name, "Figma Import - fig2sketch-corners.fig");
    ASSERT_EQ(corners->group->items.size(), 4u);
    EXPECT_EQ(diagnostics, std::vector<std::string>{"Error decoding as zlib invalid stored block lengths"});
    const float grey = 0.9607843160629272f;
    EXPECT_EQ(corners->group->items[0]->color->color.lightVariant, ColorValue(ColorEncoding::sRGB, grey, grey, grey, 1.0));
    EXPECT_EQ(corners->group->items[0]->name, "color");
    EXPECT_EQ(corners->group->items[2]->color->color.lightVariant, ColorValue::sRGB(1, 1, 1));
    EXPECT_EQ(corners->group->items[3]->color->color.lightVariant, ColorValue::sRGB(0, 0, 0));
    EXPECT_EQ(corners->group->items[3]->color->colorSpace, ColorSpace::sRGB);

    // Version 20: two DEFLATE chunks and no colour profile at all.
    diagnostics.clear();
    const ProjectItemPtr vector = importFile("fig2sketch-vector.fig");
    ASSERT_EQ(vector->group->items.size(), 9u);
    EXPECT_TRUE(diagnostics.empty());
    EXPECT_EQ(vector->group->items[2]->color->color.lightVariant, ColorValue::sRGB(0, 0, 1));
    const float half = 0.501960813999176f;
    EXPECT_EQ(vector->group->items[6]->color->color.lightVariant, ColorValue(ColorEncoding::sRGB, half, 0, half, 1.0));
}

TEST(FigmaImporter, ReadsColoursInTheDocumentsProfile) {
    const RGBA orange{1.0f, 0.5f, 0.0f, 1.0f};
    // The profile may sit on any node; the first one found decides.
    const Imported p3 = importCanvas(canvasOf({{"Doc", {orange}, std::nullopt, std::nullopt, {}},
                                               {"Page", {}, std::nullopt, 1u, {}},
                                               {"Later", {}, std::nullopt, 0u, {}}}));
    ASSERT_EQ(p3.colors.size(), 1u);
    EXPECT_EQ(p3.colors[0], ColorValue(ColorEncoding::displayP3, 1.0, 0.5, 0.0, 1.0));
    const Imported srgb = importCanvas(canvasOf({{"Doc", {orange}, std::nullopt, 0u, {}}}));
    EXPECT_EQ(srgb.colors, std::vector<ColorValue>{ColorValue::sRGB(1.0, 0.5, 0.0)});
    const Imported unnamedProfile = importCanvas(canvasOf({{"Doc", {orange}, std::nullopt, 7u, {}}}));
    EXPECT_EQ(unnamedProfile.colors, std::vector<ColorValue>{ColorValue::sRGB(1.0, 0.5, 0.0)});
    const Imported none = importCanvas(canvasOf({{"Doc", {orange}, std::nullopt, std::nullopt, {}}}));
    EXPECT_EQ(none.colors, std::vector<ColorValue>{ColorValue::sRGB(1.0, 0.5, 0.0)});
}

TEST(FigmaImporter, GathersPaintsAndBackgroundsOnceEach) {
    const RGBA red{1, 0, 0, 1};
    const RGBA nearRed{1, 0.00001f, 0, 1};
    const RGBA translucent{0, 0, 1, 0.25f};
    const Imported imported = importCanvas(canvasOf({
        {"A", {red, translucent}, RGBA{1, 1, 1, 1}, std::nullopt, {}},
        {"B", {red}, red, std::nullopt, {}},        // the same values again: nothing new
        {"C", {nearRed}, std::nullopt, std::nullopt, {}},  // single colours differ by any amount
        {"D", {}, std::nullopt, std::nullopt, {{'r', 0.5f}, {'g', 0.5f}, {'b', 0.5f}}},  // no "a"
        {"E", {}, std::nullopt, std::nullopt, {{'r', 0.2f}, {'g', 0.3f}, {'b', 0.4f}, {'a', 1.0f}}},
    }));
    ASSERT_EQ(imported.colors.size(), 5u);
    EXPECT_EQ(imported.colors[0], ColorValue::sRGB(1, 0, 0));
    EXPECT_EQ(imported.colors[1], ColorValue::sRGB(0, 0, 1, 0.25));
    EXPECT_EQ(imported.colors[2], ColorValue::sRGB(1, 1, 1));
    EXPECT_EQ(imported.colors[3], ColorValue::sRGB(1, 0.00001f, 0));
    EXPECT_EQ(imported.colors[4], ColorValue::sRGB(0.2f, 0.3f, 0.4f));
    EXPECT_EQ(imported.names, std::vector<std::string>(5, "color"));

    EXPECT_TRUE(importCanvas(canvasOf({{"Empty", {}, std::nullopt, std::nullopt, {}}})).colors.empty());
    EXPECT_TRUE(importCanvas(canvasOf({})).colors.empty());
}

TEST(FigmaImporter, DecompressesEitherChunkAsDeflateOrZstd) {
    const std::vector<FigmaNode> nodes = {{"A", {{0.25f, 0.5f, 0.75f, 1.0f}}, std::nullopt, std::nullopt, {}}};
    for (Codec schemaCodec : {Codec::deflate, Codec::zstd}) {
        for (Codec dataCodec : {Codec::deflate, Codec::zstd}) {
            const Imported imported = importCanvas(canvasOf(nodes, 15, schemaCodec, dataCodec));
            EXPECT_EQ(imported.colors, std::vector<ColorValue>{ColorValue::sRGB(0.25, 0.5, 0.75)});
            // Each zstd chunk is first tried as DEFLATE, which says why it failed.
            const std::size_t zstdChunks = (schemaCodec == Codec::zstd) + (dataCodec == Codec::zstd);
            EXPECT_EQ(imported.diagnostics.size(), zstdChunks);
            for (const std::string& line : imported.diagnostics) {
                EXPECT_EQ(line, "Error decoding as zlib invalid stored block lengths");
            }
        }
    }
}

TEST(FigmaImporter, DecodesGuidsMatricesAndSixtyFourBitFields) {
    const std::string schemaBytes = testing::encodeSchema(testing::figmaLikeSchema());
    KiwiDecoder decoder{KiwiSchema(schemaBytes)};
    decoder.setConverter("GUID", FigmaImporter::makeGUID);
    decoder.setConverter("Matrix", FigmaImporter::makeMatrix);
    const std::string data = testing::encodeFigmaMessage({{"Node", {}, std::nullopt, std::nullopt, {}}});
    KiwiReader reader(data);
    const KiwiDictionary message = decoder.decodeMessage(reader, *decoder.schema().typeIndex("Message"));
    EXPECT_EQ(std::get<std::int64_t>(message.find("sessionID")->storage), -(std::int64_t{1} << 40));
    const KiwiDictionary& node = *(*message.find("nodeChanges")->list())[0].dictionary();
    const GUID* guid = node.find("guid")->object<GUID>();
    ASSERT_NE(guid, nullptr);
    EXPECT_EQ(std::get<std::uint32_t>(guid->sessionID.storage), 7u);
    EXPECT_EQ(std::get<std::uint32_t>(guid->localID.storage), 1u);
    const Matrix* matrix = node.find("transform")->object<Matrix>();
    ASSERT_NE(matrix, nullptr);
    ASSERT_EQ(matrix->values.size(), 2u);
    ASSERT_EQ(matrix->values[0].size(), 3u);
    EXPECT_EQ(matrix->values[0][2].number(), 10.5);
    EXPECT_EQ(matrix->values[1][2].number(), -3.0);
    EXPECT_EQ(std::get<std::int64_t>(node.find("size")->storage), -5000000000);
    EXPECT_EQ(std::get<std::uint64_t>(node.find("count")->storage), 18000000000000000000u);

    // A GUID struct missing a part leaves it null.
    KiwiDictionary partial;
    partial.set("localID", KiwiValue(std::uint32_t{4}));
    const KiwiValue converted = FigmaImporter::makeGUID(partial);
    EXPECT_TRUE(converted.object<GUID>()->sessionID.isNull());
}

TEST(FigmaImporter, FindsTheColorProfileDepthFirst) {
    FigmaImporter importer;
    KiwiDictionary root;
    EXPECT_FALSE(importer.findColorProfile(root));
    KiwiDictionary inner;
    inner.set("documentColorProfile", KiwiValue(std::string("DISPLAY_P3")));
    KiwiList list;
    list.push_back(KiwiValue(std::uint32_t{1}));  // not a dictionary: skipped
    list.push_back(inner);
    root.set("nodes", list);
    EXPECT_TRUE(importer.findColorProfile(root));
    KiwiDictionary first;
    first.set("documentColorProfile", KiwiValue(std::string("SRGB")));
    KiwiDictionary both;
    both.set("a", first);
    both.set("b", root);
    EXPECT_FALSE(importer.findColorProfile(both));
}

TEST(FigmaImporter, FailsForEachBrokenContainerWithItsMessage) {
    const std::string good = canvasOf({{"A", {{1, 0, 0, 1}}, std::nullopt, std::nullopt, {}}});
    const auto importPath = [](const std::filesystem::path& path) {
        return failureOf([&] {
            FigmaImporter importer;
            importer.diagnostics = [](std::string_view) {};
            OchreColorProjectItem group("G", "G", OchreColorGroup{});
            importer.importColors(path, group);
        });
    };
    const std::filesystem::path notZip = scratchFolder() / "plain.fig";
    std::ofstream(notZip) << "not a zip archive";
    EXPECT_EQ(importPath(notZip), "Unable to open Figma document");
    EXPECT_EQ(importPath(scratchFolder() / "missing.fig"), "Unable to open Figma document");
    const std::filesystem::path noCanvas = scratchFolder() / "nocanvas.fig";
    testing::writeZip(noCanvas, {{"meta.json", "{}"}});
    EXPECT_EQ(importPath(noCanvas), "No figma canvas found");
    EXPECT_EQ(importPath(writeFigma("good.fig", good)), "(no error)");

    const auto importBytes = [](const std::string& canvas) {
        return failureOf([&] { importCanvas(canvas); });
    };
    EXPECT_EQ(importBytes(canvasOf({}, 14)), "This Figma document is too old to convert, re-save it and try again");
    EXPECT_EQ(importBytes(canvasOf({}, 0)), "This Figma document is too old to convert, re-save it and try again");
    EXPECT_EQ(importBytes("fig-kiwi"), "This Figma document is truncated");
    EXPECT_EQ(importBytes(good.substr(0, 14)), "Failed to decompress Figma header");
    const std::string schemaChunk = testing::deflateRaw(testing::encodeSchema(testing::figmaLikeSchema()));
    EXPECT_EQ(importBytes(good.substr(0, 16 + schemaChunk.size() + 2)), "Failed to decompress Figma data");
    EXPECT_EQ(importBytes(good.substr(0, good.size() - 1)), "Failed to decompress Figma data");
    EXPECT_EQ(importBytes(testing::makeCanvas(20, "garbage", testing::deflateRaw("x"))),
              "Failed to decompress Figma header");
    EXPECT_EQ(importBytes(testing::makeCanvas(20, schemaChunk, "garbage")), "Failed to decompress Figma data");
    EXPECT_EQ(importBytes(testing::makeCanvas(20, schemaChunk, testing::deflateRaw(std::string(1, '\x02')))),
              "Unable to read Figma data: Kiwi data ends early: no room for a byte at byte 1 of 1");
    EXPECT_EQ(importBytes(testing::makeCanvas(20, testing::deflateRaw("\x05"), testing::deflateRaw(""))),
              "Unable to read Figma header: Kiwi schema declares 5 types in 0 bytes");
}

TEST(FigmaImporter, PrintsWhyEachDecompressionFailed) {
    Imported imported;
    FigmaImporter importer;
    importer.diagnostics = [&](std::string_view line) { imported.diagnostics.emplace_back(line); };
    OchreColorProjectItem group("G", "G", OchreColorGroup{});
    EXPECT_THROW(importer.importCanvas(testing::makeCanvas(20, "garbage", ""), group), DocumentColorParsingError);
    EXPECT_EQ(imported.diagnostics, (std::vector<std::string>{"Error decoding as zlib invalid block type",
                                                              "Error decoding as zstd Unknown frame descriptor"}));
}

TEST(FigmaImporter, StopsTheProgramForASchemaWithoutMessage) {
    const std::string canvas = testing::makeCanvas(
        20, testing::deflateRaw(testing::encodeSchema({{"Other", 2, {}}})), testing::deflateRaw(std::string(1, '\0')));
    EXPECT_THROW(importCanvas(canvas), FatalError);
}

// Runs the import in a child process and measures it there, so that the test process's
// own memory does not count.
struct ChildRun {
    std::string failure;
    double cpuSeconds = 0;
    long peakMegabytes = 0;
};

ChildRun importInChild(const std::filesystem::path& path) {
    const std::filesystem::path message = scratchFolder() / (path.filename().string() + ".message");
    const pid_t pid = fork();
    if (pid == 0) {
        std::ofstream(message) << failureOf([&] {
            FigmaImporter importer;
            importer.diagnostics = [](std::string_view) {};
            OchreColorProjectItem group("G", "G", OchreColorGroup{});
            importer.importColors(path, group);
        });
        _exit(0);
    }
    int status = 0;
    rusage usage{};
    wait4(pid, &status, 0, &usage);
    ChildRun run;
    std::ifstream in(message);
    std::getline(in, run.failure);
    run.cpuSeconds = static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
                     static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
    run.peakMegabytes = usage.ru_maxrss / 1024;
    return run;
}

// Patches the uncompressed size recorded for the first entry, in its local header and in
// the central directory.
void patchDeclaredSize(const std::filesystem::path& path, std::uint32_t size) {
    std::string bytes;
    {
        std::ifstream in(path, std::ios::binary);
        bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    const auto put32 = [&](std::size_t offset) {
        for (int i = 0; i < 4; ++i) {
            bytes[offset + static_cast<std::size_t>(i)] = static_cast<char>((size >> (8 * i)) & 0xFF);
        }
    };
    put32(bytes.find("PK\x03\x04") + 22);
    put32(bytes.find("PK\x01\x02") + 24);
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

TEST(FigmaImporter, RefusesDecompressionBombsQuicklyAndInLittleMemory) {
    // An entry that declares more than 1 GiB is refused before it is inflated.
    const std::filesystem::path zipBomb = writeFigma("zip-bomb.fig", canvasOf({}));
    patchDeclaredSize(zipBomb, 0x80000000u);
    const ChildRun zipRun = importInChild(zipBomb);
    EXPECT_EQ(zipRun.failure, "Unable to read canvas.fig: it is larger than 1 GiB uncompressed");

    // An entry that holds more than it declares is cut off at its declared size.
    const std::filesystem::path liar = writeFigma("liar.fig", canvasOf({}));
    patchDeclaredSize(liar, 20);
    EXPECT_NE(importInChild(liar).failure, "(no error)");

    // A data chunk of 1.1 GiB of zeros in about a megabyte of DEFLATE.
    const std::string schemaChunk = testing::deflateRaw(testing::encodeSchema(testing::figmaLikeSchema()));
    const std::filesystem::path deflateBomb =
        writeFigma("deflate-bomb.fig", testing::makeCanvas(20, schemaChunk, testing::deflateBomb(1100)));
    const ChildRun deflateRun = importInChild(deflateBomb);
    EXPECT_EQ(deflateRun.failure,
              "Failed to decompress Figma data: the data expands past 1 GiB or past any real document's size");

    // A zstd frame that declares more than 1 GiB is refused before decoding.
    std::string zstdBomb = testing::zstdCompress(std::string(std::size_t{8} << 20, '\0'));
    const auto descriptor = static_cast<unsigned char>(zstdBomb[4]);
    ASSERT_EQ(descriptor >> 6, 2) << "a four-byte content size";
    const std::size_t sizeOffset = 5 + (((descriptor >> 5) & 1) != 0 ? 0 : 1) + std::size_t{0};
    zstdBomb[sizeOffset + 3] = '\x80';
    const std::filesystem::path zstdPath = writeFigma("zstd-bomb.fig", testing::makeCanvas(20, schemaChunk, zstdBomb));
    EXPECT_EQ(importInChild(zstdPath).failure,
              "Failed to decompress Figma data: the data expands past 1 GiB or past any real document's size");

#if !defined(__SANITIZE_ADDRESS__)
    EXPECT_LT(zipRun.cpuSeconds, 1.0);
    EXPECT_LT(zipRun.peakMegabytes, 100);
    EXPECT_LT(deflateRun.cpuSeconds, 1.0);
    EXPECT_LT(deflateRun.peakMegabytes, 100);
#endif
}

}  // namespace
}  // namespace tintwork
