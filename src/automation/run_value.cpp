#include "automation/run_value.h"

#include <optional>

#include "platform/product.h"
#include "platform/wide_system.h"

namespace automation {
using namespace platform;

namespace {

WideText FolderPart(const Path& file) { return file.IsEmpty() ? WideText() : AppendBackslash(file.Parent().Shown()); }
WideText BaseName(const Path& file) { return WideText(file.Name().substr(0, file.Name().rfind('.'))); }

// Whether quotes are enough to make the part mean what it reads: of letters that the code page has, and without what is cut
// off at the end of a folder's name.
bool IsExact(const WideText& part) {
  return !part.empty() && part.find(Wide<".\\">()) == WideText::npos && part.find(Wide<" \\">()) == WideText::npos &&
         NarrowExactly(part);
}

bool IsExactWithoutQuotes(const WideText& part) { return IsExact(part) && part.find(' ') == WideText::npos; }

// Empty when neither form is of use.
WideText Chosen(const WideText& part, const WideText& shortPart) {
  for (const WideText* form : {&part, &shortPart})
    if (IsExactWithoutQuotes(*form)) return *form;
  return IsExact(part) ? part : WideText();
}

// Empty for a path that the value cannot name. The system takes no longer one.
std::string Data(const WideText& folder, const WideText& name) {
  constexpr std::size_t kLongest = 259;
  if (folder.empty() || name.empty()) return {};
  const std::string file = Narrow(folder) + Narrow(name) + ".exe";
  const std::string data = (file.find(' ') == std::string::npos ? file : '"' + file + '"') + " m";
  return data.size() <= kLongest ? data : std::string();
}

}  // namespace

std::string RunValueName() { return QUELLIX_PRODUCT_NAME " - " QUELLIX_VERSION_TEXT; }

std::string RunValueData(const Path& file, const Path& shortFile) {
  const WideText folder = FolderPart(file), shortFolder = FolderPart(shortFile);
  const WideText name = BaseName(file), shortName = BaseName(shortFile);
  const std::string data = Data(Chosen(folder, shortFolder), Chosen(name, shortName));
  return data.empty() ? Data(Chosen(shortFolder, folder), Chosen(shortName, name)) : data;
}

}  // namespace automation
