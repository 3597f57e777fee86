#include "platform/tally.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "platform/tally_text.h"

using namespace platform;

namespace {

WideText NameOf(std::size_t number) {
  const std::string digits = std::to_string(number);
  return WideText(Wide<"C:\\Temp\\a file with a long name ">()).append(digits.begin(), digits.end());
}

// The names and the reasons of what stayed in a line.
using Stayed = std::vector<std::pair<WideText, WideText>>;

Stayed StayedIn(const Tally& tally, std::size_t line) {
  Stayed stayed;
  for (WideView texts = tally.Texts({line, line + 1}); !texts.empty();) {
    const WideView name = TakeText(texts);
    stayed.emplace_back(name, TakeText(texts));
  }
  return stayed;
}

std::string Told(const LineTally& line) { return Sentence(line); }
std::string InWords(std::uint64_t bytes) { return BytesText(bytes); }
std::string WhyText(Why why, std::uint32_t systemError = 0) { return Reason(why, systemError); }

WideText CopiedText(const char* caption, const Tally& tally, std::size_t line) {
  WideText text;
  AppendText(text, caption, tally, line);
  return text;
}

// A log with one line that listens.
class OneLine {
 public:
  OneLine() { tally.AddLine(); }
  LineTally Line() const { return tally.Sum({0, 1}); }
  Stayed Names() const { return StayedIn(tally, 0); }

  Tally tally;

 private:
  ListeningScope scope_{tally};
};

std::string SentenceOf(int files, std::uint64_t bytes, int stayed) {
  LineTally line = {};
  line.erased[static_cast<std::size_t>(Trace::File)] = files;
  line.bytes = bytes;
  line.stayed = line.named = stayed;
  return Told(line);
}

}  // namespace

TEST(TallySentence, TellsFirstWhatWentAndThenWhatStayed) {
  EXPECT_EQ(SentenceOf(312, 18 * 1024 * 1024, 3), "312 files, 18 MB erased; 3 stayed");
  EXPECT_EQ(SentenceOf(1, 1, 0), "1 file, 1 byte erased");
  EXPECT_EQ(SentenceOf(2, 0, 0), "2 files erased");
  EXPECT_EQ(SentenceOf(0, 0, 0), "Nothing erased");
  EXPECT_EQ(SentenceOf(0, 0, 100000), "Nothing erased; 100000 stayed");
}

TEST(TallySentence, NamesEveryKindOfTrace) {
  LineTally line = {};
  line.erased.fill(1);
  EXPECT_EQ(Told(line),
            "1 file, 1 folder, 1 index file, 1 cache entry, 1 cookie, 1 history entry, 1 registry key, 1 registry value, "
            "1 item of the recycle bin, 1 clipboard format erased");
  line.erased.fill(2);
  EXPECT_EQ(Told(line),
            "2 files, 2 folders, 2 index files, 2 cache entries, 2 cookies, 2 history entries, 2 registry keys, "
            "2 registry values, 2 items of the recycle bin, 2 clipboard formats erased");
}

TEST(TallySentence, TellsOfWorkThatWasCutShort) {
  LineTally line = {};
  line.isStopped = true;
  EXPECT_EQ(Told(line), "Nothing erased; stopped before the end");
  line.stayed = line.named = 1;
  EXPECT_EQ(Told(line), "Nothing erased; 1 stayed; stopped before the end");
}

TEST(TallySentence, TellsHowManyHaveNoName) {
  LineTally line = {};
  line.stayed = 7;
  line.named = 2;
  EXPECT_EQ(Told(line), "Nothing erased; 7 stayed, 2 of them by name");
}

TEST(TallySentence, DoesNotClaimToKnowWhatAnotherProgramErases) {
  LineTally line = {};
  line.isNotCounted = true;
  EXPECT_EQ(Told(line), "iea.exe erases and does not tell what");
  line.erased[0] = 1;
  EXPECT_EQ(Told(line), "1 file erased; iea.exe erases and does not tell what");
}

