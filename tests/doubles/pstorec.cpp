// A protected store for tests: what Wine has is a stub. As pstorec.dll of a private Windows it keeps real entries in files
// of C:\double, all of them lines of UTF-16:
//
//   store.txt   "{type} {subtype}" for each subtype, "{type} {subtype} name" for each item; written anew by each deletion
//   orders.txt  what it is to do wrong, one order a line (see Ordered() below)
//   calls.txt   what it was called for, in order
//   left.txt    written when its process ends: "objects 0, texts 0" when every object was released and every text freed
//
// It is stricter than the original: a caller that is not in a COM apartment, names another key than the current user's,
// passes flags or does not forbid every prompt is refused. Its lists are not copies: an item that is deleted while a list
// is read moves the others up.
#include <algorithm>
#include <cstdio>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "../win/support/malloc_spy.h"

#include <ole2.h>
#include <pstore.h>

namespace {

struct Subtype {
  GUID type;
  GUID subtype;
  std::vector<std::wstring> names;
};

std::vector<Subtype> store;
std::vector<std::wstring> orders;
std::multiset<std::wstring> given;
MallocSpy* spy = nullptr;
int objects = 0;

// Files

std::wstring Read(const char* path) {
  std::wstring text;
  FILE* const file = std::fopen(path, "rb");
  if (file == nullptr) return text;
  for (wchar_t c = L'\0'; std::fread(&c, sizeof c, 1, file) == 1;) text += c;
  std::fclose(file);
  return text;
}

std::vector<std::wstring> ReadLines(const char* path) {
  std::vector<std::wstring> lines(1);
  for (const wchar_t c : Read(path)) {
    if (c == L'\n')
      lines.emplace_back();
    else
      lines.back() += c;
  }
  lines.pop_back();
  return lines;
}

void Write(const char* path, const char* mode, const std::wstring& text) {
  FILE* const file = std::fopen(path, mode);
  if (file == nullptr) return;
  std::fwrite(text.data(), sizeof(wchar_t), text.size(), file);
  std::fclose(file);
}

void Note(const std::wstring& call) { Write("C:\\double\\calls.txt", "ab", call + L'\n'); }

constexpr std::size_t kGuidLength = 38;

GUID GuidOf(const std::wstring& text) {
  GUID guid{};
  CLSIDFromString(text.c_str(), &guid);
  return guid;
}

std::wstring TextOf(const GUID& guid) {
  wchar_t text[kGuidLength + 1] = L"";
  StringFromGUID2(guid, text, kGuidLength + 1);
  return text;
}

Subtype* Find(const GUID& type, const GUID& subtype) {
  const auto found = std::find_if(store.begin(), store.end(),
                                  [&](const Subtype& one) { return one.type == type && one.subtype == subtype; });
  return found == store.end() ? nullptr : &*found;
}

void Load() {
  orders = ReadLines("C:\\double\\orders.txt");
  store.clear();
  for (const std::wstring& line : ReadLines("C:\\double\\store.txt")) {
    const GUID type = GuidOf(line.substr(0, kGuidLength));
    const GUID subtype = GuidOf(line.substr(kGuidLength + 1, kGuidLength));
    if (Find(type, subtype) == nullptr) store.push_back({type, subtype, {}});
    if (line.size() > 2 * kGuidLength + 1) Find(type, subtype)->names.push_back(line.substr(2 * kGuidLength + 2));
  }
}

void Save() {
  std::wstring all;
  for (const Subtype& one : store) {
    const std::wstring head = TextOf(one.type) + L' ' + TextOf(one.subtype);
    all += head + L'\n';
    for (const std::wstring& name : one.names) all += head + L' ' + name + L'\n';
  }
  Write("C:\\double\\store.txt", "wb", all);
}

// "create", "subtypes", "items {subtype}", "delete name": that call fails.
// "end fails", "endless": how lists end, instead of with S_FALSE.
bool Ordered(const std::wstring& order) { return std::find(orders.begin(), orders.end(), order) != orders.end(); }

HRESULT AtTheEnd() {
  if (Ordered(L"endless")) return S_OK;
  return Ordered(L"end fails") ? HRESULT_FROM_WIN32(ERROR_NO_MORE_ITEMS) : S_FALSE;
}

// How many of the texts that were given to the caller it has not freed.
std::size_t TextsLeft() {
  if (spy != nullptr)
    for (const std::wstring& text : spy->FreedTexts())
      if (const auto found = given.find(text); found != given.end()) given.erase(found);
  return given.size();
}

// Objects

template <class Interface>
class Counted : public Interface {
 public:
  Counted() { ++objects; }
  HRESULT WINAPI QueryInterface(REFIID, void** object) override {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  ULONG WINAPI AddRef() override { return ++references_; }
  ULONG WINAPI Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  virtual ~Counted() { --objects; }

 private:
  ULONG references_ = 1;
};

template <class Interface, class Element>
class List : public Counted<Interface> {
 public:
  HRESULT WINAPI Next(DWORD wished, Element* given, DWORD* fetched) override {
    *fetched = 0;
    while (*fetched < wished && Give(at_, given[*fetched])) {
      ++at_;
      ++*fetched;
    }
    return *fetched == wished ? S_OK : AtTheEnd();
  }
  HRESULT WINAPI Skip(DWORD count) override {
    at_ += count;
    return S_OK;
  }
  HRESULT WINAPI Reset() override {
    at_ = 0;
    return S_OK;
  }
  HRESULT WINAPI Clone(Interface**) override { return E_NOTIMPL; }

