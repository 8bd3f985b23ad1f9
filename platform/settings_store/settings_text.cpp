// Reading, changing and writing the lines of a settings file.
#include "settings_store/settings_text.h"

#include <algorithm>
#include <cstddef>

#include "base/byte_order_mark.h"
#include "base/file_failure.h"
#include "base/hex.h"
#include "base/letter_case.h"
#include "base/text.h"
#include "base/utf8.h"

namespace brenvik {
namespace {

Failure Damaged(const std::string& place, const std::string& expected) {
    return Failure(failure_number::InvalidFileFormat, std::string(OwnSource), place + ": " + expected);
}

bool IsControl(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 0x20 && c != '\t') || byte == 0x7F;
}

std::optional<int> HexDigit(char c) {
    const std::size_t at = SmallHexDigits.find(FoldLower(std::string_view(&c, 1)));
    return at == std::string_view::npos ? std::nullopt : std::optional(static_cast<int>(at));
}

void AppendByteEscape(std::string& text, char c) {
    text += "\\x";
    AppendHex(text, static_cast<unsigned char>(c), 2, SmallHexDigits);
}

std::string Escaped(std::string_view text, bool isName) {
    std::string escaped;
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Character character = Utf8CharacterAt(text, at);
        const char c = text[at];
        // At its head a name could be taken for a remark or a section, and its blanks are no decoration.
        const bool ambiguous = isName && (c == '=' || (at == 0 && (c == '#' || c == '[' || c == ' ')) ||
                                          (c == ' ' && at + 1 == text.size()));
        if (c == '\n')
            escaped += "\\n";
        else if (c == '\r')
            escaped += "\\r";
        else if (!character.valid || IsControl(c))
            AppendByteEscape(escaped, c);
        else if (c == '\\' || ambiguous)
            (escaped += '\\') += c;
        else
            escaped += text.substr(at, character.length);
        at += character.length;
    }
    return escaped;
}

// Takes the escape that begins at `at` and moves behind it.
char TakeEscape(std::string_view text, std::size_t& at, const std::string& place) {
    const char kind = at + 1 < text.size() ? text[at + 1] : '\0';
    if (kind == 'x' && at + 3 < text.size()) {
        const std::optional<int> high = HexDigit(text[at + 2]);
        const std::optional<int> low = HexDigit(text[at + 3]);
        if (high && low) {
            at += 4;
            return static_cast<char>(*high * 16 + *low);
        }
    }
    at += 2;
    if (kind == 'n') return '\n';
    if (kind == 'r') return '\r';
    if (kind != '\0' && std::string_view("\\=#[ ").find(kind) != std::string_view::npos) return kind;
    throw Damaged(place, "a backslash stands alone; expected \\\\ for a backslash, \\n, \\r or \\xHH");
}

std::string Unescaped(std::string_view text, const std::string& place) {
    std::string plain;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] == '\\')
            plain += TakeEscape(text, at, place);
        else
            plain += text[at++];
    }
    return plain;
}

// The "=" that parts name and value.
std::size_t FindEquals(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\\')
            ++at;
        else if (text[at] == '=')
            return at;
    }
    return std::string_view::npos;
}

// Whether a text is valid UTF-8 with no control characters, so that it can stand on a line.
bool IsLineText(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Character character = Utf8CharacterAt(text, at);
        if (!character.valid || IsControl(text[at])) return false;
        at += character.length;
    }
    return true;
}

// What was expected of a line that IsLineText refuses.
std::string ExpectedOf(std::string_view text) {
    if (text.find('\r') != std::string_view::npos)
        return "expected lines that end in LF or CR LF, found a CR alone";
    return "expected UTF-8 text, found other bytes; the file is damaged";
}

// What was expected of a last line without an end.
std::string ExpectedEnd(std::string_view rest) {
    if (rest.find('\r') != std::string_view::npos) return ExpectedOf(rest);
    return "expected a line break at the end of the last line; the file was cut off";
}

}  // namespace

SettingsText::Line SettingsText::ReadLine(std::string_view text, std::string_view lineBreak,
                                          const std::string& place) {
    if (!IsLineText(text)) throw Damaged(place, ExpectedOf(text));
    Line line;
    line.raw = std::string(text) + std::string(lineBreak);
    if (IsBlank(text) || text.front() == '#') return line;
    if (text.front() == '[') {
        if (text.size() < 2 || text.back() != ']')
            throw Damaged(place, std::string("expected ] at the end of a section head") +
                                     (Trim(text).ends_with(']') ? ", found a blank behind it" : ""));
        line.kind = LineKind::SectionHead;
        line.name = text.substr(1, text.size() - 2);
        line.folded = FoldLower(line.name);
        return line;
    }
    const std::size_t equals = FindEquals(text);
    if (equals == std::string_view::npos) {
        line.kind = LineKind::Stray;
        line.name = text;
        return line;
    }
    line.kind = LineKind::Value;
    line.name = Unescaped(text.substr(0, equals), place);
    line.value = Unescaped(text.substr(equals + 1), place);
    line.folded = FoldLower(line.name);
    return line;
}

