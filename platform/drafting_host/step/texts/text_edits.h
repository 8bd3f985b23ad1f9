// Pieces of a STEP file's text that are written anew before the modeller reads it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {

/// What comes to stand in the place of a piece of text.
struct TextEdit {
    std::size_t place = 0, length = 0;
    std::string text;
};

/// The edit of the reference whose "#" stands at `place`.
TextEdit ReferenceEdit(std::string_view content, std::size_t place, std::string text);

/// How a statement's number stands in a reference.
std::string Shown(int number);

/// Statements that a file gets, numbered on from its highest.
class NewStatements {
  public:
    explicit NewStatements(const Statements& statements);

    /// The number of the new statement "KIND(...)", 0 where there is none left.
    int Add(const std::string& values);
    /// Puts them behind the file's own.
    TextEdit Edit() const { return {mPlace, 0, mText}; }

  private:
    int mLast = 0;
    std::size_t mPlace = 0;
    std::string mText;
};

/// The text with all edits made; of several at one place with the first.
std::string WithEdits(std::string content, std::vector<TextEdit> edits);

}  // namespace brenvik::step
