#include <cstdio>
#include <string>
#include <utility>

#include "ExampleProject.h"

namespace tintwork::example {

namespace {

ColorValue hex(unsigned int rgb) {
    return ColorValue::sRGB(((rgb >> 16) & 0xFF) / 255.0, ((rgb >> 8) & 0xFF) / 255.0, (rgb & 0xFF) / 255.0);
}

std::string fixedId(unsigned int number) {
    char text[40];
    std::snprintf(text, sizeof text, "3C0E7A51-0000-4000-8000-%012X", number);
    return text;
}

// A colour with all four appearance variants, tested in the given position.
ProjectItemPtr colour(unsigned int number, std::string name, unsigned int light, unsigned int lightHighContrast,
                      unsigned int dark, unsigned int darkHighContrast, const TestGroupPtr& group,
                      TestPosition position) {
    OchreColorItem payload;
    payload.color.name = name;
    payload.color.lightVariant = hex(light);
    payload.color.lightVariantHighContrast = hex(lightHighContrast);
    payload.color.darkVariant = hex(dark);
    payload.color.darkVariantHighContrast = hex(darkHighContrast);
    payload.appearanceType = AppearanceType::lightDarkHighContrast;
    auto item = std::make_shared<OchreColorProjectItem>(std::move(name), fixedId(number), std::move(payload));
    item->testGroup = group;
    item->testPosition = position;
    return item;
}

TestTask task(unsigned int number, std::string name, TestTaskType type) {
    TestTask result;
    result.name = std::move(name);
    result.taskType = type;
    result.uuid = fixedId(number);
    return result;
}

}  // namespace

std::shared_ptr<OchreColorProject> makeContrastExampleProject() {
    auto project = std::make_shared<OchreColorProject>();

    // Text on a page background, in each appearance, against a minimum Lc, the font
    // sizes that the contrast allows, and the WCAG ratio. Body text passes everywhere;
    // the muted and placeholder greys fail on purpose, less so in high contrast.
    auto text = std::make_shared<TestGroup>();
    text->uuid = fixedId(0xD001);
    text->name = "Text on Paper";
    text->isExpanded = true;
    TestTask body = task(0xD101, "Body text", TestTaskType::apcaContrastTest);
    body.thresholdType = TestThresholdType::luminosity;
    body.threshold = 60;
    TestTask captions = task(0xD102, "Captions", TestTaskType::apcaContrastTest);
    captions.thresholdType = TestThresholdType::textSize;
    captions.minFontSize = 16;
    captions.minFontWeight = TestFontWeight::fourHundred;
    TestTask ratio = task(0xD103, "WCAG AA", TestTaskType::wcagContrastTest);
    text->tests = {body, captions, ratio};

    // Buttons: white labels on the brand colour pass in every appearance.
    auto buttons = std::make_shared<TestGroup>();
    buttons->uuid = fixedId(0xD002);
    buttons->name = "Buttons";
    buttons->tests = {task(0xD104, "Labels", TestTaskType::wcagContrastTest)};
    project->testGroups = {text, buttons};

    project->items = {
        colour(1, "Paper", 0xFFFFFF, 0xFFFFFF, 0x121212, 0x000000, text, TestPosition::background),
        colour(2, "Ink", 0x1A1A1A, 0x000000, 0xE8E8E8, 0xFFFFFF, text, TestPosition::foreground),
        colour(3, "Muted", 0x8A8A8A, 0x4D4D4D, 0x7A7A7A, 0xC0C0C0, text, TestPosition::foreground),
        colour(4, "Placeholder", 0xD0D0D0, 0xA0A0A0, 0x2E2E2E, 0x5A5A5A, text, TestPosition::foreground),
        colour(5, "Brand", 0x1F5FD6, 0x0B3A99, 0x1F5FD6, 0x0B3A99, buttons, TestPosition::background),
        colour(6, "Label", 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, buttons, TestPosition::foreground),
    };
    return project;
}

}  // namespace tintwork::example
