// The file-open dialog's answer: whatever stands in its buffer, it reads as paths without NUL characters, and a folder with
// names comes back as it was put in.
#include <string>
#include <string_view>

#include "property.h"
#include "shred/dialog_answer.h"

using namespace shred;

namespace {

using Paths = std::vector<std::string>;

std::string UpToItsEnd(const std::string& answer) {
  return answer.starts_with('\0') ? std::string() : answer.substr(0, answer.find(std::string(2, '\0')));
}

// The names behind the folder, which ends with "\", as the dialog would hand them out.
std::string Answer(const std::string& folder, const Paths& paths) {
  std::string answer = folder + '\0';
  for (const std::string& path : paths) answer += path.substr(folder.size()) + '\0';
  return answer + '\0';
}

std::wstring Wide(const std::string& text) { return std::wstring(text.begin(), text.end()); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string answer(reinterpret_cast<const char*>(data), size);
  const Paths paths = SplitDialogAnswer(answer);

  std::vector<std::wstring> wide;
  for (const std::string& path : paths) wide.push_back(Wide(path));
  PROPERTY(SplitDialogAnswer(Wide(answer)) == wide, "the wide answer is another one");
  PROPERTY(IsWholeAnswer(Wide(answer)) == IsWholeAnswer(answer), "the wide answer ends elsewhere");

  for (const std::string& path : paths) {
    PROPERTY(!path.empty() && path.find('\0') == std::string::npos, "not a path: [%s]", path.c_str());
    PROPERTY(SplitDialogAnswer(path + std::string(2, '\0')) == Paths{path}, "[%s]", path.c_str());
  }
  PROPERTY(SplitDialogAnswer(UpToItsEnd(answer)) == paths, "what stands behind the end counts");
  if (answer.find('\0') == std::string::npos) PROPERTY(paths.size() <= 1, "%zu paths", paths.size());
  if (paths.size() < 2) return 0;

  std::string folder(answer.c_str());
  if (folder.back() != '\\') folder += '\\';
  for (const std::string& path : paths)
    PROPERTY(path.starts_with(folder), "[%s] is not in [%s]", path.c_str(), folder.c_str());
  PROPERTY(SplitDialogAnswer(Answer(folder, paths)) == paths, "%zu paths", paths.size());
  return 0;
}
