#include "platform/tally.h"

#include <algorithm>

#include "platform/runtime_error.h"
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
    {32, Why::InUse},        // ERROR_SHARING_VIOLATION
    {33, Why::InUse},        // ERROR_LOCK_VIOLATION
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

void Tally::AddLine() {
  if (count_ < kLines) {
    lines_[count_].begin = texts_.size();
    lines_[count_].isForgotten = NothingIsKept;
  }
  ++count_;
}

void Tally::Overwrite() {
  OverwriteMemory(texts_.data(), texts_.size() * sizeof(WideChar));
  texts_.clear();
  OverwriteMemory(&lines_, sizeof lines_);
}

void Tally::Clear() {
  Overwrite();
  count_ = 0;
}

void Tally::Forget() {
  Overwrite();
  for (LineTally& line : lines_) line.isForgotten = true;
}

LineTally Tally::Sum(std::size_t first, std::size_t last) const {
  LineTally sum = {};
  for (std::size_t at = first; at < std::min(last, kLines); ++at) {
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

WideView Tally::Texts(std::size_t first, std::size_t last) const {
  const std::size_t end = last < std::min(count_, kLines) ? lines_[last].begin : texts_.size();
  return WideView(texts_).substr(lines_[first].begin, end - lines_[first].begin);
}

LineTally* Tally::Current() {
  if (count_ == 0 || count_ > kLines) return nullptr;
  LineTally& line = lines_[count_ - 1];
  return line.isForgotten ? nullptr : &line;
}

// What the text leaves behind as it grows is memory given back, which is overwritten.
void Tally::AddStayed(WideView name, const Words& reason) {
  LineTally& line = *Current();
  name = name.substr(0, name.find(WideChar()));
  if (line.named < kNames)
    for (WideView texts = Texts(count_ - 1, count_); !texts.empty();)
      if (TakeText(texts) == name) return;
  ++line.stayed;
  if (line.named >= kNames) return;
  quietly([&] {
    texts_.reserve(texts_.size() + name.size() + reason.Length() + 2);  // so that a name is there as a whole or not at all
    texts_.append(name).append(1, WideChar());
    reason.AppendTo(texts_);
    texts_ += WideChar();
    ++line.named;
  });
}

WideView TakeText(WideView& texts) {
  const WideView text(texts.data());
  texts.remove_prefix(text.size() + 1);
  return text;
}

void TellErased(Trace what, int count, std::uint64_t bytes) {
  LineTally* const line = ListeningLine();
  if (line == nullptr) return;
  line->erased[static_cast<std::size_t>(what)] += count;
  line->bytes += bytes;
}

void TellStayed(WideView name, Why why, std::uint32_t systemError) {
  if (why == Why::Gone || ListeningLine() == nullptr) return;
  Words reason;
  PutReason(reason, why, systemError);
  Listening->AddStayed(name, reason);
}

void TellStopped() {
  if (LineTally* const line = ListeningLine()) line->isStopped = true;
}

void TellNotCounted() {
  if (LineTally* const line = ListeningLine()) line->isNotCounted = true;
}

void OverwriteMemory(void* memory, std::size_t bytes) {
  auto* byte = static_cast<volatile unsigned char*>(memory);
  while (bytes-- > 0) *byte++ = 0;
}

}  // namespace platform
