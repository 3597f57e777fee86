// How much memory the objects of a test's program take (operator new), at most, while this lives. For the one source of a
// test.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

class CountedMemory {
 public:
  CountedMemory() : before_(live_) { most_ = before_; }
  CountedMemory(const CountedMemory&) = delete;
  CountedMemory& operator=(const CountedMemory&) = delete;

  std::size_t Most() const { return most_ - before_; }  // bytes, above what there was

  // A block tells its size in front of itself.
  static void* Take(std::size_t size) {
    auto* const block = static_cast<std::size_t*>(std::malloc(size + kFront));
    if (block == nullptr) throw std::bad_alloc();
    *block = size;
    live_ += size;
    most_ = std::max<std::size_t>(most_, live_);
    return reinterpret_cast<char*>(block) + kFront;
  }
  static void Give(void* memory) {
    if (memory == nullptr) return;
    auto* const block = reinterpret_cast<std::size_t*>(static_cast<char*>(memory) - kFront);
    live_ -= *block;
    std::free(block);
  }

 private:
  static constexpr std::size_t kFront = 16;
  static inline std::atomic<std::size_t> live_ = 0, most_ = 0;
  std::size_t before_;
};

void* operator new(std::size_t size) { return CountedMemory::Take(size); }
void* operator new[](std::size_t size) { return CountedMemory::Take(size); }
void operator delete(void* memory) noexcept { CountedMemory::Give(memory); }
void operator delete[](void* memory) noexcept { CountedMemory::Give(memory); }
void operator delete(void* memory, std::size_t) noexcept { CountedMemory::Give(memory); }
void operator delete[](void* memory, std::size_t) noexcept { CountedMemory::Give(memory); }
