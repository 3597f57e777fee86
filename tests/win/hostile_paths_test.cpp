// Hostile spellings on the shredder's list, on a real disk: what goes is what the model says that the text means, and
// nothing else. A canary lies in every folder that must stay.
#include "hostile_paths.h"

#include <gtest/gtest.h>

#include "ansi_paths.h"
#include "file_calls.h"
#include "platform/native_files.h"
#include "scratch_folder.h"
#include "shred/folder_removal.h"

using namespace platform;

namespace {

constexpr std::uint32_t kSpellings = 400;

// In the folder's own spelling. "C:\windows" is a folder to keep.
const std::vector<std::string> kFolders = {
    "C:\\play",          "C:\\play\\sub",    "C:\\play\\windows",    "C:\\play\\windows\\sub",
    "C:\\play\\play",    "C:\\sub",          "C:\\sub\\play",        "C:\\sub\\windows",
    "C:\\windows\\play", "C:\\windows\\sub", "C:\\windows\\windows", "C:\\windows\\sub\\play"};
const std::vector<std::string> kKept = {"C:",       "C:\\windows", "C:\\windows\\system32",
                                        "C:\\test", "C:\\current", "\\\\server\\share"};

void LayOut() {
  for (const std::string& folder : kFolders)
    if (!IsThere(folder + "\\file.txt")) PutFile(folder + "\\file.txt");
}

std::string Capitals(std::string text) {
  for (char& letter : text)
    if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
  return text;
}

// What is left of the folders when the model's one has gone.
std::vector<std::string> LeftByModel(const std::string& text) {
  std::string gone;
  const auto meaning = hostile::model::Meaning(text, gone);
  const bool goes = meaning && !meaning->empty() && gone == "C:" && *meaning != hostile::Names{"WINDOWS"};
  for (const std::string& name : meaning.value_or(hostile::Names())) gone += "\\" + name;
  std::vector<std::string> left;
  for (const std::string& folder : kFolders)
    if (!goes || !(Capitals(folder) + "\\").starts_with(gone + "\\")) left.push_back(folder);
  return left;
}

std::vector<std::string> Left() {
  std::vector<std::string> left;
  for (const std::string& folder : kFolders)
    if (IsThere(folder + "\\file.txt")) left.push_back(folder);
  return left;
}

}  // namespace

TEST(HostilePaths, OnTheShreddersListTakeWhatTheyMeanAndNothingElse) {
  PutFile("C:\\current\\play\\canary.txt");
  ::SetCurrentDirectoryA("C:\\current");
  for (const std::string& kept : kKept) PutFile(kept + "\\canary.txt");
  int removed = 0;
  for (std::uint32_t number = 0; number < kSpellings; ++number) {
    const std::string text = hostile::Spelled(number);
    LayOut();
    const std::vector<std::string> expected = LeftByModel(text);
    if (number % 2 == 0)
      shred::RemoveFolderTree(SpelledPath(hostile::Wide(text)));
    else
      shred::ShredFolder(SpelledPath(hostile::Wide(text)));
    ASSERT_EQ(Left(), expected) << "number " << number << ": " << testing::PrintToString(text);
    if (expected.size() < kFolders.size()) ++removed;
    for (const std::string& kept : kKept) ASSERT_TRUE(IsThere(kept + "\\canary.txt")) << kept << ", " << text;
  }
  EXPECT_TRUE(IsThere("C:\\current\\play\\canary.txt"));
  EXPECT_GT(removed, 40);
}
