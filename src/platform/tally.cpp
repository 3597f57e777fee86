#include "platform/tally.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "platform/tally_text.h"

namespace platform {

namespace {

struct Mapping {
  std::uint16_t systemError;
  Why why;
};

// The codes are written as numbers: this file is also built where winerror.h is missing.
constexpr Mapping kMappings[] = {
    {2, Why::Gone},          // ERROR_FILE_NOT_FOUND
    {3, Why::Gone},          // ERROR_PATH_NOT_FOUND
    {5, Why::NotAllowed},    // ERROR_ACCESS_DENIED
    {19, Why::NotAllowed},   // ERROR_WRITE_PROTECT
    {21, Why::OutOfReach},   // ERROR_NOT_READY
    {32, Why::InUse},        // ERROR_SHARING_VIOLATION
    {33, Why::InUse},        // ERROR_LOCK_VIOLATION
    {53, Why::OutOfReach},   // ERROR_BAD_NETPATH
    {67, Why::OutOfReach},   // ERROR_BAD_NET_NAME
    {120, Why::NoFunction},  // ERROR_CALL_NOT_IMPLEMENTED
    {127, Why::NoFunction},  // ERROR_PROC_NOT_FOUND
    {145, Why::NotEmpty},    // ERROR_DIR_NOT_EMPTY
    {170, Why::InUse},       // ERROR_BUSY
    {303, Why::Gone},        // ERROR_DELETE_PENDING
    {1018, Why::Gone},       // ERROR_KEY_DELETED
    {1020, Why::NotEmpty},   // ERROR_KEY_HAS_CHILDREN
    {1224, Why::InUse},      // ERROR_USER_MAPPED_FILE
    {1921, Why::Link},       // ERROR_CANT_RESOLVE_FILENAME
};

LineTally* ListeningLine() { return Listening == nullptr ? nullptr : Listening->Current(); }

}  // namespace

Why WhyOf(std::uint32_t systemError) {
  for (const Mapping& row : kMappings)
    if (row.systemError == systemError) return row.why;
  return Why::Other;
}

void Tally::AddLine(bool isBlank) {
  if (count_ < kLines) {
    LineTally& line = lines_[count_];
    line.isBlank = isBlank;
    line.isForgotten = NothingIsKept;
    line.begin = length_;
  }
  ++count_;
}

void Tally::Forget() {
  OverwriteMemory(texts_, length_ * sizeof(WideChar));
  std::free(texts_);
  texts_ = nullptr;
  length_ = room_ = 0;
  for (LineTally& line : lines_) {
    const bool isBlank = line.isBlank;
    line = {};
    line.isBlank = isBlank;
    line.isForgotten = true;
  }
}

void Tally::Clear() {
  Forget();
  count_ = 0;
}

Tally::Lines Tally::ToldBy(std::size_t line) const {
  if (line >= std::min(count_, kLines) || lines_[line].isBlank) return {};
  if (line > 0 && lines_[line - 1].isBlank) return {0, line - 1};
  return {line, line + 1};
}

LineTally Tally::Sum(Lines lines) const {
  LineTally sum = {};
  for (std::size_t at = lines.first; at < lines.end; ++at) {
    const LineTally& line = lines_[at];
    for (std::size_t kind = 0; kind < kTraceKinds; ++kind) sum.erased[kind] += line.erased[kind];
    sum.bytes += line.bytes;
    sum.stayed += line.stayed;
    sum.named += line.named;
    sum.isStopped |= line.isStopped;
    sum.isNotCounted |= line.isNotCounted;
    sum.isForgotten |= line.isForgotten;
  }
  return sum;
}

WideView Tally::Texts(Lines lines) const {
  const std::size_t begin = lines_[lines.first].begin;
  const std::size_t end = lines.end < std::min(count_, kLines) ? lines_[lines.end].begin : length_;
  return {texts_ + begin, end - begin};
}

LineTally* Tally::Current() {
  if (count_ == 0 || count_ > kLines) return nullptr;
  LineTally& line = lines_[count_ - 1];
  return line.isForgotten ? nullptr : &line;
}

bool Tally::MakeRoom(std::size_t characters) {
  if (characters <= room_ - length_) return true;
  const std::size_t room = 2 * (length_ + characters);
  auto* const texts = static_cast<WideChar*>(std::malloc(room * sizeof(WideChar)));
  if (texts == nullptr) return false;
  std::copy_n(texts_, length_, texts);
  OverwriteMemory(texts_, length_ * sizeof(WideChar));
  std::free(texts_);
  texts_ = texts;
  room_ = room;
  return true;
}

void Tally::AddStayed(WideView name, const char* reason) {
  LineTally& line = *Current();
  if (line.named < kNames && !name.empty()) {
    for (WideView texts = Texts({count_ - 1, count_}); !texts.empty();)
      if (TakeText(texts) == name) return;
    const std::size_t length = std::strlen(reason) + 1;
    if (MakeRoom(name.size() + 1 + length)) {
      for (const WideChar letter : name) texts_[length_++] = letter;
      texts_[length_++] = WideChar();
      for (std::size_t at = 0; at < length; ++at) texts_[length_++] = static_cast<WideChar>(reason[at]);
      ++line.named;
    }
  }
  ++line.stayed;
}

WideView TakeText(WideView& texts) {
  const WideView text(texts.data());
  texts.remove_prefix(text.size() + 1);
  return text;
}

void TellErased(Trace what, int count) {
  if (LineTally* const line = ListeningLine()) line->erased[static_cast<std::size_t>(what)] += count;
}

void TellErasedWith(Trace what, std::uint64_t bytes) {
  LineTally* const line = ListeningLine();
  if (line == nullptr) return;
  ++line->erased[static_cast<std::size_t>(what)];
  line->bytes += bytes;
}

void TellStayed(WideView name, Why why, std::uint32_t systemError) {
  if (why != Why::Gone && ListeningLine() != nullptr) Listening->AddStayed(name, Reason(why, systemError));
}

void TellStopped() {
  if (LineTally* const line = ListeningLine()) line->isStopped = true;
}

void TellNotCounted() {
  if (LineTally* const line = ListeningLine()) line->isNotCounted = true;
}

void OverwriteMemory(void* memory, std::size_t bytes) {
  if (bytes > 0) std::memset(memory, 0, bytes);
  asm volatile("" : : "r"(memory) : "memory");  // as if somebody looked at it
}

}  // namespace platform
