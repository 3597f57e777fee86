#include <algorithm>
#include <mutex>

#include "function.h"

namespace {

HANDLE callLog = INVALID_HANDLE_VALUE;
const DWORD started = ::GetTickCount();
std::mutex oneAtATime;  // the program may have several threads

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? c | ' ' : c; });
  return text;
}

}  // namespace

void OpenCallLog(const std::string& path) {
  callLog = ::CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr);
  if (callLog == INVALID_HANDLE_VALUE) throw Refusal{"cannot write " + path};
}

Call::Call(Function& called, std::uint32_t* given) : function_(called), arguments_(given), error_(::GetLastError()) {
  for (std::size_t i = 0; i < called.kinds.size(); ++i) shown_.push_back(ShownArgument(called.kinds[i], given[i]));
}

std::uint64_t Call::Run() {
  Acted acted = Acted::No;
  for (Rule& rule : function_.rules) {
    if (acted == Acted::Instead) break;
    if (rule.act == nullptr || !IsAbout(rule)) continue;
    acted = rule.act(*this, rule);
    if (acted != Acted::No) rules_ += (rules_.empty() ? "" : "; ") + rule.words;
  }
  if (acted != Acted::Instead) {
    if (function_.failing == Failing::Ends) WriteDown("ends");
    MakeReal();
  }
  WriteDown();
  ::SetLastError(error_);
  return result_;
}

bool Call::IsAbout(Rule& rule) const {
  const auto holds = [&rule](const std::string& shown) {
    return shown.front() == '"' && Lower(shown).find(Lower(rule.with)) != std::string::npos;
  };
  if (!rule.with.empty() && std::none_of(shown_.begin(), shown_.end(), holds)) return false;
  const std::lock_guard lock(oneAtATime);
  ++rule.seen;
  return rule.seen >= rule.first && rule.seen <= rule.last;
}

bool Call::Succeeded() const {
  if (function_.failing == Failing::Error) return Result() == ERROR_SUCCESS;
  if (function_.failing == Failing::HResult) return static_cast<std::int32_t>(Result()) >= 0;
  return function_.failing != Failing::Value || Result() != function_.failingValue;
}

void Call::Fail(std::uint32_t error) {
  constexpr std::uint32_t kFailure = 0x80000000, kOfWindows = 0x80070000;
  error_ = error;
  result_ = function_.failingValue;
  if (function_.failing == Failing::Error) result_ = error;
  if (function_.failing == Failing::HResult) result_ = (error & kFailure) != 0 ? error : kOfWindows | error;
}

void Call::Answer(std::uint32_t value, std::uint32_t error) {
  result_ = value;
  error_ = error;
}

void Call::MakeReal() {
  ::SetLastError(error_);
  result_ = StandinCall(function_.real, arguments_, shown_.size());
  error_ = ::GetLastError();
}

void Call::WriteDown(const char* insteadOfResult) const {
  if (!function_.logged) return;
  std::string line = std::to_string(::GetTickCount() - started) + "\t" + function_.name;
  for (std::size_t i = 0; i < shown_.size(); ++i) {
    const bool answered = insteadOfResult == nullptr && (Succeeded() || function_.kinds[i] == 'd');
    const std::string answer = answered ? ShownAnswer(function_.kinds[i], arguments_[i]) : std::string();
    line += "\t" + (answer.empty() ? shown_[i] : answer);
  }
  line += "\t= " + (insteadOfResult != nullptr ? insteadOfResult : std::to_string(Result()));
  line += "\t" + std::to_string(error_) + "\t" + rules_ + "\n";
  const std::lock_guard lock(oneAtATime);
  DWORD written = 0;
  ::WriteFile(callLog, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}
