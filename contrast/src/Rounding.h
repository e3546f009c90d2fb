#pragma once
// Rounding half away from zero to a fixed number of decimal places: roundPlaces with
// the power of ten written out, the same arithmetic without a pow call per comparison.

#include <cmath>

namespace tintwork {

inline double roundedToOnePlace(double value) {
    return std::round(value * 10.0) / 10.0;
}

inline double roundedToThreePlaces(double value) {
    return std::round(value * 1000.0) / 1000.0;
}

}  // namespace tintwork
