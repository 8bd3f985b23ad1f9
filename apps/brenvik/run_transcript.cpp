// Standard error, a file, or both.
#include "run_transcript.h"

#include <iostream>

#include "exit_status.h"
#include "file_roots/places.h"

namespace brenvik::app {

TeeBuffer::int_type TeeBuffer::overflow(int_type character) {
    if (traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(character);
    const char one = traits_type::to_char_type(character);
    return xsputn(&one, 1) == 1 ? character : traits_type::eof();
}

std::streamsize TeeBuffer::xsputn(const char* text, std::streamsize count) {
    // Each takes its text even when the other can't.
    const std::streamsize toFirst = first.sputn(text, count);
    const std::streamsize toSecond = second.sputn(text, count);
    return toFirst < toSecond ? toFirst : toSecond;
}

int TeeBuffer::sync() {
    const int ofFirst = first.pubsync(), ofSecond = second.pubsync();
    return ofFirst == 0 && ofSecond == 0 ? 0 : -1;
}

RunTranscript::RunTranscript(const std::string& fileName, bool quiet) : quietWished(quiet) {
    if (fileName.empty()) return;
    file.open(PathFromText(fileName), std::ios::binary | std::ios::trunc);
    if (!file) throw CommandError(ExitStatus::Incomplete, fileName + ": the transcript can't be written");
    tee = std::make_unique<TeeBuffer>(*std::cerr.rdbuf(), *file.rdbuf());
    both = std::make_unique<std::ostream>(tee.get());
}

std::ostream& RunTranscript::Stream() { return both ? *both : std::cerr; }

void RunTranscript::TellHostLine(std::string_view line, bool typedByUser) {
    if (both)
        file << line << '\n';
    else if (typedByUser && !quietWished)
        std::cerr << line << '\n';
}

bool RunTranscript::Written() {
    if (!both) return true;
    both->flush();
    file.flush();
    return file.good() && both->good();
}

}  // namespace brenvik::app