TEST(BytesInATally, AreRoundedDown) {
  EXPECT_EQ(InWords(0), "0 bytes");
  EXPECT_EQ(InWords(1023), "1023 bytes");
  EXPECT_EQ(InWords(1024), "1 KB");
  EXPECT_EQ(InWords(1024 + 512), "1.5 KB");
  EXPECT_EQ(InWords(10 * 1024 + 1023), "10 KB");
  EXPECT_EQ(InWords(1024 * 1024 - 1), "1023 KB");
  EXPECT_EQ(InWords(std::uint64_t{5} << 30), "5 GB");
  EXPECT_EQ(InWords(std::uint64_t{5000} << 40), "5000 TB");
}

TEST(TallyReason, IsInPlainWordsForEveryReason) {
  for (std::size_t why = 0; why < static_cast<std::size_t>(Why::Gone); ++why)
    EXPECT_GT(WhyText(static_cast<Why>(why)).size(), 5u) << why;
  EXPECT_EQ(WhyText(Why::InUse, 32), "in use by another program");
  EXPECT_EQ(WhyText(Why::RefusedShared), "refused: this folder lies where all users share it");
  EXPECT_EQ(WhyText(Why::Other, 1117), "refused by Windows, error 1117");
}

TEST(TallyReason, ComesFromTheSystemsErrorCode) {
  EXPECT_EQ(WhyOf(32), Why::InUse);
  EXPECT_EQ(WhyOf(5), Why::NotAllowed);
  EXPECT_EQ(WhyOf(145), Why::NotEmpty);
  EXPECT_EQ(WhyOf(127), Why::NoFunction);
  EXPECT_EQ(WhyOf(2), Why::Gone);
  EXPECT_EQ(WhyOf(1117), Why::Other);
}

TEST(ATally, CountsWhatIsToldForTheLineInHand) {
  Tally tally;
  const ListeningScope scope(tally);
  TellErased(Trace::File);  // before any line
  tally.AddLine();
  TellErasedWith(Trace::File, 10);
  TellErasedWith(Trace::File, 5);
  TellErased(Trace::File, 2 - 1);
  tally.AddLine();
  TellErased(Trace::Cookie);
  TellStayed(NameOf(1), Why::InUse);
  TellStopped();
  TellNotCounted();
  EXPECT_EQ(Told(tally.Sum({0, 1})), "3 files, 15 bytes erased");
  EXPECT_EQ(Told(tally.Sum({1, 2})),
            "1 cookie erased; iea.exe erases and does not tell what; 1 stayed; stopped before the end");
  EXPECT_EQ(Told(tally.Sum({0, 2})),
            "3 files, 1 cookie, 15 bytes erased; iea.exe erases and does not tell what; 1 stayed; stopped before the end");
}

TEST(ATally, HearsNothingOutsideOfARun) {
  TellErased(Trace::File);
  TellStayed(NameOf(1), Why::InUse);
  TellStopped();
  TellNotCounted();
  EXPECT_EQ(Listening, nullptr);
}

TEST(ATally, HearsAgainAfterARunInTheMiddleOfIt) {
  OneLine outer;
  {
    OneLine inner;
    TellErased(Trace::Folder);
    EXPECT_EQ(Told(inner.Line()), "1 folder erased");
  }
  TellErased(Trace::File);
  EXPECT_EQ(Told(outer.Line()), "1 file erased");
}

TEST(ATally, KeepsTheNamesOfTheFirstTwoHundredAndTheNumberOfAll) {
  OneLine log;
  for (std::size_t number = 0; number < 100000; ++number) TellStayed(NameOf(number), Why::NotAllowed);
  EXPECT_EQ(log.Line().stayed, 100000);
  ASSERT_EQ(log.Names().size(), 200u);
  EXPECT_EQ(log.Names().back().first, NameOf(199));
  EXPECT_EQ(Told(log.Line()), "Nothing erased; 100000 stayed, 200 of them by name");
}

TEST(ATally, NeedsNoMoreMemoryForAHundredThousandFailuresThanForTwoHundred) {
  OneLine few, many;
  for (std::size_t number = 0; number < 200; ++number) few.tally.AddStayed(NameOf(number), "x");
  for (std::size_t number = 0; number < 100000; ++number) many.tally.AddStayed(NameOf(number), "x");
  EXPECT_EQ(few.tally.Texts({0, 1}), many.tally.Texts({0, 1}));
}

