// Tells how it was started: writes its show state and its command line into a file beside itself, then ends.
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
  std::fprintf(file, "%d\n%s\n", show, ::GetCommandLineA());
  std::fclose(file);
  // In one step, so that who sees the file sees all of it.
  return ::MoveFileExA(unfinished.c_str(), result.c_str(), MOVEFILE_REPLACE_EXISTING) ? 0 : 1;
}
