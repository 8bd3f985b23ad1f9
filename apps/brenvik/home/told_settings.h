// The settings with an eye on their values: a switch that holds a word, a size that is none. The system reads
// them by its lenient rules, so nobody would hear of it.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/letter_case.h"
#include "session/ports/settings_port.h"

namespace brenvik::app {

/// What was expected of a value of the system's key or one of its subkeys; blank where it can stand, and for
/// values of other keys.
std::string ValueFaultAt(std::string_view path, std::string_view name, std::string_view value);

/// Passes everything on to the store. A value that its setting can't have is reported when it is first read
/// or saved, once in the life of this object: file, line, name, value, and what was expected.
class ToldSettings : public SettingsPort {
  public:
    /// `shownFile` is what the messages call the store, which must outlive this; `programWords` are how the
    /// program is called for it.
    ToldSettings(SettingsPort& settingsStore, std::string shownFile, std::string programWords);

    /// Where the messages go; standard error by default.
    std::function<void(const std::string&)> tell;

    /// The line of a value in the store's file, 0 if it is unknown.
    std::function<std::size_t(std::string_view path, std::string_view name)> lineOf;

    /// Faults of the store apart from its values, a text each: asked once, when the system first reads from
    /// it.
    std::function<std::vector<std::string>()> storeFaults;

    /// Reports other damage to the store.
    void TellDamage(const std::string& text) { Tell(text); }

    /// Whether a damaged value has been read, or any damage to the store was reported.
    bool DamageFound() const { return mDamageFound; }
    /// The same check for a value that was read another way. A blank value that isn't stored at all is
    /// reported as missing.
    void Look(std::string_view path, std::string_view name, std::string_view value);

    std::string GetSetting(SettingsRoot root, std::string_view path, std::string_view name) override;
    void SaveSetting(SettingsRoot root, std::string_view path, std::string_view name,
                     std::string_view text) override;
    void DeleteSetting(SettingsRoot root, std::string_view path, std::string_view name) override;
    std::vector<std::pair<std::string, std::string>> EnumerateSettings(SettingsRoot root,
                                                                       std::string_view path) override;
    void ChangeTogether(const std::function<void()>& changes) override;

  private:
    bool IsStored(std::string_view path, std::string_view name);
    void TellStoreFaults();
    void Tell(const std::string& text);

    SettingsPort& mStore;
    std::string mFile, mProgram;
    std::set<std::string, LessIgnoreCase> mTold;
    bool mDamageFound = false, mStoreLookedAt = false;
};

}  // namespace brenvik::app
