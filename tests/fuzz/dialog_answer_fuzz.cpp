// The file-open dialog's answer: whatever its buffer holds, it reads as paths of files, and a folder with names comes
// back as it was put in.
#include <string>

#include "property.h"
#include "shred/dialog_answer.h"
#include "wide_input.h"

using namespace platform;
using namespace shred;

namespace {

using Paths = std::vector<Path>;

const WideText kEnd(2, u'\0');

WideText UpToItsEnd(const WideText& answer) {
  return answer.starts_with(u'\0') ? WideText() : answer.substr(0, answer.find(kEnd));
}

// As the dialog would hand them out.
WideText Answer(const Path& folder, const Paths& files) {
  WideText answer = folder.Shown() + u'\0';
  for (const Path& file : files) answer += WideText(file.Name()) + u'\0';
  return answer + u'\0';
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const WideText answer = WideInput(data, size);
  const Paths files = SplitDialogAnswer(answer);

  for (const Path& file : files) {
    PROPERTY(!file.IsEmpty(), "a path that leads nowhere");
    // A name of dots alone is one in the dialog's list and leads nowhere in a text that somebody may have typed.
    if (file.Shown().find(u"...") == WideText::npos && !file.IsRoot())
      PROPERTY(SplitDialogAnswer(file.Shown() + kEnd) == Paths{file}, "[%s]", Readable(file.Shown()).c_str());
  }
  PROPERTY(SplitDialogAnswer(UpToItsEnd(answer)) == files, "what follows the end counts");
  if (answer.find(u'\0') == WideText::npos) PROPERTY(files.size() <= 1, "%zu paths", files.size());

  const Path folder = SpelledPath(answer.substr(0, answer.find(u'\0')));
  Paths inIt;
  for (const Path& file : files)
    if (!file.IsRoot() && file.Parent() == folder) inIt.push_back(file);
  if (!inIt.empty()) PROPERTY(SplitDialogAnswer(Answer(folder, inIt)) == inIt, "%zu paths", inIt.size());
  return 0;
}
