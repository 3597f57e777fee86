#include "cleaners/folder_guard.h"

#include <gtest/gtest.h>

using namespace cleaners;

namespace {

FolderFacts Folder(WideView canonical, const std::vector<WideText>& keep = {}) {
  FolderFacts facts;
  facts.canonical = FullPath(canonical);
  for (const WideText& kept : keep) facts.keep.push_back(FullPath(kept));
  return facts;
}

}  // namespace

TEST(FolderGuard, AllowsAFolderBelowARoot) {
  for (const char16_t* path : {u"C:\\A", u"C:\\A\\", u"d:\\a\\b\\", u"\\\\server\\share\\a\\"})
    EXPECT_TRUE(MayClearFolder(Folder(path, {u"C:\\WINDOWS\\", u"", u"C:\\A2\\"}))) << testing::PrintToString(path);
}

TEST(FolderGuard, RefusesWhatIsNoFolderBelowARoot) {
  for (const char16_t* path : {u"", u"\\", u"A", u"C:", u"C:A", u"C:\\", u"C:\\\\", u"\\A", u"\\\\server",
                               u"\\\\server\\share\\", u"\\\\.\\C:\\A", u"\\\\?\\C:\\A"})
    EXPECT_FALSE(MayClearFolder(Folder(path))) << testing::PrintToString(path);
}

TEST(FolderGuard, RefusesALinkAndWhatLeadsToAKeptFolder) {
  FolderFacts facts = Folder(u"C:\\A\\");
  facts.isLink = true;
  EXPECT_FALSE(MayClearFolder(facts));
  facts = Folder(u"C:\\A\\");
  facts.leadsToKept = true;
  EXPECT_FALSE(MayClearFolder(facts));
}

TEST(FolderGuard, RefusesAVolumesUppermostFolderWhateverItsPathReadsLike) {
  FolderFacts facts = Folder(u"C:\\mounted");
  EXPECT_TRUE(MayClearFolder(facts));
  facts.isVolume = true;
  EXPECT_FALSE(MayClearFolder(facts));
}

TEST(FolderGuard, RefusesAFolderThatIsOrHoldsAKeptOneAndAllowsOneInside) {
  const std::vector<WideText> keep = {u"", u"C:\\A\\B\\", u"D:\\X\\"};
  for (const char16_t* path : {u"C:\\A\\", u"c:\\a\\b", u"C:\\A\\B\\", u"D:\\X"})
    EXPECT_FALSE(MayClearFolder(Folder(path, keep))) << testing::PrintToString(path);
  for (const char16_t* path : {u"C:\\A\\B\\C\\", u"C:\\A\\B2", u"C:\\A2", u"D:\\A", u"D:\\X\\Y"})
    EXPECT_TRUE(MayClearFolder(Folder(path, keep))) << testing::PrintToString(path);
}

TEST(FolderGuard, LooksPastTheCaseOfEveryLetterAndAtNoLookAlike) {
  EXPECT_FALSE(MayClearFolder(Folder(u"C:\\JOS\u00C9", {u"C:\\Jos\u00E9\\"})));
  EXPECT_TRUE(MayClearFolder(Folder(u"C:\\Lukasz", {u"C:\\\u0141ukasz\\"})));
}

TEST(FolderGuard, TellsWhatItRefusesFor) {
  FolderFacts link = Folder(u"C:\\A");
  link.isLink = true;
  EXPECT_EQ(RefusalOf(Folder(u"C:\\A")), FolderRefusal::None);
  EXPECT_EQ(RefusalOf(Folder(u"A")), FolderRefusal::NoFolder);
  EXPECT_EQ(RefusalOf(Folder(u"C:\\", {u"C:\\A"})), FolderRefusal::Root);
  EXPECT_EQ(RefusalOf(link), FolderRefusal::Link);
  EXPECT_EQ(RefusalOf(Folder(u"C:\\A", {u"C:\\A\\B"})), FolderRefusal::Kept);
}
