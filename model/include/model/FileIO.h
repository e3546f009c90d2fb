#pragma once
// Plain file operations shared by the flows, exporters and importers. Failures
// throw FileError, whose what() is the text shown after "Error building ".

#include <filesystem>
#include <fstream>
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

// A file written piece by piece through a temporary file in the same folder, renamed
// over the target by commit(). Until then the target is untouched; dropped without a
// commit, the temporary file is removed.
class AtomicFileStream {
public:
    // Throws FileError when the temporary file can't be created.
    explicit AtomicFileStream(std::filesystem::path path);
    ~AtomicFileStream();
    AtomicFileStream(const AtomicFileStream&) = delete;
    AtomicFileStream& operator=(const AtomicFileStream&) = delete;

    std::ostream& stream() { return stream_; }
    // Flushes and renames the file into place; throws FileError when any write failed.
    void commit();

private:
    std::filesystem::path path_;
    std::filesystem::path temporary_;
    std::ofstream stream_;
    bool committed_ = false;
};

// Creates a folder with its intermediate folders; an existing folder is no failure.
void createDirectories(const std::filesystem::path& path);
// Removes a file or folder tree; every failure is ignored.
void removeItemIgnoringErrors(const std::filesystem::path& path) noexcept;
// A leading "~" or "~user" becomes that home directory; other paths are unchanged.
std::string expandTilde(const std::string& path);

}  // namespace tintwork
