#include "colour/Oklab.h"

namespace tintwork {
RawRGBValues fromOKLAB(double, double, double, double alpha) { return {0, 0, 0, alpha}; }
RawRGBValues fromOKLAB(const RawLABValues& lab) { return fromOKLAB(lab.l, lab.a, lab.b, lab.alpha); }
RawRGBValues fromOKLCH(double, double, double, double alpha) { return {0, 0, 0, alpha}; }
RawRGBValues fromOKLCH(const RawLCHValues& lch) { return fromOKLCH(lch.lightness, lch.chroma, lch.hue, lch.alpha); }
RawLABValues toOKLAB(double, double, double, double alpha) { return {0, 0, 0, alpha}; }
RawLABValues toOKLAB(const ColorValue& color) { return {0, 0, 0, color.alpha()}; }
RawLCHValues toOKLCH(double, double, double, double alpha) { return {0, 0, 0, alpha}; }
RawLCHValues toOKLCH(const ColorValue& color) { return {0, 0, 0, color.alpha()}; }
RawLABValues lerpLAB(const RawLABValues& first, double, const RawLABValues&) { return first; }
RawLCHValues lerpLCH(const RawLCHValues& first, double, const RawLCHValues&) { return first; }
} // namespace tintwork
