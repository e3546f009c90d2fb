#include <gtest/gtest.h>

#include "cli/Driver.h"

using tintwork::scanArguments;
using Table = std::map<std::string, std::string>;

TEST(ScanArguments, PairsArgumentsStrictlyByPosition) {
    EXPECT_EQ(scanArguments({"tool"}), Table{});
    EXPECT_EQ(scanArguments({"tool", "-b"}), Table{});
    EXPECT_EQ(scanArguments({"tool", "-b", "a.tintwork"}), (Table{{"-b", "a.tintwork"}}));
    EXPECT_EQ(scanArguments({"tool", "-b", "a.tintwork", "extra"}), (Table{{"-b", "a.tintwork"}}));
    EXPECT_EQ(scanArguments({"tool", "x", "-b", "a.tintwork"}), (Table{{"x", "-b"}}));
    EXPECT_EQ(scanArguments({"tool", "-b", "a", "-b", "c"}), (Table{{"-b", "c"}}));
    EXPECT_EQ(scanArguments({"tool", "-b", "doc", "-autohc"}), (Table{{"-b", "doc"}}));
    EXPECT_EQ(scanArguments({"tool", "-i", "x.json", "-c", "s", "-o", "out"}),
              (Table{{"-i", "x.json"}, {"-c", "s"}, {"-o", "out"}}));
}
