#include "shred/block_writer.h"

#include <utility>

#include "platform/runtime_error.h"

namespace {

constexpr std::size_t kBlockSize = 4096;  // bytes

// A full disk still takes what needs no more room, and a file that is locked in part the rest. A device that has gone may
// take its time over each refusal, and nothing is gained by asking it again.
bool IsWorthASecondTry(const RuntimeError& error) { return error.number == kDiskFull || error.number == kPermissionDenied; }

}  // namespace

BlockWriter::BlockWriter(Put put, ItemFailed itemFailed) : put_(std::move(put)), itemFailed_(std::move(itemFailed)) {
  block_.reserve(kBlockSize);
  items_.reserve(kBlockSize);
}

void BlockWriter::Write(std::string_view item) {
  if (block_.size() + item.size() > kBlockSize) Flush();
  block_ += item;
  items_.push_back(item);
}

void BlockWriter::Flush() {
  if (items_.empty()) return;
  Err.Clear();
  resumeNext([this] { put_(offset_, block_); });
  if (Err.Number() == 0)
    offset_ += static_cast<std::uint32_t>(block_.size());
  else
    FlushOneByOne();
  block_.clear();
  items_.clear();
}

void BlockWriter::FlushOneByOne() {
  const RuntimeError ofBlock = {Err.Number(), Err.Description()};
  for (const std::string_view item : items_) {
    Err.Set(ofBlock);
    if (IsWorthASecondTry(ofBlock)) {
      Err.Clear();
      resumeNext([&] { put_(offset_, item); });
    }
    if (Err.Number() == 0)
      offset_ += static_cast<std::uint32_t>(item.size());
    else
      itemFailed_();
  }
}
