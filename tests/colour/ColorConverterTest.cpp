#include "colour/ColorConverter.h"
#include "colour/FatalError.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace tintwork {
namespace {

const ColorValue steelBlue = ColorValue::sRGB(0.2, 0.4, 0.6, 0.5);

std::string text(const ColorValue& color, ColorFormat format, ColorSpace space = ColorSpace::sRGB,
                 const ColorConverterOptions& options = {}) {
    return colorString(color, format, space, options).colorString.value_or("<none>");
}

ColorConverterOptions roundedTo(int places) {
    ColorConverterOptions options;
    options.roundedTo = places;
    return options;
}

ColorConverterOptions exporterOptions(bool forceClip = false) {
    ColorConverterOptions options;
    options.p3Prefix = "p3: ";
    options.suffixWhenClipped = " /* clipped */";
    options.forceClip = forceClip;
    return options;
}

TEST(ColorConverter, WritesEveryFormat) {
    using enum ColorFormat;
    EXPECT_EQ(text(steelBlue, floatRGBA), "0.2 0.4 0.6 0.5");
    EXPECT_EQ(text(steelBlue, floatHSVA), "0.5833 0.6667 0.6 0.5");
    EXPECT_EQ(text(steelBlue, htmlRGB), "#33669980");
    EXPECT_EQ(text(ColorValue::sRGB(0.2, 0.4, 0.6), htmlRGB), "#336699");
    EXPECT_EQ(text(steelBlue, cssRGB), "rgb(51, 102, 153 / 0.5)");
    EXPECT_EQ(text(steelBlue, cssColor), "color(srgb 0.2 0.4 0.6 / 0.5)");
    EXPECT_EQ(text(steelBlue, cssHSL), "hsl(210 67% 60% / 0.5)");
    EXPECT_EQ(text(steelBlue, cssOKLAB), "oklab(49.93% -0.033 -0.093 / 0.5)");
    EXPECT_EQ(text(steelBlue, cssOKLCH), "oklch(49.9% 0.0987 250.4 / 0.5)");
    EXPECT_EQ(text(steelBlue, hexRGB), "0x336699");
    EXPECT_EQ(text(steelBlue, hexARGB), "0x80336699");
    EXPECT_EQ(text(steelBlue, hexRGBA), "0x33669980");
    EXPECT_EQ(text(steelBlue, swiftUIColorRGBA), "UIColor(red: 0.2, green: 0.4, blue: 0.6, alpha: 0.5)");
    EXPECT_EQ(text(steelBlue, swiftUIColorHSBA),
              "UIColor(hue: 0.5833, saturation: 0.6667, brightness: 0.6, alpha: 0.5)");
    EXPECT_EQ(text(steelBlue, swiftNSColorRGBA), "NSColor(red: 0.2, green: 0.4, blue: 0.6, alpha: 0.5)");
    EXPECT_EQ(text(steelBlue, swiftNSColorHSBA),
              "NSColor(hue: 0.5833, saturation: 0.6667, brightness: 0.6, alpha: 0.5)");
    EXPECT_EQ(text(steelBlue, swiftColorRGBA), "Color(red: 0.2, green: 0.4, blue: 0.6, opacity: 0.5)");
    EXPECT_EQ(text(steelBlue, swiftColorHSBA),
              "Color(hue: 0.5833, saturation: 0.6667, brightness: 0.6, opacity: 0.5)");
}

TEST(ColorConverter, OpaqueColoursDropTheAlphaPart) {
    using enum ColorFormat;
    const ColorValue opaque = ColorValue::sRGB(1, 0.5, 0);
    EXPECT_EQ(text(opaque, cssRGB), "rgb(255, 128, 0)");
    EXPECT_EQ(text(opaque, cssColor), "color(srgb 1 0.5 0)");
    EXPECT_EQ(text(opaque, cssHSL), "hsl(30 100% 100%)");
    EXPECT_EQ(text(opaque, cssOKLAB).find('/'), std::string::npos);
    EXPECT_EQ(text(ColorValue::sRGB(0, 0, 0, 0.99999), cssOKLAB), "oklab(0% 0 0)") << "alpha tested after rounding";
    EXPECT_EQ(text(ColorValue::sRGB(0, 0, 0, 0.99999), cssRGB), "rgb(0, 0, 0 / 1)");
}

TEST(ColorConverter, WritesTheDisplayP3Spellings) {
    using enum ColorFormat;
    constexpr ColorSpace p3 = ColorSpace::displayP3;
    const ColorValue green(ColorEncoding::displayP3, 0, 1, 0, 1);
    const auto options = exporterOptions();
    EXPECT_EQ(text(green, floatRGBA, p3, options), "p3: 0 1 0 1");
    EXPECT_EQ(text(green, htmlRGB, p3, options), "p3: #00FF00");
    EXPECT_EQ(text(green, hexARGB, p3, options), "p3: 0xFF00FF00");
    EXPECT_EQ(text(green, cssHSL, p3, options), "p3: hsl(120 100% 100%)");
    EXPECT_EQ(text(green, cssRGB, p3, options), "color(display-p3 0 1 0)");
    EXPECT_EQ(text(green, cssRGB, p3, exporterOptions(true)), "rgb(0, 255, 0) /* clipped */");
    EXPECT_EQ(text(green, cssColor, p3, options), "color(display-p3 0 1 0)");
    EXPECT_EQ(text(green, cssOKLCH, p3, options), "oklch(84.9% 0.3685 145.6)");
    EXPECT_EQ(text(green, swiftNSColorRGBA, p3, options), "NSColor(displayP3Red: 0, green: 1, blue: 0, alpha: 1)");
    EXPECT_EQ(text(green, swiftNSColorHSBA, p3, options),
              "NSColor(colorSpace: .displayP3, hue: 0.3333, saturation: 1, brightness: 1, alpha: 1)");
    EXPECT_EQ(text(green, swiftNSColorHSBA, ColorSpace::sRGBExtended, options),
              "NSColor(colorSpace: .extendedSRGB, hue: 0.3333, saturation: 1, brightness: 1, alpha: 1)");
    EXPECT_EQ(text(green, swiftColorRGBA, p3, options), "Color(.displayP3, red: 0, green: 1, blue: 0, opacity: 1)");
    EXPECT_EQ(displayName(swiftColorHSBA), "SwiftUI Color HSBA");
    EXPECT_EQ(displayName(htmlRGB), "CSS Hex");
}

TEST(ColorConverter, ClipsToSRGBOnlyWhereTheOutputCannotShowTheColour) {
    using enum ColorFormat;
    const ColorValue wide(ColorEncoding::displayP3, 1, 0, 0, 1);
    const auto options = exporterOptions();
    const auto srgbColor = colorString(wide, cssColor, ColorSpace::sRGB, options);
    EXPECT_EQ(srgbColor.colorString, "color(srgb 1 0 0) /* clipped */");
    EXPECT_TRUE(srgbColor.clipped);
    const auto extendedColor = colorString(wide, cssColor, ColorSpace::sRGBExtended, options);
    EXPECT_EQ(extendedColor.colorString, "color(srgb 1 0 0)") << "the components as they stand";
    EXPECT_FALSE(extendedColor.clipped);
    const ColorValue extendedRed(ColorEncoding::sRGBExtended, 1.1, -0.05, 0.5, 1);
    EXPECT_EQ(text(extendedRed, cssColor, ColorSpace::sRGBExtended, options), "color(srgb 1.1 -0.05 0.5)");
    EXPECT_EQ(text(extendedRed, cssColor, ColorSpace::sRGBExtended, exporterOptions(true)),
              "color(srgb 1 0 0.5) /* clipped */");
    EXPECT_EQ(text(extendedRed, cssRGB, ColorSpace::sRGBExtended, options), "rgb(255, 0, 128) /* clipped */");
    EXPECT_EQ(text(extendedRed, hexRGB, ColorSpace::sRGBExtended, options), "0xFF0080 /* clipped */");
    EXPECT_TRUE(colorString(extendedRed, hexRGB, ColorSpace::sRGB, options).clipped);
    const auto p3Hex = colorString(wide, hexRGB, ColorSpace::displayP3, options);
    EXPECT_EQ(p3Hex.colorString, "p3: 0xFF0000");
    EXPECT_FALSE(p3Hex.clipped);
    EXPECT_FALSE(colorString(extendedRed, floatRGBA, ColorSpace::sRGB, options).clipped);
    EXPECT_EQ(text(extendedRed, floatRGBA, ColorSpace::sRGB, options), "1.1 -0.05 0.5 1");
    EXPECT_EQ(text(ColorValue::sRGB(1.5, 0, 0), hexRGB), "0xFF0000") << "sRGB-tagged values clamp without clipping";
}

TEST(ColorConverter, RoundingFollowsRoundedToExceptOKLCHLightnessAndHue) {
    using enum ColorFormat;
    const ColorValue color = ColorValue::sRGB(0.123456, 0.5, 0.987654, 0.333333);
    ColorConverterOptions options;
    options.roundedTo = 2;
    EXPECT_EQ(text(color, floatRGBA, ColorSpace::sRGB, options), "0.12 0.5 0.99 0.33");
    EXPECT_EQ(text(color, cssRGB, ColorSpace::sRGB, options), "rgb(31, 128, 252 / 0.33)");
    options.roundedTo = 8;
    EXPECT_EQ(text(color, floatRGBA, ColorSpace::sRGB, options), "0.123456 0.5 0.987654 0.333333");
    EXPECT_EQ(text(color, cssOKLCH, ColorSpace::sRGB, options), "oklch(61.5% 0.204324 257.5 / 0.333333)");
    options.roundedTo = 0;
    EXPECT_EQ(text(color, cssOKLAB, ColorSpace::sRGB, options), "oklab(100% -0 -0 / 0)") << "C prints a negative zero";
    EXPECT_EQ(text(ColorValue::sRGB(0.0, 0.0, 0.0000004), floatRGBA, ColorSpace::sRGB, roundedTo(6)), "0 0 0 1");
    EXPECT_EQ(text(ColorValue::sRGB(0.0, 0.0, 0.0000004), floatRGBA, ColorSpace::sRGB, roundedTo(8)), "0 0 4e-07 1");
    EXPECT_EQ(text(ColorValue::sRGB(1234567.0, 0.00001, 0), floatRGBA, ColorSpace::sRGB, roundedTo(5)), "1.23457e+06 1e-05 0 1");
}

TEST(ColorConverter, PerceptualSpacesHaveNoAppKitText) {
    for (ColorSpace space : {ColorSpace::oklab, ColorSpace::oklch}) {
        EXPECT_EQ(colorString(steelBlue, ColorFormat::swiftNSColorRGBA, space).colorString, std::nullopt);
        EXPECT_EQ(colorString(steelBlue, ColorFormat::swiftNSColorHSBA, space).colorString, std::nullopt);
        EXPECT_EQ(text(steelBlue, ColorFormat::swiftUIColorRGBA, space),
                  "UIColor(red: 0.2, green: 0.4, blue: 0.6, alpha: 0.5)");
    }
}

TEST(ColorConverter, UnprintableIntegersAreFatal) {
    const ColorValue broken = ColorValue::sRGB(std::nan(""), 0, 0);
    EXPECT_THROW(colorString(broken, ColorFormat::hexRGB, ColorSpace::sRGB), FatalError);
    EXPECT_THROW(colorString(ColorValue::sRGB(std::numeric_limits<double>::infinity(), 0, 0), ColorFormat::cssHSL,
                             ColorSpace::sRGB),
                 FatalError);
    EXPECT_EQ(text(broken, ColorFormat::floatRGBA), "nan 0 0 1");
}

void expectReadBack(const ColorValue& color, ColorFormat format, ColorSpace space, double tolerance) {
    const auto written = colorString(color, format, space, exporterOptions()).colorString;
    ASSERT_TRUE(written.has_value()) << displayName(format);
    const ConvertedColor read = parseColor(*written, format, space, false);
    ASSERT_TRUE(read.color.has_value()) << *written;
    EXPECT_EQ(read.detectedFormat, format) << *written;
    const auto expected = color.rgbaComponents();
    const auto actual = read.color->rgbaComponents();
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(actual[i], expected[i], tolerance) << *written << " in " << displayLabel(space);
    }
}

