// The settings store as one text file, for platforms without a registry. The form of the file is described in
// settings_text.h.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>

#include "session/ports/settings_port.h"
#include "session/ports/whole_file_writer.h"
#include "settings_store/settings_text.h"

namespace brenvik {

/// The section of the file that holds the values under a path.
std::string SectionPath(SettingsRoot root, std::string_view path);

/// Settings in a text file. A missing file is an empty store; it is made by the first save. A change of
/// the file by another program or an editor is seen at the next call. A save changes its own value in what
/// the file holds at that moment, while other programs wait, so that of two programs neither loses the
/// other's values. A damaged file fails every call with Failure 321, which names file, line and what was
/// expected, and is never written over.
class TextSettings : public SettingsPort {
  public:
    TextSettings(std::filesystem::path file, WholeFileWriter write);

    std::string GetSetting(SettingsRoot root, std::string_view path, std::string_view name) override;
    void SaveSetting(SettingsRoot root, std::string_view path, std::string_view name,
                     std::string_view text) override;
    void DeleteSetting(SettingsRoot root, std::string_view path, std::string_view name) override;
    std::vector<std::pair<std::string, std::string>> EnumerateSettings(SettingsRoot root,
                                                                       std::string_view path) override;

    /// The lines of the file.
    std::vector<SettingsFileLine> Lines();

    void ChangeTogether(const std::function<void()>& changes) override;

    /// From here on reads see the values of this content and what is saved here, whatever other programs
    /// write; changes made together still see the file. A damaged content fails as a file does.
    void HoldAt(std::string_view content);

  private:
    // Distinguishes states of the file without reading it.
    struct Stamp {
        bool exists = false;
        std::uintmax_t size = 0;
        std::filesystem::file_time_type time{};
        bool operator==(const Stamp&) const = default;
    };

    Stamp ReadStamp() const;
    std::string ReadWhole() const;
    void Refresh();
    const SettingsText& Seen();
    void ReadAnew();
    void Write(const SettingsText& changed);
    void Change(const std::function<bool(SettingsText&)>& change);

    std::filesystem::path mFile;
    WholeFileWriter mWrite;
    SettingsText mSettings;
    /// Of the file that mSettings was read from; null if it has to be read anew.
    std::optional<Stamp> mStamp;
    /// Changes gather in mSettings, which is ahead of the file.
    bool mTogether = false;
    /// What reads see.
    std::optional<SettingsText> mHeld;
};

}  // namespace brenvik
