#include "export/CustomTemplateExporter.h"

#include "export/TemplateExporter.h"
#include "model/FileIO.h"

#include <utf8proc.h>

namespace tintwork {

namespace {

int hexDigitValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

bool isValidUTF8(std::string_view text) {
    const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
    auto remaining = static_cast<utf8proc_ssize_t>(text.size());
    while (remaining > 0) {
        utf8proc_int32_t codePoint = 0;
        const auto length = utf8proc_iterate(bytes, remaining, &codePoint);
        if (length <= 0) {
            return false;
        }
        bytes += length;
        remaining -= length;
    }
    return true;
}

}  // namespace

std::string removingPercentEncoding(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 2 < text.size()) {
            const int high = hexDigitValue(text[i + 1]);
            const int low = hexDigitValue(text[i + 2]);
            if (high >= 0 && low >= 0) {
                out.push_back(static_cast<char>(high * 16 + low));
                i += 2;
                continue;
            }
        }
        out.push_back(text[i]);
    }
    return out;
}

void CustomTemplateExporter::exportTo(const std::filesystem::path& folder, const BuildTask& task,
                                      const std::vector<ProjectItemPtr>& items,
                                      const std::filesystem::path& documentURL) {
    const BuildError missing("No location set for custom template in '" + task.name + "'");
    const auto location = task.customData.find(std::string(customDataCustomTemplateLocation));
    if (location == task.customData.end()) {
        throw missing;
    }
    // The location always counts from the document's folder, even when it starts with "/".
    std::filesystem::path documentFolder = documentURL.parent_path();
    if (documentFolder.empty()) {
        documentFolder = ".";
    }
    const std::filesystem::path templatePath =
        appendingStoredPath(documentFolder, removingPercentEncoding(location->second));

    std::error_code error;
    if (std::filesystem::is_directory(templatePath, error)) {
        throw missing;
    }
    std::string contents;
    try {
        contents = readFileBytes(templatePath);
    } catch (const FileRefusedError&) {
        // A device, a FIFO or an oversized file is named as such: reporting it as a
        // missing location would hide why a file that is there was not read.
        throw;
    } catch (const FileError&) {
        throw missing;
    }
    if (!isValidUTF8(contents)) {
        throw missing;
    }

    TemplateExporter exporter(project, std::move(contents));
    exporter.exportTo(folder, task, items, documentURL);
}

}  // namespace tintwork
