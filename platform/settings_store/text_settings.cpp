// Keeping the text file and the settings in memory in step.
#include "settings_store/text_settings.h"

#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

#include "base/failure.h"
#include "base/path_text.h"
#include "settings_store/folder_lock.h"

namespace brenvik {

std::string SectionPath(SettingsRoot root, std::string_view path) {
    switch (root) {
        case SettingsRoot::LocalMachine:
            return "HKEY_LOCAL_MACHINE\\" + std::string(path);
    }
    return std::string(path);
}

TextSettings::TextSettings(std::filesystem::path file, WholeFileWriter write)
    : mFile(std::move(file)), mWrite(std::move(write)) {}

TextSettings::Stamp TextSettings::ReadStamp() const {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(mFile, error);
    if (status.type() == std::filesystem::file_type::not_found) return {};
    if (!std::filesystem::is_regular_file(status)) throw PathAccess(PathText(mFile));
    Stamp stamp{true, std::filesystem::file_size(mFile, error), {}};
    if (!error) stamp.time = std::filesystem::last_write_time(mFile, error);
    if (error) throw PathAccess(PathText(mFile));
    return stamp;
}

std::string TextSettings::ReadWhole() const {
    std::ifstream stream(mFile, std::ios::binary);
    if (!stream) throw PermissionDenied(PathText(mFile));
    std::ostringstream content;
    content << stream.rdbuf();
    // An empty file sets the failure bit of the target, which is no fault of the source.
    if (stream.bad()) throw PathAccess(PathText(mFile));
    return content.str();
}

void TextSettings::Refresh() {
    if (mTogether) return;
    const Stamp stamp = ReadStamp();
    if (stamp == mStamp) return;
    // The stamp is kept only once the content has been understood, so that a damaged file fails each call.
    SettingsText settings = stamp.exists ? SettingsText::Parse(ReadWhole(), PathText(mFile)) : SettingsText();
    mSettings = std::move(settings);
    mStamp = stamp;
}

// A stamp doesn't distinguish two states of one length within one tick of the file system's clock. What a
// read may show for a moment, a write must not put back.
void TextSettings::ReadAnew() {
    mStamp.reset();
    Refresh();
}

// Another program may follow at once, so the stamp is not taken for that of our own content.
void TextSettings::Write(const SettingsText& changed) {
    mStamp.reset();
    mWrite(mFile, changed.Content());
}

std::string TextSettings::GetSetting(SettingsRoot root, std::string_view path, std::string_view name) {
    return Seen().Find(SectionPath(root, path), name).value_or("");
}

void TextSettings::HoldAt(std::string_view content) { mHeld = SettingsText::Parse(content, PathText(mFile)); }

const SettingsText& TextSettings::Seen() {
    if (mHeld && !mTogether) return *mHeld;
    Refresh();
    return mSettings;
}

// Runs a change on what the file holds now; it says whether anything is different.
void TextSettings::Change(const std::function<bool(SettingsText&)>& change) {
    if (mTogether) {
        change(mSettings);
    } else {
        const FolderLock lock(mFile.parent_path());
        ReadAnew();
        SettingsText changed = mSettings;
        if (change(changed)) Write(changed);
    }
    if (mHeld) change(*mHeld);
}

void TextSettings::SaveSetting(SettingsRoot root, std::string_view path, std::string_view name,
                               std::string_view text) {
    Change([&](SettingsText& settings) {
        const std::string key = SectionPath(root, path);
        if (settings.Find(key, name) == text) return false;
        settings.Set(key, name, text);
        return true;
    });
}

void TextSettings::DeleteSetting(SettingsRoot root, std::string_view path, std::string_view name) {
    Change([&](SettingsText& settings) { return settings.Remove(SectionPath(root, path), name); });
}

void TextSettings::ChangeTogether(const std::function<void()>& changes) {
    if (mTogether) return changes();
    const FolderLock lock(mFile.parent_path());
    ReadAnew();
    const std::string before = mSettings.Content();
    const std::optional<SettingsText> heldBefore = mHeld;
    mTogether = true;
    try {
        changes();
        mTogether = false;
        if (mSettings.Content() != before) Write(mSettings);
    } catch (...) {
        mTogether = false;
        mStamp.reset();
        mHeld = heldBefore;
        throw;
    }
}

std::vector<std::pair<std::string, std::string>> TextSettings::EnumerateSettings(SettingsRoot root,
                                                                                 std::string_view path) {
    return Seen().ValuesUnder(SectionPath(root, path));
}

std::vector<SettingsFileLine> TextSettings::Lines() { return Seen().Lines(); }

}  // namespace brenvik
