// The stored colour of the model: kept in the representation it was authored
// in (RGB, OKLAB or OKLCH) so that perceptual values survive a document round trip.
#pragma once

#include <optional>

#include "colour/ColorSpace.h"
#include "colour/ColorValue.h"
#include "colour/RawValues.h"

namespace tintwork {

// A value type. Exactly one of the three records is normally present: rgbValues
// for the RGB spaces, labValues for oklab, lchValues for oklch. converted() to the
// colour's own space (or a failed conversion) returns an equal copy of it.
class SCUColor {
public:
    ColorSpace colorSpace = ColorSpace::sRGB;
    std::optional<RawRGBValues> rgbValues;
    std::optional<RawLABValues> labValues;
    std::optional<RawLCHValues> lchValues;

    // Opaque white in sRGB.
    SCUColor();
    // From a working colour, stored in `space` (converted there first).
    SCUColor(const ColorValue& color, ColorSpace space);
    // From encoded RGB components of an RGB space.
    SCUColor(ColorSpace space, double red, double green, double blue, double alpha);
    // An oklch colour from OKLCH values.
    explicit SCUColor(const RawLCHValues& lch);
    // Fills labValues but marks the colour as oklch (kept as the stored format
    // expects); such a colour has no lchValues, and colorValue() on it is fatal.
    explicit SCUColor(const RawLABValues& lab);

    // An oklch colour with the given lightness, chroma, hue (radians) and alpha.
    static SCUColor fromLCH(double lightness, double chroma, double hue, double alpha);
    // labValues set, space oklch (see the RawLABValues constructor).
    static SCUColor fromLAB(double l, double a, double b, double alpha);
    // Opaque black in sRGB.
    static SCUColor black();

    // The working colour; OKLAB and OKLCH colours come out in Display P3.
    // Throws FatalError when the record the space calls for is absent.
    ColorValue colorValue() const;
    // Alpha of the record the space calls for; 0 when it is absent.
    double alpha() const;
    // Hue in 0..1 (HSB hue for RGB spaces, OKLAB/OKLCH angle otherwise); 0 when absent.
    double hue() const;
    // HSB saturation and brightness of colorValue().
    double saturation() const;
    double brightness() const;

    // A copy with the alpha replaced (see the source for the OKLAB/OKLCH paths).
    SCUColor withAlpha(double alpha) const;
    // A copy with the hue (0..1) replaced.
    SCUColor withHue(double hue) const;
    // The colour in another space; the same colour when already there or when conversion fails.
    SCUColor converted(ColorSpace to) const;

    // Same space, records present, every component differing by strictly less than tolerance.
    bool isEqual(const SCUColor& other, double tolerance) const;
    // Same space, the record for it present on both sides, all four values exactly equal.
    friend bool operator==(const SCUColor& lhs, const SCUColor& rhs);
};

} // namespace tintwork