TEST(ColorConverter, EveryFormatReadsBackItsOwnOutput) {
    using enum ColorFormat;
    const ColorValue inGamut(ColorEncoding::sRGB, 0.25, 0.5, 0.75, 0.6);
    for (ColorSpace space : {ColorSpace::sRGB, ColorSpace::sRGBExtended, ColorSpace::displayP3}) {
        const ColorValue color = ColorValue(space == ColorSpace::displayP3 ? ColorEncoding::displayP3
                                                                            : ColorEncoding::sRGB,
                                            inGamut.red(), inGamut.green(), inGamut.blue(), inGamut.alpha());
        for (ColorFormat format : allColorFormats) {
            if (format == cssRGB && space == ColorSpace::displayP3) {
                continue; // written as color(display-p3 ...), which is read only as cssColor
            }
            double tolerance = 1e-4;
            if (format == htmlRGB || format == hexRGB || format == hexARGB || format == hexRGBA || format == cssRGB) {
                tolerance = 0.5 / 255.0 + 1e-9;
            } else if (format == cssHSL || format == cssOKLCH) {
                tolerance = 0.006; // whole percents and degrees, one-decimal lightness and hue
            } else if (format == cssOKLAB) {
                tolerance = 0.001;
            }
            if (format == hexRGB || format == htmlRGB) {
                expectReadBack(ColorValue(color.encoding(), color.red(), color.green(), color.blue(), 1), format,
                               space, tolerance);
            } else {
                expectReadBack(color, format, space, tolerance);
            }
        }
    }
}

