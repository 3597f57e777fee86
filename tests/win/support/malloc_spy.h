// Watches the memory that COM hands from one component to another (CoTaskMemAlloc) while it lives: which of the blocks
// allocated since are not freed yet, and which texts were freed, in their order.
#pragma once

#include <objidl.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "platform/win32.h"

class MallocSpy : public IMallocSpy {
 public:
  MallocSpy() { registered_ = ::CoRegisterMallocSpy(this) == S_OK; }
  MallocSpy(const MallocSpy&) = delete;
  MallocSpy& operator=(const MallocSpy&) = delete;
  virtual ~MallocSpy() { ::CoRevokeMallocSpy(); }

  bool Registered() const { return registered_; }
  std::size_t LiveBlocks() const { return live_.size(); }
  std::size_t AllBlocks() const { return allocated_; }

  // The blocks of this time that were freed since the last time they were asked for, as texts.
  std::vector<std::wstring> FreedTexts() { return std::exchange(freed_, {}); }

 private:
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** found) override {
    *found = this;
    return S_OK;
  }

  SIZE_T STDMETHODCALLTYPE PreAlloc(SIZE_T size) override { return size_ = size; }
  void* STDMETHODCALLTYPE PostAlloc(void* block) override {
    ++allocated_;
    live_[block] = size_;
    return block;
  }
  void* STDMETHODCALLTYPE PreFree(void* block, BOOL) override {
    const auto found = live_.find(block);
    if (found == live_.end()) return block;
    std::wstring text(found->second / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), block, text.size() * sizeof(wchar_t));
    freed_.push_back(text.substr(0, text.find(L'\0')));
    live_.erase(found);
    return block;
  }
  void STDMETHODCALLTYPE PostFree(BOOL) override {}
  SIZE_T STDMETHODCALLTYPE PreRealloc(void* block, SIZE_T size, void** raw, BOOL) override {
    *raw = block;
    live_.erase(block);
    return size_ = size;
  }
  void* STDMETHODCALLTYPE PostRealloc(void* block, BOOL) override {
    live_[block] = size_;
    return block;
  }
  void* STDMETHODCALLTYPE PreGetSize(void* block, BOOL) override { return block; }
  SIZE_T STDMETHODCALLTYPE PostGetSize(SIZE_T size, BOOL) override { return size; }
  void* STDMETHODCALLTYPE PreDidAlloc(void* block, BOOL) override { return block; }
  int STDMETHODCALLTYPE PostDidAlloc(void*, BOOL, int answer) override { return answer; }
  void STDMETHODCALLTYPE PreHeapMinimize() override {}
  void STDMETHODCALLTYPE PostHeapMinimize() override {}

  bool registered_ = false;
  SIZE_T size_ = 0;
  std::size_t allocated_ = 0;
  std::map<void*, SIZE_T> live_;
  std::vector<std::wstring> freed_;
};
