#include "platform/tally.h"

#include <algorithm>
#include <iterator>

#include "platform/runtime_error.h"

namespace platform {

namespace {

struct Mapping {
  std::uint32_t systemError;
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

constexpr std::size_t kAround = 3;  // characters of a name's entry beside the name

LineTally* ListeningLine() { return Listening == nullptr ? nullptr : Listening->Current(); }

}  // namespace

Why WhyOf(std::uint32_t systemError) {
  const auto* found = std::find_if(std::begin(kMappings), std::end(kMappings),
                                   [systemError](const Mapping& row) { return row.systemError == systemError; });
  return found != std::end(kMappings) ? found->why : Why::Other;
}

void LineTally::Add(const StayedTrace& one) {
  StayedTrace other{};
  for (std::size_t at = 0; named < kNames && Next(at, other);)
    if (other.what == one.what && other.name == one.name) return;
  ++stayed;
  if (named >= kNames) return;
  quietly([&] {
    names_.reserve(names_.size() + one.name.size() + kAround);  // so that a name is there as a whole or not at all
    names_ += static_cast<WideChar>(static_cast<int>(one.what) << 8 | static_cast<int>(one.why));
    names_ += static_cast<WideChar>(one.error);
    names_ += one.name;
    names_ += WideChar();
    ++named;
  });
}

bool LineTally::Next(std::size_t& at, StayedTrace& one) const {
  if (at >= names_.size()) return false;
  one.what = static_cast<Trace>(names_[at] >> 8);
  one.why = static_cast<Why>(names_[at] & 0xFF);
  one.error = names_[at + 1];
  one.name = WideView(names_.c_str() + at + 2);
  at += one.name.size() + kAround;
  return true;
}

void LineTally::Overwrite() {
  OverwriteMemory(names_.data(), names_.size() * sizeof(WideChar));
  *this = LineTally();
}

void Tally::AddLine() {
  if (count_ < kLines) lines_[count_].isForgotten = NothingIsKept;
  ++count_;
}

void Tally::Clear() {
  for (LineTally& line : lines_) line.Overwrite();
  count_ = 0;
}

void Tally::Forget() {
  for (LineTally& line : lines_) {
    line.Overwrite();
    line.isForgotten = true;
  }
}

LineTally Tally::Sum(std::size_t first, std::size_t last) const {
  LineTally sum;
  for (std::size_t at = first; at < std::min(last, kLines); ++at) {
    const LineTally& line = lines_[at];
    for (std::size_t kind = 0; kind < kTraceKinds; ++kind) sum.erased[kind] += line.erased[kind];
    sum.bytes += line.bytes;
    sum.stayed += line.stayed;
    sum.named += line.named;
    sum.isStopped |= line.isStopped;
    sum.isCounted &= line.isCounted;
    sum.isForgotten |= line.isForgotten;
  }
  return sum;
}

LineTally* Tally::Current() {
  if (count_ == 0 || count_ > kLines) return nullptr;
  LineTally& line = lines_[count_ - 1];
  return line.isForgotten ? nullptr : &line;
}

void TellErased(Trace what, int count, std::uint64_t bytes) {
  LineTally* const line = ListeningLine();
  if (line == nullptr) return;
  line->erased[static_cast<std::size_t>(what)] += count;
  line->bytes += bytes;
}

void TellStayed(Trace what, WideView name, Why why, std::uint32_t systemError) {
  LineTally* const line = ListeningLine();
  if (line != nullptr && why != Why::Gone) line->Add({what, why, static_cast<int>(systemError), name});
}

void TellStopped() {
  if (LineTally* const line = ListeningLine()) line->isStopped = true;
}

void TellNotCounted() {
  if (LineTally* const line = ListeningLine()) line->isCounted = false;
}

void OverwriteMemory(void* memory, std::size_t bytes) {
  auto* byte = static_cast<volatile unsigned char*>(memory);
  while (bytes-- > 0) *byte++ = 0;
}

}  // namespace platform
