// Whatever the variables and the system tell: no root, no relative or device path, and no folder that is or holds a kept
// one is ever cleaned. The answer is compared with rules that are written down here a second time, name by name.
#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "cleaners/temp_guard.h"
#include "platform/wide_system.h"
#include "property.h"
#include "wide_input.h"

using namespace cleaners;
using namespace platform;

namespace {

using Names = std::vector<WideText>;

std::vector<WideText> LinesOf(WideView text) {
  std::vector<WideText> lines(1);
  for (const WideChar c : text) {
    if (c == u'\n')
      lines.emplace_back();
    else
      lines.back() += c;
  }
  return lines;
}

// The first line is the variable, the second the system's answer, the third the folder; the rest is kept.
TempFolderFacts FactsOf(const std::vector<WideText>& lines) {
  const auto line = [&lines](std::size_t index) { return index < lines.size() ? lines[index] : WideText(); };
  TempFolderFacts facts;
  facts.configured = line(0);
  facts.reported = line(1);
  facts.canonical = facts.folder = FullPath(line(2));
  for (std::size_t i = 3; i < lines.size(); ++i) facts.keep.push_back(FullPath(lines[i]));
  return facts;
}

// The names between the backslashes, in capitals.
Names NamesOf(const WideText& path) {
  Names names;
  WideText name;
  for (const WideChar c : UpperCase(path) + u"\\") {
    if (c != u'\\') {
      name += c;
    } else if (!name.empty()) {
      names.push_back(name);
      name.clear();
    }
  }
  return names;
}

bool IsFolderBelowARoot(const WideText& path) {
  const Names names = NamesOf(path);
  if (path.starts_with(u"\\\\")) return names.size() >= 3 && names[0] != u"." && names[0] != u"?";
  return names.size() >= 2 && names[0].size() == 2 && names[0][0] >= u'A' && names[0][0] <= u'Z' && names[0][1] == u':' &&
         path[2] == u'\\';
}

// Of one kind: of a drive or of a share.
std::size_t Beginning(const WideText& path) { return std::min(path.find_first_not_of(u'\\'), path.size()); }

bool Holds(const WideText& outer, const WideText& inner) {
  const Names out = NamesOf(outer), in = NamesOf(inner);
  return Beginning(outer) == Beginning(inner) && out.size() <= in.size() && std::equal(out.begin(), out.end(), in.begin());
}

Path OtherCase(const Path& path) {
  WideText text = path.Shown();
  for (WideChar& c : text)
    if (c < 128) c = static_cast<WideChar>(std::isupper(c) ? std::tolower(c) : std::toupper(c));
  return FullPath(text);
}

void CheckAllowed(const TempFolderFacts& facts) {
  const std::string folder = Readable(facts.canonical.Shown());
  PROPERTY(!facts.canonical.IsEmpty() && !facts.canonical.IsRoot(), "allowed [%s]", folder.c_str());
  PROPERTY(IsFolderBelowARoot(facts.canonical.Shown()), "allowed [%s]", folder.c_str());
  PROPERTY(!facts.isLink, "allowed [%s]", folder.c_str());
  PROPERTY(facts.configured.find(u'\\') != WideText::npos, "allowed with [%s]", Readable(facts.configured).c_str());
  PROPERTY(facts.reported.find_first_of(u"*?") == WideText::npos, "allowed [%s]", Readable(facts.reported).c_str());
  WideText reported = UpperCase(facts.reported);
  reported.erase(0, reported.find_first_not_of(u' '));
  reported.erase(reported.find_last_not_of(u' ') + 1);
  PROPERTY(reported != u"C:\\WINDOWS\\" && reported != u"C:\\WINNT\\", "allowed [%s]", Readable(facts.reported).c_str());
  for (const Path& kept : facts.keep)
    if (!kept.IsEmpty())
      PROPERTY(!Holds(facts.canonical.Shown(), kept.Shown()), "allowed [%s], which holds [%s]", folder.c_str(),
               Readable(kept.Shown()).c_str());
}

// What turns a permission into a refusal.
void CheckRefusals(const TempFolderFacts& allowed) {
  const std::string text = Readable(allowed.canonical.Shown());
  const char* folder = text.c_str();
  const auto refused = [&allowed](auto change) {
    TempFolderFacts facts = allowed;
    change(facts);
    return !MayClearTempFolder(facts);
  };
  PROPERTY(refused([](TempFolderFacts& facts) { facts.isLink = true; }), "[%s]", folder);
  PROPERTY(refused([](TempFolderFacts& facts) { facts.isVolume = true; }), "[%s]", folder);
  const WideText name = UpperCase(allowed.folder.Name());
  PROPERTY(refused([](TempFolderFacts& facts) { facts.liesInShared = true; }) == (name != u"TEMP" && name != u"TMP"), "[%s]",
           folder);
  PROPERTY(refused([](TempFolderFacts& facts) { facts.configured.clear(); }), "[%s]", folder);
  PROPERTY(refused([](TempFolderFacts& facts) { facts.canonical = Path(); }), "[%s]", folder);
  PROPERTY(refused([](TempFolderFacts& facts) { facts.keep.push_back(facts.canonical); }), "[%s]", folder);
  PROPERTY(refused([](TempFolderFacts& facts) { facts.keep.push_back(OtherCase(facts.canonical)); }), "[%s]", folder);
  PROPERTY(refused([](TempFolderFacts& facts) { facts.keep.push_back(facts.canonical / u"a\\b"); }), "[%s]", folder);
}

// What is no part of the question.
void CheckSameAnswer(const TempFolderFacts& facts, bool allowed) {
  TempFolderFacts other = facts;
  for (Path& kept : other.keep) kept = OtherCase(kept);
  std::reverse(other.keep.begin(), other.keep.end());
  other.keep.emplace_back();
  PROPERTY(MayClearTempFolder(other) == allowed, "[%s] with its kept folders in another case and order",
           Readable(facts.canonical.Shown()).c_str());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  TempFolderFacts facts = FactsOf(LinesOf(WideInput(data, size)));
  // Also with one path for all three, which the fuzzer would seldom find by itself.
  for (const bool same : {false, true}) {
    if (same) {
      facts.canonical = facts.folder = FullPath(facts.configured);
      facts.reported = facts.configured = AppendBackslash(facts.canonical.Shown());
    }
    const bool allowed = MayClearTempFolder(facts);
    if (allowed) {
      CheckAllowed(facts);
      CheckRefusals(facts);
    }
    CheckSameAnswer(facts, allowed);
  }
  return 0;
}
