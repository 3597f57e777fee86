// Times the cleaners of Netscape and Mozilla on a folder of Mozilla's profiles beside bare loops that search and delete the
// same, in one process and in turn.
//
// usage: bench_profiles FOLDERS PAIRS BASELINE
//   BASELINE "loop" (FindFirstFile, DeleteFile, RemoveDirectory) or "none"
// Ten files a folder, eleven folders a branch, each in the one before; the third of them is a cache. What goes besides the
// caches is one file in ten for the typed addresses and one for the mail. Prints a line "product<TAB>baseline" in
// milliseconds for each pair; a figure that is not measured is 0.
#include <cstdlib>
#include <cstring>
#include <vector>

#include "cleaners/NetScapeEraser.h"
#include "pairs.h"
#include "platform/special_folder.h"
#include "platform/wide_system.h"

using namespace cleaners;
using namespace platform;

namespace {

constexpr int kCacheLevel = 2;
constexpr int kFilesPerFolder = 10;
constexpr int kKeptPerFolder = 8;
const char* const kTypedUrlNames = "FIELDSCHEMA.TBL SCHEMACONCAT.TBL SCHEMAVALUE.TBL FIELDSCHEMA.TBL URLFIELDSCHEMA.TBL";
const char* const kMailNames = "TRASH TRASH.MSF";

std::string Root() {
  return Narrow((FindSpecialFolder(kProfileFolder) / Wide<"Application Data\\Mozilla\\Profiles">()).Shown());
}

void MakeProfiles(int folders) {
  std::string folder;
  for (int number = 0; number < folders; ++number) {
    if (number % kBranchDepth == 0) folder = Root();
    folder += number % kBranchDepth == kCacheLevel ? "\\Cache" : "\\p" + std::to_string(number);
    ::CreateDirectoryA(folder.c_str(), nullptr);
    for (int file = 0; file < kKeptPerFolder; ++file) MakeFile(folder + "\\0" + std::to_string(file) + "A7F3.d01");
    MakeFile(folder + "\\SchemaValue.tbl");
    MakeFile(folder + "\\Trash");
  }
}

const auto nothing = [](const std::string&, const char*) {};

void BareFiles(const char* names) {
  std::vector<std::string> paths;
  Walk(
      Root(),
      [&](const std::string& path, char* name) {
        if (std::strstr(names, ::strupr(name)) != nullptr) paths.push_back(path);
      },
      nothing);
  for (const std::string& path : paths) ::DeleteFileA(path.c_str());
}

void BareCaches() {
  std::vector<std::string> paths;
  Walk(Root(), nothing, [&](const std::string& path, const char* name) {
    if (::stricmp(name, "cache") == 0) paths.push_back(path);
  });
  for (const std::string& cache : paths) BareEmpty(cache);
}

int FilesLeft() {
  int files = 0;
  Walk(
      Root(), [&](const std::string&, const char*) { ++files; }, nothing);
  return files;
}

template <class Work>
double OnProfiles(int folders, Work work) {
  MakeProfiles(folders);
  const double milliseconds = Milliseconds(work);
  const int outsideCaches = folders / kBranchDepth * kCacheLevel + std::min(folders % kBranchDepth, kCacheLevel);
  if (FilesLeft() != outsideCaches * kKeptPerFolder) {
    std::fprintf(stderr, "%d files are left, and not %d\n", FilesLeft(), outsideCaches * kKeptPerFolder);
    std::exit(1);
  }
  BareEmpty(Root());  // what is left is cleared away by nobody else
  return milliseconds;
}

void CleanBare() {
  BareFiles(kTypedUrlNames);
  BareFiles(kMailNames);
  BareCaches();
}

void CleanByProduct() {
  NSTypedUrl();
  CleanNetscapeMail();
  CleanNescapeCache();
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 4) return 2;
  const int folders = std::atoi(arguments[1]);
  const bool bare = std::strcmp(arguments[3], "loop") == 0;
  CleanByProduct();  // loads the shell
  RunPairs(
      std::atoi(arguments[2]), [&] { return OnProfiles(folders, &CleanByProduct); },
      [&] { return bare ? OnProfiles(folders, &CleanBare) : 0; });
  return 0;
}
