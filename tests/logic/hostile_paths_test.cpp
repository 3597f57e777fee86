// Thousands of hostile spellings: what the guard allows is what the model says the text means, a folder below a root that is
// not, and does not hold, one to keep.
#include "hostile_paths.h"

#include <gtest/gtest.h>

#include "cleaners/folder_guard.h"
#include "platform/wide_system.h"
#include "shown.h"

using namespace cleaners;
using namespace platform;

namespace {

constexpr std::uint32_t kSpellings = 40000;

// C:\windows, and C:\play\windows\sub.
const std::vector<hostile::Names> kKept = {{"WINDOWS"}, {"PLAY", "WINDOWS", "SUB"}};

bool Holds(const hostile::Names& outer, const hostile::Names& inner) {
  return outer.size() <= inner.size() && std::equal(outer.begin(), outer.end(), inner.begin());
}

bool MayByModel(const std::string& root, const hostile::Names& names) {
  if (names.empty()) return false;
  return root != "C:" || std::none_of(kKept.begin(), kKept.end(), [&](const auto& kept) { return Holds(names, kept); });
}

bool MayByGuard(const Path& path) {
  FolderFacts facts;
  facts.canonical = path;
  facts.keep = {FullPath(u"C:\\Windows"), FullPath(u"C:\\play\\windows\\sub")};
  return MayClearFolder(facts);
}

}  // namespace

TEST(HostilePaths, LeadWhereTheModelSaysAndMayBeClearedWhereTheModelSays) {
  std::uint32_t allowed = 0, refused = 0, nowhere = 0;
  for (std::uint32_t number = 0; number < kSpellings; ++number) {
    const std::string text = hostile::Spelled(number);
    const Path path = SpelledPath(hostile::Wide(text));
    std::string root;
    const std::optional<hostile::Names> meaning = hostile::model::Meaning(text, root);
    ASSERT_EQ(path.IsEmpty(), !meaning) << "number " << number << ": " << testing::PrintToString(text);
    std::string shown = meaning ? root : "";
    for (const std::string& name : meaning.value_or(hostile::Names())) shown += "\\" + name;
    if (meaning && meaning->empty()) shown += "\\";
    ASSERT_EQ(UpperCase(path.Shown()), hostile::Wide(shown)) << "number " << number;
    ASSERT_EQ(MayByGuard(path), meaning && MayByModel(root, *meaning))
        << "number " << number << ": " << testing::PrintToString(text);
    const Path full = FullPath(hostile::Wide(text));
    ASSERT_TRUE(full.IsEmpty() || full == path) << "number " << number;
    ++(!meaning ? nowhere : MayByGuard(path) ? allowed : refused);
  }
  for (const std::uint32_t count : {allowed, refused, nowhere}) EXPECT_GT(count, kSpellings / 20);
}

TEST(HostilePaths, AreRefusedInLongRowsOfBackslashes) {
  for (const std::size_t count : {1u, 2u, 3u, 200u, 40000u}) {
    const WideText row(count, u'\\');
    EXPECT_FALSE(MayByGuard(SpelledPath(row))) << count;
    EXPECT_FALSE(MayByGuard(SpelledPath(u"C:" + row))) << count;
    EXPECT_FALSE(MayByGuard(SpelledPath(u"C:\\" + row + u"windows" + row))) << count;
    EXPECT_FALSE(MayByGuard(SpelledPath(u"\\\\server\\share" + row))) << count;
  }
}