 private:
  virtual bool Give(std::size_t at, Element& element) = 0;
  std::size_t at_ = 0;
};

class SubtypeList : public List<IEnumPStoreTypes, GUID> {
 public:
  explicit SubtypeList(const GUID& type) : type_(type) {}

 private:
  bool Give(std::size_t at, GUID& element) override {
    for (const Subtype& one : store) {
      if (one.type != type_ || at-- > 0) continue;
      element = one.subtype;
      return true;
    }
    return false;
  }
  GUID type_;
};

class ItemList : public List<IEnumPStoreItems, wchar_t*> {
 public:
  ItemList(const GUID& type, const GUID& subtype) : type_(type), subtype_(subtype) {}

 private:
  bool Give(std::size_t at, wchar_t*& element) override {
    const Subtype* const list = Find(type_, subtype_);
    if (list == nullptr || at >= list->names.size()) return false;
    const std::size_t bytes = (list->names[at].size() + 1) * sizeof(wchar_t);
    element = static_cast<wchar_t*>(CoTaskMemAlloc(bytes));
    std::copy_n(list->names[at].c_str(), list->names[at].size() + 1, element);
    given.insert(list->names[at]);
    return true;
  }
  GUID type_, subtype_;
};

bool InApartment() {
  const HRESULT entered = CoInitialize(nullptr);
  if (SUCCEEDED(entered)) CoUninitialize();
  return entered == S_FALSE;
}

bool IsSilent(const PST_PROMPTINFO* prompt) {
  return prompt != nullptr && prompt->cbSize == sizeof *prompt && prompt->dwPromptFlags == PST_PF_NEVER_SHOW &&
         prompt->hwndApp == nullptr;
}

HRESULT Refuse(const wchar_t* call) {
  Note(std::wstring(L"refused ") + call);
  return E_ACCESSDENIED;
}

class Store : public Counted<IPStore> {
 public:
  HRESULT WINAPI EnumSubtypes(PST_KEY key, const GUID* type, DWORD flags, IEnumPStoreTypes** list) override {
    *list = nullptr;
    if (key != PST_KEY_CURRENT_USER || flags != 0) return Refuse(L"EnumSubtypes");
    Note(L"EnumSubtypes " + TextOf(*type));
    if (Ordered(L"subtypes")) return PST_E_STORAGE_ERROR;
    if (std::none_of(store.begin(), store.end(), [&](const Subtype& one) { return one.type == *type; }))
      return PST_E_TYPE_NO_EXISTS;
    *list = new SubtypeList(*type);
    return S_OK;
  }
  HRESULT WINAPI EnumItems(PST_KEY key, const GUID* type, const GUID* subtype, DWORD flags,
                           IEnumPStoreItems** list) override {
    *list = nullptr;
    if (key != PST_KEY_CURRENT_USER || flags != 0) return Refuse(L"EnumItems");
    Note(L"EnumItems " + TextOf(*type) + L' ' + TextOf(*subtype));
    if (Ordered(L"items " + TextOf(*subtype))) return PST_E_STORAGE_ERROR;
    *list = new ItemList(*type, *subtype);
    return S_OK;
  }
  HRESULT WINAPI DeleteItem(PST_KEY key, const GUID* type, const GUID* subtype, LPCWSTR name, PPST_PROMPTINFO prompt,
                            DWORD flags) override {
    if (key != PST_KEY_CURRENT_USER || flags != 0 || !IsSilent(prompt)) return Refuse(L"DeleteItem");
    Note(std::wstring(L"DeleteItem ") + name);
    if (Ordered(std::wstring(L"delete ") + name)) return PST_E_FAIL;
    Subtype* const list = Find(*type, *subtype);
    if (list == nullptr || std::erase(list->names, name) == 0) return PST_E_ITEM_NO_EXISTS;
    Save();
    return S_OK;
  }

