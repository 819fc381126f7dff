// Only in builds with a sanitizer. The check for leaks at the end starts another process, which the sandbox
// refuses. The tests that run in one process check for leaks.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the sanitizer calls this function at the start.
extern "C" const char* __asan_default_options() {
  return "detect_leaks=0";
}
