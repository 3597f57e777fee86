// Lays real traces into a Windows profile, the way Windows itself leaves them, and counts what is there.
//
// usage: traces.exe plant | traces.exe count
// Each family of traces is one row of the table at the end; `count` prints a line "family<TAB>number" for each.
#include <windows.h>

#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>

#include <cstdio>
#include <cstring>
#include <string>

namespace {

const char kStreams[] = "Software\\Microsoft\\Windows\\CurrentVersion\\StreamMRU";
const char kFindFiles[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Doc Find Spec MRU";
const char kFindBar[] =
    "Software\\Microsoft\\Internet Explorer\\Explorer Bars\\{C4EE31F3-4768-11D2-BE5C-00A0C9A83DA1}\\FilesNamedMRU";
const char kTypedUrls[] = "Software\\Microsoft\\Internet Explorer\\TypedURLs";
const char kFormEntries[] = "Software\\Microsoft\\Internet Explorer\\IntelliForms\\Storage1";
const char kPasswords[] = "Software\\Microsoft\\Internet Explorer\\IntelliForms\\SPW";
const char kRunHistory[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\RunMRU";
const char kRecentKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\RecentDocs";

void WriteText(const std::string& path, const char* text) {
  const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  DWORD written = 0;
  WriteFile(file, text, static_cast<DWORD>(std::strlen(text)), &written, nullptr);
  CloseHandle(file);
}

void SetValues(const char* path, const char* data, int count) {
  HKEY key = nullptr;
  RegCreateKeyA(HKEY_CURRENT_USER, path, &key);
  for (int i = 0; i < count; ++i) {
    const std::string name(1, static_cast<char>('a' + i));
    RegSetValueExA(key, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(data),
                   static_cast<DWORD>(std::strlen(data) + 1));
  }
  RegCloseKey(key);
}

// The key itself and its values; 0 when the key is gone.
int CountKey(const char* path) {
  HKEY key = nullptr;
  if (RegOpenKeyExA(HKEY_CURRENT_USER, path, 0, KEY_READ, &key) != ERROR_SUCCESS) return 0;
  DWORD values = 0;
  RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &values, nullptr, nullptr, nullptr, nullptr);
  RegCloseKey(key);
  return static_cast<int>(values) + 1;
}

std::string Folder(int identifier) {
  char path[MAX_PATH] = "";
  SHGetSpecialFolderPathA(nullptr, path, identifier, TRUE);
  return path;
}

void PlantRecentDocuments() {
  for (const char* name : {"tax return.txt", "letter to the bank.txt", "diary.txt"}) {
    const std::string path = Folder(CSIDL_PERSONAL) + "\\" + name;
    WriteText(path, "private");
    SHAddToRecentDocs(SHARD_PATHA, path.c_str());
  }
}

// The list alone: Wine's shell leaves the shortcuts when it empties it, Windows' own takes them along.
int CountRecentDocuments() { return CountKey(kRecentKey); }

void PlantRecycleBin() {
  for (const char* name : {"old letter.txt", "old list.txt"}) {
    const std::string path = "C:\\" + std::string(name);
    WriteText(path, "thrown away");
    const std::string doubleNul = path + std::string(1, '\0');
    SHFILEOPSTRUCTA operation{};
    operation.wFunc = FO_DELETE;
    operation.pFrom = doubleNul.c_str();
    operation.fFlags = FOF_ALLOWUNDO | FOF_NOCONFIRMATION | FOF_SILENT;
    SHFileOperationA(&operation);
  }
}

int CountRecycleBin() {
  SHQUERYRBINFO info{};
  info.cbSize = sizeof info;
  return SHQueryRecycleBinA(nullptr, &info) == S_OK ? static_cast<int>(info.i64NumItems) : 0;
}

void PlantFindHistory() {
  SetValues(kFindFiles, "secret*.doc", 12);
  SetValues(kFindBar, "holiday photos", 5);
}

int CountFindHistory() { return CountKey(kFindFiles) + CountKey(kFindBar); }

void PlantClipboard() {
  OpenClipboard(nullptr);
  EmptyClipboard();
  const char text[] = "account number 12345";
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, sizeof text);
  std::memcpy(GlobalLock(memory), text, sizeof text);
  GlobalUnlock(memory);
  SetClipboardData(CF_TEXT, memory);
  CloseClipboard();
}

int CountClipboard() {
  OpenClipboard(nullptr);
  const int formats = CountClipboardFormats();
  CloseClipboard();
  return formats;
}

void PlantStreams() {
  SetValues(kStreams, "C:\\Private", 8);
  SetValues((std::string(kStreams) + "\\0").c_str(), "window place", 3);
}

int CountStreams() { return CountKey(kStreams) + CountKey((std::string(kStreams) + "\\0").c_str()); }

void PlantTypedUrls() { SetValues(kTypedUrls, "http://private.example/", 15); }
int CountTypedUrls() { return CountKey(kTypedUrls); }

void PlantFormEntries() { SetValues(kFormEntries, "name and address", 10); }
int CountFormEntries() { return CountKey(kFormEntries); }

void PlantPasswords() { SetValues(kPasswords, "password", 6); }
int CountPasswords() { return CountKey(kPasswords); }

void PlantRunHistory() { SetValues(kRunHistory, "regedit", 9); }
int CountRunHistory() { return CountKey(kRunHistory); }

// Beside the browser's own ones, which hold its cache together: here as a file that it has left.
std::string HistoryIndex() { return Folder(CSIDL_HISTORY) + "\\index.dat"; }

void PlantIndexFile() { WriteText(HistoryIndex(), "Client UrlCache MMF Ver 5.2 http://private.example/"); }

// 1 while the file holds anything but blanks.
int CountIndexFile() {
  char bytes[64] = "";
  DWORD read = 0;
  const HANDLE file = CreateFileA(HistoryIndex().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  ReadFile(file, bytes, sizeof bytes, &read, nullptr);
  CloseHandle(file);
  return std::string(bytes, read).find_first_not_of(' ') != std::string::npos ? 1 : 0;
}

struct Family {
  const char* key;  // of the item that takes it; tools/run_job.py reads the rows
  const char* name;
  void (*plant)();
  int (*count)();
};

constexpr Family kFamilies[] = {
    {"LocationbarHistory", "typed addresses", &PlantTypedUrls, &CountTypedUrls},
    {"ClearAutoComplete", "form entries", &PlantFormEntries, &CountFormEntries},
    {"ClearAutoCompletePower", "form passwords", &PlantPasswords, &CountPasswords},
    {"ClearLockedIndex", "index files", &PlantIndexFile, &CountIndexFile},
    {"RunHistory", "Run history", &PlantRunHistory, &CountRunHistory},
    {"RecentDocumentList", "recent documents", &PlantRecentDocuments, &CountRecentDocuments},
    {"RecycleBin", "recycle bin", &PlantRecycleBin, &CountRecycleBin},
    {"FindFileFolderHistory", "find history", &PlantFindHistory, &CountFindHistory},
    {"OpenSavedDialoge", "clipboard", &PlantClipboard, &CountClipboard},
    {"EraseRegistryFrame", "registry streams", &PlantStreams, &CountStreams},
};

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) return 2;
  CoInitialize(nullptr);
  const bool plant = std::strcmp(arguments[1], "plant") == 0;
  for (const Family& family : kFamilies) {
    if (plant) family.plant();
    std::printf("%s\t%d\n", family.name, family.count());
  }
  return 0;
}
