#include <algorithm>

#include "standin.h"

namespace {

HANDLE callLog = INVALID_HANDLE_VALUE;
const DWORD started = ::GetTickCount();
unsigned calls = 0;

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? c | ' ' : c; });
  return text;
}

}  // namespace

void OpenCallLog(const std::string& path) {
  callLog = ::CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr);
}

Call::Call(Function& called, std::uint32_t* given)
    : function_(called), arguments_(given), error_(::GetLastError()), number_(++calls), began_(::GetTickCount() - started) {
  for (std::size_t i = 0; i < called.kinds.size(); ++i) shown_.push_back(ShownArgument(called.kinds[i], given[i]));
}

std::uint64_t Call::Run() {
  Acted acted = Acted::No;
  for (Rule& rule : function_.rules) {
    if (acted == Acted::Instead) break;
    if (rule.act == nullptr || !IsAbout(rule)) continue;
    const std::string before = rules_;
    rules_ += (rules_.empty() ? "" : ",") + rule.number;  // now, for those that never return
    acted = rule.act(*this, rule);
    if (acted == Acted::No) rules_ = before;
  }
  if (acted != Acted::Instead) {
    if (function_.failing == 'x') WriteDown("ends");
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
  ++rule.seen;
  return rule.seen >= rule.first && rule.seen <= rule.last;
}

std::wstring Call::PathOf() const {
  if (arguments_[0] == 0) return {};
  if (function_.name.back() == 'W') return Pointer<wchar_t>(0);
  wchar_t wide[MAX_PATH] = L"";
  ::MultiByteToWideChar(CP_ACP, 0, Pointer<char>(0), -1, wide, MAX_PATH - 1);
  return wide;
}

bool Call::Succeeded() const {
  if (function_.failing == 'e') return Result() == ERROR_SUCCESS;
  if (function_.failing == 'h') return static_cast<std::int32_t>(Result()) >= 0;
  return function_.failing != 'v' || Result() != function_.failingValue;
}

Acted Call::Answer(std::uint32_t value, std::uint32_t error) {
  result_ = value;
  error_ = error;
  return Acted::Instead;
}

void Call::MakeReal() {
  ::SetLastError(error_);
  result_ = StandinCall(function_.real, arguments_, shown_.size());
  error_ = ::GetLastError();
}

void Call::WriteDown(const char* insteadOfResult) const {
  if (!function_.logged) return;
  std::string line = std::to_string(number_) + "\t" + std::to_string(began_) + "\t" +
                     std::to_string(::GetTickCount() - started) + "\t" + function_.name;
  for (std::size_t i = 0; i < shown_.size(); ++i) {
    const bool answered = insteadOfResult == nullptr && (Succeeded() || function_.kinds[i] == 'd');
    const std::string answer = answered ? ShownAnswer(function_.kinds[i], arguments_[i]) : std::string();
    line += "\t" + (answer.empty() ? shown_[i] : answer);
  }
  line += "\t" + (insteadOfResult != nullptr ? insteadOfResult : std::to_string(Result()));
  line += "\t" + std::to_string(error_) + "\t" + rules_ + "\n";
  DWORD written = 0;
  ::WriteFile(callLog, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}
