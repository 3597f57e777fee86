// A window for an erase run that writes down every call in order.
#pragma once

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <span>
#include <utility>
#include <vector>

#include "erase/erase_run.h"
#include "expected_items.h"
#include "platform/runtime_error.h"

using namespace erase;
using namespace platform;

// The items of the expected table as a run takes them. Each that writes a line has a cleaner of its own that does nothing,
// and the item of two cleaners has two.
class ItemsToRun {
 public:
  ItemsToRun() {
    for (const ExpectedItem& item : kExpectedItems) {
      items_.push_back({.array = item.array,
                        .index = item.index,
                        .key = item.key,
                        .caption = item.caption,
                        .logLine = item.logLine,
                        .secondLogLine = item.secondLogLine,
                        .runs = item.runs ? Runs::Yes : Runs::Never});
      if (item.logLine == nullptr) continue;
      items_.back().cleaner = kCleaners[names_.size()];
      names_.push_back(NameOf(item.array, item.index));
    }
  }

  std::span<const EraseItem> Items() const { return items_; }
  EraseItem& At(std::size_t position) { return items_[position]; }

  // "chkIEsettings 0" for the cleaner of that box's item.
  std::string NameOfCleaner(Cleaner cleaner) const {
    const auto found = std::find(kCleaners.begin(), kCleaners.end(), cleaner);
    const auto place = static_cast<std::size_t>(found - kCleaners.begin());
    return place < names_.size() ? names_[place] : "unknown";
  }

  // A cleaner that belongs to no item.
  static Cleaner Another() { return kCleaners.back(); }

 private:
  template <int number>
  static void Clean() {}
  template <int... numbers>
  static std::array<Cleaner, sizeof...(numbers)> MakeCleaners(std::integer_sequence<int, numbers...>) {
    return {&Clean<numbers>...};
  }
  inline static const std::array<Cleaner, 100> kCleaners = MakeCleaners(std::make_integer_sequence<int, 100>());

  std::vector<EraseItem> items_;
  std::vector<std::string> names_;
};

class FakeEraseRunHost final : public EraseRunHost, public RunView {
 public:
  // Every call; one that only asks begins with "? ".
  std::vector<std::string> calls;
  // Runs within each call before the call does its work, with the call's text; may throw or change the state.
  std::function<void(const std::string&)> onCall;

  ItemsToRun items;
  std::vector<std::string> log;
  std::string status;
  int value = 0, min = 0, max = 100;
  bool stop = false;
  bool stopButton = false;
  bool scheduleEnabled = false, closeBrowsersBox = false, closeBrowsersFlag = false;
  bool scheduledShred = false, rebootAfter = false;
  int selectedBoxes = 0;
  int toldTogether = 0;  // how many runs go on of which each failure is told once
  std::map<std::pair<BoxArray, int>, std::string> flags;

  // Ticks a box; the flag follows it.
  void Tick(BoxArray array, int index) {
    ++selectedBoxes;
    flags[{array, index}] = "1";
  }

  void TickAll() {
    for (const auto* group : {&kItemsThatRun, &kItemsThatNeverRun})
      for (const ExpectedItem& item : *group) Tick(item.array, item.index);
  }

  // The calls that do something.
  std::vector<std::string> Actions() const {
    std::vector<std::string> actions;
    for (const std::string& call : calls)
      if (call[0] != '?') actions.push_back(call);
    return actions;
  }

  std::size_t CountOf(const std::string& text) const {
    std::size_t count = 0;
    for (const std::string& call : calls) count += call == text ? 1u : 0u;
    return count;
  }

  RunView& View() override { return *this; }
  std::span<const EraseItem> Items() override { return items.Items(); }

  void ClearLog() override {
    Note("clear log");
    log.clear();
  }
  void AddLogLine(const std::string& line) override {
    Note("log: " + line);
    log.push_back(line);
  }
  void SetStatusText(const std::string& text) override {
    Note("status: " + text);
    status = text;
  }

  int ProgressValue() override { return Answer("bar value", value); }
  int ProgressMax() override { return Answer("bar max", max); }
  // As the bar itself: a value outside its range raises 380, a new range begins at its least value.
  void SetProgressValue(int newValue) override {
    Note("bar value " + std::to_string(newValue));
    if (newValue < min || newValue > max) Raise(kInvalidPropertyValue);
    value = newValue;
  }
  void SetProgressRange(int newMin, int newMax) override {
    Note("bar range " + std::to_string(newMin) + " to " + std::to_string(newMax));
    min = value = newMin;
    max = newMax;
  }
  void ShowProgress() override { Note("show bar"); }

  void EnableStopButton(bool enabled) override {
    Note(enabled ? "stop button on" : "stop button off");
    stopButton = enabled;
  }

  bool ScheduleEnabled() override { return Answer("schedule enabled", scheduleEnabled); }
  bool CloseBrowsersChecked() override { return Answer("close browsers box", closeBrowsersBox); }
  bool CloseBrowsersFlag() override { return Answer("close browsers flag", closeBrowsersFlag); }
  bool ScheduledShredEnabled() override { return Answer("scheduled shred", scheduledShred); }
  bool RebootAfterErase() override { return Answer("reboot after", rebootAfter); }

  int SelectedItemCount() override { return Answer("selected boxes", selectedBoxes); }
  std::string ItemFlag(const EraseItem& item) override {
    Note("? flag " + NameOf(item.array, item.index));
    const auto found = flags.find({item.array, item.index});
    return found != flags.end() ? found->second : "0";
  }
  bool StopRequested() override { return Answer("stop request", stop); }
  void SetStopRequest(bool newStop) override {
    Note(newStop ? "stop request set" : "stop request cleared");
    stop = newStop;
  }

  void TellEachFailureOnce(Statement run) override {
    ++toldTogether;
    run();
    --toldTogether;
  }
  void RunCleaner(Cleaner cleaner) override { Note("clean " + items.NameOfCleaner(cleaner)); }
  void PauseAfterItem() override { Note("pause"); }
  void CloseBrowserFrames() override { Note("close browser frames"); }
  void CloseWindowByTitle(const char* title) override { Note(std::string("close window: ") + title); }
  void MinimiseAllWindows() override { Note("minimise all windows"); }
  void ShredScheduledFiles() override { Note("shred scheduled files"); }
  void Reboot() override { Note("reboot"); }
  void ShowInformation(const char* text) override { Note(std::string("information: ") + text); }

 private:
  void Note(const std::string& call) {
    calls.push_back(call);
    if (onCall) onCall(call);
  }

  // The state as it is once onCall has run.
  template <class T>
  T Answer(const char* what, const T& state) {
    Note(std::string("? ") + what);
    return state;
  }
};
