// Walking the lines of a settings file.
#include "home/settings_file_check.h"

#include <map>
#include <optional>
#include <string_view>

#include "base/letter_case.h"
#include "base/quoted.h"
#include "settings/setting_values.h"
#include "settings/settings_keys.h"
#include "settings_store/text_settings.h"

namespace brenvik::app {

namespace {

std::string SectionOf(std::string_view subkey) {
    return SectionPath(SettingsRoot::LocalMachine,
                       std::string(SettingsKeyPath) + (subkey.empty() ? "" : "\\") + std::string(subkey));
}

bool IsOurs(std::string_view section) {
    for (const std::string_view subkey : {std::string_view(), CsvSaveSubkey, AccessSaveSubkey})
        if (EqualsIgnoreCase(section, SectionOf(subkey))) return true;
    return false;
}

class FileCheck {
  public:
    explicit FileCheck(const std::string& fileName) : mFile(fileName) {}

    void LookAt(const SettingsFileLine& line) {
        switch (line.kind) {
            case SettingsFileLine::Kind::SectionHead:
                LookAtHead(line);
                break;
            case SettingsFileLine::Kind::Value:
                if (mIsRead) LookAtValue(line);
                break;
            case SettingsFileLine::Kind::Stray:
                Tell(line, "expected NAME=VALUE, found " + InQuotes(line.name) + "; it is not read");
                break;
        }
    }

    std::vector<std::string> faults;

  private:
    void Tell(const SettingsFileLine& line, const std::string& text) {
        faults.push_back(mFile + ":" + std::to_string(line.number) + ": " + text);
    }

    void LookAtHead(const SettingsFileLine& line) {
        mIsRead = false;
        if (!IsOurs(line.section)) {
            Tell(line, "expected [" + SectionOf({}) + "], found [" + line.section +
                           "]; the lines below it are not read");
        } else if (const auto [first, isNew] = mHeads.try_emplace(line.section, line.number); !isNew) {
            Tell(line, "the section [" + line.section + "] stands in line " + std::to_string(first->second) +
                           " already; the lines below it here are not read");
        } else {
            mIsRead = true;
            mNames.clear();
        }
    }

    void LookAtValue(const SettingsFileLine& line) {
        const std::optional<std::string_view> subkey = SubkeyOfSetting(line.name);
        if (!subkey)
            return Tell(line,
                        "expected the name of a setting, found " + InQuotes(line.name) + "; it is not read");
        if (!EqualsIgnoreCase(SectionOf(*subkey), line.section))
            return Tell(line, "expected " + line.name + " in the section [" + SectionOf(*subkey) +
                                  "]; it is not read here");
        const auto [first, isNew] = mNames.try_emplace(line.name, line);
        if (!isNew)
            Tell(line, line.name + " stands in line " + std::to_string(first->second.number) +
                           " already, and what stands there counts: " + InQuotes(first->second.value) +
                           "; found " + InQuotes(line.value));
    }

    const std::string& mFile;
    bool mIsRead = false;
    std::map<std::string, std::size_t, LessIgnoreCase> mHeads;
    /// Of the present section.
    std::map<std::string, SettingsFileLine, LessIgnoreCase> mNames;
};

}  // namespace

std::vector<std::string> SettingsFileFaults(std::span<const SettingsFileLine> lines,
                                            const std::string& file) {
    FileCheck check(file);
    for (const SettingsFileLine& line : lines) check.LookAt(line);
    return std::move(check.faults);
}

std::size_t LineOfSetting(std::span<const SettingsFileLine> lines, std::string_view path,
                          std::string_view name) {
    const std::string section = SectionPath(SettingsRoot::LocalMachine, path);
    for (const SettingsFileLine& line : lines)
        if (line.kind == SettingsFileLine::Kind::Value && EqualsIgnoreCase(line.name, name) &&
            EqualsIgnoreCase(line.section, section))
            return line.number;
    return 0;
}

}  // namespace brenvik::app
