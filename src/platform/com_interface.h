// The owner of one reference to a COM interface.
#pragma once

#include "platform/handles.h"

namespace platform {

template <class Interface>
struct InterfacePolicy {
  using Value = Interface*;
  static Value Invalid() { return nullptr; }
  static void Close(Value value) { value->Release(); }
};

template <class Interface>
using UniqueInterface = UniqueHandle<InterfacePolicy<Interface>>;

}  // namespace platform
