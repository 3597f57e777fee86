// Web addresses of the product, set by the build (CMakeLists.txt).
#pragma once

#if !defined(QUELLIX_PROBE_ADDRESS) || !defined(QUELLIX_HELP_ADDRESS) || !defined(QUELLIX_CONTACT_ADDRESS)
#error "The build sets the addresses."
#endif

namespace platform {

constexpr char kProbeAddress[] = QUELLIX_PROBE_ADDRESS;      // opened to find out whether the machine is on line
constexpr char kHelpAddress[] = QUELLIX_HELP_ADDRESS;        // shown on the Help panel and opened from it
constexpr char kContactAddress[] = QUELLIX_CONTACT_ADDRESS;  // opened by "Click here to contact us"

}  // namespace platform
