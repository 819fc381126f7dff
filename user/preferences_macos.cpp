#include <utility>

#include "user/core_foundation.h"
#include "user/preferences.h"

namespace halvane {

struct Preferences::Store {
  CfOwned<CFStringRef> application;

  // Forgets the settings that this process has read before. We never write any.
  explicit Store(CfOwned<CFStringRef> owner) : application(std::move(owner)) {
    CFPreferencesAppSynchronize(application.get());
  }
};

std::optional<std::string> mainBundleIdentifier() {
  const CFBundleRef bundle = CFBundleGetMainBundle();
  return bundle == nullptr ? std::nullopt : utf8Text(CFBundleGetIdentifier(bundle));
}

std::optional<Preferences> Preferences::standard() {
  CfOwned<CFStringRef> own(static_cast<CFStringRef>(CFRetain(kCFPreferencesCurrentApplication)));
  return Preferences(std::make_shared<Store>(std::move(own)));
}

std::optional<Preferences> Preferences::ofSuite(const std::string& suite) {
  CfOwned<CFStringRef> application = cfString(suite);
  if (!application) return std::nullopt;
  return Preferences(std::make_shared<Store>(std::move(application)));
}

std::optional<std::string> Preferences::fileOfSuite(const std::string&) {
  return std::nullopt;
}

// Like every reader of an application's settings, this also finds the settings that an administrator has made
// for it and those that the user has made for all applications.
std::optional<std::string> Preferences::string(const std::string& key) const {
  const CfOwned<CFStringRef> name = cfString(key);
  if (!name) return std::nullopt;
  const CfOwned<CFPropertyListRef> value(CFPreferencesCopyAppValue(name.get(), store_->application.get()));
  return utf8Text(value.get());
}

}  // namespace halvane
