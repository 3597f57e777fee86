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

class BlockWriter {
 public:
  // Puts the bytes into the file, `offset` bytes after its first one; raises when they do not all get there.
  using Put = std::function<void(std::uint32_t offset, std::string_view bytes)>;

  // Told of each item that could not be written, and why.
  using ItemFailed = std::function<void(const RuntimeError& reason)>;

  BlockWriter(Put put, ItemFailed itemFailed);

  // Writes the item so many times after the last one that was written. It may wait here for its block, and so may its
  // failure, which each of the times has for itself. The bytes have to last until the next Flush.
  void Write(std::string_view item, std::size_t times = 1);

  // To be called after the last item: what is still here goes into the file.
  void Flush();

 private:
  struct Run {
    std::string_view item;
    std::size_t times;
  };

  void FlushOneByOne(const RuntimeError& ofBlock);
  void WriteAlone(const Run& run, const RuntimeError& ofBlock);

  Put put_;
  ItemFailed itemFailed_;
  std::string block_;
  std::vector<Run> runs_;     // of the block
  std::uint32_t offset_ = 0;  // where the block begins in the file
};

}  // namespace shred
