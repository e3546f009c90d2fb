#pragma once
// Bounded decompression of untrusted data into memory: raw DEFLATE and zstd frames.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tintwork::importing {

// No decompressed buffer grows past this.
inline constexpr std::size_t maxDecompressedSize = std::size_t{1} << 30;

struct Decompressed {
    std::optional<std::string> bytes;  // set on success
    std::string error;                 // the decompressor's description of a failure
    bool tooLarge = false;             // the output would pass the bound (a decompression bomb)
};

// Inflates raw DEFLATE (no zlib header). Output beyond maxDecompressedSize, or beyond what
// DEFLATE data of real documents expands to (a few hundred times the input), is refused.
Decompressed inflateRaw(std::string_view input);
// Decompresses zstd frames; a frame that declares more than maxDecompressedSize is refused
// before decoding, and decoding stops at that bound.
Decompressed decompressZstd(std::string_view input);

}  // namespace tintwork::importing
