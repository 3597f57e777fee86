// One block of page-locked memory that the URL cache fills, with guarded copies into and out of it: an address that
// cannot be read or written yields nothing instead of a fault. No operation reports a failure.
#pragma once

#include <cstddef>
#include <string>

#include "platform/win32.h"

namespace platform {

class clsMemoryManagement {
 public:
  clsMemoryManagement() = default;
  clsMemoryManagement(const clsMemoryManagement&) = delete;
  clsMemoryManagement& operator=(const clsMemoryManagement&) = delete;
  ~clsMemoryManagement() { ReleaseMemory(); }

  // Releases the block that is held and takes a new one of `size` bytes, all zero. Holds none when the system has no
  // memory, and for a size of 0.
  void Allocate(std::size_t size);

  // The block's address; null when none is held.
  void* Handle() const { return address_; }

  // Copies `length` bytes from the start of the block. Does nothing without a block, and when one of both sides cannot
  // take part over the whole length. The system tells by whole pages, so the block reaches to the end of its last one.
  void ReadFrom(void* destination, std::size_t length) const;

  // The same towards the start of the block.
  void WriteTo(const void* source, std::size_t length);

  // The zero-terminated text in the system's ANSI code page at `address`, inside the block or elsewhere; empty for an
  // address that cannot be read over `maximumLength` bytes or up to an earlier zero. A longer text is returned whole:
  // the limit belongs to the test of the address alone, and callers that give a small one get whole texts by it.
  std::string ExtractString(const char* address, std::size_t maximumLength) const;

  // Does nothing when no block is held.
  void ReleaseMemory();

 private:
  void* address_ = nullptr;
  std::size_t size_ = 0;  // bytes
};

}  // namespace platform
