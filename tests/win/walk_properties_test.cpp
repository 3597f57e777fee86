// The walks that delete, over a thousand generated trees, against a model that says what must be left.
//
// The day draws the trees; QUELLIX_SEED=20261122 draws those of another one, QUELLIX_TREES=5000 more of them. A tree that
// fails is made as small as it can be before it is shown.
#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <optional>

#include "ansi_paths.h"
#include "cleaners/folder_contents.h"
#include "cleaners/wipe_state.h"
#include "planted_tree.h"
#include "platform/native_files.h"
#include "platform/stop_request.h"
#include "shred/folder_removal.h"

using namespace trees;

namespace {

const std::wstring kTree = L"\\\\?\\C:\\made\\tree";
const std::wstring kOutside = L"\\\\?\\C:\\outside";
const std::string kTreeAsUsersWriteIt = "C:\\made\\tree";

std::uint32_t NumberOf(const char* variable, std::uint32_t otherwise) {
  const char* const text = std::getenv(variable);
  return text != nullptr ? static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10)) : otherwise;
}

std::uint32_t Today() {
  SYSTEMTIME now;
  ::GetLocalTime(&now);
  return now.wYear * 10000u + now.wMonth * 100u + now.wDay;
}

Found Outside() {
  Found found;
  Look(kOutside, "", found);
  return found;
}

void PlantOutside() {
  for (const wchar_t* folder : {L"C:\\outside", L"C:\\outside\\inner"}) ::CreateDirectoryW(folder, nullptr);
  for (const wchar_t* file : {L"C:\\outside\\canary.txt", L"C:\\outside\\inner\\canary.txt"}) {
    const UniqueFile canary(::CreateFileW(file, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    DWORD written = 0;
    ::WriteFile(canary.get(), "alive", 5, &written, nullptr);
  }
}

using Step = void (*)(const Walk& walk);

// What is wrong after the walk over a tree; empty when nothing is.
std::string Wrong(const Node& tree, const Walk& walk, Step step) {
  static const Found outside = Outside();
  PlantedTree planted(kTree, kOutside, tree);
  const Found before = PlantedTree::Laid(tree);
  platform::AnsiNamesOnlyForTests = walk.ansi;
  step(walk);
  platform::AnsiNamesOnlyForTests = false;
  planted.LetGo();
  Model model(walk);
  const std::vector<std::string> expected = model.LeftOf(tree);
  const Found left = planted.Left();
  std::string wrong;
  for (const std::string& path : expected)
    if (left.count(path) == 0) wrong += path + " is gone\n";
  for (const auto& [path, bytes] : left) {
    if (!std::binary_search(expected.begin(), expected.end(), path)) wrong += path + " is left\n";
    // An administrator of the system that Wine runs on may write to what is read-only.
    if (before.at(path) != bytes && !walk.overwrites) wrong += path + " is no longer what it was\n";
  }
  if (planted.IsThere() != model.RootStays()) wrong += model.RootStays() ? "the folder is gone\n" : "the folder is left\n";
  if (Outside() != outside) {
    wrong += "something outside of the folder is touched\n";
    PlantOutside();
  }
  return wrong;
}

std::string Shown(const Walk& walk) {
  return std::string(walk.ansi ? "by ANSI names" : "by wide names") + (walk.overwrites ? ", overwriting" : "") +
         (walk.removesSubFolders ? ", with subfolders" : "") + (walk.removesFolder ? ", with itself" : "");
}

struct Failure {
  std::uint32_t number = 0;
  Walk walk;
  Node smallest;
  std::string wrong;
};

// The first of the drawn trees that fails, if one does.
std::optional<Failure> FirstFailure(std::uint32_t seed, std::uint32_t count, Step step, Walk (*choose)(Draw&)) {
  for (std::uint32_t number = seed; number < seed + count; ++number) {
    Draw draw(number);
    const Walk walk = choose(draw);
    const Node tree = draw.Tree();
    if (Wrong(tree, walk, step).empty()) continue;
    const Node smallest = Shrinker::Smallest(tree, [&](const Node& smaller) { return !Wrong(smaller, walk, step).empty(); });
    return Failure{number, walk, smallest, Wrong(smallest, walk, step)};
  }
  return {};
}

// With so many of four parts of all trees.
void ExpectTheModel(Step step, Walk (*choose)(Draw&), std::uint32_t parts) {
  const std::uint32_t seed = NumberOf("QUELLIX_SEED", Today());
  const std::uint32_t count = (NumberOf("QUELLIX_TREES", 1000) * parts + 3) / 4;
  std::cout << count << " trees, QUELLIX_SEED=" << seed << std::endl;
  const std::optional<Failure> failure = FirstFailure(seed, count, step, choose);
  if (failure)
    ADD_FAILURE() << "tree " << failure->number << " (QUELLIX_SEED=" << failure->number << " QUELLIX_TREES=1), "
                  << Shown(failure->walk) << ":\n"
                  << failure->wrong << "of this tree:\n"
                  << Shown(failure->smallest);
}

void ClearIt(const Walk& walk) {
  cleaners::WipePasses = walk.overwrites ? 2 : 0;
  cleaners::ClearFolderContents(At(kTreeAsUsersWriteIt), walk.removesFolder, walk.removesSubFolders);
  cleaners::WipePasses = 0;
}

Walk ByForce(Draw& draw) {
  Walk walk;
  walk.ansi = draw.OneIn(2);
  walk.byForce = true;
  return walk;
}

class WalkProperties : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    platform::StopErase = false;
    ::CreateDirectoryW(L"C:\\made", nullptr);
    PlantOutside();
    ASSERT_EQ(Outside().size(), 3u);
  }
};

}  // namespace

