#include "model/FileIO.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <sys/stat.h>

namespace tintwork {
namespace {

namespace fs = std::filesystem;

class FileIO : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = fs::temp_directory_path() / ("tintwork-fileio-" + std::to_string(::getpid()));
        fs::remove_all(folder_);
        fs::create_directories(folder_);
    }
    void TearDown() override { fs::remove_all(folder_); }

    fs::path folder_;
};

std::string messageOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const FileError& error) {
        return error.what();
    }
    return "no error";
}

TEST_F(FileIO, WritesAndReadsBytes) {
    const fs::path path = folder_ / "doc.tintwork";
    writeFileBytes(path, std::string("a\0b", 3));
    EXPECT_EQ(std::string("a\0b", 3), readFileBytes(path));
    writeFileAtomically(path, "replaced");
    EXPECT_EQ("replaced", readFileBytes(path));
    EXPECT_EQ(1, std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
}

TEST_F(FileIO, NamesTheFileInItsErrors) {
    EXPECT_EQ("The file \u201cmissing.tintwork\u201d couldn\u2019t be opened because there is no such file.",
              messageOf([&] { readFileBytes(folder_ / "missing.tintwork"); }));
    EXPECT_EQ(0u, messageOf([&] { readFileBytes(folder_); }).find("The file \u201c"));
    EXPECT_EQ("The file \u201ccolors.css\u201d couldn\u2019t be saved in the folder \u201cno\u201d.",
              messageOf([&] { writeFileBytes(folder_ / "no" / "colors.css", "x"); }));
    writeFileBytes(folder_ / "plain", "x");
    EXPECT_EQ("The file \u201ccss\u201d couldn\u2019t be saved in the folder \u201cplain\u201d.",
              messageOf([&] { createDirectories(folder_ / "plain" / "css"); }));
}

TEST_F(FileIO, ReadsOnlyRegularFilesUpToTheSizeLimit) {
    const auto refusal = [&](const fs::path& path) -> std::string {
        try {
            readFileBytes(path);
        } catch (const FileRefusedError& error) {
            return error.what();
        }
        return "not refused";
    };
    // Devices never end; a FIFO without a writer would block the open.
    EXPECT_EQ("The file \u201czero\u201d couldn\u2019t be opened because it is not a regular file.",
              refusal("/dev/zero"));
    EXPECT_EQ("The file \u201curandom\u201d couldn\u2019t be opened because it is not a regular file.",
              refusal("/dev/urandom"));
    const fs::path fifo = folder_ / "pipe.tintwork";
    ASSERT_EQ(0, ::mkfifo(fifo.c_str(), 0600));
    EXPECT_EQ("The file \u201cpipe.tintwork\u201d couldn\u2019t be opened because it is not a regular file.",
              refusal(fifo));

    // Sparse files: their size is refused before a byte is read.
    const fs::path large = folder_ / "large.json";
    writeFileBytes(large, "");
    fs::resize_file(large, maximumInputFileSize + 1);
    EXPECT_EQ("The file \u201clarge.json\u201d couldn\u2019t be opened because it is larger than 1 GiB.",
              refusal(large));
    fs::resize_file(large, 4096);
    EXPECT_EQ(std::string(4096, '\0'), readFileBytes(large));
    // Files that report no size are still read in full.
    EXPECT_NE(std::string::npos, readFileBytes("/proc/self/status").find("Name:"));
}

TEST(FileIOPaths, ExpandsTheHomeDirectory) {
    const char* saved = std::getenv("HOME");
    const std::string home = saved ? saved : "";
    ::setenv("HOME", "/home/designer", 1);
    EXPECT_EQ("/home/designer", expandTilde("~"));
    EXPECT_EQ("/home/designer/colors.tintwork", expandTilde("~/colors.tintwork"));
    EXPECT_EQ("docs/~/x", expandTilde("docs/~/x"));
    EXPECT_EQ("", expandTilde(""));
    if (const passwd* root = getpwnam("root")) {
        EXPECT_EQ(std::string(root->pw_dir) + "/x", expandTilde("~root/x"));
    }
    EXPECT_EQ("~nobody-by-this-name/x", expandTilde("~nobody-by-this-name/x"));
    ::setenv("HOME", home.c_str(), 1);
}

}  // namespace
}  // namespace tintwork
