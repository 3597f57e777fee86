// Trees of files, folders and links drawn by a number, and the model that says what a walk must leave of one.
#pragma once

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "platform/win32.h"

namespace trees {

enum class Kind { File, Folder, Link };

// Who else has it open: nobody; somebody who lets nobody delete it; somebody who does, whereupon the name stays until he
// closes.
enum class Held { No, Firmly, Loosely };

// How the ANSI functions reach a name: as any other, as a device, not at all. The wide functions reach all.
enum class ByAnsi { Reached, Device, Unreached };

struct Name {
  std::wstring text;
  ByAnsi byAnsi = ByAnsi::Reached;
};

// Of one folder's entries no two have the same. What leads elsewhere without the exact form of a path is among them.
inline const std::vector<Name>& Names() {
  static const std::vector<Name> names = {
      {L"a"},
      {L"b.txt"},
      {L"C.GIF"},
      {L"d d"},
      {L" e"},
      {L"f "},
      {L"g."},
      {L"..h"},
      {L"..."},
      {L" ."},
      {L".. "},
      {L"~"},
      {L"[i]%j%"},
      {L"LONGNA~1.TXT"},
      {L"some longer name.html"},
      {L"desktop.ini"},
      {L"\u00dcn\u00efc\u00f6d\u00e9"},
      {L"\u041f\u0440\u0438\u0432\u0435\u0442"},
      {L"\u65e5\u672c\u8a9e"},
      {L"\U0001f600"},
      {L"\uff0e\uff0e"},
      {L"\uff0e\uff0e\uff3c\uff0e\uff0e"},
      {std::wstring(255, L'x')},
      {L"CON", ByAnsi::Device},
      {L"NUL.txt", ByAnsi::Device},
      {L"e\u0301", ByAnsi::Unreached},
  };
  return names;
}

struct Node {
  Kind kind = Kind::Folder;
  std::size_t name = 0;  // among Names()
  DWORD attributes = 0;
  Held held = Held::No;
  DWORD share = 0;       // what he who holds it lets others do
  int size = 0;          // of a file, in bytes
  bool leadsOut = true;  // of a link: out of the tree, otherwise to its own parent
  std::vector<Node> children = {};
};

struct Walk {
  bool ansi = false;
  bool byForce = false;     // read-only files go as well
  bool overwrites = false;  // a file that anybody holds cannot be overwritten and stays
  bool removesSubFolders = true;
  bool removesFolder = true;
};

// From numbers alone, so that the same number draws the same tree everywhere.
class Draw {
 public:
  explicit Draw(std::uint32_t number) : numbers_(number) {}

  int Below(int count) { return static_cast<int>(numbers_() % static_cast<unsigned>(count)); }
  bool OneIn(int count) { return Below(count) == 0; }

  Node Tree() {
    Node root;
    Fill(root, 1 + Below(5));
    return root;
  }

  Walk OfWalk() {
    Walk walk;
    walk.ansi = OneIn(2);
    walk.overwrites = OneIn(3);
    walk.removesSubFolders = !OneIn(4);
    walk.removesFolder = OneIn(2);
    return walk;
  }

 private:
  void Fill(Node& folder, int levels) {
    std::vector<std::size_t> names(Names().size());
    for (std::size_t i = 0; i < names.size(); ++i) names[i] = i;
    for (int count = Below(6); count > 0; --count) {
      const auto chosen = names.begin() + Below(static_cast<int>(names.size()));
      folder.children.push_back(Entry(*chosen, levels));
      names.erase(chosen);
    }
  }

  Node Entry(std::size_t name, int levels) {
    Node node;
    node.name = name;
    node.kind = OneIn(10) ? Kind::Link : levels > 0 && OneIn(2) ? Kind::Folder : Kind::File;
    if (node.kind == Kind::Link) {
      node.leadsOut = !OneIn(3);
      return node;
    }
    if (OneIn(4)) node.attributes = static_cast<DWORD>(Below(8));  // read-only, hidden, system
    if (OneIn(10)) node.held = OneIn(2) ? Held::Firmly : Held::Loosely;
    node.share = static_cast<DWORD>(Below(4)) | (node.held == Held::Loosely ? FILE_SHARE_DELETE : 0u);
    if (node.kind == Kind::File) node.size = OneIn(3) ? 1000 + Below(2100) : Below(3);
    if (node.kind == Kind::Folder) Fill(node, levels - 1);
    return node;
  }

  std::mt19937 numbers_;
};

inline std::string Readable(const std::wstring& name) {
  std::string text;
  for (const wchar_t c : name) text += c < 127 ? std::string(1, static_cast<char>(c)) : "<" + std::to_string(c) + ">";
  return text.size() > 40 ? text.substr(0, 3) + "...(" + std::to_string(name.size()) + ")" : text;
}

// Each entry as a line.
inline std::string Shown(const Node& folder, const std::string& indent = "  ") {
  std::string text;
  for (const Node& node : folder.children) {
    text += indent + '"' + Readable(Names()[node.name].text) + '"';
    if (node.kind == Kind::Link) text += node.leadsOut ? " -> out" : " -> its parent";
    if (node.kind == Kind::File) text += ", " + std::to_string(node.size) + " bytes";
    if ((node.attributes & FILE_ATTRIBUTE_READONLY) != 0) text += ", read-only";
    if ((node.attributes & FILE_ATTRIBUTE_HIDDEN) != 0) text += ", hidden";
    if ((node.attributes & FILE_ATTRIBUTE_SYSTEM) != 0) text += ", system";
    if (node.held != Held::No) text += ", held, sharing " + std::to_string(node.share);
    text += "\n" + Shown(node, indent + "  ");
  }
  return text;
}

// What must be left, by paths in the tree.
class Model {
 public:
  explicit Model(const Walk& walk) : walk_(walk) {}

