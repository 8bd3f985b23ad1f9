// Lines on standard error.
#include "teller.h"

#include <iostream>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace brenvik::app {

namespace {

bool ErrorsGoToATerminal() {
#ifdef _WIN32
    return _isatty(2) != 0;
#else
    return isatty(2) != 0;
#endif
}

}  // namespace

Teller::Teller(bool quietWished) : mQuiet(quietWished), mTerminal(ErrorsGoToATerminal()) {}

Teller::~Teller() { Wipe(); }

void Teller::Progress(const std::string& step) {
    if (mQuiet || !mTerminal) return;
    Wipe();
    std::cerr << step << " ..." << std::flush;
    mProgressShown = true;
}

void Teller::Remark(const std::string& text) {
    if (!mQuiet) Tell(text);
}

void Teller::Tell(const std::string& text) {
    Wipe();
    std::cerr << text << '\n';
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
