// What a run did, for those who ask: how many traces of each kind went, and what stayed and why. It is in memory alone, and
// is overwritten as soon as nobody is to ask any more.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/wide_text.h"

namespace platform {

enum class Trace : std::uint8_t {
  File,
  Folder,
  IndexFile,  // filled with blanks in its place
  CacheEntry,
  Cookie,
  HistoryEntry,
  Key,
  Value,
  BinItem,
  ClipboardFormat,
  Kinds  // how many there are
};
inline constexpr std::size_t kTraceKinds = static_cast<std::size_t>(Trace::Kinds);

// Why something stayed.
enum class Why : std::uint8_t {
  InUse,
  NotAllowed,
  Link,        // not to be followed, or not to be removed as a link
  NotEmpty,    // a folder that holds something that stayed
  NotPlain,    // hidden, read-only or of the system, where the cleaner takes plain files alone
  SecondName,  // or gaps that overwriting would fill
  NotOverwritten,
  OutOfReach,
  NotFromHere,  // the folder that is current leads elsewhere
  LeftByWindows,
  NoFunction,
  RefusedNoFolder,
  RefusedNotNamed,
  RefusedRoot,
  RefusedLink,
  RefusedWindows,
  RefusedKept,
  RefusedShared,
  Other,
  Gone,  // it did not stay: nothing is noted
};

// The reason in an error code of the system (winerror.h).
Why WhyOf(std::uint32_t systemError);

// The share of one line of a log, or of several.
struct LineTally {
  bool isBlank;  // it divides the lines about the items from the one about all of them
  std::array<int, kTraceKinds> erased;
  std::uint64_t bytes;
  int stayed;
  int named;          // how many of them have their names in the tally; fewer than they could where memory was short
  bool isStopped;     // a stop came before its end
  bool isNotCounted;  // somebody else erases, and does not tell what
  bool isForgotten;   // nothing is kept of it, and nothing will be
  std::size_t begin;  // of its texts in the tally
};

// The lines of a log, in its order. Where a line is still to come nothing is kept.
class Tally {
 public:
  static constexpr std::size_t kLines = 64;  // more than a log can have
  static constexpr int kNames = 200;         // of each line

  Tally() = default;
  Tally(const Tally&) = delete;
  Tally& operator=(const Tally&) = delete;
  ~Tally() { Clear(); }

  void AddLine(bool isBlank = false);  // reports belong to it from now on
  void Clear();                        // overwritten; no line is left
  void Forget();                       // overwritten; the lines stay, and what is reported to them is not kept

  // From the first to the one before `end`.
  struct Lines {
    std::size_t first, end;
  };

  // What is told of a line of the log: the line itself, of the one after a blank one all before it, of any other nothing.
  Lines ToldBy(std::size_t line) const;

  LineTally Sum(Lines lines) const;

  // The names of what stayed in these lines, each with the reason after it, and a NUL after every text.
  WideView Texts(Lines lines) const;

  // The line that reports belong to; null for none.
  LineTally* Current();

  // What stayed in it, unless it is there: then it is the same trace once more. Memory that runs short costs the name and
  // nothing else; one without a name is counted.
  void AddStayed(WideView name, const char* reason);

 private:
  bool MakeRoom(std::size_t characters);

  std::array<LineTally, kLines> lines_ = {};
  std::size_t count_ = 0;

  WideChar* texts_ = nullptr;
  std::size_t length_ = 0, room_ = 0;  // characters
};

// Takes the first of such texts off.
WideView TakeText(WideView& texts);

// The interface through which whoever deletes tells what became of a trace: here, and nowhere else, it is told. Outside of a
// run nobody listens.

// Who listens; null for nobody.
inline Tally* Listening = nullptr;

// While the program is invisible nothing is kept of any run.
inline bool NothingIsKept = false;

// Reports go to this tally as long as one lives; those in the middle of an event come back to the one before.
class ListeningScope {
 public:
  explicit ListeningScope(Tally& tally) : before_(Listening) { Listening = &tally; }
  ListeningScope(const ListeningScope&) = delete;
  ListeningScope& operator=(const ListeningScope&) = delete;
  ~ListeningScope() { Listening = before_; }

 private:
  Tally* before_;
};

void TellErased(Trace what, int count = 1);
void TellErasedWith(Trace what, std::uint64_t bytes);
void TellStayed(WideView name, Why why, std::uint32_t systemError = 0);
void TellStopped();     // the work in hand was cut short
void TellNotCounted();  // somebody else erases, and does not tell what

// Overwrites memory for good: no compiler leaves it out.
void OverwriteMemory(void* memory, std::size_t bytes);

}  // namespace platform
