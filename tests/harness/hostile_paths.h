// Paths as somebody spells them who wants another folder deleted than the one that the text seems to name, and what each
// means, by a model that shares nothing with the program: a disk of folders with the names of kWords, a text that leads to
// one of them or nowhere.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/wide_text.h"

namespace hostile {

using Text = std::string;  // ASCII; a NUL may be in it
using Names = std::vector<Text>;

inline const Names kRoots = {"C:\\",
                             "c:\\",
                             "C:/",
                             "C:",
                             "\\\\?\\C:\\",
                             "\\\\?\\c:\\",
                             "\\\\.\\C:\\",
                             "\\??\\C:\\",
                             "//?/C:/",
                             "\\",
                             "/",
                             "",
                             ".\\",
                             "C:.\\",
                             "C:..\\",
                             "\\\\?\\",
                             "\\\\?\\UNC\\server\\share\\",
                             "\\\\server\\share\\",
                             "//server/share/",
                             "\\\\server\\",
                             "\\\\?\\Volume{00000000-0000-0000-0000-000000000000}\\",
                             "\\\\?\\GLOBALROOT\\",
                             "\\\\localhost\\C$\\..\\",
                             "\\\\?\\C:\\\\",
                             "C:\\\\\\",
                             " C:\\",
                             "\"C:\\",
                             "file:///C:/",
                             "1:\\",
                             "CON:\\"};
inline const Names kWords = {"play", "windows", "sub"};
inline const Names kTricks = {"PLAY",
                              "Windows",
                              "play.",
                              "play ",
                              "windows.",
                              "windows ",
                              " play",
                              "..",
                              ".",
                              "...",
                              ". .",
                              "",
                              ".. ",
                              "play:s",
                              "a:b",
                              "play::$DATA",
                              "play:$I30",
                              "CON",
                              "nul.txt",
                              "COM1",
                              "*",
                              "pla?",
                              "<",
                              "play\"",
                              "|",
                              "PLAY~1",
                              "play.sub",
                              "play/..",
                              "windows/.",
                              Text("play\0", 5),
                              Text(256, 'x'),
                              Text(200, '\\'),
                              Text(200, '/'),
                              "%TEMP%",
                              "play\t",
                              "play\n"};

// The same numbers everywhere.
class Dice {
 public:
  explicit Dice(std::uint32_t seed) : state_(seed * 2654435761u + 1) {}
  std::size_t Below(std::size_t count) {
    state_ = state_ * 1664525u + 1013904223u;
    return (state_ >> 8) % count;
  }
  const Text& OneOf(const Names& names) { return names[Below(names.size())]; }

 private:
  std::uint32_t state_;
};

inline Text Spelled(std::uint32_t number) {
  Dice dice(number);
  Text text = dice.Below(3) == 0 ? dice.OneOf(kRoots) : "C:\\";
  for (std::size_t left = dice.Below(5); left > 0; --left) {
    text += dice.OneOf(dice.Below(3) == 0 ? kTricks : kWords);
    if (left > 1 || dice.Below(3) == 0) text += dice.Below(6) == 0 ? '/' : '\\';
  }
  return text;
}

inline platform::WideText Wide(std::string_view text) { return platform::WideText(text.begin(), text.end()); }

namespace model {

inline Text Upper(Text text) {
  for (char& letter : text)
    if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
  return text;
}

inline Names Split(const Text& text) {
  Names names(1);
  for (const char letter : text)
    if (letter == '\\')
      names.emplace_back();
    else
      names.back() += letter;
  return names;
}

inline bool IsName(const Text& name) {
  if (name.empty() || name.size() > 255 || name.find_first_not_of('.') == Text::npos) return false;
  return name.find_first_of(Text(":*?\"<>|/\0", 9)) == Text::npos;
}

// The names below the root, in capitals; nothing for a text that leads nowhere. `root` becomes "C:" or "\\SERVER\SHARE".
inline std::optional<Names> Meaning(Text text, Text& root) {
  const bool exact = text.starts_with("\\\\?\\");
  if (exact) {
    text = text.starts_with("\\\\?\\UNC\\") ? "\\\\" + text.substr(8) : text.substr(4);
  } else {
    std::replace(text.begin(), text.end(), '/', '\\');
  }
  Names parts = Split(text);
  std::size_t first = 1;
  if (parts.size() > 3 && parts[0].empty() && parts[1].empty()) {
    for (const Text* part : {&parts[2], &parts[3]})  // "..." is a server's or share's name like any other
      if (*part == "." || *part == ".." || !IsName(*part + "x")) return {};
    if (parts[2].empty() || parts[3].empty()) return {};
    root = Upper("\\\\" + parts[2] + "\\" + parts[3]);
    first = 4;
  } else if (parts.size() > 1 && parts[0].size() == 2 && parts[0][1] == ':' && Upper(parts[0])[0] >= 'A' &&
             Upper(parts[0])[0] <= 'Z') {
    root = Upper(parts[0]);
  } else {
    return {};
  }
  Names names;
  for (std::size_t at = first; at < parts.size(); ++at) {
    const Text& part = parts[at];
    const bool last = at + 1 == parts.size();
    if (exact && !(last && part.empty()) && !IsName(part)) return {};
    if (part.empty() || part == ".") continue;
    if (part == "..") {
      if (!names.empty()) names.pop_back();
    } else if (IsName(part)) {
      names.push_back(Upper(part));
    } else {
      return {};
    }
  }
  return names;
}

}  // namespace model

}  // namespace hostile
