#include <gtest/gtest.h>

#include <algorithm>

#include "ImportTestSupport.h"
#include "import/CSSFileImporter.h"

namespace tintwork {
namespace {

using testing::describe;

std::string importCSS(std::string_view text, bool asHTML = false, std::vector<std::string>* diagnostics = nullptr) {
    ProjectItemPtr root = testing::newGroupItem();
    CSSFileImporter importer;
    importer.diagnostics = [diagnostics](std::string_view line) {
        if (diagnostics) {
            diagnostics->emplace_back(line);
        }
    };
    importer.importText(text, asHTML, *root);
    return describe(*root);
}

TEST(CSSFileImporter, ReadsEachColourForm) {
    EXPECT_EQ(importCSS(":root{--hex:#0080ff;--alpha:#0080ff80}"), "hex: #0080FF\nalpha: #0080FF80\n");
    EXPECT_EQ(importCSS("a { color: #abc; background: #abcd }"), "color: #AABBCC\nbackground: #AABBCCDD\n");
    EXPECT_EQ(importCSS("--p3: color(display-p3 1 0.5 0 / 0.25); --s: color(srgb .2 40% 1.5)"),
              "p3: #FF800040 p3\ns: #3366FF\n");
    EXPECT_EQ(importCSS("x: rgb(255, 0, 0); y: rgba(0,0,0,.5); z: rgb(0 0 255 / 50%); w: RGB(100%, 50%, 0%)"),
              "x: #FF0000\ny: #00000080\nz: #0000FF80\nw: #FF8000\n");
    EXPECT_EQ(importCSS("--h: hsl(120 100% 25%); --h2: hsla(0.5turn, 100%, 50%, 0.5)"),
              "h: #008000\nh2: #00FFFF80\n");
    EXPECT_EQ(importCSS("--white: oklab(100% 0 0); --black: oklch(0 0 none)"), "white: #FFFFFF p3\nblack: #000000 p3\n");
    // A declaration name stands before the value; the colour needs none.
    EXPECT_EQ(importCSS("border: 1px solid #102030; box-shadow: 0 0 2px rgba(0, 0, 0, .25), #405060"),
              "border: #102030\nbox-shadow: #405060\nbox-shadow: #00000040\n");
}

TEST(CSSFileImporter, PassesOverWhatIsNoColour) {
    EXPECT_EQ(importCSS("--c: oklch(99% .03 var(--color-hue, 0)); --g: 210 17% 98%; --u: url(#a)"), "");
    // Seven or five digits are no colour, and a hex run inside a longer one is not cut out of it.
    EXPECT_EQ(importCSS("--a: #1234567; --b: #12345; --c: #12345678a"), "");
    // An id selector and an at-rule's condition are no values.
    EXPECT_EQ(importCSS("#fade, #add { color: #010203 } @supports (color: color(display-p3 1 1 1)) { }"),
              "color: #010203\n");
}

TEST(CSSFileImporter, KeepsEachColourOnceWithTheFormThatFoundItFirst) {
    // #abc and #aabbcc are one colour: the six-digit search runs first.
    EXPECT_EQ(importCSS("--short: #abc; --long: #aabbcc"), "long: #AABBCC\n");
    EXPECT_EQ(importCSS("--rgb: rgb(255, 0, 0); --hex: #f00; --again: #ff0000"), "again: #FF0000\n");
}

TEST(CSSFileImporter, NumberedFamiliesBecomeSets) {
    EXPECT_EQ(importCSS("--first: #000001; --brand-300: #000300; --brand-100: #000100; --other: #000002;"
                        "--brand-200: #000200"),
              "first: #000001\nbrand [100 #000100, 200 #000200, 300 #000300]\nother: #000002\n");
    EXPECT_EQ(importCSS("--two-1: #000001; --two-2: #000002"), "two-1: #000001\ntwo-2: #000002\n");

    const auto family = [](int count) {
        std::string text;
        for (int i = 1; i <= count; ++i) {
            char colour[16];
            std::snprintf(colour, sizeof colour, "%06X", i);
            text += "--f" + std::to_string(i) + ": #" + colour + ";";
        }
        return text;
    };
    const std::string thirtyTwo = importCSS(family(32));
    EXPECT_EQ(std::count(thirtyTwo.begin(), thirtyTwo.end(), '\n'), 1);
    EXPECT_EQ(thirtyTwo.substr(0, 20), "f [1 #000001, 2 #000");
    const std::string thirtyThree = importCSS(family(33));
    EXPECT_EQ(std::count(thirtyThree.begin(), thirtyThree.end(), '\n'), 33);
}

TEST(CSSFileImporter, SeveralNumbersAndRepeatedScales) {
    // The last number of a name makes the family; a scale given twice makes two sets.
    EXPECT_EQ(importCSS("--md-red-a100: #100000; --md-red-a200: #200000; --md-red-a400: #400000;"
                        "--md-red-a700: #700000; --space-2-100: #000001; --space-2-200: #000002;"
                        "--space-2-300: #000003"),
              "md-red-a [100 #100000, 200 #200000, 400 #400000, 700 #700000]\n"
              "space-2 [100 #000001, 200 #000002, 300 #000003]\n");
    EXPECT_EQ(importCSS("--b-1: #000001; --b-2: #000002; --b-3: #000003;"
                        "--b-1: color(display-p3 0 0 1); --b-2: color(display-p3 0 1 0); --b-3: color(display-p3 1 0 0)"),
              "b [1 #000001, 2 #000002, 3 #000003]\n"
              "b 2 [1 #0000FF p3, 2 #00FF00 p3, 3 #FF0000 p3]\n");
    // Numbers order by value, whatever their length.
    EXPECT_EQ(importCSS("--g10: #00000a; --g9: #000009; --g100: #000064"), "g [9 #000009, 10 #00000A, 100 #000064]\n");
}

TEST(CSSFileImporter, StopsGatheringAtTheColourLimit) {
    std::string text;
    for (int i = 0; i <= 65536; ++i) {
        char declaration[32];
        std::snprintf(declaration, sizeof declaration, "x:#%06X;", i);
        text += declaration;
    }
    ProjectItemPtr root = testing::newGroupItem();
    CSSFileImporter importer;
    std::vector<std::string> diagnostics;
    importer.diagnostics = [&](std::string_view line) { diagnostics.emplace_back(line); };
    importer.importText(text, false, *root);
    EXPECT_EQ(root->group->items.size(), 65536u);
    EXPECT_EQ(diagnostics, (std::vector<std::string>{"Only the first 65536 colours were read; the rest were left out"}));
}

TEST(CSSFileImporter, HTMLCountsOnlyStyleElementsAndAttributes) {
    const std::string page = R"html(<html><head><style>.a { color: #112233 }</style></head>
        <body style="background: #445566"><p>Text #778899 and rgb(1, 2, 3)</p>
        <svg><style>.b{fill:#aabbcc}</style></svg>
        <div style="border-color: rgb(10, 20, 30)"></div><script>var c = "#ddeeff";</script></body></html>)html";
    std::vector<std::string> diagnostics;
    EXPECT_EQ(importCSS(page, true, &diagnostics),
              "color: #112233\nfill: #AABBCC\nbackground: #445566\nborder-color: #0A141E\n");
    EXPECT_TRUE(diagnostics.empty());
    EXPECT_EQ(importCSS("<p>#123456</p>", true, &diagnostics), "");
    EXPECT_EQ(diagnostics,
              (std::vector<std::string>{"The page has no style elements or style attributes, so no colours were read from it"}));
    diagnostics.clear();
    // A page the parser can't take is searched as plain text.
    std::string deep = "<p style='color:#010101'>#020202</p>";
    for (int i = 0; i < 5000; ++i) {
        deep += "<div>";
    }
    EXPECT_EQ(importCSS(deep, true, &diagnostics), "color: #010101\nColor: #020202\n");
    EXPECT_EQ(diagnostics, (std::vector<std::string>{"Parsing as HTML failed, falling back to full text parse instead"}));
}

TEST(CSSFileImporter, FilesChooseHTMLByExtensionAndFailWithOneMessage) {
    testing::ScratchFolder folder;
    const std::string page = "<style>a{color:#010203}</style><p>#040506</p>";
    const auto importFile = [](const std::filesystem::path& file) {
        ProjectItemPtr root = testing::newGroupItem();
        CSSFileImporter().importColors(file, *root);
        return describe(*root);
    };
    EXPECT_EQ(importFile(folder.write("page.HTML", page)), "color: #010203\n");
    EXPECT_EQ(importFile(folder.write("page.htm", page)), "color: #010203\nColor: #040506\n");
    EXPECT_EQ(importFile(folder.write("plain.html", "<p>no styles</p>")), "");

    const auto errorOf = [](const std::filesystem::path& file) {
        ProjectItemPtr root = testing::newGroupItem();
        try {
            CSSFileImporter().importColors(file, *root);
        } catch (const DocumentColorParsingError& error) {
            return error.message;
        }
        return std::string("no error");
    };
    EXPECT_EQ(errorOf(folder.path / "missing.css"), "Unable to read document");
    EXPECT_EQ(errorOf(folder.path), "Unable to read document");
    EXPECT_EQ(errorOf(folder.write("binary.css", std::string("#abcdef\xff\xfe\0", 10))), "Unable to read document");
}

TEST(CSSFileImporter, RealStyleSheetsAndPagesImport) {
    const auto folder = testing::corpusFolder("css");
    if (folder.empty()) {
        GTEST_SKIP() << "no sample folder";
    }
    // Files and how many items each gives: colours of hex, rgba(), color(), oklch() and
    // numbered families made into sets. The hsl file holds bare component triplets, the
    // oklch one only var() hues, and the documentation page's styles hold a name alone.
    const std::vector<std::pair<std::string, std::size_t>> expected = {
        {"bootstrap.css", 130},
        {"foundation-emails-hero.html", 3},
        {"material-colors.var.css", 44},
        {"open-props-colors-hsl.min.css", 0},
        {"open-props-colors-oklch.min.css", 0},
        {"open-props-colors.min.css", 19},
        {"open-props.min.css", 86},
        {"radix-black-alpha.css", 2},
        {"radix-blue-alpha.css", 2},
        {"radix-blue-dark-alpha.css", 2},
        {"radix-blue-dark.css", 2},
        {"radix-blue.css", 2},
        {"radix-gray.css", 2},
        {"radix-tomato.css", 2},
        {"responsive-email-inlined.html", 6},
        {"spectrum-colorpicker-index.html", 0},
        {"tailwindcss-theme.css", 36},
    };
    for (const auto& [file, count] : expected) {
        SCOPED_TRACE(file);
        ProjectItemPtr root = testing::newGroupItem();
        CSSFileImporter().importColors(folder / file, *root);
        EXPECT_EQ(root->group->items.size(), count);
        std::vector<ColorValue> seen;
        for (const ProjectItemPtr& item : root->group->items) {
            if (item->color) {
                const ColorValue& value = item->color->color.lightVariant;
                EXPECT_EQ(std::count(seen.begin(), seen.end(), value), 0) << item->name;
                seen.push_back(value);
            } else {
                ASSERT_TRUE(item->colorSet);
                EXPECT_GE(item->colorSet->colors.size(), 3u);
                EXPECT_LE(item->colorSet->colors.size(), 32u);
            }
        }
    }

    ProjectItemPtr blue = testing::newGroupItem();
    CSSFileImporter().importColors(folder / "radix-blue.css", *blue);
    EXPECT_EQ(describe(*blue),
              "blue [1 #FBFDFF, 2 #F4FAFF, 3 #E6F4FE, 4 #D5EFFF, 5 #C2E5FF, 6 #ACD8FC, 7 #8EC8F6, 8 #5EB1EF, "
              "9 #0090FF, 10 #0588F0, 11 #0D74CE, 12 #113264]\n"
              "blue 2 [1 #FBFDFF p3, 2 #F5FAFE p3, 3 #E9F4FD p3, 4 #DAEEFF p3, 5 #C9E4FE p3, 6 #B5D7F9 p3, "
              "7 #9BC6F1 p3, 8 #73AFEA p3, 9 #3F8EF7 p3, 10 #3C85E9 p3, 11 #2670D6 p3, 12 #1A3161 p3]\n");
    ProjectItemPtr email = testing::newGroupItem();
    CSSFileImporter().importColors(folder / "responsive-email-inlined.html", *email);
    EXPECT_EQ(describe(*email),
              "background-color: #EC0867\nbackground-color: #F4F5F6\nbackground: #FFFFFF\nborder: #EAEBED\n"
              "background-color: #0867EC\ncolor: #9A9EA6\n");
}

}  // namespace
}  // namespace tintwork
