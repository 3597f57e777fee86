// JSON in and out, just enough for the probe: one line per answer, everything beyond ASCII as \u escapes.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace json {

inline std::string quoted(std::wstring_view text) {
  std::string out = "\"";
  for (const wchar_t c : text) {
    if (c == L'"' || c == L'\\') {
      out += '\\';
      out += static_cast<char>(c);
    } else if (c < 0x20 || c > 0x7e) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
      out += escape;
    } else {
      out += static_cast<char>(c);
    }
  }
  return out + '"';
}

class Object {
 public:
  Object& raw(std::string_view name, std::string_view value) {
    m_text += m_text.empty() ? "\"" : ",\"";
    m_text += name;
    m_text += "\":";
    m_text += value;
    return *this;
  }
  Object& number(std::string_view name, long long value) { return raw(name, std::to_string(value)); }
  Object& flag(std::string_view name, bool value) { return raw(name, value ? "true" : "false"); }
  Object& text(std::string_view name, std::wstring_view value) { return raw(name, quoted(value)); }
  std::string done() const { return "{" + m_text + "}"; }

 private:
  std::string m_text;
};

class Array {
 public:
  Array& add(std::string_view value) {
    if (!m_text.empty()) m_text += ',';
    m_text += value;
    return *this;
  }
  std::string done() const { return "[" + m_text + "]"; }

 private:
  std::string m_text;
};

// Splits a command line at blanks. A word that starts with a quote is a JSON string and may hold blanks and line ends.
inline std::vector<std::wstring> words(std::string_view line) {
  std::vector<std::wstring> found;
  size_t i = 0;
  while (i < line.size()) {
    if (line[i] == ' ') {
      ++i;
      continue;
    }
    std::wstring word;
    if (line[i] != '"') {
      while (i < line.size() && line[i] != ' ') word += static_cast<unsigned char>(line[i++]);
    } else {
      for (++i; i < line.size() && line[i] != '"'; ++i) {
        if (line[i] != '\\' || i + 1 == line.size()) {
          word += static_cast<unsigned char>(line[i]);
          continue;
        }
        switch (const char c = line[++i]) {
          case 'n':
            word += L'\n';
            break;
          case 'r':
            word += L'\r';
            break;
          case 't':
            word += L'\t';
            break;
          case 'u':
            word += static_cast<wchar_t>(std::stoul(std::string(line.substr(i + 1, 4)), nullptr, 16));
            i += 4;
            break;
          default:
            word += static_cast<unsigned char>(c);
        }
      }
      ++i;
    }
    found.push_back(word);
  }
  return found;
}

}  // namespace json
