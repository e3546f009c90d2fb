#include "model/FileIO.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
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

[[noreturn]] void throwSaveError(const std::filesystem::path& path) {
    throw FileError("The file " + quoted(lastComponent(path)) + " couldn\u2019t be saved in the folder " +
                    quoted(folderName(path)) + ".");
}

}  // namespace

std::string readFileBytes(const std::filesystem::path& path) {
    errno = 0;
    std::ifstream stream(path, std::ios::binary);
    std::error_code code;
    if (!stream) {
        const int error = errno;
        throwOpenError(path, error == 0 && !std::filesystem::exists(path, code) ? ENOENT : error);
    }
    if (std::filesystem::is_directory(path, code)) {
        throwOpenError(path, EISDIR);
    }
    std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    if (stream.bad()) {
        throwOpenError(path, EIO);
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
