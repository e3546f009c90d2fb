#pragma once
// Plain file operations shared by the flows, exporters and importers. Failures
// throw FileError, whose what() is the text shown after "Error building ".

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tintwork {

class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The whole file as bytes.
std::string readFileBytes(const std::filesystem::path& path);
// Writes the bytes, replacing the file.
void writeFileBytes(const std::filesystem::path& path, std::string_view bytes);
// Writes through a temporary file in the same folder and renames it over the target.
void writeFileAtomically(const std::filesystem::path& path, std::string_view bytes);
// Creates a folder with its intermediate folders; an existing folder is no failure.
void createDirectories(const std::filesystem::path& path);
// Removes a file or folder tree; every failure is ignored.
void removeItemIgnoringErrors(const std::filesystem::path& path) noexcept;
// A leading "~" or "~user" becomes that home directory; other paths are unchanged.
std::string expandTilde(const std::string& path);

}  // namespace tintwork
