// The functions of the system that rules are about, and one call of one of them.
#pragma once

#include <windows.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

// Why the program is not to start. The launcher passes it on; nothing is left out in silence.
struct Refusal {
  std::string reason;
};

class Call;
struct Rule;

// What a rule did about a call: nothing, something beside it, or all of it.
enum class Acted { No, Beside, Instead };
using Act = Acted (*)(Call& call, const Rule& rule);

struct Rule {
  std::string words;  // as written
  Act act = nullptr;
  std::vector<std::uint32_t> numbers;
  unsigned first = 1, last = ~0u;  // of the calls that it is about
  std::string with;                // which one of their texts holds, ignoring case
  unsigned seen = 0;
};

enum class Failing { Value, Error, HResult, Never, Ends };

struct Function {
  std::uint32_t bytesToPop = 0;  // stays the first member: the stub's code reads it
  std::string name;
  std::string kinds;  // a letter an argument, as functions.txt explains
  Failing failing = Failing::Value;
  std::uint32_t failingValue = 0;
  std::vector<Rule> rules;
  bool missing = false;
  bool logged = false;
  void* real = nullptr;
  void* stub = nullptr;
};

using FunctionTable = std::map<std::string, Function>;
FunctionTable ReadFunctions(const std::string& path);

// Adds the rules of a file to the functions that they are about. `isCalled` tells of a function whether the program can call
// it. A line that cannot be understood or that can change nothing is a Refusal.
void ReadRules(const std::string& path, FunctionTable& functions, bool (*isCalled)(const std::string& function));

// A rule about several functions that has a name of its own.
struct SpecialRule {
  const char* name;
  std::size_t numbers;
  bool logsCalls;
  std::vector<std::pair<const char*, Act>> acts;
};
const std::vector<SpecialRule>& SpecialRules();

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
  bool IsWide() const { return function_.name.back() == 'W'; }
  std::uint32_t Result() const { return static_cast<std::uint32_t>(result_); }
  bool Succeeded() const;

  void MakeReal();
  void Fail(std::uint32_t error);
  void Answer(std::uint32_t value, std::uint32_t error);
  void WriteDown(const char* insteadOfResult = nullptr) const;

 private:
  bool IsAbout(Rule& rule) const;

  Function& function_;
  std::uint32_t* arguments_;
  std::vector<std::string> shown_;
  std::uint64_t result_ = 0;
  std::uint32_t error_;
  std::string rules_;  // that did something
};

void OpenCallLog(const std::string& path);

// An argument as it was given; and as it is after a call that succeeded, empty where that tells nothing more.
std::string ShownArgument(char kind, std::uint32_t argument);
std::string ShownAnswer(char kind, std::uint32_t argument);