SettingsText SettingsText::Parse(std::string_view content, std::string_view fileName) {
    SettingsText settings;
    const auto place = [&](std::size_t number) {
        return std::string(fileName) + ", line " + std::to_string(number);
    };
    if (content.empty())
        throw Damaged(place(1),
                      "the file is empty; expected a section head such as [HKEY_LOCAL_MACHINE\\...]");
    if (const std::string found = OtherEncodingOf(content); !found.empty())
        throw Damaged(place(1), "expected UTF-8 text, found " + found);
    std::string_view rest = content;
    bool inSection = false;
    for (std::size_t number = 1; !rest.empty(); ++number) {
        const std::size_t feed = rest.find('\n');
        if (feed == std::string_view::npos) throw Damaged(place(number), ExpectedEnd(rest));
        const std::size_t lineBreak = feed > 0 && rest[feed - 1] == '\r' ? feed - 1 : feed;
        std::string_view text = rest.substr(0, lineBreak);
        const std::string_view ending = rest.substr(lineBreak, feed + 1 - lineBreak);
        if (number == 1) settings.mLineBreak = ending;
        const bool marked = number == 1 && text.starts_with(ByteOrderMark);
        if (marked) text.remove_prefix(ByteOrderMark.size());
        Line line = ReadLine(text, ending, place(number));
        if (marked) line.raw = std::string(ByteOrderMark) + line.raw;
        inSection = inSection || line.kind == LineKind::SectionHead;
        if (line.kind == LineKind::Value && !inSection)
            throw Damaged(place(number),
                          "expected a section head such as [HKEY_LOCAL_MACHINE\\...] before the first value");
        settings.mLines.push_back(std::move(line));
        rest.remove_prefix(feed + 1);
    }
    return settings;
}

std::string SettingsText::Content() const {
    std::string content;
    for (const Line& line : mLines) content += line.raw;
    return content;
}

std::size_t SettingsText::FindSection(std::string_view path) const {
    const std::string folded = FoldLower(path);
    const auto found = std::find_if(mLines.begin(), mLines.end(), [&](const Line& line) {
        return line.kind == LineKind::SectionHead && line.folded == folded;
    });
    return static_cast<std::size_t>(found - mLines.begin());
}

std::size_t SettingsText::SectionEnd(std::size_t section) const {
    const auto begin = mLines.begin() + static_cast<std::ptrdiff_t>(std::min(section + 1, mLines.size()));
    const auto found = std::find_if(begin, mLines.end(),
                                    [](const Line& line) { return line.kind == LineKind::SectionHead; });
    return static_cast<std::size_t>(found - mLines.begin());
}

std::size_t SettingsText::FindValue(std::string_view path, std::string_view name) const {
    const std::size_t section = FindSection(path);
    const std::size_t end = SectionEnd(section);
    const std::string folded = FoldLower(name);
    for (std::size_t at = section; at < end; ++at)
        if (mLines[at].kind == LineKind::Value && mLines[at].folded == folded) return at;
    return mLines.size();
}

std::optional<std::string> SettingsText::Find(std::string_view path, std::string_view name) const {
    const std::size_t at = FindValue(path, name);
    return at == mLines.size() ? std::nullopt : std::optional(mLines[at].value);
}

SettingsText::Line SettingsText::ValueLine(std::string_view name, std::string_view value) const {
    Line line;
    line.kind = LineKind::Value;
    line.raw = Escaped(name, true) + "=" + Escaped(value, false) + mLineBreak;
    line.folded = FoldLower(name);
    line.name = name;
    line.value = value;
    return line;
}

void SettingsText::Set(std::string_view path, std::string_view name, std::string_view value) {
    if (const std::size_t at = FindValue(path, name); at != mLines.size()) {
        mLines[at] = ValueLine(mLines[at].name, value);
        return;
    }
    std::size_t section = FindSection(path);
    if (section == mLines.size()) {
        if (!IsLineText(path))
            throw InvalidCall("a settings key path must be text on one line: " + std::string(path));
        if (!mLines.empty()) mLines.push_back({LineKind::Other, mLineBreak, {}, {}, {}});
        section = mLines.size();
        mLines.push_back({LineKind::SectionHead,
                          "[" + std::string(path) + "]" + mLineBreak,
                          FoldLower(path),
                          std::string(path),
                          {}});
    }
    std::size_t at = SectionEnd(section);
    while (at > section + 1 && mLines[at - 1].kind != LineKind::Value) --at;
    mLines.insert(mLines.begin() + static_cast<std::ptrdiff_t>(at), ValueLine(name, value));
}

bool SettingsText::Remove(std::string_view path, std::string_view name) {
    const std::size_t at = FindValue(path, name);
    if (at == mLines.size()) return false;
    mLines.erase(mLines.begin() + static_cast<std::ptrdiff_t>(at));
    return true;
}

std::vector<std::pair<std::string, std::string>> SettingsText::ValuesUnder(std::string_view path) const {
    std::vector<std::pair<std::string, std::string>> values;
    const std::size_t section = FindSection(path);
    const std::size_t end = SectionEnd(section);
    for (std::size_t at = section; at < end; ++at)
        if (mLines[at].kind == LineKind::Value) values.emplace_back(mLines[at].name, mLines[at].value);
    return values;
}

std::vector<SettingsFileLine> SettingsText::Lines() const {
    std::vector<SettingsFileLine> lines;
    std::string section;
    for (std::size_t at = 0; at < mLines.size(); ++at) {
        const Line& line = mLines[at];
        const std::size_t number = at + 1;
        switch (line.kind) {
            case LineKind::Other:
                break;
            case LineKind::SectionHead:
                section = line.name;
                lines.push_back({number, SettingsFileLine::Kind::SectionHead, section, {}, {}});
                break;
            case LineKind::Value:
                lines.push_back({number, SettingsFileLine::Kind::Value, section, line.name, line.value});
                break;
            case LineKind::Stray:
                lines.push_back({number, SettingsFileLine::Kind::Stray, section, line.name, {}});
                break;
        }
    }
    return lines;
}

}  // namespace brenvik
