// In builds with a sanitizer alone. A look for leaks at the end starts a process of its own, which the
// sandbox refuses; the tests that run in one process look for leaks.
extern "C" const char*
__asan_default_options();  // NOLINT(bugprone-reserved-identifier): the sanitizer's name

const char* __asan_default_options() {
  return "detect_leaks=0";
}  // NOLINT(bugprone-reserved-identifier)
