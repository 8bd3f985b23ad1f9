// The settings store: every value is a text under a key path, as in a registry. The platform decides
// where it lies; key paths, value names and text form are the same everywhere.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace brenvik {

/// The only root that the system uses.
enum class SettingsRoot { LocalMachine };

class SettingsPort {
  public:
    virtual ~SettingsPort() = default;
    /// The value, or blank if there is none. Key paths and names compare without regard to case.
    virtual std::string GetSetting(SettingsRoot root, std::string_view path, std::string_view name) = 0;
    /// Written through at once, whole or not at all; fails when the store can't be written.
    virtual void SaveSetting(SettingsRoot root, std::string_view path, std::string_view name,
                             std::string_view text) = 0;
    /// Deleting what isn't there does nothing.
    virtual void DeleteSetting(SettingsRoot root, std::string_view path, std::string_view name) = 0;
    /// Names and values that lie directly under the path, in the order of their first writing.
    virtual std::vector<std::pair<std::string, std::string>> EnumerateSettings(SettingsRoot root,
                                                                               std::string_view path) = 0;
    /// Does what `changes` saves and deletes as one change, which other programs see whole or not at all and
    /// which none of theirs comes between: what `changes` reads is what it changes. If it fails, nothing is
    /// changed. A store whose platform changes value by value only runs it.
    virtual void ChangeTogether(const std::function<void()>& changes) { changes(); }
};

}  // namespace brenvik
