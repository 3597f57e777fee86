// The application title: name of the settings, title of message boxes, agent name of the on-line probe.
//
// The single-instance check changes it and it is not set back, so that everything that takes the title afterwards takes
// the changed text. The settings of every installation are kept under it.
#pragma once

#include <string>

#include "platform/product.h"

namespace platform {

inline std::string AppTitle = QUELLIX_PRODUCT_NAME;

}  // namespace platform
