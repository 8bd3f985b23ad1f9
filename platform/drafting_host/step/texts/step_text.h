// The text of a STEP file as text: is it one, is it whole, in which code page are its names, and where
// does it break.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/failure.h"

namespace brenvik::step {

/// Code pages that names in a STEP file are written in. The format knows ASCII and escapes only, but
/// programs write what their system has.
enum class CodePage { Utf8, Cyrillic, Western, Japanese };

/// The failure 321 "Invalid file format" for a place in a file; `line` 0 means no line is known.
Failure FormatFailure(const std::filesystem::path& path, std::size_t line, std::string_view expected);

/// The whole content of the file. Throws Failure 53 when it isn't there, 75 when it can't be read.
std::string ContentOf(const std::filesystem::path& path);

/// Throws FormatFailure unless the content, without its comments, opens as a STEP file.
void RequireStep(const std::filesystem::path& path, std::string_view content);

/// The content with blanks in the place of its comments, line for line: what looks like a number, a bracket
/// or a quote within a comment is none, and whoever goes over statements need not know comments. One that
/// isn't closed stays as it is.
std::string WithoutComments(std::string content);

/// The code page of the names: UTF-8 when all of the content is; Japanese (Shift-JIS) when all of it reads as
/// that and some of it can hardly be anything else; otherwise Cyrillic where such bytes stand in whole words,
/// western where they stand alone among plain letters.
CodePage CodePageOf(std::string_view content);

/// The text with the noise among its numbers, and negative zeros, as 0. What stands in quotes stays.
std::string WithoutNoise(std::string_view content);

/// A number as statements have it, which reads back as the same double: "600.", "1.E-16".
std::string RealText(double value);

}  // namespace brenvik::step
