// The URL history store of tests/doubles from the side of a test: what is in it, which calls it got, what it shall get
// wrong, and whether anything of it is still held.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "cleaners/CURLHistory.h"
#include "malloc_spy.h"
#include "platform/handles.h"
#include "platform/runtime_error.h"
#include "platform/win32.h"

// After win32.h, which sets the version macros.
#include "../../doubles/url_history_file.h"

using namespace cleaners;
using namespace platform;

// Where a class tells which library its objects come from.
inline constexpr char kServerKey[] = "Software\\Classes\\CLSID\\{3C374A40-BAE4-11CF-BF7D-00AA006946EE}\\InprocServer32";
inline constexpr char kServerFile[] = "C:\\doubles\\url_history_store.dll";

// Replaces the library of the class while it lives; an empty name leaves the class without one.
class OtherServer {
 public:
  explicit OtherServer(const std::string& file) {
    if (file.empty())
      ::RegDeleteKeyA(HKEY_LOCAL_MACHINE, kServerKey);
    else
      Set(file);
  }
  OtherServer(const OtherServer&) = delete;
  OtherServer& operator=(const OtherServer&) = delete;
  ~OtherServer() { Set(kServerFile); }

 private:
  static void Set(const std::string& file) {
    HKEY opened = nullptr;
    ::RegCreateKeyExA(HKEY_LOCAL_MACHINE, kServerKey, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &opened, nullptr);
    const UniqueKey key(opened);
    ::RegSetValueExA(key.get(), nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(file.c_str()),
                     static_cast<DWORD>(file.size() + 1));
  }
};

class HistoryServer {
 public:
  HistoryServer() { Reset(); }
  HistoryServer(const HistoryServer&) = delete;
  HistoryServer& operator=(const HistoryServer&) = delete;
  ~HistoryServer() { Reset(); }

  void Plant(const std::vector<HistoryEntry>& entries) const { WriteHistory(entries); }
  void Plant(const std::vector<std::wstring>& urls) const {
    std::vector<HistoryEntry> entries;
    for (const std::wstring& url : urls) entries.push_back({0, 0, 0, 0, url, L"title of " + url});
    WriteHistory(entries);
  }

  // The URLs that are in the store, whatever a collection shows.
  std::vector<std::wstring> Urls() const {
    std::vector<std::wstring> urls;
    for (const HistoryEntry& entry : ReadHistory()) urls.push_back(entry.url);
    return urls;
  }

  // What the store gets wrong from now on, in place of what it was told before.
  void Break(const std::vector<std::string>& faults) const {
    std::ofstream file(kFaultsFile, std::ios::binary | std::ios::trunc);
    for (const std::string& fault : faults) file << fault << '\n';
  }

  // Since the last time they were asked for.
  std::vector<std::string> Calls() const {
    std::vector<std::string> lines;
    std::istringstream calls(Function<const char* (*)()>("Calls")());
    for (std::string line; std::getline(calls, line);) lines.push_back(line);
    Function<void (*)()>("ForgetCalls")();
    return lines;
  }

  long LiveObjects() const { return Function<long (*)()>("LiveObjects")(); }
  long OutstandingReferences() const { return Function<long (*)()>("OutstandingReferences")(); }

 private:
  void Reset() const {
    ::DeleteFileA(kHistoryFile);
    ::DeleteFileA(kFaultsFile);
    Function<void (*)()>("ForgetCalls")();
  }

  // The library stays loaded, so that it can be asked before and after COM uses it.
  template <class Pointer>
  static Pointer Function(const char* name) {
    static const HMODULE library = ::LoadLibraryA(kServerFile);
    return reinterpret_cast<Pointer>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
  }
};

// The error that a statement raises; number 0 when it raises none.
template <class Statement>
RuntimeError RaisedError(Statement&& statement) {
  try {
    statement();
  } catch (const RuntimeError& error) {
    return error;
  }
  return {0, ""};
}

// Tests with an empty store and COM. Whatever one of them does, nothing of the store and no text of it is held afterwards,
// and no error is pending.
class HistoryTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { ::CoInitialize(nullptr); }
  static void TearDownTestSuite() { ::CoUninitialize(); }
  void SetUp() override {
    const CURLHistory first;  // what COM and the late binding keep for good is allocated before anything is counted
    spy.emplace();
    ASSERT_TRUE(spy->Registered());
    server.Calls();
    Err.Clear();
  }
  void TearDown() override {
    EXPECT_EQ(server.LiveObjects(), 0);
    EXPECT_EQ(server.OutstandingReferences(), 0);
    EXPECT_EQ(spy->LiveBlocks(), 0u);
    EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description();
  }

  const HistoryServer server;
  std::optional<MallocSpy> spy;
};
