// Plain component records of a stored colour.
#pragma once

namespace tintwork {

// Encoded RGB components of the owning colour's space (or linear ones where a
// function says so).
struct RawRGBValues {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
    double alpha = 1.0;
    friend bool operator==(const RawRGBValues&, const RawRGBValues&) = default;
};

// OKLAB, with l in 0..1.
struct RawLABValues {
    double l = 0.0;
    double a = 0.0;
    double b = 0.0;
    double alpha = 1.0;
    friend bool operator==(const RawLABValues&, const RawLABValues&) = default;
};

// OKLCH, with lightness in 0..1 and hue in radians (-pi..pi as atan2 gives it).
struct RawLCHValues {
    double lightness = 0.0;
    double chroma = 0.0;
    double hue = 0.0;
    double alpha = 1.0;
    friend bool operator==(const RawLCHValues&, const RawLCHValues&) = default;
};

} // namespace tintwork
