#include "cookies/keep_list.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>

#include "platform/wide_system.h"

namespace cookies {
using namespace platform;

namespace {

constexpr std::string_view kFieldEnds = ",\r\n";

std::size_t FindFrom(std::string_view text, std::string_view characters, std::size_t position) {
  return std::min(text.find_first_of(characters, position), text.size());
}

// Where the quote that opens at `position` closes, or npos: on its own line, with nothing but blanks up to the field's end.
std::size_t ClosingQuote(std::string_view text, std::size_t position) {
  const std::size_t closing = FindFrom(text, "\"\r\n", position + 1);
  if (closing == text.size() || text[closing] != '"') return std::string_view::npos;
  const std::size_t next = text.find_first_not_of(' ', closing + 1);
  const bool ends = next == std::string_view::npos || kFieldEnds.find(text[next]) != std::string_view::npos;
  return ends ? closing : std::string_view::npos;
}

// Takes the field at `position` and moves past its end.
std::string NextField(std::string_view text, std::size_t& position) {
  const std::size_t start = text.find_first_not_of(' ', position);
  const bool quoted = start != std::string_view::npos && text[start] == '"';
  const std::size_t closing = quoted ? ClosingQuote(text, start) : std::string_view::npos;
  std::string_view field;
  if (closing != std::string_view::npos) {
    field = text.substr(start + 1, closing - start - 1);
    position = FindFrom(text, kFieldEnds, closing + 1);
  } else {
    const std::size_t end = FindFrom(text, kFieldEnds, position);
    field = text.substr(position, end - position);
    position = end;
  }
  const bool twoCharacters = text.substr(position, 2) == "\r\n";
  position += twoCharacters ? 2 : 1;
  return std::string(field);
}

WideText Normal(WideView name) { return UpperCase(Trim(name)); }

}  // namespace

CookieNames ReadKeepList(std::string_view text) {
  std::string readable(text);
  std::erase(readable, '\0');
  CookieNames names;
  for (std::size_t position = 0; position < readable.size();) names.push_back(Widen(NextField(readable, position)));
  return names;
}

std::string KeepListText(const CookieNames& names) {
  std::string text;
  for (const WideText& name : names) text += Narrow(name) + "\r\n";
  return text;
}

bool IsSameCookie(WideView one, WideView other) { return Normal(one) == Normal(other); }

std::size_t PutKeptFirst(CookieNames& current, const CookieNames& kept) {
  if (kept.empty()) return 0;
  std::multimap<WideText, std::size_t> places;
  for (std::size_t place = 0; place < current.size(); ++place) places.emplace(Normal(current[place]), place);
  CookieNames sorted;
  std::vector<bool> taken(current.size());
  for (const WideText& name : kept) {
    const WideText normal = Normal(name);
    const auto found = places.lower_bound(normal);  // the first of several
    if (found == places.end() || found->first != normal) continue;
    sorted.push_back(current[found->second]);
    taken[found->second] = true;
    places.erase(found);
  }
  const std::size_t count = sorted.size();
  for (std::size_t place = 0; place < current.size(); ++place)
    if (!taken[place]) sorted.push_back(current[place]);
  current = std::move(sorted);
  return count;
}

}  // namespace cookies
