// The keep list's file: whatever it holds, it reads as fields that a list can show, and a list without commas and quotes
// comes back as it was written.
#include <algorithm>
#include <string>

#include "cookies/keep_list.h"
#include "property.h"

using namespace cookies;

namespace {

bool Holds(const std::string& text, const char* characters) { return text.find_first_of(characters) != std::string::npos; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const CookieNames names = ReadKeepList(text);

  std::size_t total = 0;
  for (const std::string& name : names) {
    PROPERTY(!Holds(name, "\r\n") && name.find('\0') == std::string::npos, "a field holds what a list cannot: [%s]",
             name.c_str());
    PROPERTY(text.find(',') != std::string::npos || name.find(',') == std::string::npos, "a comma out of nowhere");
    total += name.size();
  }
  PROPERTY(total <= size, "%zu bytes of names from %zu", total, size);
  const auto fieldEnds = static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return c == ',' || c == '\r' || c == '\n'; }));
  PROPERTY(names.size() <= fieldEnds + 1, "%zu fields", names.size());

  // Nothing that has neither a comma nor a quote changes by being saved and read again.
  if (std::none_of(names.begin(), names.end(), [](const std::string& name) { return Holds(name, ",\""); }))
    PROPERTY(ReadKeepList(KeepListText(names)) == names, "[%s]", text.c_str());

  // One line goes for each kept one at most, and what stays stays in its order.
  const CookieNames left =
      WithoutKept(names, {names.begin(), names.begin() + static_cast<std::ptrdiff_t>(names.size() / 2)});
  PROPERTY(left.size() == names.size() - names.size() / 2, "%zu of %zu", left.size(), names.size());
  PROPERTY(WithoutKept(names, names).empty(), "a cookie is kept beside itself");
  return 0;
}
