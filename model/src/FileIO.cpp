#include "model/FileIO.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <pwd.h>
#include <random>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace tintwork {

namespace {

std::string lastComponent(const std::filesystem::path& path) {
    std::filesystem::path name = path.filename();
    if (name.empty()) {
        name = path.parent_path().filename();
    }
    return name.empty() ? path.string() : name.string();
}

std::string folderName(const std::filesystem::path& path) {
    std::filesystem::path folder = path.parent_path();
    if (folder.empty()) {
        folder = std::filesystem::current_path();
    }
    return lastComponent(folder);
}

std::string quoted(const std::string& text) {
    return "\u201c" + text + "\u201d";
}

[[noreturn]] void throwOpenError(const std::filesystem::path& path, int error) {
    const std::string file = "The file " + quoted(lastComponent(path)) + " couldn\u2019t be opened";
    if (error == ENOENT) {
        throw FileError(file + " because there is no such file.");
    }
    if (error == EACCES || error == EPERM) {
        throw FileError(file + " because you don\u2019t have permission to view it.");
    }
    throw FileError(file + ". (" + std::strerror(error != 0 ? error : EIO) + ")");
}

// "1 GiB" for whole binary units, the byte count otherwise.
std::string sizeText(std::uintmax_t bytes) {
    constexpr std::uintmax_t gibibyte = std::uintmax_t{1} << 30;
    if (bytes % gibibyte == 0) {
        return std::to_string(bytes / gibibyte) + " GiB";
    }
    return std::to_string(bytes) + " bytes";
}

// Closes a descriptor when the read is left by any path.
struct DescriptorCloser {
    explicit DescriptorCloser(int opened) : descriptor(opened) {}
    ~DescriptorCloser() { ::close(descriptor); }
    DescriptorCloser(const DescriptorCloser&) = delete;
    DescriptorCloser& operator=(const DescriptorCloser&) = delete;

    int descriptor;
};

[[noreturn]] void throwSaveError(const std::filesystem::path& path) {
    throw FileError("The file " + quoted(lastComponent(path)) + " couldn\u2019t be saved in the folder " +
                    quoted(folderName(path)) + ".");
}

}  // namespace

std::string readFileBytes(const std::filesystem::path& path) {
    // Non-blocking, so that opening a FIFO without a writer returns at once; it is
    // refused below like every other file that is not a regular one.
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0) {
        throwOpenError(path, errno);
    }
    const DescriptorCloser closer{descriptor};
    struct stat info {};
    if (::fstat(descriptor, &info) != 0) {
        throwOpenError(path, errno);
    }
    if (S_ISDIR(info.st_mode)) {
        throwOpenError(path, EISDIR);
    }
    const std::string file = "The file " + quoted(lastComponent(path)) + " couldn\u2019t be opened";
    if (!S_ISREG(info.st_mode)) {
        throw FileRefusedError(file + " because it is not a regular file.");
    }
    const std::string tooLarge = file + " because it is larger than " + sizeText(maximumInputFileSize) + ".";
    if (static_cast<std::uintmax_t>(info.st_size) > maximumInputFileSize) {
        throw FileRefusedError(tooLarge);
    }
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(info.st_size));
    // The size is checked again while reading: a file may grow after it was measured,
    // and some (those under /proc) report no size at all.
    char buffer[65536];
    while (true) {
        const ssize_t count = ::read(descriptor, buffer, sizeof buffer);
        if (count == 0) {
            break;
        }
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            throwOpenError(path, errno);
        }
        if (bytes.size() + static_cast<std::size_t>(count) > maximumInputFileSize) {
            throw FileRefusedError(tooLarge);
        }
        bytes.append(buffer, static_cast<std::size_t>(count));
    }
    return bytes;
}

void writeFileBytes(const std::filesystem::path& path, std::string_view bytes) {
    errno = 0;
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    if (!stream) {
        throwSaveError(path);
    }
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream) {
        throwSaveError(path);
    }
}

void writeFileAtomically(const std::filesystem::path& path, std::string_view bytes) {
    AtomicFileStream file(path);
    file.stream().write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.commit();
}

AtomicFileStream::AtomicFileStream(std::filesystem::path path) : path_(std::move(path)) {
    thread_local std::mt19937_64 generator{std::random_device{}()};
    temporary_ = path_;
    temporary_ += ".tmp" + std::to_string(generator() % 1000000000ULL);
    stream_.open(temporary_, std::ios::binary | std::ios::trunc);
    if (!stream_) {
        throwSaveError(path_);
    }
}

AtomicFileStream::~AtomicFileStream() {
    if (!committed_) {
        stream_.close();
        removeItemIgnoringErrors(temporary_);
    }
}

void AtomicFileStream::commit() {
    stream_.close();
    std::error_code code;
    if (stream_) {
        std::filesystem::rename(temporary_, path_, code);
    }
    if (!stream_ || code) {
        removeItemIgnoringErrors(temporary_);
        committed_ = true;
        throwSaveError(path_);
    }
    committed_ = true;
}

void createDirectories(const std::filesystem::path& path) {
    std::error_code code;
    std::filesystem::create_directories(path, code);
    if (code || !std::filesystem::is_directory(path, code)) {
        throwSaveError(path);
    }
}

void removeItemIgnoringErrors(const std::filesystem::path& path) noexcept {
    std::error_code code;
    std::filesystem::remove_all(path, code);
}

std::string expandTilde(const std::string& path) {
    if (path.empty() || path.front() != '~') {
        return path;
    }
    const std::size_t slash = path.find('/');
    const std::string user = path.substr(1, slash == std::string::npos ? std::string::npos : slash - 1);
    const std::string rest = slash == std::string::npos ? std::string() : path.substr(slash);
    std::string home;
    if (user.empty()) {
        if (const char* variable = std::getenv("HOME"); variable != nullptr && *variable != '\0') {
            home = variable;
        } else if (const passwd* entry = getpwuid(getuid()); entry != nullptr && entry->pw_dir != nullptr) {
            home = entry->pw_dir;
        }
    } else if (const passwd* entry = getpwnam(user.c_str()); entry != nullptr && entry->pw_dir != nullptr) {
        home = entry->pw_dir;
    }
    if (home.empty()) {
        return path;
    }
    // "~/" on a home of "/" must not give "//".
    while (home.size() > 1 && home.back() == '/') {
        home.pop_back();
    }
    if (home == "/" && !rest.empty()) {
        return rest;
    }
    return home + rest;
}

}  // namespace tintwork
