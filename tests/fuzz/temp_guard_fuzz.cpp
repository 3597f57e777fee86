// Whatever the variables and the system say: no root, no relative or device path, and no folder that is or holds a kept
// one is ever cleaned. The answer is compared with rules that are written down here a second time, name by name.
#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "cleaners/temp_guard.h"
#include "platform/path_text.h"
#include "property.h"

using namespace cleaners;
using namespace platform;

namespace {

using Names = std::vector<std::string>;

std::vector<std::string> LinesOf(const unsigned char* data, std::size_t size) {
  std::vector<std::string> lines(1);
  for (std::size_t i = 0; i < size; ++i) {
    if (data[i] == '\n')
      lines.emplace_back();
    else
      lines.back() += static_cast<char>(data[i]);
  }
  return lines;
}

// As the system's own full paths are: no two backslashes in a row, save at the beginning.
std::string Full(const std::string& path) {
  std::string full;
  for (std::size_t i = 0; i < path.size(); ++i)
    if (i < 2 || path[i] != '\\' || path[i - 1] != '\\') full += path[i];
  return full;
}

// The first line is the variable, the second the system's answer, the third that answer in full; the rest is kept.
TempFolderFacts FactsOf(const std::vector<std::string>& lines) {
  const auto line = [&lines](std::size_t index) { return index < lines.size() ? lines[index] : std::string(); };
  TempFolderFacts facts;
  facts.configured = line(0);
  facts.reported = line(1);
  facts.canonical = Full(line(2));
  for (std::size_t i = 3; i < lines.size(); ++i) facts.keep.push_back(Full(lines[i]));
  return facts;
}

std::string Upper(std::string text) {
  for (char& c : text)
    if (static_cast<unsigned char>(c) < 128) c = static_cast<char>(std::toupper(c));
  return text;
}

// The names between the backslashes, in capitals.
Names NamesOf(const std::string& path) {
  Names names;
  std::string name;
  for (const char c : Upper(path) + "\\") {
    if (c != '\\') {
      name += c;
    } else if (!name.empty()) {
      names.push_back(name);
      name.clear();
    }
  }
  return names;
}

bool IsShareText(const std::string& path) { return path.size() >= 2 && path[0] == '\\' && path[1] == '\\'; }

bool IsFolderBelowARoot(const std::string& path) {
  const Names names = NamesOf(path);
  if (IsShareText(path)) return names.size() >= 3 && names[0][0] != '.' && names[0][0] != '?';
  return names.size() >= 2 && names[0].size() == 2 && names[0][0] >= 'A' && names[0][0] <= 'Z' && names[0][1] == ':' &&
         path[2] == '\\';
}

// Of one kind: from a drive, from the current drive's root, or of a share.
std::size_t Beginning(const std::string& path) { return std::min(path.find_first_not_of('\\'), path.size()); }

bool Holds(const std::string& outer, const std::string& inner) {
  const Names out = NamesOf(outer), in = NamesOf(inner);
  return Beginning(outer) == Beginning(inner) && out.size() <= in.size() && std::equal(out.begin(), out.end(), in.begin());
}

std::string OtherCase(std::string text) {
  for (char& c : text) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (byte < 128) c = static_cast<char>(std::isupper(byte) ? std::tolower(byte) : std::toupper(byte));
  }
  return text;
}

void CheckAllowed(const TempFolderFacts& facts) {
  const char* folder = facts.canonical.c_str();
  PROPERTY(IsAbsolutePath(facts.canonical), "allowed [%s]", folder);
  PROPERTY(!IsRootPath(facts.canonical), "allowed [%s]", folder);
  PROPERTY(IsFolderBelowARoot(facts.canonical), "allowed [%s]", folder);
  PROPERTY(!facts.isLink, "allowed [%s]", folder);
  PROPERTY(facts.configured.find('\\') != std::string::npos, "allowed with [%s]", facts.configured.c_str());
  std::string reported = Upper(facts.reported);
  reported.erase(0, reported.find_first_not_of(' '));
  reported.erase(reported.find_last_not_of(' ') + 1);
  PROPERTY(reported != "C:\\WINDOWS\\" && reported != "C:\\WINNT\\", "allowed [%s]", facts.reported.c_str());
  for (const std::string& kept : facts.keep)
    if (!kept.empty()) PROPERTY(!Holds(facts.canonical, kept), "allowed [%s], which holds [%s]", folder, kept.c_str());
}

// What turns a permission into a refusal.
void CheckRefusals(const TempFolderFacts& allowed) {
  const char* folder = allowed.canonical.c_str();
  const auto refused = [&allowed](auto change) {
    TempFolderFacts facts = allowed;
    change(facts);
    return !MayCleanTempFolder(facts);
  };
  PROPERTY(refused([](TempFolderFacts& facts) { facts.isLink = true; }), "[%s]", folder);
  PROPERTY(refused([](TempFolderFacts& facts) { facts.configured.clear(); }), "[%s]", folder);
  PROPERTY(refused([](TempFolderFacts& facts) { facts.canonical.clear(); }), "[%s]", folder);
  PROPERTY(refused([](TempFolderFacts& facts) { facts.keep.push_back(facts.canonical); }), "[%s]", folder);
  PROPERTY(refused([](TempFolderFacts& facts) { facts.keep.push_back(OtherCase(facts.canonical)); }), "[%s]", folder);
  PROPERTY(refused([](TempFolderFacts& facts) { facts.keep.push_back(AppendBackslash(facts.canonical) + "a\\b"); }), "[%s]",
           folder);
}

// What is no part of the question.
void CheckSameAnswer(const TempFolderFacts& facts, bool allowed) {
  TempFolderFacts other = facts;
  for (std::string& kept : other.keep) kept = OtherCase(kept);
  std::reverse(other.keep.begin(), other.keep.end());
  other.keep.emplace_back();
  PROPERTY(MayCleanTempFolder(other) == allowed, "[%s] with its kept folders in another case and order",
           facts.canonical.c_str());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::vector<std::string> lines = LinesOf(data, size);
  TempFolderFacts facts = FactsOf(lines);
  // Also with one path for all three, which the fuzzer would seldom find by itself.
  for (const bool same : {false, true}) {
    if (same) {
      facts.canonical = Full(facts.configured);
      facts.reported = facts.configured = AppendBackslash(facts.canonical);
    }
    const bool allowed = MayCleanTempFolder(facts);
    if (allowed) {
      CheckAllowed(facts);
      CheckRefusals(facts);
    }
    CheckSameAnswer(facts, allowed);
  }
  return 0;
}