TEST(ColorConverter, WideColoursSurviveTheFormsThatCarryThem) {
    using enum ColorFormat;
    const ColorValue wideP3(ColorEncoding::displayP3, 0.05, 0.95, 0.1, 1);
    for (ColorFormat format : {floatRGBA, cssColor, swiftUIColorRGBA, swiftNSColorRGBA, swiftColorRGBA}) {
        expectReadBack(wideP3, format, ColorSpace::displayP3, 1e-4);
    }
    const ColorValue wideExtended(ColorEncoding::sRGBExtended, 1.1, -0.05, 0.5, 1);
    for (ColorFormat format : {floatRGBA, cssColor, swiftUIColorRGBA, swiftNSColorRGBA, swiftColorRGBA}) {
        expectReadBack(wideExtended, format, ColorSpace::sRGBExtended, 1e-4);
    }
    for (ColorFormat format : {cssOKLAB, cssOKLCH}) {
        const auto written = colorString(wideExtended, format, ColorSpace::sRGBExtended).colorString;
        const auto read = parseFormat(*written, ColorSpace::sRGBExtended, format);
        ASSERT_TRUE(read.has_value()) << *written;
        EXPECT_EQ(read->encoding(), ColorEncoding::sRGBExtended);
        EXPECT_NEAR(read->red(), 1.1, 0.01) << *written;
        EXPECT_NEAR(read->green(), -0.05, 0.01) << *written;
    }
}

