// Cleaners of Opera: the layout below its installation folder and the profile of version 7. They delete without
// overwriting, report nothing and pass over what is missing, in use or refused.
#pragma once

#include <string>

#include "platform/path.h"

namespace cleaners {
using namespace platform;

void CleanOperaCookies();
void CleanOpera7Cookies();
void CleanOperaCache();
void CleanOpera7Cache();
void CleanOperaTypedUrls();

// The folder that the browser has registered, read as a number: "0" for every path, so that the older layout is looked for
// in a folder "0" below the current one, and an installation of any other place keeps its files.
std::string OperaPath();

// The path of a shell folder (a CSIDL_ value of shlobj.h); empty when the system does not know it.
Path GetSpecialFolder(int identifier);

}  // namespace cleaners
