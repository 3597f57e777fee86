#include "platform/path_text.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

enum Kind { kNotAbsolute, kRoot, kBelowRoot };

struct Row {
  const char* path;
  Kind kind;
};

const Row kPaths[] = {
    {"", kNotAbsolute},
    {" ", kNotAbsolute},
    {"\\", kNotAbsolute},
    {"/", kNotAbsolute},
    {".", kNotAbsolute},
    {"..", kNotAbsolute},
    {"Temp", kNotAbsolute},
    {"Temp\\A", kNotAbsolute},
    {".\\Temp", kNotAbsolute},
    {"\\Temp", kNotAbsolute},
    {"C", kNotAbsolute},
    {"C:", kNotAbsolute},
    {"C:Temp", kNotAbsolute},
    {"C:.", kNotAbsolute},
    {"C:/Temp", kNotAbsolute},
    {" C:\\Temp", kNotAbsolute},
    {"1:\\Temp", kNotAbsolute},
    {"@:\\Temp", kNotAbsolute},
    {"[:\\Temp", kNotAbsolute},
    {"`:\\Temp", kNotAbsolute},
    {"{:\\Temp", kNotAbsolute},
    {"\xC9:\\Temp", kNotAbsolute},
    {"CC:\\Temp", kNotAbsolute},
    {"%TEMP%", kNotAbsolute},
    {"C:\\", kRoot},
    {"c:\\", kRoot},
    {"A:\\", kRoot},
    {"Z:\\", kRoot},
    {"z:\\", kRoot},
    {"C:\\\\", kRoot},
    {"C:\\\\\\\\", kRoot},
    {"C:\\Temp", kBelowRoot},
    {"c:\\t", kBelowRoot},
    {"C:\\Temp\\", kBelowRoot},
    {"C:\\Temp\\A", kBelowRoot},
    {"C:\\ ", kBelowRoot},
    {"\\\\", kNotAbsolute},
    {"\\\\server", kNotAbsolute},
    {"\\\\server\\", kNotAbsolute},
    {"\\\\\\share", kNotAbsolute},
    {"\\\\\\\\", kNotAbsolute},
    {"\\\\server\\\\share", kNotAbsolute},
    {"//server/share", kNotAbsolute},
    {"\\\\server/share", kNotAbsolute},
    {"\\server\\share", kNotAbsolute},
    {"\\\\s\\h", kRoot},
    {"\\\\server\\share", kRoot},
    {"\\\\server\\share\\", kRoot},
    {"\\\\server\\share\\\\", kRoot},
    {"\\\\server\\C$", kRoot},
    {"\\\\10.0.0.1\\share\\", kRoot},
    {"\\\\s\\h\\t", kBelowRoot},
    {"\\\\server\\share\\temp", kBelowRoot},
    {"\\\\server\\share\\temp\\", kBelowRoot},
    {"\\\\server\\share\\temp\\a", kBelowRoot},
    {"\\\\.\\C:", kNotAbsolute},
    {"\\\\.\\C:\\Temp", kNotAbsolute},
    {"\\\\.\\PhysicalDrive0", kNotAbsolute},
    {"\\\\?\\C:\\", kNotAbsolute},
    {"\\\\?\\C:\\Temp", kNotAbsolute},
    {"\\\\?\\UNC\\server\\share\\temp", kNotAbsolute},
    {"\\??\\C:\\Temp", kNotAbsolute},
};

struct Pair {
  const char* inner;
  const char* outer;
  bool sameOrBelow;
};

const Pair kPairs[] = {
    {"C:\\Windows", "C:\\Windows", true},
    {"C:\\Windows\\", "C:\\Windows", true},
    {"C:\\Windows", "C:\\Windows\\", true},
    {"C:\\Windows\\", "C:\\Windows\\", true},
    {"c:\\WINDOWS", "C:\\windows", true},
    {"C:\\Windows\\System", "C:\\Windows", true},
    {"c:\\windows\\system", "C:\\WINDOWS\\", true},
    {"C:\\Windows\\System\\Deep\\Down\\", "C:\\Windows", true},
    {"C:\\Windows", "C:\\", true},
    {"C:\\", "C:\\", true},
    {"\\\\server\\share\\a", "\\\\SERVER\\Share", true},
    {"C:\\Windows", "C:\\Windows\\System", false},
    {"C:\\", "C:\\Windows", false},
    {"C:\\Windows.old", "C:\\Windows", false},
    {"C:\\WindowsTemp", "C:\\Windows", false},
    {"C:\\Window", "C:\\Windows", false},
    {"C:\\Windows", "C:\\Window", false},
    {"D:\\Windows", "C:\\Windows", false},
    {"C:\\A\\Windows", "C:\\Windows", false},
    {"\\\\server\\share2", "\\\\server\\share", false},
    {"\\\\other\\share\\a", "\\\\server\\share", false},
    {"", "C:\\Windows", false},
};

}  // namespace

TEST(AppendBackslash, AddsOneUnlessThePathEndsInOne) {
  EXPECT_EQ(AppendBackslash("C:"), "C:\\");
  EXPECT_EQ(AppendBackslash("C:\\"), "C:\\");
  EXPECT_EQ(AppendBackslash("C:\\Temp"), "C:\\Temp\\");
  EXPECT_EQ(AppendBackslash("C:\\Temp\\"), "C:\\Temp\\");
  EXPECT_EQ(AppendBackslash("C:\\Temp "), "C:\\Temp \\");
  EXPECT_EQ(AppendBackslash("C:/"), "C:/\\");
  EXPECT_EQ(AppendBackslash("\\"), "\\");
  EXPECT_EQ(AppendBackslash("a"), "a\\");
  EXPECT_EQ(AppendBackslash(""), "\\");
}

TEST(IsAbsolutePath, WantsADriveWithItsRootOrAShare) {
  for (const Row& row : kPaths) EXPECT_EQ(IsAbsolutePath(row.path), row.kind != kNotAbsolute) << "[" << row.path << "]";
}

TEST(IsRootPath, IsTrueOfTheRootOfADriveOrShareOnly) {
  for (const Row& row : kPaths) EXPECT_EQ(IsRootPath(row.path), row.kind == kRoot) << "[" << row.path << "]";
}

TEST(IsSameOrBelow, ComparesWholeNamesWithoutRegardToCase) {
  for (const Pair& row : kPairs)
    EXPECT_EQ(IsSameOrBelow(row.inner, row.outer), row.sameOrBelow) << "[" << row.inner << "] in [" << row.outer << "]";
}
