#include "automation/run_value.h"

#include <string_view>

#include "platform/path_text.h"
#include "platform/product.h"

namespace automation {
using namespace platform;

namespace {

std::string_view FolderPart(std::string_view file) {
  const std::size_t slash = file.rfind('\\');
  return slash == std::string_view::npos ? std::string_view() : file.substr(0, slash);
}

std::string_view BaseName(std::string_view file) {
  const std::string_view name = file.substr(file.rfind('\\') + 1);
  return name.substr(0, name.rfind('.'));
}

using Part = std::string_view (*)(std::string_view);

std::string_view WithoutBlank(std::string_view file, std::string_view shortFile, Part part) {
  const bool cut = part(file).find(' ') != std::string_view::npos;
  return cut && !part(shortFile).empty() ? part(shortFile) : part(file);
}

}  // namespace

std::string RunValueName() { return QUELLIX_PRODUCT_NAME " - " QUELLIX_VERSION_TEXT; }

std::string RunValueData(const std::string& file, const std::string& shortFile) {
  return AppendBackslash(WithoutBlank(file, shortFile, &FolderPart)) +
         std::string(WithoutBlank(file, shortFile, &BaseName)) + ".exe m";
}

}  // namespace automation
