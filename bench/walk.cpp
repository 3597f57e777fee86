// Times the program's folder walk beside a bare loop that does the same work, on equal trees, in one process and in turn.
//
// usage: bench_walk FOLDERS FILES_PER_FOLDER SHAPE PAIRS BASELINE
//   SHAPE "nested" (eleven folders a branch, each in the one before) or "flat" (every folder in the one that is cleaned)
//   BASELINE "loop" (FindFirstFile, DeleteFile, RemoveDirectory), "rd" (cmd /c rd /s /q) or "none"
// The trees are made in C:\work. Prints a line "product<TAB>baseline" in milliseconds for each pair; a figure that is not
// measured is 0.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "cleaners/folder_contents.h"
#include "pairs.h"

using namespace cleaners;
using namespace platform;

namespace {

struct Tree {
  int folders;
  int filesPerFolder;
  bool nested;
};

void MakeTree(const std::string& root, const Tree& tree) {
  ::CreateDirectoryA(root.c_str(), nullptr);
  std::string folder = root;
  for (int number = 0; number < tree.folders; ++number) {
    if (!tree.nested || number % kBranchDepth == 0) folder = root;
    folder += "\\folder" + std::to_string(number);
    ::CreateDirectoryA(folder.c_str(), nullptr);
    for (int file = 0; file < tree.filesPerFolder; ++file) MakeFile(folder + "\\~file" + std::to_string(file) + ".tmp");
  }
}

void RemoveByCommand(const std::string& folder) {
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  std::string command = "cmd /c rd /s /q \"" + folder + "\"";
  if (!::CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) return;
  ::WaitForSingleObject(process.hProcess, INFINITE);
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
}

bool IsEmpty(const std::string& folder) {
  WIN32_FIND_DATAA found;
  const HANDLE find = ::FindFirstFileA((folder + "\\*").c_str(), &found);
  if (find == INVALID_HANDLE_VALUE) return true;
  int entries = 1;
  while (::FindNextFileA(find, &found)) ++entries;
  ::FindClose(find);
  return entries == 2;
}

template <class Work>
double OnATree(const std::string& root, const Tree& tree, Work work) {
  MakeTree(root, tree);
  const double milliseconds = Milliseconds(work);
  if (!IsEmpty(root)) {
    std::fprintf(stderr, "%s is not empty after the work\n", root.c_str());
    std::exit(1);
  }
  return milliseconds;
}

double Product(const Tree& tree) {
  return OnATree("C:\\work\\bench", tree, [] { ClearFolderContents(FullPath(L"C:\\work\\bench"), false, true); });
}

double Baseline(const Tree& tree, const std::string& which) {
  if (which == "loop") return OnATree("C:\\work\\bare", tree, [] { BareEmpty("C:\\work\\bare"); });
  if (which == "rd") return OnATree("C:\\work\\rd", tree, [] { RemoveByCommand("C:\\work\\rd"); });
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 6) return 2;
  const Tree tree{std::atoi(arguments[1]), std::atoi(arguments[2]), std::strcmp(arguments[3], "nested") == 0};
  RunPairs(
      std::atoi(arguments[4]), [&] { return Product(tree); }, [&] { return Baseline(tree, arguments[5]); });
  return 0;
}
