#include "platform/clsMemoryManagement.h"

#include <cstring>

namespace platform {

namespace {

// A length of 0 passes the system's tests with every address, also with null, which the move itself does not allow.
void MoveBytes(void* destination, const void* source, std::size_t length) {
  if (length == 0 || ::IsBadWritePtr(destination, length) || ::IsBadReadPtr(source, length)) return;
  std::memmove(destination, source, length);
}

}  // namespace

void clsMemoryManagement::Allocate(std::size_t size) {
  ReleaseMemory();
  address_ = ::VirtualAlloc(nullptr, size, MEM_COMMIT, PAGE_EXECUTE_READWRITE);
  if (address_ == nullptr) return;
  size_ = size;
  ::VirtualLock(address_, size_);
}

void clsMemoryManagement::ReadFrom(void* destination, std::size_t length) const {
  if (address_ != nullptr) MoveBytes(destination, address_, length);
}

void clsMemoryManagement::WriteTo(const void* source, std::size_t length) {
  if (address_ != nullptr) MoveBytes(address_, source, length);
}

std::string clsMemoryManagement::ExtractString(const char* address, std::size_t maximumLength) const {
  if (::IsBadStringPtrA(address, maximumLength)) return {};
  // The system's own guard: 0 for a text that runs into memory that cannot be read.
  return std::string(address, static_cast<std::size_t>(::lstrlenA(address)));
}

void clsMemoryManagement::ReleaseMemory() {
  if (address_ == nullptr) return;
  ::VirtualUnlock(address_, size_);
  ::VirtualFree(address_, size_, MEM_DECOMMIT);
  ::VirtualFree(address_, 0, MEM_RELEASE);
  address_ = nullptr;
  size_ = 0;
}

}  // namespace platform
