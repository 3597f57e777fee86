// Fills the real URL cache of the current user as the browser does, empties it, and counts what is in it.
//
//   plant_cache.exe content 500 cookie 200 visited 100    makes so many entries of each kind
//   plant_cache.exe cookie user@site                      makes the one of that name
//   plant_cache.exe empty                                 removes every entry
//   plant_cache.exe count                                 prints "kind<TAB>number" for each kind
//
// A cookie's file has the cookie's name with "[1].txt" after it.
#include "../../win/support/cache_entries.h"

#include <cstdio>
#include <cstdlib>
#include <map>

namespace {

constexpr std::size_t kFileBytes = 200;

const std::map<std::string, EntryKind> kKinds = {
    {"content", EntryKind::Content}, {"cookie", EntryKind::Cookie}, {"visited", EntryKind::Visited}};

// The cache itself may call the file anything; the browser names it after the cookie.
bool PlantCookie(const std::string& name) {
  char path[MAX_PATH] = "";
  if (!cache::Create(CookieUrl(name).c_str(), kFileBytes, "txt", path, 0)) return false;
  const std::string made = path;
  const std::string named = made.substr(0, made.rfind('\\') + 1) + name + "[1].txt";
  ::DeleteFileA(made.c_str());
  WriteWhole(named, std::string(kFileBytes, 'x'));
  return CommitEntry(CookieUrl(name), named, NORMAL_CACHE_ENTRY | COOKIE_CACHE_ENTRY);
}

bool Plant(EntryKind kind, const std::string& name) {
  if (kind == EntryKind::Cookie) return PlantCookie(name);
  if (kind == EntryKind::Visited) return MakeVisited("http://" + name + "/");
  return !MakeContent("http://" + name + "/", kFileBytes).empty();
}

bool PlantAll(EntryKind kind, const std::string& what) {
  const int count = std::atoi(what.c_str());
  if (count == 0) return Plant(kind, what);
  bool planted = true;
  for (int number = 1; number <= count; ++number) planted = Plant(kind, "user@site" + std::to_string(number)) && planted;
  return planted;
}

bool Do(const std::string& command) {
  if (command == "empty") EmptyTheCache();
  if (command == "count")
    for (const auto& [name, kind] : kKinds) std::printf("%s\t%d\n", name.c_str(), CountEntries(kind));
  return command == "empty" || command == "count";
}

}  // namespace

int main(int count, char** arguments) {
  bool done = count > 1;
  for (int at = 1; at < count && done; ++at) {
    const auto kind = kKinds.find(arguments[at]);
    if (kind == kKinds.end())
      done = Do(arguments[at]);
    else
      done = ++at < count && PlantAll(kind->second, arguments[at]);
  }
  return done ? 0 : 1;
}