TEST(ColorConverter, FallbackOrderDecidesAmbiguousText) {
    using enum ColorFormat;
    const auto rgba = parseColor("0x11223344", floatRGBA, ColorSpace::sRGB, false);
    EXPECT_EQ(rgba.detectedFormat, hexRGBA);
    EXPECT_NEAR(rgba.color->alpha(), 0x44 / 255.0, 1e-12);
    const auto argb = parseColor("0x11223344", hexARGB, ColorSpace::sRGB, false);
    EXPECT_EQ(argb.detectedFormat, hexARGB);
    EXPECT_NEAR(argb.color->alpha(), 0x11 / 255.0, 1e-12);
    EXPECT_EQ(parseColor("0x112233", floatRGBA, ColorSpace::sRGB, false).detectedFormat, hexRGB);

    const auto floats = parseColor("0 0 1 1", cssOKLCH, ColorSpace::sRGB, false);
    EXPECT_EQ(floats.detectedFormat, floatRGBA);
    EXPECT_EQ(floats.color, ColorValue::sRGB(0, 0, 1, 1));
    EXPECT_EQ(parseColor("0 0 1 1", floatHSVA, ColorSpace::sRGB, false).detectedFormat, floatHSVA);

    EXPECT_FALSE(parseColor("rgb(10 20 30)", cssRGB, ColorSpace::sRGB, false).color.has_value());
    EXPECT_EQ(parseColor("rgb(10 20 30 40)", cssRGB, ColorSpace::sRGB, false).detectedFormat, floatRGBA);
    EXPECT_FALSE(parseColor("color(srgb 1 0 0)", cssRGB, ColorSpace::sRGB, false).color.has_value());
    EXPECT_EQ(parseColor("color(srgb 1 0 0)", cssColor, ColorSpace::sRGB, false).detectedFormat, cssColor);
    EXPECT_EQ(parseColor("hsl(1 2% 3%)", floatRGBA, ColorSpace::sRGB, false).detectedFormat, cssHSL);
    EXPECT_EQ(parseColor("Color(hue: 0.5, saturation: 1, brightness: 1, opacity: 1)", floatRGBA, ColorSpace::sRGB,
                         false)
                  .detectedFormat,
              swiftColorHSBA);
    const auto nothing = parseColor("no colour here", cssRGB, ColorSpace::displayP3, false);
    EXPECT_FALSE(nothing.color.has_value());
    EXPECT_FALSE(nothing.detectedFormat.has_value());
    EXPECT_EQ(nothing.detectedColorSpace, ColorSpace::displayP3);
}

