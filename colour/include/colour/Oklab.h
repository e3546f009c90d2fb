// OKLAB and OKLCH conversions on plain numbers, and their interpolation.
#pragma once

#include "colour/ColorValue.h"
#include "colour/RawValues.h"

namespace tintwork {

// Linear (unclamped) RGB from OKLAB; alpha passes through.
RawRGBValues fromOKLAB(double l, double a, double b, double alpha);
RawRGBValues fromOKLAB(const RawLABValues& lab);
// Linear RGB from OKLCH with the hue in radians.
RawRGBValues fromOKLCH(double lightness, double chroma, double hue, double alpha);
RawRGBValues fromOKLCH(const RawLCHValues& lch);

// OKLAB from linear RGB components.
RawLABValues toOKLAB(double red, double green, double blue, double alpha);
// OKLAB of a colour; a colour not in extended linear sRGB is converted there first.
RawLABValues toOKLAB(const ColorValue& color);
// OKLCH from linear RGB; the hue is atan2(b, a) in radians, not normalised.
RawLCHValues toOKLCH(double red, double green, double blue, double alpha);
RawLCHValues toOKLCH(const ColorValue& color);

// (first - second) * t + second per component, t clamped to 0..1: t = 1 gives first.
RawLABValues lerpLAB(const RawLABValues& first, double t, const RawLABValues& second);
// As lerpLAB, with the hue taken the short way round and a grey side taking the other side's hue.
RawLCHValues lerpLCH(const RawLCHValues& first, double t, const RawLCHValues& second);

} // namespace tintwork
