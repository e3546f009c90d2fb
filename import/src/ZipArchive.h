#pragma once
// A ZIP archive read from a file or from memory, whose entries are extracted whole into
// memory with a bound on their size.

#include <cstddef>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

struct zip;

namespace tintwork::importing {

// No entry larger than this is extracted.
inline constexpr std::size_t maxEntrySize = std::size_t{1} << 30;

// The archive could not be opened; what() is the archive library's description.
class ZipOpenError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class ZipArchive {
public:
    // The archive in the file, read whole through readFileBytes (whose FileError passes
    // on). Throws ZipOpenError.
    explicit ZipArchive(const std::filesystem::path& path);
    // The archive in `bytes`, which must outlive this object. Throws ZipOpenError.
    explicit ZipArchive(std::string_view bytes);
    ~ZipArchive();
    ZipArchive(const ZipArchive&) = delete;
    ZipArchive& operator=(const ZipArchive&) = delete;

    // The whole entry of that (UTF-8) name; absent when there is none. An entry that
    // declares or holds more than maxEntrySize, or that cannot be read, throws
    // DocumentColorParsingError.
    std::optional<std::string> read(const std::string& name);

private:
    void open(std::string_view bytes);

    std::string bytes_;  // the file's bytes, when the archive was opened from a path
    zip* archive_ = nullptr;
};

}  // namespace tintwork::importing
