#pragma once

// CoreFoundation's objects and strings, owned and in UTF-8, for the files that only macOS has.

#include <CoreFoundation/CoreFoundation.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace halvane {

struct CfRelease {
  void operator()(CFTypeRef object) const { CFRelease(object); }
};

/// Owns the object that a CoreFoundation function with Create or Copy in its name returns:
/// CfOwned<CFStringRef> owns a string. Null when the function returned null.
template <typename Reference>
using CfOwned = std::unique_ptr<std::remove_pointer_t<Reference>, CfRelease>;

/// `text` (UTF-8, NULs included) as a string of CoreFoundation's; null when it is not UTF-8.
inline CfOwned<CFStringRef> cfString(std::string_view text) {
  const auto* bytes = reinterpret_cast<const UInt8*>(text.data());
  return CfOwned<CFStringRef>(CFStringCreateWithBytes(
      kCFAllocatorDefault, bytes, static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8, false));
}

/// The whole text of `value` in UTF-8, NULs included; nothing when `value` is null, is not a string, or
/// contains half of a surrogate pair, which UTF-8 can't express.
inline std::optional<std::string> utf8Text(CFTypeRef value) {
  if (value == nullptr || CFGetTypeID(value) != CFStringGetTypeID()) return std::nullopt;
  const auto string = static_cast<CFStringRef>(value);
  const CFRange whole = CFRangeMake(0, CFStringGetLength(string));
  CFIndex size = 0;
  const CFIndex converted =
      CFStringGetBytes(string, whole, kCFStringEncodingUTF8, 0, false, nullptr, 0, &size);
  if (converted != whole.length) return std::nullopt;
  std::string text(static_cast<std::size_t>(size), '\0');
  CFStringGetBytes(string, whole, kCFStringEncodingUTF8, 0, false, reinterpret_cast<UInt8*>(text.data()),
                   size, nullptr);
  return text;
}

/// The user's time zone as it is set now, looked up at each call: that of TZ if it is the name of a zone, or
/// else that of System Settings. UTC if TZ is not UTF-8: CoreFoundation would end the process. Null only
/// without memory.
CfOwned<CFTimeZoneRef> systemTimeZone();

}  // namespace halvane
