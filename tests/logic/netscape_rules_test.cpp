#include "cleaners/netscape_rules.h"

#include <gtest/gtest.h>

using namespace cleaners;

namespace {

constexpr char kTypedUrlNames[] = "FieldSchema.tbl SchemaConcat.tbl SchemaValue.tbl FieldSchema.tbl URLFieldSchema.tbl";
constexpr char kMailNames[] = "trash trash.msf";

}  // namespace

TEST(IsInNameList, FindsEveryNameOfTheListInAnyCase) {
  for (const char* name : {"FieldSchema.tbl", "SchemaConcat.tbl", "SchemaValue.tbl", "URLFieldSchema.tbl",
                           "URLFIELDSCHEMA.TBL", "fieldschema.tbl", "sChEmAvAlUe.TbL"})
    EXPECT_TRUE(IsInNameList(name, kTypedUrlNames)) << name;
  for (const char* name : {"trash", "Trash", "TRASH", "trash.msf", "Trash.MSF"})
    EXPECT_TRUE(IsInNameList(name, kMailNames)) << name;
}

// Meant: a name is looked for in the list's text, not among its names.
TEST(IsInNameList, FindsWhatIsOnlyAPartOfAName) {
  for (const char* name : {"Value.tbl", "VALUE.TBL", "Schema.tbl", "schema", ".tbl", "tbl", "URL", "l", "tbl SchemaConcat"})
    EXPECT_TRUE(IsInNameList(name, kTypedUrlNames)) << name;
  for (const char* name : {"ash", "t", "msf", "sh.msf", " ", "trash trash.msf"})
    EXPECT_TRUE(IsInNameList(name, kMailNames)) << name;
}

TEST(IsInNameList, FindsNoNameThatIsLongerOrOther) {
  for (const char* name : {"FieldSchema.tbl2", "aFieldSchema.tbl", "FieldSchema.tbl~", "prefs.js", "bookmarks.html",
                           "history.dat", "Field Schema.tbl", "FieldSchema_tbl", "trash", "?", "*"})
    EXPECT_FALSE(IsInNameList(name, kTypedUrlNames)) << name;
  for (const char* name :
       {"Trash2", "trash.snm", "trash.nsm", "Inbox", "Inbox.msf", "trashtrash", "trash  ", "tr*", "TR\xC4SH"})
    EXPECT_FALSE(IsInNameList(name, kMailNames)) << name;
}

TEST(IsInNameList, FindsNothingInAnEmptyList) { EXPECT_FALSE(IsInNameList("trash", "")); }

TEST(ProfileFolderOf, PutsTheUsersFolderInThePlaceOfTheProgramsFolder) {
  const struct {
    const char* install;
    const char* user;
    const char* profile;
  } rows[] = {
      {"C:\\Netscape\\Communicator", "joe", "C:\\Netscape\\Users\\joe\\"},
      {"C:\\Netscape\\Communicator\\", "joe", "C:\\Netscape\\Users\\joe\\"},
      {"C:\\Netscape\\Communicator\\Program", "joe", "C:\\Netscape\\Users\\joe\\Program\\"},
      {"Communicator", "joe", "Users\\joe\\"},
      // Every one of them, also inside a longer word.
      {"C:\\Communicator\\Communicator", "j", "C:\\Users\\j\\Users\\j\\"},
      {"C:\\CommunicatorCommunicator", "j", "C:\\Users\\jUsers\\j\\"},
      {"C:\\My Communicator 4", "j", "C:\\My Users\\j 4\\"},
      // Blanks around the name stay.
      {"C:\\Communicator", " joe ", "C:\\Users\\ joe \\"},
      // A user of that name is not replaced in turn.
      {"C:\\Communicator", "Communicator", "C:\\Users\\Communicator\\"},
      {"C:\\Communicator\\Communicator", "aCommunicatorb", "C:\\Users\\aCommunicatorb\\Users\\aCommunicatorb\\"},
      // Without it, and in other letters, the folder stays as it is.
      {"C:\\Program Files\\Netscape 7", "joe", "C:\\Program Files\\Netscape 7\\"},
      {"C:\\communicator\\COMMUNICATOR", "joe", "C:\\communicator\\COMMUNICATOR\\"},
      {"C:\\Communicato\\r", "joe", "C:\\Communicato\\r\\"},
      {"C:\\", "joe", "C:\\"},
      {"", "joe", "\\"},
  };
  for (const auto& row : rows) EXPECT_EQ(ProfileFolderOf(row.install, row.user), row.profile) << row.install;
}

TEST(ProfileFolderOf, TakesATextOfAnyLength) {
  const std::string user(10000, 'u');
  EXPECT_EQ(ProfileFolderOf("C:\\Communicator", user), "C:\\Users\\" + user + "\\");
  std::string install = "C:";
  std::string profile = "C:";
  for (int i = 0; i < 1000; ++i) {
    install += "\\Communicator";
    profile += "\\Users\\j";
  }
  EXPECT_EQ(ProfileFolderOf(install, "j"), profile + "\\");
}

TEST(IsUserName, TakesWhatCanNameAFolder) {
  for (const char* name :
       {"joe", "j", "Joe Doe", " joe", "joe ", "joe.doe", ".joe", "joe..", "..joe", "Communicator", "~", "j\xF6rg", "a;b"})
    EXPECT_TRUE(IsUserName(name)) << '"' << name << '"';
}

TEST(IsUserName, RefusesWhatLeadsOutOfTheUsersFolder) {
  for (const char* name : {"",        ".",       "..",          "...",       " ",     "   ",    " .",
                           ". ",      " ..",     ".. ",         ". .",       " . . ", "..\\",   "..\\..\\windows",
                           "..\\joe", "joe\\..", "joe\\..\\..", "\\",        "/",     "../joe", "joe/",
                           "C:",      "C:\\",    ":",           "joe:stream"})
    EXPECT_FALSE(IsUserName(name)) << '"' << name << '"';
}
