#include "platform/link_target.h"

#include <gtest/gtest.h>

#include <map>

#include "platform/wide_system.h"
#include "shown.h"

using namespace platform;

namespace {

using testing::PrintToString;

constexpr char kMountPoint[] = "\x03\x00\x00\xA0", kSymbolicLink[] = "\x0C\x00\x00\xA0";

std::string Number(std::size_t number) { return {static_cast<char>(number & 0xFF), static_cast<char>(number >> 8 & 0xFF)}; }

std::string Bytes(WideView text) {
  std::string bytes;
  for (const WideChar character : text) bytes += Number(character);
  return bytes;
}

// As the system hands it out: the texts for the system and for people in one buffer.
std::string Data(const char* tag, WideView target, bool relative = false, WideView shown = u"shown") {
  const std::string texts = Bytes(target) + Bytes(shown);
  std::string data(tag, 4);
  data += Number(texts.size() + 8) + Number(0);
  data += Number(0) + Number(2 * target.size()) + Number(2 * target.size()) + Number(2 * shown.size());
  if (tag == kSymbolicLink) data += Number(relative ? 1 : 0) + Number(0);
  return data + texts;
}

// The links of one disk.
std::map<WideText, LinkText> links;

std::optional<LinkText> Read(const Path& folder) {
  const auto link = links.find(folder.Shown());
  if (link == links.end()) return {};
  return link->second;
}

void Link(const WideText& folder, const WideText& target, bool relative = false) {
  links[folder] =
      ReadReparseData(Data(relative ? kSymbolicLink : kMountPoint, relative ? target : u"\\??\\" + target, relative));
}

WideText Followed(WideView path) { return FollowLinks(FullPath(path), &Read).Shown(); }

class FollowingLinks : public testing::Test {
 protected:
  void SetUp() override { links.clear(); }
};

std::map<WideText, WideText> drives;

WideText ReadDrive(WideView drive) { return drives[WideText(drive)]; }

WideText Replaced(WideView path) { return FollowSubstitutions(FullPath(path), &ReadDrive).Shown(); }

class Substitutions : public testing::Test {
 protected:
  void SetUp() override {
    AnsiNamesOnlyForTests = true;
    drives.clear();
  }
  void TearDown() override { AnsiNamesOnlyForTests = false; }
};

}  // namespace

TEST(ReparseData, NamesTheTargetOfAJunctionAndOfASymbolicLink) {
  EXPECT_EQ(ReadReparseData(Data(kMountPoint, u"\\??\\C:\\x")).text, u"\\??\\C:\\x");
  EXPECT_FALSE(ReadReparseData(Data(kMountPoint, u"\\??\\C:\\x")).isRelative);
  EXPECT_EQ(ReadReparseData(Data(kSymbolicLink, u"\\??\\C:\\x")).text, u"\\??\\C:\\x");
  EXPECT_FALSE(ReadReparseData(Data(kSymbolicLink, u"\\??\\C:\\x")).isRelative);
  EXPECT_EQ(ReadReparseData(Data(kSymbolicLink, u"..\\x", true)).text, u"..\\x");
  EXPECT_TRUE(ReadReparseData(Data(kSymbolicLink, u"..\\x", true)).isRelative);
}

TEST(ReparseData, TellsAMountedVolumeFromALink) {
  EXPECT_TRUE(ReadReparseData(Data(kMountPoint, u"\\??\\Volume{9b8a}\\")).isOwnPlace);
  EXPECT_FALSE(ReadReparseData(Data(kMountPoint, u"\\??\\C:\\Volume{9b8a}\\")).isOwnPlace);
  EXPECT_FALSE(ReadReparseData(Data(kSymbolicLink, u"Volume{9b8a}", true)).isOwnPlace);
}

TEST(ReparseData, NamesNothingWhenItIsOfAnotherKindOrDamaged) {
  const std::string whole = Data(kMountPoint, u"\\??\\C:\\x", false, u"");
  for (std::size_t size = 0; size < whole.size(); ++size)
    EXPECT_EQ(ReadReparseData(whole.substr(0, size)).text, u"") << "cut to " << size;
  EXPECT_EQ(ReadReparseData(Data("\x1A\x00\x00\x90", u"\\??\\C:\\x")).text, u"");
  std::string odd = whole;
  odd[10] = 3;
  EXPECT_EQ(ReadReparseData(odd).text, u"");
  std::string beyond = whole;
  beyond[8] = beyond[9] = '\xFF';
  EXPECT_EQ(ReadReparseData(beyond).text, u"");
}

