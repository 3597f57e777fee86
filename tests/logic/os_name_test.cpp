#include "platform/os_name.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

struct Row {
  WindowsVersion version;  // platform, major, minor, build
  const char* name;
};

const Row kRows[] = {
    {{0, 3, 10, 0}, "Microsoft Win32s"},
    {{0, 5, 1, 2600}, "Microsoft Win32s"},
    {{1, 3, 95, 0}, "Microsoft Windows 95"},
    {{1, 4, 0, 950}, "Microsoft Windows 95"},
    {{1, 4, 1, 0}, "Microsoft Windows 98"},
    {{1, 4, 3, 1216}, "Microsoft Windows 98"},
    {{1, 4, 10, 1998}, "Microsoft Windows 98"},
    {{1, 4, 10, 2222}, "Microsoft Windows 98"},
    {{1, 4, 90, 3000}, "Microsoft Windows 98"},
    {{1, 3, 0, 0}, "Microsoft Windows 95"},
    {{1, 0, 0, 0}, "Microsoft Windows 95"},
    {{1, 5, 0, 0}, "Microsoft Windows 98"},
    {{1, 6, 1, 0}, "Microsoft Windows 98"},
    {{2, 3, 51, 1057}, "Microsoft Windows NT"},
    {{2, 4, 0, 1381}, "Microsoft Windows NT"},
    {{2, 4, 1, 0}, "Microsoft Windows NT"},
    {{2, 5, 0, 2195}, "Microsoft Windows 2000"},
    {{2, 5, 1, 2600}, "Microsoft Windows XP Build 2600"},
    {{2, 5, 1, 0}, "Microsoft Windows XP Build 0"},
    {{2, 5, 1, 4294967295ul}, "Microsoft Windows XP Build 4294967295"},
    {{2, 5, 2, 3790}, "Microsoft Windows 2000"},
    {{2, 5, 99, 1}, "Microsoft Windows 2000"},
    {{2, 6, 0, 6000}, ""},
    {{2, 6, 1, 7601}, ""},
    {{2, 10, 0, 19045}, ""},
    {{3, 5, 1, 0}, ""},
    {{4294967295ul, 4, 0, 0}, ""},
};

}  // namespace

TEST(OsNameOf, NamesEachVersionAsTheProgramWritesIt) {
  for (const auto& [version, name] : kRows)
    EXPECT_EQ(OsNameOf(version), name) << "platform " << version.platform << ", version " << version.major << "."
                                       << version.minor << ", build " << version.build;
}

TEST(OsName, IsEmptyUntilItIsFound) { EXPECT_EQ(OsName, ""); }
