// Reads a journal: UTF-8 text, a step per line, "#" for comments, words parted by blanks, words with blanks
// in double quotes. The whole journal is checked before its first step is played, so that a slip of the
// pen in the last line doesn't leave half the work done.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "journal/journal_step.h"

namespace brenvik {

/// A journal that can't be read. what() is "FILE:LINE:COLUMN: expected ..., found ...".
class JournalSyntaxError : public std::runtime_error {
  public:
    JournalSyntaxError(const std::string& file, std::size_t line, std::size_t column,
                       const std::string& expected, const std::string& found);
    std::size_t Line() const { return mLine; }
    std::size_t Column() const { return mColumn; }

  private:
    std::size_t mLine, mColumn;
};

/// The steps of a journal's text; `file` is its name for messages. Line ends are LF or CR LF, and a byte
/// order mark at the head is passed over. A "#" starts a comment at the head of a word, except in an item's
/// index such as "#2", which can't be a line's first word. Inside quotes \" \\ \r and \n stand for the usual
/// characters. Throws JournalSyntaxError.
std::vector<JournalStep> ParseJournal(std::string_view text, const std::string& file);

/// A text as a word of a journal, in quotes: read back, it is the same.
std::string JournalText(std::string_view text);

/// "X,Y" or "X,Y,Z" as three numbers; false for anything else.
bool ParseJournalPoint(std::string_view text, double (&coordinates)[3]);

}  // namespace brenvik