TEST_F(FollowingLinks, LeavesAPathWithoutOnesAsItIs) {
  for (const char16_t* path : {u"C:\\", u"C:\\a", u"C:\\a\\b\\c", u"\\\\server\\share\\", u"\\\\server\\share\\a"})
    EXPECT_EQ(Followed(path), path);
}

TEST_F(FollowingLinks, GoesToTheTargetWithTheRestOfThePath) {
  Link(u"C:\\temp", u"D:\\real\\place\\");
  Link(u"C:\\root", u"D:\\");
  Link(u"C:\\share", u"UNC\\server\\share\\x");
  const struct {
    const char16_t* path;
    const char16_t* reached;
  } rows[] = {
      {u"C:\\temp", u"D:\\real\\place"}, {u"C:\\temp\\a\\b", u"D:\\real\\place\\a\\b"}, {u"C:\\root", u"D:\\"},
      {u"C:\\root\\a", u"D:\\a"},        {u"C:\\share\\a", u"\\\\server\\share\\x\\a"}, {u"C:\\temps", u"C:\\temps"},
  };
  for (const auto& row : rows) EXPECT_EQ(Followed(row.path), row.reached) << PrintToString(WideText(row.path));
}

TEST_F(FollowingLinks, FollowsLinksToLinksAndLinksOnTheWayToTargets) {
  Link(u"C:\\a", u"C:\\b\\c");
  Link(u"C:\\b", u"D:\\d");
  Link(u"D:\\d\\c\\e", u"E:\\");
  EXPECT_EQ(Followed(u"C:\\a\\e\\f"), u"E:\\f");
}

TEST_F(FollowingLinks, TakesRelativeTargetsFromTheLinksOwnFolder) {
  Link(u"C:\\a\\up", u"..\\b", true);
  Link(u"C:\\a\\root", u"\\b", true);
  Link(u"C:\\a\\beside", u"b\\.\\c", true);
  EXPECT_EQ(Followed(u"C:\\a\\up\\x"), u"C:\\b\\x");
  EXPECT_EQ(Followed(u"C:\\a\\root\\x"), u"C:\\b\\x");
  EXPECT_EQ(Followed(u"C:\\a\\beside\\x"), u"C:\\a\\b\\c\\x");
}

TEST_F(FollowingLinks, StaysInAVolumeThatShowsUpInAFolder) {
  Link(u"C:\\mounted", u"Volume{9b8a}\\");
  Link(u"C:\\mounted\\link", u"C:\\x");
  EXPECT_EQ(Followed(u"C:\\mounted\\a"), u"C:\\mounted\\a");
  EXPECT_EQ(Followed(u"C:\\mounted\\link\\a"), u"C:\\x\\a");
}

TEST_F(FollowingLinks, GivesNothingForACircleAndForALinkThatCannotBeRead) {
  Link(u"C:\\a", u"C:\\b");
  Link(u"C:\\b", u"C:\\a");
  Link(u"C:\\c", u"C:\\c\\c");
  links[u"C:\\unreadable"] = LinkText();
  Link(u"C:\\device", u"GLOBALROOT\\Device\\HarddiskVolume1");
  for (const char16_t* path : {u"C:\\a", u"C:\\b\\x", u"C:\\c", u"C:\\unreadable\\x", u"C:\\device"})
    EXPECT_EQ(Followed(path), u"") << PrintToString(WideText(path));
}

TEST_F(Substitutions, LeaveADriveOfItsOwn) {
  drives[u"D:"] = u"\\Device\\HarddiskVolume1";
  for (const char16_t* path : {u"C:\\", u"C:\\a", u"D:\\a\\b", u"\\\\server\\share\\a"}) EXPECT_EQ(Replaced(path), path);
}

TEST_F(Substitutions, PutTheFolderInTheDrivesPlace) {
  drives[u"X:"] = u"C:\\WINDOWS";
  drives[u"Y:"] = u"\\??\\X:\\SYSTEM";
  EXPECT_EQ(Replaced(u"X:\\TEMP"), u"C:\\WINDOWS\\TEMP");
  EXPECT_EQ(Replaced(u"X:\\"), u"C:\\WINDOWS");
  EXPECT_EQ(Replaced(u"Y:\\A"), u"C:\\WINDOWS\\SYSTEM\\A");
}

TEST_F(Substitutions, EndWhenTheyGoInACircle) {
  drives[u"X:"] = u"Y:\\A";
  drives[u"Y:"] = u"X:\\B";
  drives[u"Z:"] = u"Z:\\";
  EXPECT_EQ(Replaced(u"X:\\C"), u"");
  EXPECT_EQ(Replaced(u"Z:\\C"), u"Z:\\C");
}
