// Whether the user's scheme of colours is one of high contrast.
#pragma once

namespace platform {

bool IsHighContrast();

}  // namespace platform
