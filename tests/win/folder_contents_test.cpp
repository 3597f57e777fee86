#include "cleaners/folder_contents.h"
#include "platform/native_files.h"

#include <gtest/gtest.h>

TEST(X, Y) {
  for (bool ansi : {false, true}) {
    AnsiNamesOnly = ansi;
    std::string way = ansi ? "ansi" : "wide";
    for (std::string s : {"links", "names", "traps\\inner", "long", "tower200", "tower1000", "tower too high"}) {
      fprintf(stderr, "%s...\n", s.c_str());
      DWORD t = GetTickCount();
      ClearFolderContents("C:\\plant\\" + way + "\\" + s, false, true);
      fprintf(stderr, "%s %s %lu ms\n", way.c_str(), s.c_str(), GetTickCount() - t);
    }
  }
}
