#include "cleaners/cache_entry_rule.h"

#include "platform/text_value.h"

namespace cleaners {
using namespace platform;

bool IsDeletedByCacheWalk(std::string_view url) {
  const std::string start = UpperCase(url.substr(0, 8));
  return start != "VISITED:" && start != "COOKIE:";
}

bool IsCookieUrl(std::string_view url) { return url.substr(0, 7) == "Cookie:"; }

WideText CookieName(WideView localFileName) { return WideText(localFileName.substr(localFileName.rfind('\\') + 1)); }

}  // namespace cleaners
