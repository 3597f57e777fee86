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

std::vector<Block> InBlocks(const std::vector<ItemRun>& items) {
  std::vector<Block> blocks;
  for (ItemRun left : items) {
    while (left.times > 0 && !left.item.empty()) {
      if (blocks.empty() || kBlockSize - blocks.back().bytes.size() < left.item.size()) blocks.emplace_back();
      Block& block = blocks.back();
      const std::size_t fitting = std::min(left.times, (kBlockSize - block.bytes.size()) / left.item.size());
      AppendTimes(block.bytes, left.item, fitting);
      block.runs.push_back({left.item, fitting});
      left.times -= fitting;
    }
  }
  return blocks;
}

BlockWriter::BlockWriter(Put put, ItemFailed itemFailed) : put_(std::move(put)), itemFailed_(std::move(itemFailed)) {}

void BlockWriter::Write(const Block& block) {
  const RuntimeError failure = failureOf([&] { put_(offset_, block.bytes); });
  if (!failure)
    offset_ += static_cast<std::uint32_t>(block.bytes.size());
  else
    for (const ItemRun& run : block.runs) WriteAlone(run, failure);
}

// Where one item of a run could not be written, the next one, its like, cannot be either: fourteen thousand tries for a file
// on a full disk would hold the window up.
void BlockWriter::WriteAlone(const ItemRun& run, const RuntimeError& ofBlock) {
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