TEST(ATally, CountsWhatHasNoName) {
  OneLine log;
  for (int number = 0; number < 3; ++number) TellStayed(WideView(), Why::NotAllowed);
  EXPECT_EQ(Told(log.Line()), "Nothing erased; 3 stayed, 0 of them by name");
}

TEST(ATally, CountsATraceThatIsMetTwiceOnce) {
  OneLine log;
  for (int time = 0; time < 2; ++time) TellStayed(NameOf(1), Why::InUse);
  TellStayed(NameOf(2), Why::NotEmpty);
  EXPECT_EQ(log.Line().stayed, 2);
}

TEST(ATally, CountsATraceThatTwoLinesMeetInBoth) {
  OneLine log;
  TellStayed(NameOf(1), Why::InUse);
  log.tally.AddLine();
  TellStayed(NameOf(1), Why::InUse);
  EXPECT_EQ(StayedIn(log.tally, 0), StayedIn(log.tally, 1));
  EXPECT_EQ(log.tally.Sum({0, 2}).stayed, 2);
}

TEST(ATally, NotesNothingOfWhatIsGoneMeanwhile) {
  OneLine log;
  for (std::size_t number = 0; number < 10; ++number) TellStayed(NameOf(number), WhyOf(number % 2 + 2));
  EXPECT_EQ(Told(log.Line()), "Nothing erased");
  EXPECT_TRUE(log.Names().empty());
}

TEST(ATally, KeepsNamesOfAnyLengthAndAnyCharacter) {
  OneLine log;
  const WideText longName(400, u'\x8868');
  const WideText loneSurrogate(1, static_cast<WideChar>(0xD800));
  TellStayed(longName, Why::InUse);
  TellStayed(loneSurrogate, Why::InUse);
  ASSERT_EQ(log.Names().size(), 2u);
  EXPECT_EQ(log.Names()[0].first, longName);
  EXPECT_EQ(log.Names()[1].first, loneSurrogate);
}

TEST(ATally, HasNoLineMoreThanItCanHold) {
  Tally tally;
  const ListeningScope scope(tally);
  for (std::size_t line = 0; line < Tally::kLines + 3; ++line) {
    tally.AddLine();
    TellErased(Trace::File);
    TellStayed(NameOf(line), Why::InUse);
  }
  EXPECT_EQ(Told(tally.Sum({0, Tally::kLines})), "64 files erased; 64 stayed");
  EXPECT_EQ(StayedIn(tally, Tally::kLines - 1).size(), 1u);
  EXPECT_EQ(tally.ToldBy(Tally::kLines).end, 0u);
}

TEST(ALineOfTheLog, TellsOfItselfAndTheOneAfterABlankOneOfAllBeforeIt) {
  Tally tally;
  for (const bool isBlank : {false, false, true, false}) tally.AddLine(isBlank);
  const std::pair<std::size_t, std::size_t> expected[] = {{0, 1}, {1, 2}, {0, 0}, {0, 2}, {0, 0}};
  for (std::size_t line = 0; line < std::size(expected); ++line) {
    EXPECT_EQ(tally.ToldBy(line).first, expected[line].first) << line;
    EXPECT_EQ(tally.ToldBy(line).end, expected[line].second) << line;
  }
  EXPECT_EQ(tally.ToldBy(static_cast<std::size_t>(-1)).end, 0u);
  tally.Forget();
  EXPECT_EQ(tally.ToldBy(3).end, 2u);
}

TEST(ALineOfTheLog, OfANothingThatWasToDoTellsNothing) {
  Tally tally;
  for (const bool isBlank : {true, false}) tally.AddLine(isBlank);
  EXPECT_EQ(tally.ToldBy(1).end, 0u);
}

TEST(ATallyThatIsCleared, HasNoLineAndListensToNone) {
  OneLine log;
  TellStayed(NameOf(1), Why::InUse);
  TellErasedWith(Trace::File, 5);
  TellErased(Trace::File, 5 - 1);
  log.tally.Clear();
  EXPECT_EQ(log.tally.ToldBy(0).end, 0u);
  TellErased(Trace::File);
  log.tally.AddLine();
  EXPECT_EQ(Told(log.Line()), "Nothing erased");
  EXPECT_TRUE(log.Names().empty());
}

