// Tells how it was started: writes its show state, its command line and its current folder into a file beside itself, a
// line each, then ends.
#include <windows.h>

#include <cstdio>
#include <string>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int show) {
  char path[MAX_PATH] = "";
  ::GetModuleFileNameA(nullptr, path, MAX_PATH);
  const std::string result = std::string(path) + ".txt";
  const std::string unfinished = result + ".new";
  std::FILE* const file = std::fopen(unfinished.c_str(), "w");
  if (!file) return 1;
  char folder[MAX_PATH] = "";
  ::GetCurrentDirectoryA(MAX_PATH, folder);
  std::fprintf(file, "%d\n%s\n%s\n", show, ::GetCommandLineA(), folder);
  std::fclose(file);
  // In one step, so that who sees the file sees all of it.
  return ::MoveFileExA(unfinished.c_str(), result.c_str(), MOVEFILE_REPLACE_EXISTING) ? 0 : 1;
}
