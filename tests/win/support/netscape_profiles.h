// Profiles of Netscape and Mozilla as a test lays them out, and what each cleaner takes of them.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "cleaners/NetScapeEraser.h"

#include "scratch_folder.h"

using namespace cleaners;
using namespace platform;

using Names = std::vector<std::string>;

struct TestedCleaner {
  const char* name;
  const char* item;
  void (*clean)();
  Names ofRegistered;  // what goes of a profile that the registry names
  Names ofMozilla;     // what goes below the folder of Mozilla's profiles
};

inline const std::vector<TestedCleaner> kCleaners = {
    {"NSTypedUrl",
     "NTypedHistory",
     &NSTypedUrl,
     {"FieldSchema.tbl", "SchemaConcat.tbl", "SchemaValue.tbl", "URLFieldSchema.tbl"},
     {"joe\\abc.slt\\FieldSchema.tbl", "joe\\abc.slt\\schemaconcat.TBL", "joe\\abc.slt\\Value.tbl",
      "joe\\abc.slt\\a\\b\\c\\URLFieldSchema.tbl"}},
    {"CleanNetscapeMail",
     "NClearMailHistry",
     &CleanNetscapeMail,
     {"mail\\trash", "mail\\trash.nsm"},
     {"trash", "joe\\abc.slt\\Mail\\pop.example\\Trash", "joe\\abc.slt\\Mail\\pop.example\\Trash.msf",
      "joe\\abc.slt\\Mail\\pop.example\\ash"}},
    {"CleanNescapeCache",
     "NCache",
     &CleanNescapeCache,
     {"cache\\0A\\M0A1.gif", "cache\\0A\\deep\\deeper\\M0A2.gif", "cache\\fat.db"},
     {"Cache\\x", "joe\\abc.slt\\Cache\\_CACHE_001_", "joe\\abc.slt\\Cache\\Cache\\1A", "joe\\abc.slt\\a\\b\\c\\CACHE\\2B"}},
};

// What stays, whichever cleaner runs.
inline const Names kKeptOfRegistered = {"bookmark.htm",      "prefs.js",
                                        "cookies.txt",       "netscape.hst",
                                        "Value.tbl",         "trash",
                                        "cache2\\x",         "mail\\Inbox",
                                        "mail\\trash.snm",   "mail\\Trash2",
                                        "deep\\cache\\x",    "deep\\FieldSchema.tbl",
                                        "deep\\mail\\trash", "URLFieldSchema.tbl.bak"};
inline const Names kKeptOfMozilla = {"joe\\abc.slt\\bookmarks.html",
                                     "joe\\abc.slt\\prefs.js",
                                     "joe\\abc.slt\\history.dat",
                                     "joe\\abc.slt\\Cache2\\x",
                                     "joe\\abc.slt\\my cache\\x",
                                     "joe\\abc.slt\\trash folder\\x",
                                     "joe\\abc.slt\\Mail\\pop.example\\Inbox",
                                     "joe\\abc.slt\\Mail\\pop.example\\Inbox.msf",
                                     "joe\\abc.slt\\Mail\\pop.example\\Trash2",
                                     "joe\\abc.slt\\FieldSchema.tbl.bak",
                                     "joe\\abc.slt\\a\\cache"};

inline Names AllOf(const Names& kept, Names TestedCleaner::*taken, const TestedCleaner* butOf = nullptr) {
  Names all = kept;
  for (const TestedCleaner& cleaner : kCleaners)
    if (&cleaner != butOf) all.insert(all.end(), (cleaner.*taken).begin(), (cleaner.*taken).end());
  std::sort(all.begin(), all.end());
  return all;
}

inline void LayOutRegistered(const std::string& profile) {
  for (const std::string& name : AllOf(kKeptOfRegistered, &TestedCleaner::ofRegistered)) PutFile(profile + "\\" + name);
}

inline void LayOutMozilla(const std::string& root) {
  for (const std::string& name : AllOf(kKeptOfMozilla, &TestedCleaner::ofMozilla)) PutFile(root + "\\" + name);
}

// What a cleaner leaves of each.
inline Names RegisteredBut(const TestedCleaner& cleaner) {
  return AllOf(kKeptOfRegistered, &TestedCleaner::ofRegistered, &cleaner);
}
inline Names MozillaBut(const TestedCleaner& cleaner) { return AllOf(kKeptOfMozilla, &TestedCleaner::ofMozilla, &cleaner); }

inline Names With(const std::string& name, Names names) {
  names.insert(std::upper_bound(names.begin(), names.end(), name), name);
  return names;
}

inline Names FilesBelow(const std::string& folder) {
  Names names = NamesBelow(folder);
  std::erase_if(names, [&](const std::string& name) {
    return (::GetFileAttributesA((folder + "\\" + name).c_str()) & FILE_ATTRIBUTE_DIRECTORY) != 0;
  });
  std::sort(names.begin(), names.end());
  return names;
}

// Everything that would go if a missing folder were read as the current one or as the root of its drive.
inline const char* const kCanaryPlaces[] = {"C:\\", "C:\\test\\current\\"};
inline const char* const kCanaries[] = {"FieldSchema.tbl",
                                        "trash",
                                        "mail\\trash",
                                        "cache\\x",
                                        "x",
                                        "folder\\x",
                                        "Mozilla\\Profiles\\trash",
                                        "Application Data\\Mozilla\\Profiles\\Value.tbl",
                                        "Application Data\\Mozilla\\Profiles\\Cache\\x",
                                        "profile\\FieldSchema.tbl",
                                        "profile\\mail\\trash",
                                        "profile\\cache\\x",
                                        "Users\\joe\\FieldSchema.tbl",
                                        "Users\\joe\\cache\\x"};

inline Names MissingCanaries() {
  Names missing;
  for (const std::string place : kCanaryPlaces)
    for (const char* name : kCanaries)
      if (!IsThere(place + name)) missing.push_back(place + name);
  return missing;
}

inline void PutCanaries() {
  for (const std::string place : kCanaryPlaces)
    for (const char* name : kCanaries) PutFile(place + name);
}
