#include "colour/ColorValue.h"

namespace tintwork {
ColorValue::ColorValue(ColorEncoding encoding, double red, double green, double blue, double alpha)
    : encoding_(encoding), red_(red), green_(green), blue_(blue), alpha_(alpha) {}
ColorValue ColorValue::sRGB(double red, double green, double blue, double alpha) {
    return ColorValue(ColorEncoding::sRGB, red, green, blue, alpha);
}
ColorValue ColorValue::fromHSB(ColorEncoding encoding, double, double, double, double alpha) {
    return ColorValue(encoding, 0, 0, 0, alpha);
}
double ColorValue::hue() const { return 0; }
double ColorValue::saturation() const { return 0; }
double ColorValue::brightness() const { return 0; }
std::optional<ColorValue> ColorValue::converted(ColorEncoding) const { return *this; }
std::array<double, 4> ColorValue::rgbaComponents() const { return {red_, green_, blue_, alpha_}; }
std::array<double, 4> ColorValue::hsbaComponents() const { return {hue(), saturation(), brightness(), alpha_}; }
bool isOutsideSRGB(const ColorValue&) { return false; }
ColorValue pushLightness(const ColorValue& color, double) { return color; }
bool isNear(const ColorValue&, const ColorValue&, double) { return false; }
double roundPlaces(double value, int) { return value; }
} // namespace tintwork