TEST_F(WalkProperties, ClearingAFolderLeavesWhatTheModelSays) {
  ExpectTheModel(
      &ClearIt, [](Draw& draw) { return draw.OfWalk(); }, 2);
}

TEST_F(WalkProperties, RemovingATreeLeavesWhatTheModelSays) {
  ExpectTheModel(
      [](const Walk&) {
        const bool told = shred::RemoveFolderTree(At(kTreeAsUsersWriteIt));
        EXPECT_EQ(told, ::GetFileAttributesW(kTree.c_str()) == INVALID_FILE_ATTRIBUTES);
      },
      &ByForce, 1);
}

TEST_F(WalkProperties, ShreddingAFolderLeavesWhatTheModelSays) {
  ExpectTheModel([](const Walk&) { shred::ShredFolder(At(kTreeAsUsersWriteIt)); }, &ByForce, 1);
}

namespace {

// Two walks that are wrong in ways for which cleaners are known.
template <bool forgetsEverySecond, bool entersLinks>
void CarelessWalk(const std::wstring& exact) {
  bool forget = false;
  ForEachIn(exact, [&](const std::wstring& name, DWORD attributes) {
    const std::wstring path = exact + L"\\" + name;
    if (forgetsEverySecond && (forget = !forget)) return;
    const bool isLink = (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    if (isLink && !(entersLinks && exact == kTree)) return;  // not round in circles
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
      ::DeleteFileW(path.c_str());
    } else {
      CarelessWalk<forgetsEverySecond, entersLinks>(path);
      ::RemoveDirectoryW(path.c_str());
    }
  });
}

std::size_t EntriesOf(const Node& folder) {
  std::size_t count = folder.children.size();
  for (const Node& child : folder.children) count += EntriesOf(child);
  return count;
}

Walk Plain(Draw&) { return Walk{.removesFolder = false}; }

}  // namespace

TEST_F(WalkProperties, FindAWalkThatForgetsEverySecondEntryAndShowTheSmallestTree) {
  const auto failure = FirstFailure(
      1, 1000, [](const Walk&) { CarelessWalk<true, false>(kTree); }, &Plain);
  ASSERT_TRUE(failure);
  EXPECT_EQ(EntriesOf(failure->smallest), 1u) << trees::Shown(failure->smallest);
  EXPECT_EQ(failure->wrong, "a is left\n");
}

TEST_F(WalkProperties, FindAWalkThatEntersLinksAndShowTheSmallestTree) {
  const auto failure = FirstFailure(
      1, 1000, [](const Walk&) { CarelessWalk<false, true>(kTree); }, &Plain);
  ASSERT_TRUE(failure);
  EXPECT_EQ(EntriesOf(failure->smallest), 1u) << trees::Shown(failure->smallest);
  EXPECT_NE(failure->wrong.find("something outside of the folder is touched"), std::string::npos) << failure->wrong;
}