  // No business of the companion.
  HRESULT WINAPI GetInfo(PPST_PROVIDERINFO*) override { return Refuse(L"GetInfo"); }
  HRESULT WINAPI GetProvParam(DWORD, DWORD*, BYTE**, DWORD) override { return Refuse(L"GetProvParam"); }
  HRESULT WINAPI SetProvParam(DWORD, DWORD, BYTE*, DWORD) override { return Refuse(L"SetProvParam"); }
  HRESULT WINAPI CreateType(PST_KEY, const GUID*, PPST_TYPEINFO, DWORD) override { return Refuse(L"CreateType"); }
  HRESULT WINAPI GetTypeInfo(PST_KEY, const GUID*, PPST_TYPEINFO*, DWORD) override { return Refuse(L"GetTypeInfo"); }
  HRESULT WINAPI DeleteType(PST_KEY, const GUID*, DWORD) override { return Refuse(L"DeleteType"); }
  HRESULT WINAPI CreateSubtype(PST_KEY, const GUID*, const GUID*, PPST_TYPEINFO, PPST_ACCESSRULESET, DWORD) override {
    return Refuse(L"CreateSubtype");
  }
  HRESULT WINAPI GetSubtypeInfo(PST_KEY, const GUID*, const GUID*, PPST_TYPEINFO*, DWORD) override {
    return Refuse(L"GetSubtypeInfo");
  }
  HRESULT WINAPI DeleteSubtype(PST_KEY, const GUID*, const GUID*, DWORD) override { return Refuse(L"DeleteSubtype"); }
  HRESULT WINAPI ReadAccessRuleset(PST_KEY, const GUID*, const GUID*, PPST_ACCESSRULESET*, DWORD) override {
    return Refuse(L"ReadAccessRuleset");
  }
  HRESULT WINAPI WriteAccessRuleset(PST_KEY, const GUID*, const GUID*, PPST_ACCESSRULESET, DWORD) override {
    return Refuse(L"WriteAccessRuleset");
  }
  HRESULT WINAPI EnumTypes(PST_KEY, DWORD, IEnumPStoreTypes**) override { return Refuse(L"EnumTypes"); }
  HRESULT WINAPI ReadItem(PST_KEY, const GUID*, const GUID*, LPCWSTR, DWORD*, BYTE**, PPST_PROMPTINFO, DWORD) override {
    return Refuse(L"ReadItem");
  }
  HRESULT WINAPI WriteItem(PST_KEY, const GUID*, const GUID*, LPCWSTR, DWORD, BYTE*, PPST_PROMPTINFO, DWORD,
                           DWORD) override {
    return Refuse(L"WriteItem");
  }
  HRESULT WINAPI OpenItem(PST_KEY, const GUID*, const GUID*, LPCWSTR, PST_ACCESSMODE, PPST_PROMPTINFO, DWORD) override {
    return Refuse(L"OpenItem");
  }
  HRESULT WINAPI CloseItem(PST_KEY, const GUID*, const GUID*, LPCWSTR, DWORD) override { return Refuse(L"CloseItem"); }

 private:
  ~Store() override {
    if (!InApartment()) Refuse(L"Release outside the apartment");
  }
};

}  // namespace

extern "C" __declspec(dllexport) HRESULT WINAPI
    PStoreCreateInstance(IPStore** provider, PST_PROVIDERID* id, void* reserved, DWORD flags) {
  *provider = nullptr;
  if (id != nullptr || reserved != nullptr || flags != 0 || !InApartment()) return Refuse(L"PStoreCreateInstance");
  Load();
  Note(L"PStoreCreateInstance");
  // While this file is there the process waits, so that a test can look at it.
  while (GetFileAttributesA("C:\\double\\hold") != INVALID_FILE_ATTRIBUTES) Sleep(10);
  if (Ordered(L"create")) return PST_E_SERVICE_UNAVAILABLE;
  spy = new MallocSpy;
  *provider = new Store;
  return S_OK;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
  if (reason == DLL_PROCESS_DETACH)
    Write("C:\\double\\left.txt", "wb",
          L"objects " + std::to_wstring(objects) + L", texts " + std::to_wstring(TextsLeft()) + L'\n');
  return TRUE;
}
