// The shell's folders where a test wants them. Like late_calls.h for the one source of a test.
#pragma once

#include <cwchar>
#include <map>
#include <string>
#include <vector>

#include "late_calls.h"
#include "platform/system_functions.h"

using namespace platform;

// While one exists; a folder that is not mentioned is where the shell has it.
class ShellFolders {
 public:
  ShellFolders() { Reset(); }
  ShellFolders(const ShellFolders&) = delete;
  ShellFolders& operator=(const ShellFolders&) = delete;
  ~ShellFolders() { Reset(); }

  void Move(int identifier, const std::wstring& path) const { answers_[identifier] = {true, path}; }
  void Move(int identifier, const std::string& path) const {
    wchar_t wide[512] = L"";
    ::MultiByteToWideChar(CP_ACP, 0, path.c_str(), -1, wide, 512);
    Move(identifier, std::wstring(wide));
  }
  void Forget(int identifier) const { answers_[identifier] = {false, L""}; }
  void MakeNoFolderOfADisk(int identifier) const { answers_[identifier] = {true, L""}; }

  // The identifiers that the shell was asked for, in that order.
  const std::vector<int>& Asked() const { return asked_; }

 private:
  struct Answer {
    bool known;
    std::wstring path;
  };

  static void Reset() {
    answers_.clear();
    asked_.clear();
  }

  static const Answer* AnswerTo(int identifier) {
    const auto answer = answers_.find(identifier);
    return answer != answers_.end() ? &answer->second : nullptr;
  }

  static HRESULT WINAPI FindLocation(HWND owner, int identifier, ItemIdList** items) {
    asked_.push_back(identifier);
    const Answer* const answer = AnswerTo(identifier);
    if (answer != nullptr && !answer->known) return E_FAIL;
    // Of a folder that every system has: its path is replaced below.
    return True<decltype(&FindLocation)>("SHGetSpecialFolderLocation")(owner, answer != nullptr ? 0 : identifier, items);
  }

  static BOOL WINAPI FindPath(const ItemIdList* items, LPSTR path) {
    const Answer* const answer = AnswerTo(asked_.back());
    if (answer == nullptr) return True<decltype(&FindPath)>("SHGetPathFromIDListA")(items, path);
    ::WideCharToMultiByte(CP_ACP, 0, answer->path.c_str(), -1, path, 512, nullptr, nullptr);
    return !answer->path.empty();
  }

  static BOOL WINAPI FindPathWide(const ItemIdList* items, LPWSTR path) {
    const Answer* const answer = AnswerTo(asked_.back());
    if (answer == nullptr) return True<decltype(&FindPathWide)>("SHGetPathFromIDListW")(items, path);
    std::wcscpy(path, answer->path.c_str());
    return !answer->path.empty();
  }

  template <class Function>
  static Function True(const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(TrueFunction("shell32.dll", name)));
  }

  static inline std::map<int, Answer> answers_;
  static inline std::vector<int> asked_;
  static inline const bool replaced_ =
      (ReplaceFunction("SHGetSpecialFolderLocation", &FindLocation), ReplaceFunction("SHGetPathFromIDListA", &FindPath),
       ReplaceFunction("SHGetPathFromIDListW", &FindPathWide), true);
};
