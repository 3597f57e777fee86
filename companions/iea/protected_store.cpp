#include "protected_store.h"

#include <optional>
#include <string>
#include <vector>

#include "iea_rules.h"
#include "platform/com_interface.h"
#include "platform/system_functions.h"

#include <pstore.h>

namespace iea {
using namespace platform;

namespace {

constexpr GUID kAutoComplete = {0xe161255a, 0x37c3, 0x11d2, {0xbc, 0xaa, 0x00, 0xc0, 0x4f, 0xd9, 0x29, 0xdb}};

struct TaskTextPolicy {
  using Value = wchar_t*;
  static Value Invalid() { return nullptr; }
  static void Close(Value value) { late::CoTaskMemFree(value); }
};
using UniqueTaskText = UniqueHandle<TaskTextPolicy>;

// Some systems make the store's objects through COM.
class ComApartment {
 public:
  ComApartment() : entered_(SUCCEEDED(late::CoInitialize(nullptr))) {}
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;
  ~ComApartment() {
    if (entered_) late::CoUninitialize();
  }

 private:
  bool entered_;
};

// A system that has the library and no store in it tells so, some only when the store is used.
bool IsNoStore(HRESULT answer) { return answer == E_NOTIMPL; }

// The two lists are read to their end before anything is deleted: one that shrinks while it is read skips entries. A list
// ends where it gives no element. No answer to that is documented, so any will do, S_OK among them.

// Empty without a value when the store does not hand out its list.
std::optional<std::vector<GUID>> Subtypes(IPStore& store) {
  IEnumPStoreTypes* opened = nullptr;
  const HRESULT answer = store.EnumSubtypes(PST_KEY_CURRENT_USER, &kAutoComplete, 0, &opened);
  const UniqueInterface<IEnumPStoreTypes> list(opened);
  std::vector<GUID> found;
  if (answer == PST_E_TYPE_NO_EXISTS || IsNoStore(answer)) return found;
  if (FAILED(answer) || !list) return {};
  for (;;) {
    GUID subtype{};
    DWORD fetched = 0;
    if (list.get()->Next(1, &subtype, &fetched) != S_OK || fetched == 0) return found;
    found.push_back(subtype);
  }
}

// Empty without a value when the store does not hand out its list.
std::optional<std::vector<std::wstring>> ItemNames(IPStore& store, const GUID& subtype) {
  IEnumPStoreItems* opened = nullptr;
  const HRESULT answer = store.EnumItems(PST_KEY_CURRENT_USER, &kAutoComplete, &subtype, 0, &opened);
  const UniqueInterface<IEnumPStoreItems> list(opened);
  if (FAILED(answer) || !list) return {};
  std::vector<std::wstring> found;
  for (;;) {
    wchar_t* given = nullptr;
    DWORD fetched = 0;
    const bool more = list.get()->Next(1, &given, &fetched) == S_OK && fetched != 0;
    const UniqueTaskText name(given);
    if (!more || !name) return found;
    found.emplace_back(name.get());
  }
}

bool DeleteEntry(IPStore& store, const GUID& subtype, const std::wstring& name) {
  PST_PROMPTINFO silent = {sizeof silent, PST_PF_NEVER_SHOW, nullptr, L""};
  const HRESULT answer = store.DeleteItem(PST_KEY_CURRENT_USER, &kAutoComplete, &subtype, name.c_str(), &silent, 0);
  return SUCCEEDED(answer) || answer == PST_E_ITEM_NO_EXISTS;
}

bool ClearSubtype(IPStore& store, const GUID& subtype) {
  const auto names = ItemNames(store, subtype);
  if (!names) return false;
  bool cleared = true;
  for (const std::wstring& name : *names)
    if (IsFormEntry(name) && !DeleteEntry(store, subtype, name)) cleared = false;
  return cleared;
}

}  // namespace

bool ClearProtectedStore() {
  if (!late::PStoreCreateInstance) return true;
  const ComApartment apartment;
  void* opened = nullptr;
  const HRESULT answer = late::PStoreCreateInstance(&opened, nullptr, nullptr, 0);
  const UniqueInterface<IPStore> store(static_cast<IPStore*>(opened));
  if (IsNoStore(answer)) return true;
  if (FAILED(answer) || !store) return false;
  const auto subtypes = Subtypes(*store.get());
  if (!subtypes) return false;
  bool cleared = true;
  for (const GUID& subtype : *subtypes)
    if (!ClearSubtype(*store.get(), subtype)) cleared = false;
  return cleared;
}

}  // namespace iea