TEST(ColorConverter, DetectsDisplayP3FromTheText) {
    using enum ColorFormat;
    const auto marked = parseColor("#p3:aabbcc", htmlRGB, ColorSpace::sRGB, true);
    EXPECT_EQ(marked.detectedColorSpace, ColorSpace::displayP3);
    EXPECT_EQ(marked.color, ColorValue(ColorEncoding::displayP3, 0xAA / 255.0, 0xBB / 255.0, 0xCC / 255.0, 1));
    EXPECT_EQ(parseColor("P3: 0 0 0 1", floatRGBA, ColorSpace::sRGBExtended, true).detectedColorSpace,
              ColorSpace::displayP3);
    EXPECT_EQ(parseColor("0 0 0 1", floatRGBA, ColorSpace::displayP3, true).detectedColorSpace, ColorSpace::sRGB);
    EXPECT_EQ(parseColor("0 0 0 1", floatRGBA, ColorSpace::sRGBExtended, true).detectedColorSpace,
              ColorSpace::sRGBExtended);
    EXPECT_EQ(parseColor("p3 0 0 0 1", floatRGBA, ColorSpace::sRGB, false).detectedColorSpace, ColorSpace::sRGB);
    const auto spelled = parseFormat("NSColor(colorSpace: .displayP3, hue: 0, saturation: 1, brightness: 1, alpha: 1)",
                                     ColorSpace::sRGB, swiftNSColorHSBA);
    EXPECT_EQ(spelled->encoding(), ColorEncoding::sRGB) << "the spelling inside the text decides nothing";
}

TEST(ColorConverter, ReadsHexShorthands) {
    using enum ColorFormat;
    const auto read = [](std::string_view text) { return parseFormat(text, ColorSpace::sRGB, htmlRGB); };
    EXPECT_EQ(read("#F"), ColorValue::sRGB(1, 1, 1));
    EXPECT_EQ(read("#7"), ColorValue::sRGB(7 / 15.0, 7 / 15.0, 7 / 15.0));
    EXPECT_EQ(read("#abc"), ColorValue::sRGB(0xAA / 255.0, 0xBB / 255.0, 0xCC / 255.0));
    EXPECT_EQ(read("##a#bc"), read("#abc")) << "every # is removed first";
    EXPECT_EQ(read("p3: #aabbcc"), ColorValue::sRGB(0xAA / 255.0, 0xBB / 255.0, 0xCC / 255.0));
    EXPECT_FALSE(read("#aabbcc;").has_value()) << "the whole text must match";
    EXPECT_TRUE(read(" #abc").has_value()) << "whitespace may lead the digits";
    EXPECT_FALSE(read("#aabbccdd").has_value());
    EXPECT_FALSE(read("#ab").has_value());
    EXPECT_TRUE(parseFormat("fill: 0xAABBCC;", ColorSpace::sRGB, hexRGB).has_value()) << "searched anywhere";
    EXPECT_FALSE(parseFormat("0XAABBCC", ColorSpace::sRGB, hexRGB).has_value());
}

