// The settings file: any bytes are read or refused, what was read is written back byte for byte, and a
// saved value is found again by a new reader.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/file_failure.h"
#include "check.h"
#include "settings_store/settings_text.h"

namespace {

void CheckReading(std::string_view content) {
    try {
        const brenvik::SettingsText settings = brenvik::SettingsText::Parse(content, "settings.txt");
        brenvik::fuzz::Require(settings.Content() == content, "what was read is written back as it was");
    } catch (const brenvik::Failure& failure) {
        brenvik::fuzz::Require(failure.number() == brenvik::failure_number::InvalidFileFormat,
                               "a bad file is told as one");
    }
}

// The bytes as a name, a line feed and a value.
void CheckSaving(std::string_view bytes) {
    const std::size_t feed = bytes.find('\n');
    const std::string_view name = bytes.substr(0, feed);
    const std::string_view value = feed == std::string_view::npos ? "" : bytes.substr(feed + 1);
    brenvik::SettingsText settings;
    settings.Set("key", "first", "1");
    settings.Set("key", name, value);
    const auto again = brenvik::SettingsText::Parse(settings.Content(), "settings.txt");
    brenvik::fuzz::Require(again.Find("key", name) == value, "a saved value is found again");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    CheckReading(bytes);
    CheckSaving(bytes);
    return 0;
}