TEST(AForgottenTally, KeepsItsLinesAndNothingElse) {
  OneLine log;
  TellStayed(NameOf(1), Why::InUse);
  TellErasedWith(Trace::File, 5);
  TellErased(Trace::File, 5 - 1);
  log.tally.Forget();
  TellErased(Trace::File);
  TellStayed(NameOf(2), Why::InUse);
  EXPECT_EQ(log.tally.ToldBy(0).end, 1u);
  EXPECT_EQ(Told(log.Line()), "Not kept: Quellix was invisible");
  EXPECT_TRUE(log.Names().empty());
  EXPECT_EQ(log.Line().stayed, 0);
}

TEST(ARunWhileInvisible, IsNotKept) {
  NothingIsKept = true;
  OneLine log;
  TellErased(Trace::File);
  NothingIsKept = false;
  EXPECT_EQ(Told(log.Line()), "Not kept: Quellix was invisible");
  log.tally.AddLine();
  TellErased(Trace::File);
  EXPECT_EQ(Told(log.tally.Sum({1, 2})), "1 file erased");
}

TEST(ATallyLine, TellsOfEachNameWhyItStayed) {
  OneLine log;
  TellStayed(u"C:\\b", Why::Other, 1117);
  TellStayed(u"C:\\a", Why::InUse);
  const Stayed told = {{u"C:\\b", u"refused by Windows, error 1117"}, {u"C:\\a", u"in use by another program"}};
  EXPECT_EQ(log.Names(), told);
}

TEST(ATallyLine, HasItsOwnNamesAmongThoseOfAll) {
  Tally tally;
  const ListeningScope scope(tally);
  for (std::size_t line = 0; line < 4; ++line) {
    tally.AddLine();
    for (std::size_t number = 0; number < line; ++number) TellStayed(NameOf(10 * line + number), Why::InUse);
  }
  EXPECT_TRUE(StayedIn(tally, 0).empty());
  ASSERT_EQ(StayedIn(tally, 2).size(), 2u);
  EXPECT_EQ(StayedIn(tally, 2)[1].first, NameOf(21));
  EXPECT_EQ(StayedIn(tally, 3).size(), 3u);
  EXPECT_EQ(tally.Texts({0, 4}).size(), tally.Texts({1, 2}).size() + tally.Texts({2, 4}).size());
}

TEST(ATallyLine, IsCopiedWithEveryNameAndReason) {
  OneLine log;
  TellErasedWith(Trace::File, 2048);
  TellErased(Trace::File, 2 - 1);
  TellStayed(u"C:\\a", Why::InUse);
  TellStayed(u"C:\\b", Why::NotEmpty);
  EXPECT_EQ(CopiedText("Erasing ...", log.tally, 0),
            u"Erasing ...\r\n2 files, 2 KB erased; 2 stayed\r\n"
            u"\tC:\\a\tin use by another program\r\n\tC:\\b\tstill holds something\r\n");
  log.tally.AddLine();
  for (std::size_t number = 0; number < 203; ++number) TellStayed(NameOf(number), Why::InUse);
  EXPECT_TRUE(CopiedText("", log.tally, 1).starts_with(u"\r\nNothing erased; 203 stayed, 200 of them by name\r\n\t"));
}

TEST(TheLongestSentence, IsThereAsAWhole) {
  LineTally line = {};
  line.erased.fill(-2147483647);
  line.bytes = ~std::uint64_t{0};
  line.stayed = 2147483647;
  line.named = 200;
  line.isStopped = line.isNotCounted = true;
  EXPECT_TRUE(Told(line).ends_with("; stopped before the end")) << Told(line);
}

TEST(OverwrittenMemory, HoldsNothing) {
  std::vector<unsigned char> memory(1000, 'x');
  OverwriteMemory(memory.data() + 1, memory.size() - 2);
  EXPECT_EQ(memory.front(), 'x');
  EXPECT_EQ(memory.back(), 'x');
  EXPECT_TRUE(std::all_of(memory.begin() + 1, memory.end() - 1, [](unsigned char byte) { return byte == 0; }));
  OverwriteMemory(nullptr, 0);
}
