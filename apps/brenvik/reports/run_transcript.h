// The running transcript of a journal: message boxes, answers, and the host's command line.
#pragma once

#include <fstream>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

namespace brenvik::app {

/// Copies all output to both streams.
class TeeBuffer : public std::streambuf {
  public:
    TeeBuffer(std::streambuf& firstBuffer, std::streambuf& secondBuffer)
        : mFirst(firstBuffer), mSecond(secondBuffer) {}

  protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* text, std::streamsize count) override;
    int sync() override;

  private:
    std::streambuf &mFirst, &mSecond;
};

class RunTranscript {
  public:
    /// Blank file: all goes to standard error. Otherwise the file is begun anew and takes all, and standard
    /// error has all but the host's command line. Throws CommandError for a file that can't be begun.
    /// `quiet` leaves the host's command line out of standard error in any case.
    RunTranscript(const std::string& fileName, bool quiet);

    /// For message boxes and for the messages of the journal's player.
    std::ostream& Stream();
    /// A line of the host's command line. What the system itself types there is for the file alone.
    void TellHostLine(std::string_view line, bool typedByUser);
    /// Whether all of it has been written.
    bool Written();

  private:
    bool mQuietWished;
    std::ofstream mFile;
    std::unique_ptr<TeeBuffer> mTee;
    std::unique_ptr<std::ostream> mBoth;
};

}  // namespace brenvik::app
