// In builds with a sanitizer alone. A look for leaks at the end starts a process of its own, which the
// sandbox refuses; the tests that run in one process look for leaks.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the sanitizer's name for what it asks at the start.
extern "C" const char* __asan_default_options() {
  return "detect_leaks=0";
}
