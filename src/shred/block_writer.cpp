#include "shred/block_writer.h"

#include <algorithm>
#include <utility>

#include "platform/runtime_error.h"

namespace shred {
using namespace platform;

namespace {

constexpr std::size_t kBlockSize = 65536;  // bytes; what a security level of 100 writes fits one block

// A full disk still takes what needs no more room, and a file that is locked in part the rest. A device that has gone may
// take its time over each refusal, and nothing is gained by asking it again.
bool IsWorthASecondTry(const RuntimeError& error) { return error.number == kDiskFull || error.number == kPermissionDenied; }

// By doubling: a byte or two at a time takes as long as the deletion of the file.
void AppendTimes(std::string& block, std::string_view item, std::size_t times) {
  const std::size_t start = block.size();
  const std::size_t end = start + item.size() * times;
  block += item;
  while (block.size() < end) block.append(block, start, std::min(block.size() - start, end - block.size()));
}

}  // namespace

BlockWriter::BlockWriter(Put put, ItemFailed itemFailed) : put_(std::move(put)), itemFailed_(std::move(itemFailed)) {}

void BlockWriter::Write(std::string_view item, std::size_t times) {
  while (times > 0 && !item.empty()) {
    const std::size_t fitting = std::min(times, (kBlockSize - block_.size()) / item.size());
    if (fitting == 0) {
      Flush();
      continue;
    }
    AppendTimes(block_, item, fitting);
    runs_.push_back({item, fitting});
    times -= fitting;
  }
}

void BlockWriter::Flush() {
  if (runs_.empty()) return;
  const RuntimeError failure = failureOf([this] { put_(offset_, block_); });
  if (failure)
    FlushOneByOne(failure);
  else
    offset_ += static_cast<std::uint32_t>(block_.size());
  block_.clear();
  runs_.clear();
}

void BlockWriter::FlushOneByOne(const RuntimeError& ofBlock) {
  for (const Run& run : runs_) WriteAlone(run, ofBlock);
}

// Where one item of a run could not be written, the next one, its like, cannot be either: fourteen thousand tries for a file
// on a full disk would hold the window up.
void BlockWriter::WriteAlone(const Run& run, const RuntimeError& ofBlock) {
  RuntimeError reason = ofBlock;
  bool trying = IsWorthASecondTry(ofBlock);
  for (std::size_t item = 0; item < run.times; ++item) {
    if (trying) {
      const RuntimeError failure = failureOf([&] { put_(offset_, run.item); });
      if (!failure) {
        offset_ += static_cast<std::uint32_t>(run.item.size());
        continue;
      }
      reason = failure;
      trying = false;
    }
    itemFailed_(reason);
  }
}

}  // namespace shred
