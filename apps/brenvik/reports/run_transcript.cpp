// Standard error, a file, or both.
#include "reports/run_transcript.h"

#include <iostream>

#include "file_roots/places.h"
#include "shell/exit_status.h"

namespace brenvik::app {

TeeBuffer::int_type TeeBuffer::overflow(int_type character) {
    if (traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(character);
    const char one = traits_type::to_char_type(character);
    return xsputn(&one, 1) == 1 ? character : traits_type::eof();
}

std::streamsize TeeBuffer::xsputn(const char* text, std::streamsize count) {
    // Each takes its text even when the other can't.
    const std::streamsize toFirst = mFirst.sputn(text, count);
    const std::streamsize toSecond = mSecond.sputn(text, count);
    return toFirst < toSecond ? toFirst : toSecond;
}

int TeeBuffer::sync() {
    const int ofFirst = mFirst.pubsync(), ofSecond = mSecond.pubsync();
    return ofFirst == 0 && ofSecond == 0 ? 0 : -1;
}

RunTranscript::RunTranscript(const std::string& fileName, bool quiet) : mQuietWished(quiet) {
    if (fileName.empty()) return;
    mFile.open(PathFromText(fileName), std::ios::binary | std::ios::trunc);
    if (!mFile) throw CommandError(ExitStatus::Incomplete, fileName + ": the transcript can't be written");
    mTee = std::make_unique<TeeBuffer>(*std::cerr.rdbuf(), *mFile.rdbuf());
    mBoth = std::make_unique<std::ostream>(mTee.get());
}

std::ostream& RunTranscript::Stream() { return mBoth ? *mBoth : std::cerr; }

void RunTranscript::TellHostLine(std::string_view line, bool typedByUser) {
    if (mBoth)
        mFile << line << '\n';
    else if (typedByUser && !mQuietWished)
        std::cerr << line << '\n';
}

bool RunTranscript::Written() {
    if (!mBoth) return true;
    mBoth->flush();
    mFile.flush();
    return mFile.good() && mBoth->good();
}

}  // namespace brenvik::app
