// Many short writes in a few long ones. Every item is a write of its own to whoever counts failures; the file sees a block
// of them at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime_error.h"

namespace shred {
using namespace platform;

// One item, written so many times in succession. Its bytes have to last as long as the run.
struct ItemRun {
  std::string_view item;
  std::size_t times;
};

// What goes into the file by one write, and the items that it is made of.
struct Block {
  std::string bytes;
  std::vector<ItemRun> runs;
};

// The items back to back in their order; none is split between two blocks. One set serves every file that gets the same.
std::vector<Block> InBlocks(const std::vector<ItemRun>& items);

class BlockWriter {
 public:
  // Puts the bytes into the file, `offset` bytes after its first one; raises when they do not all get there.
  using Put = std::function<void(std::uint32_t offset, std::string_view bytes)>;

  // Told of each item that could not be written, and why.
  using ItemFailed = std::function<void(const RuntimeError& reason)>;

  BlockWriter(Put put, ItemFailed itemFailed);

  // After the last item that was written. A block that fails is tried item by item where that is worth a second try; each of
  // the times has a failure for itself.
  void Write(const Block& block);

 private:
  void WriteAlone(const ItemRun& run, const RuntimeError& ofBlock);

  Put put_;
  ItemFailed itemFailed_;
  std::uint32_t offset_ = 0;
};

}  // namespace shred
