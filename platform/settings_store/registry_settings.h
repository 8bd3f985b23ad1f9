// The settings store in the Windows registry, where it has always been. Built on Windows only.
#pragma once

#include "session/ports/settings_port.h"

namespace brenvik {

/// Settings as text values (REG_SZ) of registry keys. Texts are UTF-8 on this side. Values of another
/// kind read as blank. Saving makes the key where it is missing and fails with 70 (permission denied)
/// where the user may not write it.
class RegistrySettings : public SettingsPort {
  public:
    std::string GetSetting(SettingsRoot root, std::string_view path, std::string_view name) override;
    void SaveSetting(SettingsRoot root, std::string_view path, std::string_view name,
                     std::string_view text) override;
    void DeleteSetting(SettingsRoot root, std::string_view path, std::string_view name) override;
    std::vector<std::pair<std::string, std::string>> EnumerateSettings(SettingsRoot root,
                                                                       std::string_view path) override;
};

}  // namespace brenvik
