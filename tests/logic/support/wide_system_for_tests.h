// The system that the rules over wide texts ask, in the tests that run natively. The letters' cases are those of Unicode.
#pragma once

#include "platform/wide_system.h"

namespace platform {

enum class CodePage {
  kSingleByte,  // the first 256 characters of Unicode
  kDoubleByte,  // ASCII, and characters from U+4E00 on whose second byte may be 0x5C, as in the Far East
};
inline CodePage TestedCodePage = CodePage::kSingleByte;

// While one lives, the system has this code page, or no wide functions.
class OtherSystem {
 public:
  explicit OtherSystem(CodePage codePage, bool ansiNamesOnly = false) {
    TestedCodePage = codePage;
    AnsiNamesOnlyForTests = ansiNamesOnly;
  }
  OtherSystem(const OtherSystem&) = delete;
  OtherSystem& operator=(const OtherSystem&) = delete;
  ~OtherSystem() {
    TestedCodePage = CodePage::kSingleByte;
    AnsiNamesOnlyForTests = false;
  }
};

}  // namespace platform
