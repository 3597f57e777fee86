// The keep list's file: whatever it holds, it reads as fields that a list can show, and a list without commas and quotes
// comes back as it was written.
#include <algorithm>
#include <string>

#include "cookies/keep_list.h"
#include "property.h"
#include "wide_input.h"
#include "wide_system_for_tests.h"

using namespace cookies;
using namespace platform;

namespace {

bool Holds(WideView text, const char16_t* characters) { return text.find_first_of(characters) != WideView::npos; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const OtherSystem system(size % 2 == 0 ? CodePage::kSingleByte : CodePage::kDoubleByte);
  const std::string text(reinterpret_cast<const char*>(data), size);
  const CookieNames names = ReadKeepList(text);

  std::size_t total = 0;
  for (const WideText& name : names) {
    PROPERTY(!Holds(name, u"\r\n") && name.find(u'\0') == WideText::npos, "a field holds what a list cannot: [%s]",
             Readable(name).c_str());
    PROPERTY(text.find(',') != std::string::npos || name.find(u',') == WideText::npos, "a comma out of nowhere");
    total += name.size();
  }
  PROPERTY(total <= size, "%zu bytes of names from %zu", total, size);
  const auto fieldEnds = static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return c == ',' || c == '\r' || c == '\n'; }));
  PROPERTY(names.size() <= fieldEnds + 1, "%zu fields", names.size());

  // Nothing that has neither a comma nor a quote, nor bytes that are no letter, changes by being saved and read again.
  if (std::none_of(names.begin(), names.end(), [](const WideText& name) { return Holds(name, u",\"\xFFFD"); }))
    PROPERTY(ReadKeepList(KeepListText(names)) == names, "[%s]", text.c_str());

  // What is kept and is there comes first, and nothing else; none is lost.
  const CookieNames half(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(names.size() / 2));
  CookieNames sorted = names;
  PROPERTY(PutKeptFirst(sorted, half) == half.size(), "of %zu kept ones", half.size());
  for (std::size_t place = 0; place < half.size(); ++place)
    PROPERTY(IsSameCookie(sorted[place], half[place]), "another one at place %zu", place);
  PROPERTY(sorted.size() == names.size(), "%zu names", names.size());
  CookieNames none;
  PROPERTY(PutKeptFirst(none, names) == 0, "a cookie is found that is gone");
  return 0;
}
