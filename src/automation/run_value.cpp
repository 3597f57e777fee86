#include "automation/run_value.h"

#include "platform/product.h"
#include "platform/wide_system.h"

namespace automation {
using namespace platform;

namespace {

WideText FolderPart(const Path& file) { return file.IsEmpty() ? WideText() : AppendBackslash(file.Parent().Shown()); }
WideText BaseName(const Path& file) { return WideText(file.Name().substr(0, file.Name().rfind('.'))); }

// What is read as it is written: without blanks and dots that are cut off, and of letters that the code page has.
bool LeadsThere(const WideText& part) {
  return part.find(' ') == WideText::npos && part.find(Wide<".\\">()) == WideText::npos && NarrowExactly(part);
}

std::string Chosen(const WideText& part, const WideText& shortPart) {
  return Narrow(LeadsThere(part) || shortPart.empty() ? part : shortPart);
}

}  // namespace

std::string RunValueName() { return QUELLIX_PRODUCT_NAME " - " QUELLIX_VERSION_TEXT; }

std::string RunValueData(const Path& file, const Path& shortFile) {
  return Chosen(FolderPart(file), FolderPart(shortFile)) + Chosen(BaseName(file), BaseName(shortFile)) + ".exe m";
}

}  // namespace automation
