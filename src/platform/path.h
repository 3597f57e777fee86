// A full path in wide characters, the way from whoever names a file or folder to the system that is asked about it.
//
// It is made once in the form that the system takes and split and joined by whole names from then on. On the NT family that
// form is "\\?\C:\x" or "\\?\UNC\server\share\x", in which every name means itself; on Windows 9x it is the plain one, and
// the functions that ask the system (native_files.h) take its characters to the ANSI code page in their last step. A text
// that would lead elsewhere than it reads, by a character that looks alike, a device's name or dots and blanks that the
// system cuts off, makes an empty path, which leads nowhere.
#pragma once

#include <cstddef>

#include "platform/wide_text.h"

namespace platform {

class Path {
 public:
  Path() = default;

  bool IsEmpty() const { return text_.empty(); }
  bool IsRoot() const { return !IsEmpty() && text_.size() == root_; }  // of a drive or a share

  // As the system is asked with; a root, and nothing else, ends in "\".
  const WideText& Native() const { return text_; }

  // As the user knows it: "C:\x", "\\server\share\x".
  WideText Shown() const;

  // What follows the last "\"; empty for a root.
  WideView Name() const { return WideView(text_).substr(IsRoot() ? root_ : text_.rfind('\\') + 1); }

  // The folder that it lies in; empty for a root.
  Path Parent() const;
  void RemoveName();  // makes it its parent

  // The path of what lies in this folder under one name or several, divided by "\". Every name is taken as it is: the result
  // is empty for one that leads elsewhere ("..", "a:b", "x*" and, on Windows 9x, "x."), and for none.
  Path operator/(WideView names) const;
  Path& operator/=(WideView names);

  // The path that a text means in this folder as users write it: "/" divides names too, "." and ".." mean this folder and
  // the one that it lies in, which of a root is the root itself. Empty where a name of it leads elsewhere, is nothing but
  // three dots and more, which mean different things to different systems, or means a device of Windows 9x.
  Path Resolve(WideView text) const;

  friend bool operator==(const Path& one, const Path& other) { return one.text_ == other.text_; }

 private:
  friend Path FullPath(WideView text);

  WideText text_;
  std::size_t root_ = 0;  // how much of it is the root
};

// Whether a path that ends in the name leads to what has this name. Disks of other systems hold names with any character.
bool LeadsToItself(WideView name);

// The path that a text names in full: "C:\x" or "\\server\share\x", as the system's own texts do. Empty for any other text,
// also for a device ("\\.\", "\\?\").
Path FullPath(WideView text);
bool IsAbsolutePath(WideView text);  // whether it begins so

// The same for a text that users and other programs spell: also with "\\?\" at its beginning, or with "/" there.
Path SpelledPath(WideView text);

// What a text that SpelledPath gives no path for is relative to, in the system's words: the current folder ("."), the one of
// a drive ("C:.") or the root of the current drive ("\"). `from` is empty for a text that leads nowhere by itself.
struct RelativeText {
  WideText from;
  WideView rest;  // to be resolved there
};
RelativeText SplitRelative(WideView text);

// True when `inner` is `outer` or lies below it, ignoring case. False when either is empty.
bool IsSameOrBelow(const Path& inner, const Path& outer);

// A text with exactly one "\" after it: unchanged when it ends in one. An empty text becomes "\".
WideText AppendBackslash(WideView path);

// The text up to and including its first ":"; empty when there is none.
WideText DrivePart(WideView path);

}  // namespace platform