  std::vector<std::string> LeftOf(const Node& root) {
    const bool empty = Visit(root, "");
    rootStays_ = !walk_.removesFolder || !empty;
    std::sort(left_.begin(), left_.end());
    return left_;
  }
  bool RootStays() const { return rootStays_; }

 private:
  // True when nothing in the folder is in the way of its removal.
  bool Visit(const Node& folder, const std::string& path) {
    bool empty = true;
    for (const Node& node : folder.children) empty &= IsGoneAtOnce(node, path + Readable(Names()[node.name].text));
    return empty;
  }

  bool IsGoneAtOnce(const Node& node, const std::string& path) {
    const ByAnsi reach = walk_.ansi ? Names()[node.name].byAnsi : ByAnsi::Reached;
    if (node.kind == Kind::Folder && reach != ByAnsi::Unreached) {
      const bool empty = MayBeListed(node) ? Visit(node, path + "\\") : KeepAllIn(node, path);
      return empty && walk_.removesSubFolders && reach == ByAnsi::Reached ? Goes(node, path) : Stays(path);
    }
    if (reach != ByAnsi::Reached || node.kind == Kind::Link) {
      Keep(node, path);
      return false;
    }
    const bool readOnly = (node.attributes & FILE_ATTRIBUTE_READONLY) != 0;
    const bool inTheWay = (readOnly && !walk_.byForce) || (walk_.overwrites && node.held != Held::No);
    return inTheWay ? Stays(path) : Goes(node, path);
  }

  // What is held loosely goes, but not before he who holds it is done.
  bool Goes(const Node& node, const std::string& path) {
    return node.held == Held::Firmly ? Stays(path) : node.held == Held::No;
  }

  bool Stays(const std::string& path) {
    left_.push_back(path);
    return false;
  }

  static bool MayBeListed(const Node& folder) { return folder.held == Held::No || (folder.share & FILE_SHARE_READ) != 0; }

  void Keep(const Node& node, const std::string& path) {
    left_.push_back(path);
    KeepAllIn(node, path);
  }

  // True where there is nothing.
  bool KeepAllIn(const Node& folder, const std::string& path) {
    for (const Node& child : folder.children) Keep(child, path + "\\" + Readable(Names()[child.name].text));
    return folder.children.empty();
  }

  Walk walk_;
  std::vector<std::string> left_;
  bool rootStays_ = true;
};

// A tree that fails, made as small as it can be while it does.
class Shrinker {
 public:
  template <class Fails>
  static Node Smallest(Node tree, const Fails& fails) {
    int trials = 400;  // each lays out a tree
    for (bool smaller = true; smaller;) {
      smaller = false;
      for (const Node& candidate : SimplerThan(tree)) {
        if (--trials < 0) return tree;
        if (!fails(candidate)) continue;
        tree = candidate;
        smaller = true;
        break;
      }
    }
    return tree;
  }

 private:
  static std::vector<Node> SimplerThan(const Node& folder) {
    std::vector<Node> simpler;
    for (std::size_t i = 0; i < folder.children.size(); ++i) {
      Node without = folder;
      without.children.erase(without.children.begin() + static_cast<std::ptrdiff_t>(i));
      simpler.push_back(without);
      if (folder.children.size() == 1 && folder.children[i].kind == Kind::Folder) {
        Node inner = folder.children[i];
        inner.name = folder.name;
        simpler.push_back(inner);
      }
      for (const Node& plainer : PlainerThan(folder.children[i], folder)) simpler.push_back(With(folder, i, plainer));
      for (const Node& inner : SimplerThan(folder.children[i])) simpler.push_back(With(folder, i, inner));
    }
    return simpler;
  }

  static Node With(Node folder, std::size_t place, const Node& child) {
    folder.children[place] = child;
    return folder;
  }

  static std::vector<Node> PlainerThan(const Node& node, const Node& folder) {
    std::vector<Node> plainer;
    const auto add = [&](auto change) {
      Node copy = node;
      change(copy);
      plainer.push_back(copy);
    };
    if (node.attributes != 0) add([](Node& copy) { copy.attributes = 0; });
    if (node.held != Held::No) add([](Node& copy) { copy.held = Held::No; });
    if (node.size != 0) add([](Node& copy) { copy.size = 0; });
    for (std::size_t name = 0; name < node.name; ++name) {
      const auto hasIt = [name](const Node& other) { return other.name == name; };
      if (std::any_of(folder.children.begin(), folder.children.end(), hasIt)) continue;
      add([name](Node& copy) { copy.name = name; });
      break;
    }
    return plainer;
  }
};

}  // namespace trees
