#include "cleaners/cache_entry_rule.h"

#include <gtest/gtest.h>

using namespace cleaners;

TEST(IsRemovedByCacheWalk, SparesTheHistoryAlone) {
  const struct {
    const char* url;
    bool removed;
  } rows[] = {
      {"http://www.example.com/", true},
      {"https://www.example.com/picture.gif", true},
      {"ftp://ftp.example.com/file", true},
      {"Visited: user@http://www.example.com/", false},
      {"Visited:", false},
      {"visited: user@about:Home", false},
      {"VISITED:x", false},
      {"vIsItEd:user", false},
      // All eight characters count.
      {"Visited", true},
      {"Visited user", true},
      {"Visited;user", true},
      {" Visited: user", true},
      {"Visits: user", true},
      {"http://site/Visited:", true},
      {"\xD6isited: user", true},
      // Eight characters never equal the seven of "COOKIE:".
      {"Cookie:user@site/", true},
      {"cookie:user@site/", true},
      {"COOKIE:user@site/", true},
      {"Cookie: user", true},
      // Too short to be cut, so that the comparison holds.
      {"Cookie:", false},
      {"COOKIE:", false},
      {"cookie", true},
      {"", true},
      {"a", true},
  };
  for (const auto& row : rows) EXPECT_EQ(IsRemovedByCacheWalk(row.url), row.removed) << '"' << row.url << '"';
}

TEST(IsRemovedByCacheWalk, TakesAnAddressOfAnyLength) {
  EXPECT_TRUE(IsRemovedByCacheWalk("http://" + std::string(2000, 'a')));
  EXPECT_FALSE(IsRemovedByCacheWalk("Visited: user@http://" + std::string(2000, 'a')));
}

TEST(IsCookieUrl, ComparesSevenCharactersCaseIncluded) {
  const struct {
    const char* url;
    bool cookie;
  } rows[] = {
      {"Cookie:user@site/", true},
      {"Cookie:", true},
      {"Cookie: user", true},
      {"cookie:user@site/", false},
      {"COOKIE:user@site/", false},
      {"Cookie", false},
      {"Cookie;user", false},
      {" Cookie:user", false},
      {"Cookies:user", false},
      {"http://a", false},
      {"", false},
  };
  for (const auto& row : rows) EXPECT_EQ(IsCookieUrl(row.url), row.cookie) << '"' << row.url << '"';
}

TEST(CookieName, IsTheLastPartOfTheLocalFileName) {
  const struct {
    const char* localFile;
    const char* name;
  } rows[] = {
      {"C:\\Windows\\Cookies\\user@site[1].txt", "user@site[1].txt"},
      {"C:\\user@site[2].txt", "user@site[2].txt"},
      {"\\\\server\\share\\user@site.txt", "user@site.txt"},
      {"user@site.txt", "user@site.txt"},
      {"C:\\Cookies\\two words.txt", "two words.txt"},
      {"C:\\Cookies/user@site.txt", "Cookies/user@site.txt"},  // "\" alone parts
      {"C:\\Cookies\\", ""},
      {"\\", ""},
      {"", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(CookieName(row.localFile), row.name) << '"' << row.localFile << '"';
}
