// The text of a STEP file as text: is it one, is it whole, in which code page are its names, and where
// does it break.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/failure.h"

namespace brenvik::step {

/// Code pages that names in a STEP file are written in. The format knows ASCII and escapes only, but
/// programs write what their system has.
enum class CodePage { Utf8, Cyrillic, Western };

/// The failure 321 "Invalid file format" for a place in a file; `line` 0 means no line is known.
Failure FormatFailure(const std::filesystem::path& path, std::size_t line, std::string_view expected);

/// The whole content of the file. Throws Failure 53 when it isn't there, 75 when it can't be read.
std::string ContentOf(const std::filesystem::path& path);

/// Throws FormatFailure unless the content opens as a STEP file and comes to its end mark.
void RequireWholeStep(const std::filesystem::path& path, std::string_view content);

/// The code page of the names: UTF-8 when all of the content is, otherwise Cyrillic where such bytes
/// stand in whole words, western where they stand alone among plain letters.
CodePage CodePageOf(std::string_view content);

/// The line (from 1) of the first statement that is not well formed, 0 when all are.
std::size_t BrokenLine(std::string_view content);

/// The modeller keeps the numbers of statements in 32 bits, and falls over higher ones.
inline constexpr long highestStatement = 2147483647;

/// The line (from 1) of the first statement number beyond highestStatement, 0 when there is none.
std::size_t OverlongNumberLine(std::string_view content);

/// A reference to a statement that the file doesn't have: the number, and the line (from 1) that refers to
/// it.
struct LostReference {
    int number = 0;
    std::size_t line = 0;
};
/// The first one of the content's data; nothing when all statements are there.
std::optional<LostReference> FirstLostReference(std::string_view content);

/// A statement number that stands twice, and the lines (from 1) of both statements.
struct RepeatedStatement {
    int number = 0;
    std::size_t firstLine = 0, line = 0;
};
/// The first one of the content's data; nothing when each number stands once.
std::optional<RepeatedStatement> FirstRepeatedStatement(std::string_view content);

/// What stands in a line (from 1), cut to a length that a message takes.
std::string LineForMessage(std::string_view content, std::size_t line);

/// The line (from 1) of the statement "#number = ...", 0 when there is none.
std::size_t LineOfStatement(std::string_view content, int number);

/// The same for many statements of one content, which is gone through once, at the first question.
class StatementLines {
  public:
    explicit StatementLines(std::string_view content) : mContent(content) {}
    std::size_t Of(int number) const;

  private:
    std::string_view mContent;
    mutable std::unordered_map<int, std::size_t> mLines;
};

/// The number of an oriented edge that holds an oriented edge, 0 when there is none. The format forbids
/// it, and the modeller follows such edges without end while it loads the file.
int NestedOrientedEdge(std::string_view content);

/// The text with the noise among its numbers, and negative zeros, as 0. What stands in quotes stays.
std::string WithoutNoise(std::string_view content);

}  // namespace brenvik::step
