// The file is opened for each step and closed behind it, so that nothing waits in the program's memory.
#include "recording/journal_recorder.h"

#include <fstream>
#include <system_error>
#include <utility>

#include "base/text.h"
#include "file_roots/file_failures.h"
#include "file_roots/places.h"

namespace brenvik::desktop {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view Heading =
    "# What was done in the desktop program. \"brenvik run DRAWING --journal FILE\" does it again.\n";

}  // namespace

JournalRecorder::JournalRecorder(fs::path file, std::function<void(const std::string&)> tell)
    : mFile(std::move(file)), mTell(std::move(tell)) {
    std::ofstream stream(mFile, std::ios::binary | std::ios::trunc);
    stream << Heading << std::flush;
    if (!stream) throw FileFailure(std::make_error_code(std::errc::permission_denied), mFile);
    mLastBegins = mEnd = Heading.size();
}

void JournalRecorder::Step(const std::string& step, std::string_view replaces) {
    const bool inPlaceOfLast = !replaces.empty() && !mAnswered && mLast.starts_with(replaces);
    if (!inPlaceOfLast) mLastBegins = mEnd;
    mLast = step + "\n";
    mAnswered = false;
    Write(mLastBegins, mLast);
}

void JournalRecorder::Answer(const std::string& answer) {
    mAnswered = true;
    Write(mLastBegins, answer + "\n" + mLast);
    mLastBegins += answer.size() + 1;
}

void JournalRecorder::Remark(std::string_view text) {
    mAnswered = true;
    const std::string line = "# " + ReplaceAll(ReplaceAll(text, "\r", "\\r"), "\n", "\\n") + "\n";
    mLast += line;
    Write(mEnd, line);
}

void JournalRecorder::Write(std::uintmax_t from, const std::string& text) {
    std::error_code error;
    if (from < mEnd) fs::resize_file(mFile, from, error);
    std::ofstream stream(mFile, std::ios::binary | std::ios::app);
    stream << text << std::flush;
    mEnd = from + text.size();
    if ((!error && stream) || std::exchange(mTroubleTold, true)) return;
    mTell("The journal " + TextFromPath(mFile) + " can't be written any more; it ends here.");
}

}  // namespace brenvik::desktop
