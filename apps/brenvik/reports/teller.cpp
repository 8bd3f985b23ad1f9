// Lines on standard error.
#include "reports/teller.h"

#include <iostream>

#ifdef _WIN32
#include <io.h>
#else
#include <sys/ioctl.h>
#include <unistd.h>
#endif

#include "base/western_text.h"

namespace brenvik::app {

namespace {

bool ErrorsGoToATerminal() {
#ifdef _WIN32
    return _isatty(2) != 0;
#else
    return isatty(2) != 0;
#endif
}

/// 0 where the terminal doesn't say.
std::size_t ColumnsOfErrors() {
#ifdef _WIN32
    return 0;
#else
    winsize size{};
    return ::ioctl(2, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
#endif
}

/// As much of a step as stands on one line with what follows it: of a longer one only the last line would be
/// wiped away.
std::string Fitted(const std::string& step, std::size_t columns) {
    constexpr std::size_t behind = 5;
    if (columns <= behind) return step;
    std::size_t shown = 0, end = 0;
    const auto goesOn = [&](std::size_t at) {
        return (static_cast<unsigned char>(step[at]) & 0xC0U) == 0x80U;
    };
    while (end < step.size() && shown < columns - behind) {
        ++shown;
        do ++end;
        while (end < step.size() && goesOn(end));
    }
    return step.substr(0, end);
}

}  // namespace

Teller::Teller(bool quietWished) : mQuiet(quietWished), mTerminal(ErrorsGoToATerminal()) {}

Teller::~Teller() { Wipe(); }

void Teller::Progress(const std::string& step) {
    if (mQuiet || !mTerminal) return;
    Wipe();
    std::cerr << Fitted(step, ColumnsOfErrors()) << " ..." << std::flush;
    mProgressShown = true;
}

void Teller::Remark(const std::string& text) {
    if (!mQuiet) Tell(text);
}

void Teller::Tell(const std::string& text) {
    Wipe();
    // Bytes of other code pages come out of files that others have written.
    std::cerr << WesternAsUtf8(text) << '\n';
}

void Teller::Loss(const std::string& text) {
    Tell(text);
    mLost = true;
}

void Teller::Wipe() {
    if (mProgressShown) std::cerr << "\r\033[K" << std::flush;
    mProgressShown = false;
}

}  // namespace brenvik::app
