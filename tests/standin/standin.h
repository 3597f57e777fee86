// The functions of the system that rules are about, and one call of one of them.
#pragma once

#include <windows.h>

#include <winternl.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

class Call;
struct Rule;

// What a rule did about a call: nothing, something beside it, or all of it.
enum class Acted { No, Beside, Instead };
using Act = Acted (*)(Call& call, const Rule& rule);

struct Rule {
  std::string number;  // as the log names it
  Act act = nullptr;
  std::vector<std::uint32_t> numbers;
  std::uint32_t first = 1, last = 0;  // of the calls that it is about
  std::string with;                   // which one of their texts holds, ignoring case
  std::uint32_t seen = 0;
};

struct Function {
  std::uint32_t bytesToPop = 0;  // stays the first member: the stub's code reads it
  std::string name;
  std::string kinds;   // a letter an argument, as functions.txt explains
  char failing = 'v';  // v value, e error, h HRESULT or NTSTATUS; n never, x does not return
  std::uint32_t failingValue = 0;
  std::vector<Rule> rules;
  bool missing = false, logged = false;
  void* real = nullptr;
  void* stub = nullptr;
};

extern const std::map<std::string, Act> kVerbs;
Acted BindLate(Call& call, const Rule& rule);  // GetProcAddress gives out stubs

// What the program calls in place of the function.
void* MakeStub(Function& function);
// Calls a function of either calling convention with a copy of the arguments.
extern "C" std::uint64_t StandinCall(void* function, const std::uint32_t* arguments, std::size_t count);

class Call {
 public:
  Call(Function& called, std::uint32_t* given);
  std::uint64_t Run();

  std::uint32_t& Argument(std::size_t index) { return arguments_[index]; }
  template <class Type>
  Type* Pointer(std::size_t index) const {
    return reinterpret_cast<Type*>(arguments_[index]);
  }
  std::wstring PathOf() const;  // the first argument
  std::uint32_t Result() const { return static_cast<std::uint32_t>(result_); }
  bool Succeeded() const;
  void MakeReal();
  Acted Answer(std::uint32_t value, std::uint32_t error);
  void WriteDown(const char* insteadOfResult = nullptr) const;

 private:
  bool IsAbout(Rule& rule) const;

  Function& function_;
  std::uint32_t* arguments_;
  std::vector<std::string> shown_;
  std::uint64_t result_ = 0;
  std::uint32_t error_;
  unsigned number_;
  DWORD began_;
  std::string rules_;  // that did something
};

void OpenCallLog(const std::string& path);

// An argument as it was given; and as it is after a call that succeeded, empty where that tells nothing more.
std::string ShownArgument(char kind, std::uint32_t argument);
std::string ShownAnswer(char kind, std::uint32_t argument);
