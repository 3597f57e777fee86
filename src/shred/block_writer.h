// Many short writes in a few long ones. Every item is a write of its own to whoever counts failures; the file sees a block
// of them at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

class BlockWriter {
 public:
  // Puts the bytes into the file, `offset` bytes behind its first one; raises when they do not all get there.
  using Put = std::function<void(std::uint32_t offset, std::string_view bytes)>;

  // Told of each item that could not be written while its error is pending in Err; to leave none pending.
  using ItemFailed = std::function<void()>;

  BlockWriter(Put put, ItemFailed itemFailed);

  // Writes the item behind the last one that was written. It may wait here for its block, and so may its failure. The bytes
  // have to last until the next Flush.
  void Write(std::string_view item);

  // To be called after the last item: what is still here goes into the file.
  void Flush();

 private:
  void FlushOneByOne();

  Put put_;
  ItemFailed itemFailed_;
  std::string block_;
  std::vector<std::string_view> items_;  // of the block
  std::uint32_t offset_ = 0;             // where the block begins in the file
};
