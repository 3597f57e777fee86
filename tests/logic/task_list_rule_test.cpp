#include "automation/task_list_rule.h"

#include <gtest/gtest.h>

using namespace automation;
using namespace platform;

TEST(HasTaskListCall, IsTrueWhereTheNameTellsOfNoNtSystem) {
  for (const char* name : {"Microsoft Windows 95", "Microsoft Windows 98", "Microsoft Win32s", "", "N T", "X P", "200 0"})
    EXPECT_TRUE(HasTaskListCall(name)) << "[" << name << "]";
  for (const char* name : {"Microsoft Windows NT", "Microsoft Windows 2000", "Microsoft Windows XP Build 2600", "xp", "Xp",
                           "nt", "nT", "windows 2000", "before NT after", "Windows 98 Build 2000"})
    EXPECT_FALSE(HasTaskListCall(name)) << "[" << name << "]";
}
