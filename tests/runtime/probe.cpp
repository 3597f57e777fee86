// Does what a C++ program may expect of its runtime, and writes down what happened, a line each; test_runtime.py knows what
// the lines should be. The argument chooses between the ways to end.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <typeinfo>
#include <vector>

#include "platform/runtime_error.h"
#include "platform/win32.h"

// NOLINTNEXTLINE(bugprone-reserved-identifier): the compiler's own name
extern "C" std::uintptr_t __stack_chk_guard;

namespace platform {}
using namespace platform;

namespace {

void Tell(const std::string& text) {
  const std::string line = text + "\n";
  DWORD written = 0;
  ::WriteFile(::GetStdHandle(STD_OUTPUT_HANDLE), line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}

class Told {
 public:
  explicit Told(const char* name) : name_(name) { Tell(std::string("made ") + name_); }
  ~Told() { Tell(std::string("destroyed ") + name_); }
  Told(const Told&) = delete;
  Told& operator=(const Told&) = delete;

 private:
  const char* name_;
};

const Told firstStatic("first static");
const Told secondStatic("second static");

struct Base {
  virtual ~Base() = default;
};
struct Other {
  virtual ~Other() = default;
};
struct Derived : Base, Other {
  int value = 7;
};

// Not inlined, so that the exception passes through frames of their own.
[[gnu::noinline]] void ThrowAt(int depth) {
  const std::string local(static_cast<std::size_t>(depth) + 40, 'x');
  if (depth == 0) throw Derived();
  ThrowAt(depth - 1);
  if (local.empty()) Tell("never");
}

[[gnu::noinline]] void Unwinds() {
  try {
    const Told outer("outer");
    try {
      const Told inner("inner");
      ThrowAt(30);
    } catch (const Other& caught) {
      Tell("caught as second base " + std::to_string(dynamic_cast<const Derived&>(caught).value));
      throw;
    }
  } catch (const Base& caught) {
    Tell(std::string("caught again, a Derived: ") + (typeid(caught) == typeid(Derived) ? "yes" : "no"));
  }
}

[[gnu::noinline]] void Nests() {
  try {
    try {
      throw 1;
    } catch (int) {
      try {
        throw 2;
      } catch (int number) {
        Tell("inside the handler " + std::to_string(number));
      }
      throw;
    }
  } catch (int number) {
    Tell("after it " + std::to_string(number) + ", uncaught " + std::to_string(std::uncaught_exceptions()));
  }
}

[[gnu::noinline]] void RunsOut() {
  try {
    const std::unique_ptr<char[]> much(new char[0x7FFFFFF0]);
    Tell("so much memory: " + std::to_string(static_cast<int>(much[0])));
  } catch (const std::bad_alloc&) {
    Tell("bad_alloc");
  }
}

// Takes all memory, so that not even the exception finds any: its reserve serves.
[[gnu::noinline]] void ThrowsWithoutMemory() {
  std::vector<void*> taken;
  taken.reserve(100000);
  for (std::size_t size = 0x8000000; size >= 8; size /= 2)
    while (taken.size() < taken.capacity()) {
      void* const block = std::malloc(size);
      if (block == nullptr) break;
      taken.push_back(block);
    }
  const bool allTaken = taken.size() < taken.capacity();
  bool caught = false;
  try {
    taken.push_back(new char[64]);
  } catch (const std::bad_alloc&) {
    caught = true;
  }
  for (void* block : taken) std::free(block);
  Tell(std::string(allTaken ? "all memory taken: " : "memory left: ") + (caught ? "bad_alloc" : "none"));
}

[[gnu::noinline]] void ThrowsOften() {
  int caught = 0;
  for (int round = 0; round < 20000; ++round) try {
      ThrowAt(round % 8);
    } catch (const Base&) {
      ++caught;
    }
  Tell("caught " + std::to_string(caught));
}

[[gnu::noinline]] void UsesTheLibrary() {
  std::map<std::string, int> map;
  for (int at = 0; at < 300; ++at) map[std::to_string(at * 7919 % 1000)] = at;
  for (int at = 0; at < 300; at += 2) map.erase(std::to_string(at * 7919 % 1000));
  Tell("map " + std::to_string(map.size()) + " from " + map.begin()->first + " to " + map.rbegin()->first);
  std::function<int()> empty;
  try {
    Tell(std::to_string(empty()));
  } catch (const RuntimeError& error) {
    Tell("empty function: run-time error " + std::to_string(error.number));
  }
  try {
    Tell(std::to_string(std::vector<int>(3).at(static_cast<std::size_t>(map.size()))));
  } catch (const RuntimeError& error) {
    Tell("outside a vector: run-time error " + std::to_string(error.number));
  }
}

// The values come from memory, so that the compiler does not work out the answer.
[[gnu::noinline]] void Floors() {
  const double infinity = std::numeric_limits<double>::infinity();
  volatile double numbers[] = {2.5, -2.5, 3.0, -3.0, 0.0, 4503599627370495.5, -4503599627370495.5, 1e300, -infinity};
  const double floors[] = {2, -3, 3, -3, 0, 4503599627370495.0, -4503599627370496.0, 1e300, -infinity};
  for (std::size_t at = 0; at < std::size(floors); ++at)
    if (std::floor(numbers[at]) != floors[at]) Tell("floor " + std::to_string(at));
  volatile double minusZero = -0.0;
  volatile double noNumber = std::numeric_limits<double>::quiet_NaN();
  if (!std::signbit(std::floor(minusZero)) || !std::isnan(std::floor(noNumber))) Tell("floor of no number");
}

void ThrowsThroughNoexcept() noexcept { ThrowAt(3); }

// The compiler does not know how much room there is at the address.
[[gnu::noinline]] void WritesOverTheEnd() {
  char buffer[16] = "";
  volatile char* volatile place = buffer;
  for (int at = 0; at < 64; ++at) place[at] = 'x';
}

bool Asked(const char* way) { return std::strstr(::GetCommandLineA(), way) != nullptr; }

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int show) {
  if (Asked("throws-through-noexcept")) ThrowsThroughNoexcept();
  if (Asked("throws-out-of-main")) ThrowAt(3);
  if (Asked("aborts")) std::abort();
  if (Asked("writes-over-the-end")) WritesOverTheEnd(), Tell("came back");
  if (Asked("tells-the-guard")) Tell(std::to_string(__stack_chk_guard));
  if (instance != ::GetModuleHandleA(nullptr) || previous != nullptr || *commandLine != '\0' || show != SW_SHOWDEFAULT)
    Tell("WinMain got something else");
  static const Told late("late static");
  Unwinds();
  Nests();
  RunsOut();
  ThrowsWithoutMemory();
  ThrowsOften();
  UsesTheLibrary();
  Floors();
  return 42;
}
