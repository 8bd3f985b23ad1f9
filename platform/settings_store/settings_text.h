// The text form of the settings store. A file is UTF-8 with a section for each key and a line for each
// value under it:
//
//   # anything behind a number sign at the head of a line is a remark
//   [HKEY_LOCAL_MACHINE\SOFTWARE\Orvane, Inc.\Brenvik04]
//   CircleSize=35
//   MDBPath=d:\\shop\\bv04.mdb
//
// The value is everything behind the first "=", blanks too. In names and values a backslash begins an
// escape: \\ is a backslash, \n a line feed, \r a carriage return, \xHH the byte of that hexadecimal
// number, and before = # [ or a blank it stands for that character, where a name would otherwise be read as
// something else. A section's path is written as it is. Remarks, blank lines and lines with no "=" are
// kept where they stand. Every line ends in a line break, the last one too, so that a file that was cut
// off can be recognised.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace brenvik {

/// A line of a settings file that isn't blank or a remark.
struct SettingsFileLine {
    enum class Kind { SectionHead, Value, Stray };
    std::size_t number = 0;  ///< From 1.
    Kind kind = Kind::Stray;
    std::string section;      ///< The path of the section that it is in, or begins.
    std::string name, value;  ///< Of a value; the text of a stray line, which holds no value, is its name.
};

/// The content of a settings file. Key paths and names compare without regard to case; where one stands
/// twice the first counts.
class SettingsText {
  public:
    SettingsText() = default;

    /// Reads a file's content. `fileName` is for the messages. Throws Failure 321 with a description that
    /// names the file, the line and what was expected there.
    static SettingsText Parse(std::string_view content, std::string_view fileName);

    /// The whole content; what was not changed is as it was read.
    std::string Content() const;

    std::optional<std::string> Find(std::string_view path, std::string_view name) const;
    /// Changes a value, or adds it behind the last value of its section, or adds the section at the end.
    /// Throws Failure 5 for a path that can't stand in a section head.
    void Set(std::string_view path, std::string_view name, std::string_view value);
    /// Returns whether there was such a value.
    bool Remove(std::string_view path, std::string_view name);
    /// The values directly under a path, in the order of the file.
    std::vector<std::pair<std::string, std::string>> ValuesUnder(std::string_view path) const;
    /// All that is written in it, also where nobody would look for it.
    std::vector<SettingsFileLine> Lines() const;

  private:
    enum class LineKind { Other, SectionHead, Value, Stray };

    struct Line {
        LineKind kind = LineKind::Other;
        std::string raw;     ///< with its line break
        std::string folded;  ///< path or name in lower case, for comparing
        std::string name;
        std::string value;
    };

    static Line ReadLine(std::string_view text, std::string_view lineBreak, const std::string& place);
    std::size_t FindSection(std::string_view path) const;
    std::size_t SectionEnd(std::size_t section) const;
    std::size_t FindValue(std::string_view path, std::string_view name) const;
    Line ValueLine(std::string_view name, std::string_view value) const;

    std::vector<Line> mLines;
    std::string mLineBreak = "\n";
};

}  // namespace brenvik
