#include "ZipArchive.h"

#include <zip.h>

#include <algorithm>
#include <memory>

#include "import/ColorImporter.h"
#include "model/FileIO.h"

namespace tintwork::importing {

namespace {

std::string describe(zip_error_t& error) {
    std::string text = zip_error_strerror(&error);
    zip_error_fini(&error);
    return text;
}

// The file's bytes, read through readFileBytes like every other input: a device, a
// FIFO or an oversized file is refused by name (FileRefusedError passes on) instead of
// blocking or being read without end. A missing or unreadable file is reported in the
// archive library's words, as opening it there would.
std::string readArchiveFile(const std::filesystem::path& path) {
    try {
        return readFileBytes(path);
    } catch (const FileRefusedError&) {
        throw;
    } catch (const FileError&) {
        std::error_code ignored;
        zip_error_t error;
        zip_error_init_with_code(&error, std::filesystem::exists(path, ignored) ? ZIP_ER_OPEN : ZIP_ER_NOENT);
        throw ZipOpenError(describe(error));
    }
}

}  // namespace

ZipArchive::ZipArchive(const std::filesystem::path& path) : bytes_(readArchiveFile(path)) {
    open(bytes_);
}

ZipArchive::ZipArchive(std::string_view bytes) {
    open(bytes);
}

void ZipArchive::open(std::string_view bytes) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
    if (source == nullptr) {
        throw ZipOpenError(describe(error));
    }
    archive_ = zip_open_from_source(source, ZIP_RDONLY, &error);
    if (archive_ == nullptr) {
        zip_source_free(source);
        throw ZipOpenError(describe(error));
    }
    zip_error_fini(&error);
}

ZipArchive::~ZipArchive() {
    if (archive_ != nullptr) {
        zip_discard(archive_);
    }
}

std::optional<std::string> ZipArchive::read(const std::string& name) {
    const zip_int64_t index = zip_name_locate(archive_, name.c_str(), ZIP_FL_ENC_GUESS);
    if (index < 0) {
        return std::nullopt;
    }
    zip_stat_t stat;
    zip_stat_init(&stat);
    if (zip_stat_index(archive_, static_cast<zip_uint64_t>(index), 0, &stat) != 0 ||
        (stat.valid & ZIP_STAT_SIZE) == 0) {
        throw DocumentColorParsingError("Unable to read " + name + ": " + zip_strerror(archive_));
    }
    // The declared size is checked before anything is inflated, and reading stops one
    // byte past it, so an entry that lies about its size cannot grow the buffer either.
    if (stat.size > maxEntrySize) {
        throw DocumentColorParsingError("Unable to read " + name + ": it is larger than 1 GiB uncompressed");
    }
    std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> file(zip_fopen_index(archive_, static_cast<zip_uint64_t>(index), 0),
                                                            zip_fclose);
    if (!file) {
        throw DocumentColorParsingError("Unable to read " + name + ": " + zip_strerror(archive_));
    }
    const auto declared = static_cast<std::size_t>(stat.size);
    std::string bytes;
    bytes.reserve(declared);  // address space only; pages are touched as they fill
    std::string buffer(std::size_t{1} << 16, '\0');
    for (;;) {
        const zip_int64_t count = zip_fread(file.get(), buffer.data(), buffer.size());
        if (count < 0) {
            throw DocumentColorParsingError("Unable to read " + name + ": " + zip_file_strerror(file.get()));
        }
        if (count == 0) {
            break;
        }
        if (static_cast<std::size_t>(count) > declared - bytes.size()) {
            throw DocumentColorParsingError("Unable to read " + name + ": it holds more than its declared size");
        }
        bytes.append(buffer.data(), static_cast<std::size_t>(count));
    }
    if (bytes.size() != declared) {
        throw DocumentColorParsingError("Unable to read " + name + ": it holds less than its declared size");
    }
    return bytes;
}

}  // namespace tintwork::importing