TEST(ColorConverter, ReadsCSSAlphaAndPercentRanges) {
    using enum ColorFormat;
    const auto alphaOf = [](std::string_view text, ColorFormat format) {
        return parseFormat(text, ColorSpace::sRGB, format).value_or(ColorValue::sRGB(0, 0, 0, -1)).alpha();
    };
    EXPECT_EQ(alphaOf("rgb(10, 20, 30 / 50)", cssRGB), 0.5);
    EXPECT_EQ(alphaOf("rgb(10, 20, 30 / 0.5)", cssRGB), 0.5);
    EXPECT_EQ(alphaOf("rgb(10,20,30/50%)", cssRGB), 0.5);
    EXPECT_EQ(alphaOf("rgb(10, 20, 30)", cssRGB), 1.0);
    EXPECT_EQ(alphaOf("rgb(10, 20, 30 / 1)", cssRGB), 1.0);
    EXPECT_EQ(alphaOf("color(srgb 0.1 0.2 0.3 / 25)", cssColor), 0.25);
    EXPECT_EQ(alphaOf("hsl(120 50% 50% / 80)", cssHSL), 0.8);
    EXPECT_EQ(alphaOf("oklab(50% 0 0 / 40%)", cssOKLAB), 0.4);
    EXPECT_EQ(alphaOf("rgb(10, 20, 30 / -1)", cssRGB), 0.0);
    EXPECT_EQ(alphaOf("1 0 0 300", floatRGBA), 1.0);

    const auto rgb = parseFormat("rgb(255, 0, 510)", ColorSpace::sRGBExtended, cssRGB);
    EXPECT_EQ(rgb, ColorValue::sRGB(1, 0, 2));
    EXPECT_EQ(parseFormat("1.5 -3 0.5 1", ColorSpace::sRGBExtended, floatRGBA), ColorValue::sRGB(1.5, -2, 0.5, 1));
    EXPECT_EQ(parseFormat("1.5 -3 0.5 1", ColorSpace::displayP3, floatRGBA),
              ColorValue(ColorEncoding::displayP3, 1, 0, 0.5, 1));

    // A percentage maps 0..100 onto the component's range; chroma shares a and b's -0.4..0.4.
    const auto lch = [](std::string_view text) { return parseFormat(text, ColorSpace::sRGBExtended, cssOKLCH); };
    EXPECT_EQ(lch("oklch(50% 50% 120)"), lch("oklch(0.5 0 120)"));
    EXPECT_EQ(lch("oklch(70% 100% 50%)"), lch("oklch(0.7 0.4 180)"));
    const auto lab = [](std::string_view text) { return parseFormat(text, ColorSpace::sRGBExtended, cssOKLAB); };
    EXPECT_EQ(lab("oklab(60% 75% 0%)"), lab("oklab(0.6 0.2 -0.4)"));
    EXPECT_TRUE(lab("oklab(1 0 0)").has_value());
    EXPECT_FALSE(lab("oklab(1, 0, 0)").has_value());
}

TEST(ColorConverter, NumbersFollowTheNarrowGrammar) {
    using enum ColorFormat;
    const auto floats = [](std::string_view text) { return parseFormat(text, ColorSpace::sRGB, floatRGBA); };
    EXPECT_EQ(floats("0.5, 0.25,0.125 ,1"), ColorValue::sRGB(0.5, 0.25, 0.125, 1));
    EXPECT_EQ(floats("x: 0.5\t0.25\n0.125 1;"), ColorValue::sRGB(0.5, 0.25, 0.125, 1));
    EXPECT_EQ(floats("+0.5 0.25 0.125 1"), ColorValue::sRGB(0.5, 0.25, 0.125, 1)) << "the + is just text";
    EXPECT_FALSE(floats(".5 .25 .125 1").has_value());
    EXPECT_EQ(floats("1e-1 0 0.5 1"), ColorValue::sRGB(0, 0, 0.5, 1)) << "no exponent: \"-1 0 0.5 1\" is found";
    EXPECT_FALSE(floats("0.5 0.25 0.125").has_value());
    EXPECT_EQ(floats(std::string(400, '9') + " 0 0 1"), ColorValue::sRGB(1, 0, 0, 1));
    EXPECT_FALSE(parseFormat("hsl(120.5 50% 50%)", ColorSpace::sRGB, cssHSL).has_value());
    EXPECT_FALSE(parseFormat("NSColor(red:0.1, green:0.2, blue:0.3)", ColorSpace::sRGB, swiftNSColorRGBA));
    EXPECT_TRUE(parseFormat("let c = NSColor(red:0.1,green:0.2,blue:0.3,alpha:1) // x", ColorSpace::sRGB,
                            swiftNSColorRGBA));
}

TEST(ColorConverter, HSLCarriesHSBNumbers) {
    const ColorValue green = ColorValue::fromHSB(ColorEncoding::sRGB, 120.0 / 360.0, 0.5, 0.5, 1);
    EXPECT_EQ(text(green, ColorFormat::cssHSL), "hsl(120 50% 50%)");
    const auto read = parseFormat("hsl(120 50% 50%)", ColorSpace::sRGB, ColorFormat::cssHSL);
    EXPECT_NEAR(read->hue(), 1.0 / 3.0, 1e-12);
    EXPECT_NEAR(read->saturation(), 0.5, 1e-12);
    EXPECT_NEAR(read->brightness(), 0.5, 1e-12);
    EXPECT_EQ(parseFormat("hsl(720 150% 50%)", ColorSpace::sRGB, ColorFormat::cssHSL),
              ColorValue::fromHSB(ColorEncoding::sRGB, 1, 1, 0.5, 1));
}

} // namespace
} // namespace tintwork
