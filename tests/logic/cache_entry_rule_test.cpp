#include "cleaners/cache_entry_rule.h"

#include <gtest/gtest.h>

using namespace cleaners;
using namespace platform;

TEST(IsDeletedByCacheWalk, SparesTheHistoryAlone) {
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
  for (const auto& row : rows) EXPECT_EQ(IsDeletedByCacheWalk(row.url), row.removed) << '"' << row.url << '"';
}

TEST(IsDeletedByCacheWalk, TakesAnAddressOfAnyLength) {
  EXPECT_TRUE(IsDeletedByCacheWalk("http://" + std::string(2000, 'a')));
  EXPECT_FALSE(IsDeletedByCacheWalk("Visited: user@http://" + std::string(2000, 'a')));
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
    const char16_t* localFile;
    const char16_t* name;
  } rows[] = {
      {u"C:\\Windows\\Cookies\\user@site[1].txt", u"user@site[1].txt"},
      {u"C:\\user@site[2].txt", u"user@site[2].txt"},
      {u"\\\\server\\share\\user@site.txt", u"user@site.txt"},
      {u"user@site.txt", u"user@site.txt"},
      {u"C:\\Cookies\\two words.txt", u"two words.txt"},
      {u"C:\\Cookies/user@site.txt", u"Cookies/user@site.txt"},  // "\" alone parts
      {u"C:\\\u5341\u4E8C\u6708\\user@\u8868[1].txt", u"user@\u8868[1].txt"},
      {u"C:\\Cookies\\", u""},
      {u"\\", u""},
      {u"", u""},
  };
  for (const auto& row : rows) EXPECT_EQ(CookieName(row.localFile), row.name) << testing::PrintToString(row.localFile);
}
