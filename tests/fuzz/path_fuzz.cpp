// Paths: whatever a text holds, its path has a root and names that lead to themselves, is the same again when it is made of
// what it shows, and comes back from its parts. Whatever it is joined with, it stays below where it was.
#include <algorithm>
#include <string>
#include <vector>

#include "platform/path.h"
#include "platform/wide_system.h"
#include "property.h"
#include "wide_input.h"

using namespace platform;

namespace {

using Names = std::vector<WideText>;

Names NamesOf(WideView text) {
  Names names(1);
  for (const WideChar character : text) {
    if (character == u'\\' || character == u'/')
      names.emplace_back();
    else
      names.back() += character;
  }
  std::erase_if(names, [](const WideText& name) { return name.empty(); });
  return names;
}

bool IsUsable(const WideText& name) {
  static const WideText kForbidden(u"\\/:*?\"<>|\0", 10);
  if (name.empty() || name == u"." || name == u".." || name.size() > 255) return false;
  if (name.find_first_of(kForbidden) != WideText::npos) return false;
  return UsesWideNames() || (name.back() != u'.' && name.back() != u' ');
}

// Where a shown path's names begin; 0 where it has no root.
std::size_t RootOf(const WideText& shown) {
  const auto isLetter = [](WideChar c) { return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z'); };
  if (shown.size() >= 3 && isLetter(shown[0]) && shown[1] == u':' && shown[2] == u'\\') return 3;
  if (!shown.starts_with(u"\\\\")) return 0;
  const std::size_t share = shown.find(u'\\', 2);
  const std::size_t end = share == WideText::npos ? share : shown.find(u'\\', share + 1);
  return end == WideText::npos ? 0 : end + 1;
}

// What the text means, written down a second time; nothing where it leads nowhere.
bool Meaning(const WideText& text, std::size_t root, Names& meaning) {
  for (const WideText& name : NamesOf(WideView(text).substr(root))) {
    if (name == u".") continue;
    if (name == u"..") {
      if (!meaning.empty()) meaning.pop_back();
      continue;
    }
    if (!IsUsable(name) || name.find_first_not_of(u'.') == WideText::npos) return false;
    meaning.push_back(name);
  }
  return true;
}

void CheckWhole(const Path& path) {
  const WideText shown = path.Shown();
  const std::string told = Readable(shown);
  const std::size_t root = RootOf(shown);
  PROPERTY(root != 0, "[%s]", told.c_str());
  PROPERTY(path.IsRoot() == (shown.size() == root), "[%s]", told.c_str());
  PROPERTY(path.IsRoot() || shown.back() != u'\\', "[%s]", told.c_str());
  WideText joined = shown.substr(0, root);
  for (const WideText& name : NamesOf(WideView(shown).substr(root))) {
    PROPERTY(IsUsable(name), "[%s]", told.c_str());
    if (joined.size() > root) joined += u'\\';
    joined += name;
  }
  PROPERTY(joined == shown, "[%s]", told.c_str());
  const WideText native = path.Native();
  if (UsesWideNames())
    PROPERTY(native == (shown[0] == u'\\' ? u"\\\\?\\UNC" + shown.substr(1) : u"\\\\?\\" + shown), "[%s]", told.c_str());
  else
    PROPERTY(native == shown, "[%s]", told.c_str());
}

void CheckParts(const Path& path) {
  const std::string told = Readable(path.Shown());
  PROPERTY(IsSameOrBelow(path, path), "[%s]", told.c_str());
  if (path.IsRoot()) {
    PROPERTY(path.Name().empty() && path.Parent().IsEmpty(), "[%s]", told.c_str());
    return;
  }
  const Path parent = path.Parent();
  PROPERTY(parent / path.Name() == path, "[%s]", told.c_str());
  PROPERTY(IsSameOrBelow(path, parent) && !IsSameOrBelow(parent, path), "[%s]", told.c_str());
  CheckWhole(parent);
}

void CheckText(const WideText& text) {
  const std::string told = Readable(text);
  const Path path = FullPath(text);
  const Path spelled = SpelledPath(text);
  PROPERTY(IsAbsolutePath(text) || path.IsEmpty(), "[%s]", told.c_str());
  PROPERTY(path.IsEmpty() || spelled == path, "[%s]", told.c_str());
  for (const Path& made : {path, spelled}) {
    if (made.IsEmpty()) continue;
    CheckWhole(made);
    CheckParts(made);
    PROPERTY(FullPath(made.Shown()) == made && SpelledPath(made.Shown()) == made, "[%s]", told.c_str());
    PROPERTY(SpelledPath(made.Native()) == made, "[%s]", told.c_str());
  }
  const RelativeText relative = SplitRelative(text);
  PROPERTY(relative.from.empty() || spelled.IsEmpty(), "[%s] is full and relative", told.c_str());
  PROPERTY(relative.from.empty() || text.ends_with(relative.rest), "[%s]", told.c_str());

  Names meaning;
  const std::size_t root = RootOf(text);
  if (!IsAbsolutePath(text) || root == 0) return;
  const bool leadsSomewhere = Meaning(text, root, meaning);
  // On Windows 9x a device's name leads nowhere either, and the names of a share's root are looked at before.
  if (!UsesWideNames() && path.IsEmpty()) return;
  PROPERTY(leadsSomewhere == !path.IsEmpty(), "[%s]", told.c_str());
  if (leadsSomewhere) PROPERTY(NamesOf(WideView(path.Shown()).substr(root)) == meaning, "[%s]", told.c_str());
}

void CheckJoins(const Path& folder, const WideText& text) {
  const std::string told = Readable(text);
  const Path joined = folder / text;
  if (!joined.IsEmpty()) {
    CheckWhole(joined);
    PROPERTY(IsSameOrBelow(joined, folder) && !(joined == folder), "[%s]", told.c_str());
    PROPERTY(
        joined.Shown() == AppendBackslash(folder.Shown()) + (text.ends_with(u'\\') ? text.substr(0, text.size() - 1) : text),
        "[%s]", told.c_str());
  }
  Path changed = folder;
  changed /= text;
  PROPERTY(changed == joined, "[%s]", told.c_str());
  const Path resolved = folder.Resolve(text);
  if (resolved.IsEmpty()) return;
  CheckWhole(resolved);
  Path root = folder;
  while (!root.IsRoot()) root.RemoveName();
  PROPERTY(IsSameOrBelow(resolved, root), "[%s]", told.c_str());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const WideText text = WideInput(data, size);
  for (const bool windows9x : {false, true}) {
    AnsiNamesOnlyForTests = windows9x;
    CheckText(text);
    for (const char16_t* folder : {u"C:\\", u"C:\\a\\b", u"\\\\server\\share"}) {
      CheckJoins(FullPath(folder), text);
      CheckText(folder + (u"\\" + text));
    }
    PROPERTY(AppendBackslash(text).size() <= text.size() + 1 && AppendBackslash(text).ends_with(u'\\'), "[%s]",
             Readable(text).c_str());
    PROPERTY(text.starts_with(DrivePart(text)), "[%s]", Readable(text).c_str());
  }
  AnsiNamesOnlyForTests = false;
  return 0;
}
