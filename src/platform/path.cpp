#include "platform/path.h"

#include <algorithm>
#include <iterator>

#include "platform/wide_system.h"

namespace platform {

namespace {

constexpr std::size_t kLongestName = 255;  // characters, on every file system

bool IsSeparator(WideChar character) { return character == '\\' || character == '/'; }

bool IsDrive(WideView text) {
  const WideChar letter = text.empty() ? WideChar() : static_cast<WideChar>(text[0] | 0x20);
  return text.size() >= 2 && letter >= 'a' && letter <= 'z' && text[1] == ':';
}

bool IsDots(WideView name) { return name.find_first_not_of('.') == WideView::npos; }

// The system has its devices in every folder, under these names with any ending.
bool IsDevice(WideView name) {
  const WideText base = UpperCase(Trim(name.substr(0, name.find('.'))));
  if (base == Wide<"CON">() || base == Wide<"PRN">() || base == Wide<"AUX">() || base == Wide<"NUL">()) return true;
  const bool numbered = base.starts_with(Wide<"COM">()) || base.starts_with(Wide<"LPT">());
  return numbered && base.size() == 4 && base[3] >= '1' && base[3] <= '9';
}

// Takes what comes before the next separator off the text, and the separator; at the end of the text, it is empty then.
template <class Separates>
WideView TakeName(WideView& text, Separates separates) {
  const auto end = std::find_if(text.begin(), text.end(), separates);
  const auto size = static_cast<std::size_t>(end - text.begin());
  const WideView name = text.substr(0, size);
  text.remove_prefix(std::min(size + 1, text.size()));
  return name;
}

bool IsBackslash(WideChar character) { return character == '\\'; }

// How much of a full path is its root, with the "\" after it if there is one; 0 where there is no such root.
std::size_t RootLength(WideView text) {
  if (IsDrive(text)) return text.size() >= 3 && text[2] == '\\' ? 3 : 0;
  if (!text.starts_with(Wide<"\\\\">())) return 0;
  WideView rest = text.substr(2);
  const WideView server = TakeName(rest, IsBackslash);
  const WideView share = TakeName(rest, IsBackslash);
  return LeadsToItself(server) && LeadsToItself(share) ? text.size() - rest.size() : 0;
}

constexpr WideView kPrefix = Wide<"\\\\?\\">();
constexpr WideView kSharePrefix = Wide<"\\\\?\\UNC\\">();

WideText NativeRoot(WideView root) {
  if (!UsesWideNames()) return WideText(root);
  WideText native(IsDrive(root) ? kPrefix : kSharePrefix);
  return native.append(root.substr(IsDrive(root) ? 0 : 2));
}

WideText WithoutPrefix(WideView text) {
  if (text.starts_with(kSharePrefix)) return WideText(Wide<"\\\\">()).append(text.substr(kSharePrefix.size()));
  return WideText(text.substr(text.starts_with(kPrefix) ? kPrefix.size() : 0));
}

}  // namespace

bool LeadsToItself(WideView name) {
  if (name.empty() || name == Wide<".">() || name == Wide<"..">()) return false;
  if (name.find_first_of(Wide<"\\/:*?\"<>|\0">()) != WideView::npos) return false;
  if (name.size() > kLongestName) return false;
  return UsesWideNames() || (name.back() != ' ' && name.back() != '.');
}

WideText Path::Shown() const { return WithoutPrefix(text_); }

Path Path::Parent() const {
  Path parent = *this;
  parent.RemoveName();
  return parent;
}

void Path::RemoveName() {
  if (!IsEmpty()) text_.resize(IsRoot() ? 0 : std::max(text_.rfind('\\'), root_));
}

Path Path::operator/(WideView names) const {
  Path path = *this;
  path /= names;
  return path;
}

Path& Path::operator/=(WideView names) {
  do {
    const WideView name = TakeName(names, IsBackslash);
    if (IsEmpty() || !LeadsToItself(name)) {
      text_.clear();
      return *this;
    }
    if (!IsRoot()) text_ += '\\';
    text_ += name;
  } while (!names.empty());
  return *this;
}

Path Path::Resolve(WideView text) const {
  Path path = *this;
  while (!text.empty() && !path.IsEmpty()) {
    const WideView name = TakeName(text, IsSeparator);
    if (name.empty() || name == Wide<".">()) continue;
    if (name == Wide<"..">()) {
      if (!path.IsRoot()) path.RemoveName();
    } else {
      const bool elsewhere = IsDots(name) || (!UsesWideNames() && IsDevice(name));
      path /= elsewhere ? WideView() : name;
    }
  }
  return path;
}

bool IsAbsolutePath(WideView text) { return RootLength(text) != 0; }

Path FullPath(WideView text) {
  const std::size_t length = RootLength(text);
  if (length == 0) return {};
  Path root;
  root.text_ = NativeRoot(AppendBackslash(text.substr(0, length)));
  root.root_ = root.text_.size();
  return root.Resolve(text.substr(length));
}

Path SpelledPath(WideView text) {
  if (!text.starts_with(kPrefix)) {
    WideText plain(text);
    std::replace(plain.begin(), plain.end(), WideChar('/'), WideChar('\\'));
    return FullPath(plain);
  }
  // After these characters the system takes every other one as it is, "/" and ".." among them.
  const Path path = FullPath(WithoutPrefix(text));
  return AppendBackslash(path.Native()) == AppendBackslash(text) ? path : Path();
}

RelativeText SplitRelative(WideView text) {
  if (text.empty() || IsDevice(text)) return {};
  if (IsDrive(text)) {
    if (text.size() > 2 && IsSeparator(text[2])) return {};
    return {WideText(text.substr(0, 2)) += '.', text.substr(2)};
  }
  if (!IsSeparator(text[0])) return {WideText(Wide<".">()), text};
  if (text.size() > 1 && IsSeparator(text[1])) return {};
  return {WideText(Wide<"\\">()), text.substr(1)};
}

bool IsSameOrBelow(const Path& inner, const Path& outer) {
  if (inner.IsEmpty() || outer.IsEmpty()) return false;
  return UpperCase(AppendBackslash(inner.Native())).starts_with(UpperCase(AppendBackslash(outer.Native())));
}

WideText AppendBackslash(WideView path) {
  WideText with(path);
  if (!with.ends_with('\\')) with += '\\';
  return with;
}

WideText DrivePart(WideView path) {
  const std::size_t colon = path.find(':');
  return WideText(path.substr(0, colon == WideView::npos ? 0 : colon + 1));
}

}  // namespace platform
