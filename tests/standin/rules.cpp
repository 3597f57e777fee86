#include <cctype>
#include <fstream>
#include <sstream>

#include "function.h"

namespace {

Acted Fail(Call& call, const Rule& rule) {
  call.Fail(rule.numbers[0]);
  if (rule.numbers.size() > 1) call.Answer(rule.numbers[1], rule.numbers[0]);
  return Acted::Instead;
}

Acted Answer(Call& call, const Rule& rule) {
  call.Answer(rule.numbers[0], rule.numbers.size() > 1 ? rule.numbers[1] : ERROR_SUCCESS);
  return Acted::Instead;
}

Acted Slow(Call&, const Rule& rule) {
  ::Sleep(rule.numbers[0]);
  return Acted::Beside;
}

// Written down before, since a test may want to see that the program hangs.
Acted Hang(Call& call, const Rule& rule) {
  call.WriteDown("hangs");
  ::Sleep(rule.numbers.empty() ? INFINITE : rule.numbers[0]);
  return Acted::Beside;
}

struct Verb {
  const char* name;
  std::size_t leastNumbers, mostNumbers;
  Act act;
};

constexpr Verb kVerbs[] = {
    {"fail", 1, 2, &Fail}, {"answer", 1, 2, &Answer},  {"slow", 1, 1, &Slow},
    {"hang", 0, 1, &Hang}, {"missing", 0, 0, nullptr}, {"log", 0, 0, nullptr},
};

std::string Word(std::istream& words) {
  std::string word;
  if (!(words >> word)) throw Refusal{"ends too early"};
  return word;
}

std::uint32_t Number(const std::string& word) {
  char* end = nullptr;
  const std::uint32_t number = std::strtoul(word.c_str(), &end, 0);
  if (*end != '\0') throw Refusal{"'" + word + "' is no number"};
  return number;
}

bool NumberIsNext(std::istream& words) {
  const int next = (words >> std::ws).peek();
  return next == '-' || std::isdigit(next) != 0;
}

void ReadNumbers(std::istream& words, std::size_t least, std::size_t most, Rule& rule) {
  while (rule.numbers.size() < least || (rule.numbers.size() < most && NumberIsNext(words)))
    rule.numbers.push_back(Number(Word(words)));
}

void ReadConditions(std::istream& words, Rule& rule) {
  for (std::string word; words >> word;) {
    if (word == "with")
      std::getline(words >> std::ws, rule.with);
    else if (word == "only")
      rule.first = rule.last = Number(Word(words));
    else if (word == "from")
      rule.first = Number(Word(words));
    else if (word == "to")
      rule.last = Number(Word(words));
    else
      throw Refusal{"does not know '" + word + "'"};
  }
}

using IsCalled = bool (*)(const std::string& function);

void AddSpecial(const SpecialRule& special, std::istream& words, Rule rule, FunctionTable& functions, IsCalled isCalled) {
  ReadNumbers(words, special.numbers, special.numbers, rule);
  ReadConditions(words, rule);
  bool any = false;
  for (const auto& [name, act] : special.acts) {
    if (!isCalled(name)) continue;
    Function& function = functions.at(name);
    rule.act = act;
    function.rules.push_back(rule);
    function.logged = function.logged || special.logsCalls;
    any = true;
  }
  if (!any) throw Refusal{"the program calls none of the functions that this is about"};
}

void AddPlain(Function& function, std::istream& words, Rule rule) {
  const std::string word = Word(words);
  for (const Verb& verb : kVerbs) {
    if (word != verb.name) continue;
    ReadNumbers(words, verb.leastNumbers, verb.mostNumbers, rule);
    ReadConditions(words, rule);
    const bool canFail = function.failing != Failing::Never && function.failing != Failing::Ends;
    if (verb.act == &Fail && rule.numbers.size() == 1 && !canFail) throw Refusal{"it has no failing result; give one"};
    rule.act = verb.act;
    function.missing = function.missing || word == "missing";
    function.logged = true;
    function.rules.push_back(rule);
    return;
  }
  throw Refusal{"does not know '" + word + "'"};
}

void AddRule(const std::string& line, FunctionTable& functions, IsCalled isCalled) {
  std::istringstream words(line);
  const std::string name = Word(words);
  Rule rule;
  rule.words = line;
  for (const SpecialRule& special : SpecialRules())
    if (name == special.name) return AddSpecial(special, words, rule, functions, isCalled);
  const auto found = functions.find(name);
  if (found == functions.end()) throw Refusal{"there is no such function in functions.txt"};
  if (!isCalled(name)) throw Refusal{"the program neither imports it nor asks for it by name"};
  AddPlain(found->second, words, rule);
}

Function OneFunction(const std::string& line) {
  std::istringstream words(line);
  const std::string library = Word(words);
  Function function;
  function.name = Word(words);
  function.kinds = Word(words);
  if (function.kinds == "-") function.kinds.clear();
  if (function.kinds.find_first_not_of(".dswSWfFuo") != std::string::npos) throw Refusal{"does not know its arguments"};
  // In the C runtime the caller takes the arguments away.
  if (library != "msvcrt") function.bytesToPop = static_cast<std::uint32_t>(4 * function.kinds.size());
  const std::map<std::string, Failing> kinds = {
      {"error", Failing::Error}, {"hresult", Failing::HResult}, {"-", Failing::Never}, {"ends", Failing::Ends}};
  const std::string failing = Word(words);
  if (const auto kind = kinds.find(failing); kind != kinds.end())
    function.failing = kind->second;
  else
    function.failingValue = Number(failing);
  return function;
}

// What is said against a line gets its place.
template <class AtLine>
void ReadLines(const std::string& path, const AtLine& atLine) {
  std::ifstream file(path);
  if (!file) throw Refusal{"cannot read " + path};
  int number = 0;
  for (std::string line; std::getline(file, line);) {
    ++number;
    if (line.empty() || line.front() == '#') continue;
    try {
      atLine(line);
    } catch (const Refusal& refusal) {
      throw Refusal{path.substr(path.rfind('\\') + 1) + ":" + std::to_string(number) + ": " + line + ": " + refusal.reason};
    }
  }
}

}  // namespace

FunctionTable ReadFunctions(const std::string& path) {
  FunctionTable functions;
  ReadLines(path, [&functions](const std::string& line) {
    const Function function = OneFunction(line);
    if (!functions.emplace(function.name, function).second) throw Refusal{"stands there twice"};
  });
  return functions;
}

void ReadRules(const std::string& path, FunctionTable& functions, IsCalled isCalled) {
  ReadLines(path, [&](const std::string& line) { AddRule(line, functions, isCalled); });
}
