#include "cleaners/netscape_rules.h"

#include <gtest/gtest.h>

using namespace cleaners;
using namespace platform;

namespace {

constexpr char16_t kTypedUrlNames[] = u"FieldSchema.tbl SchemaConcat.tbl SchemaValue.tbl FieldSchema.tbl URLFieldSchema.tbl";
constexpr char16_t kMailNames[] = u"trash trash.msf";

}  // namespace

TEST(IsInNameList, FindsEveryNameOfTheListInAnyCase) {
  for (const char16_t* name : {u"FieldSchema.tbl", u"SchemaConcat.tbl", u"SchemaValue.tbl", u"URLFieldSchema.tbl",
                               u"URLFIELDSCHEMA.TBL", u"fieldschema.tbl", u"sChEmAvAlUe.TbL"})
    EXPECT_TRUE(IsInNameList(name, kTypedUrlNames)) << testing::PrintToString(name);
  for (const char16_t* name : {u"trash", u"Trash", u"TRASH", u"trash.msf", u"Trash.MSF"})
    EXPECT_TRUE(IsInNameList(name, kMailNames)) << testing::PrintToString(name);
}

// Meant: a name is looked for in the list's text, not among its names.
TEST(IsInNameList, FindsWhatIsOnlyAPartOfAName) {
  for (const char16_t* name :
       {u"Value.tbl", u"VALUE.TBL", u"Schema.tbl", u"schema", u".tbl", u"tbl", u"URL", u"l", u"tbl SchemaConcat"})
    EXPECT_TRUE(IsInNameList(name, kTypedUrlNames)) << testing::PrintToString(name);
  for (const char16_t* name : {u"ash", u"t", u"msf", u"sh.msf", u" ", u"trash trash.msf"})
    EXPECT_TRUE(IsInNameList(name, kMailNames)) << testing::PrintToString(name);
}

TEST(IsInNameList, FindsNoNameThatIsLongerOrOther) {
  for (const char16_t* name : {u"FieldSchema.tbl2", u"aFieldSchema.tbl", u"FieldSchema.tbl~", u"prefs.js", u"bookmarks.html",
                               u"history.dat", u"Field Schema.tbl", u"FieldSchema_tbl", u"trash", u"?", u"*"})
    EXPECT_FALSE(IsInNameList(name, kTypedUrlNames)) << testing::PrintToString(name);
  for (const char16_t* name :
       {u"Trash2", u"trash.snm", u"trash.nsm", u"Inbox", u"Inbox.msf", u"trashtrash", u"trash  ", u"tr*", u"TR\u00C4SH"})
    EXPECT_FALSE(IsInNameList(name, kMailNames)) << testing::PrintToString(name);
}

TEST(IsInNameList, FindsNothingInAnEmptyList) { EXPECT_FALSE(IsInNameList(u"trash", u"")); }

TEST(ProfileFolderOf, PutsTheUsersFolderInThePlaceOfTheProgramsFolder) {
  const struct {
    const char16_t* install;
    const char16_t* user;
    const char16_t* profile;
  } rows[] = {
      {u"C:\\Netscape\\Communicator", u"joe", u"C:\\Netscape\\Users\\joe\\"},
      {u"C:\\Netscape\\Communicator\\", u"joe", u"C:\\Netscape\\Users\\joe\\"},
      {u"C:\\Netscape\\Communicator\\Program", u"joe", u"C:\\Netscape\\Users\\joe\\Program\\"},
      {u"Communicator", u"joe", u"Users\\joe\\"},
      // Every one of them, also inside a longer word.
      {u"C:\\Communicator\\Communicator", u"j", u"C:\\Users\\j\\Users\\j\\"},
      {u"C:\\CommunicatorCommunicator", u"j", u"C:\\Users\\jUsers\\j\\"},
      {u"C:\\My Communicator 4", u"j", u"C:\\My Users\\j 4\\"},
      // Blanks around the name stay.
      {u"C:\\Communicator", u" joe ", u"C:\\Users\\ joe \\"},
      // A user of that name is not replaced in turn.
      {u"C:\\Communicator", u"Communicator", u"C:\\Users\\Communicator\\"},
      {u"C:\\Communicator\\Communicator", u"aCommunicatorb", u"C:\\Users\\aCommunicatorb\\Users\\aCommunicatorb\\"},
      // Without it, and in other letters, the folder stays as it is.
      {u"C:\\Program Files\\Netscape 7", u"joe", u"C:\\Program Files\\Netscape 7\\"},
      {u"C:\\communicator\\COMMUNICATOR", u"joe", u"C:\\communicator\\COMMUNICATOR\\"},
      {u"C:\\Communicato\\r", u"joe", u"C:\\Communicato\\r\\"},
      {u"C:\\", u"joe", u"C:\\"},
      {u"", u"joe", u"\\"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(ProfileFolderOf(row.install, row.user), row.profile) << testing::PrintToString(row.install);
}

TEST(ProfileFolderOf, TakesATextOfAnyLength) {
  const WideText user(10000, u'u');
  EXPECT_EQ(ProfileFolderOf(u"C:\\Communicator", user), u"C:\\Users\\" + user + u"\\");
  WideText install = u"C:";
  WideText profile = u"C:";
  for (int i = 0; i < 1000; ++i) {
    install += u"\\Communicator";
    profile += u"\\Users\\j";
  }
  EXPECT_EQ(ProfileFolderOf(install, u"j"), profile + u"\\");
}

TEST(IsUserName, TakesWhatCanNameAFolder) {
  for (const char16_t* name : {u"joe", u"j", u"Joe Doe", u" joe", u"joe ", u"joe.doe", u".joe", u"joe..", u"..joe",
                               u"Communicator", u"~", u"j\u00F6rg", u"a;b"})
    EXPECT_TRUE(IsUserName(name)) << testing::PrintToString(name);
}

TEST(IsUserName, RefusesWhatLeadsOutOfTheUsersFolder) {
  for (const char16_t* name : {u"",        u".",       u"..",          u"...",       u" ",     u"   ",    u" .",
                               u". ",      u" ..",     u".. ",         u". .",       u" . . ", u"..\\",   u"..\\..\\windows",
                               u"..\\joe", u"joe\\..", u"joe\\..\\..", u"\\",        u"/",     u"../joe", u"joe/",
                               u"C:",      u"C:\\",    u":",           u"joe:stream"})
    EXPECT_FALSE(IsUserName(name)) << testing::PrintToString(name);
}
