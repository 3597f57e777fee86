// Takes the place of the cleaners' log hook while it lives.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "cleaners/clean_log.h"
#include "platform/wide_system.h"

using namespace cleaners;

struct LogLine {
  std::string text1;
  std::string text2;

  friend bool operator==(const LogLine&, const LogLine&) = default;
  friend std::ostream& operator<<(std::ostream& out, const LogLine& line) {
    return out << '"' << line.text1 << "\", \"" << line.text2 << '"';
  }
};
using LogLines = std::vector<LogLine>;

class LogRecorder {
 public:
  LogRecorder() : before_(LogCleanResult) {
    lines_.clear();
    LogCleanResult = [](WideView text1, WideView text2) { lines_.push_back({Narrow(text1), Narrow(text2)}); };
  }
  LogRecorder(const LogRecorder&) = delete;
  LogRecorder& operator=(const LogRecorder&) = delete;
  ~LogRecorder() { LogCleanResult = before_; }

  const LogLines& Lines() const { return lines_; }

  // The lines with "(stamp)" for a second text that reads as one, so that a test need not know the second it ran in.
  LogLines Stamped() const {
    LogLines lines = lines_;
    for (LogLine& line : lines)
      if (line.text2.find(" @ ") != std::string::npos) line.text2 = "(stamp)";
    return lines;
  }

 private:
  static inline LogLines lines_;
  CleanLog before_;
};
