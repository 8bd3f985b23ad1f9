// Words first, then the match of a line's words against the step forms. A line that fits no form is reported
// with the place up to which some form did fit, and with what could have stood there.
#include "journal/journal_parser.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/ascii.h"
#include "base/byte_order_mark.h"
#include "base/handle_text.h"
#include "base/hex.h"
#include "base/numbers.h"
#include "base/text.h"
#include "base/utf8.h"

namespace brenvik {

namespace {

struct Word {
    std::string text;
    std::size_t column = 1;  // In characters, from 1.
    bool quoted = false;
};

struct Place {
    const std::string& file;
    std::size_t line;
    [[noreturn]] void Fail(std::size_t column, const std::string& expected, const std::string& found) const {
        throw JournalSyntaxError(file, line, column, expected, found);
    }
};

bool IsGap(char character) { return character == ' ' || character == '\t'; }

/// Cuts one line into words.
class WordReader {
  public:
    WordReader(std::string_view lineText, const Place& linePlace) : mText(lineText), mPlace(linePlace) {}

    std::vector<Word> Words() {
        std::vector<Word> words;
        for (SkipGaps(); !AtEnd() && !AtComment(words.empty()); SkipGaps())
            words.push_back(mText[mAt] == '"' ? Quoted() : Plain());
        return words;
    }
    std::size_t EndColumn() const { return mColumn; }

  private:
    bool AtEnd() const { return mAt >= mText.size(); }
    bool AtComment(bool atLineHead) const {
        const bool index = !atLineHead && mAt + 1 < mText.size() && IsDigit(mText[mAt + 1]);
        return mText[mAt] == '#' && !index;
    }
    void SkipGaps() {
        while (!AtEnd() && IsGap(mText[mAt])) ++mAt, ++mColumn;
    }
    std::string_view TakeCharacter() {
        const Utf8Character character = Utf8CharacterAt(mText, mAt);
        // A message with the character of no code in it would end there.
        if (!character.valid || mText[mAt] == '\0')
            mPlace.Fail(mColumn, "UTF-8 text", "the byte " + HexOf(mText.substr(mAt, 1)));
        const std::string_view bytes = mText.substr(mAt, character.length);
        mAt += character.length;
        ++mColumn;
        return bytes;
    }
    Word Plain() {
        Word word{{}, mColumn, false};
        while (!AtEnd() && !IsGap(mText[mAt])) word.text += TakeCharacter();
        return word;
    }
    Word Quoted() {
        Word word{{}, mColumn, true};
        ++mAt, ++mColumn;
        while (!AtEnd() && mText[mAt] != '"') {
            if (mText[mAt] == '\\')
                word.text += Escaped();
            else
                word.text += TakeCharacter();
        }
        if (AtEnd()) mPlace.Fail(mColumn, "a closing quote", "the end of the line");
        ++mAt, ++mColumn;
        if (!AtEnd() && !IsGap(mText[mAt])) {
            const std::size_t start = mColumn;
            mPlace.Fail(start, "a blank behind the closing quote",
                        "\"" + std::string(TakeCharacter()) + "\"");
        }
        return word;
    }
    char Escaped() {
        const std::size_t start = mColumn;
        ++mAt, ++mColumn;
        if (AtEnd()) mPlace.Fail(start, "\\\", \\\\, \\r or \\n", "the end of the line");
        const std::string character(TakeCharacter());
        if (character == "\"" || character == "\\") return character[0];
        if (character == "r") return '\r';
        if (character == "n") return '\n';
        mPlace.Fail(start, "\\\", \\\\, \\r or \\n", "\\" + character);
    }

    std::string_view mText;
    const Place& mPlace;
    std::size_t mAt = 0, mColumn = 1;
};

bool IsWholeNumber(std::string_view text) { return !text.empty() && text.size() <= 9 && IsDigitsAlone(text); }

bool IsOneOf(std::string_view text, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), text) != words.end();
}

bool ArgumentFits(std::string_view kind, const Word& word) {
    if (kind == "HANDLE") return HandleFromText(word.text).has_value();
    if (kind == "ROW" || kind == "N") return IsWholeNumber(word.text);
    if (kind == "REAL") return IsNumeric(word.text);
    if (kind == "ANSWER") return IsOneOf(word.text, {"yes", "no", "ok", "cancel"});
    if (kind == "POINT") {
        double coordinates[3];
        return ParseJournalPoint(word.text, coordinates);
    }
    // Everything else is a text; only a text that a user types may be blank.
    return !word.text.empty() || kind == "TEXT" || kind == "ITEM";
}

/// How far a line's words follow one form.
struct Match {
    bool whole = false;
    std::size_t reached = 0;  // The first word that doesn't fit.
    std::string expected;     // What the form wants there.
    std::vector<std::string> arguments;
};

Match MatchForm(std::string_view pattern, const std::vector<Word>& words) {
    Match match;
    for (std::string part : Split(pattern, ' ')) {
        const bool mayBeNone = part.ends_with("...?");
        const bool repeats = mayBeNone || part.ends_with("...");
        if (repeats) part = SplitAtFirst(part, '.').head;
        const bool fixed = part[0] >= 'a' && part[0] <= 'z';
        bool first = true;
        do {
            if (match.reached == words.size() && ((repeats && !first) || mayBeNone)) break;
            match.expected = fixed ? part : std::string(ArgumentMeaning(part));
            if (match.reached == words.size()) return match;
            const Word& word = words[match.reached];
            if (fixed ? word.quoted || word.text != part : !ArgumentFits(part, word)) return match;
            if (!fixed) match.arguments.push_back(word.text);
            ++match.reached;
            first = false;
        } while (repeats);
    }
    match.expected = "the end of the line";
    match.whole = match.reached == words.size();
    return match;
}

JournalStep MatchLine(const std::vector<Word>& words, const Place& place, std::size_t endColumn) {
    std::size_t furthest = 0;
    std::vector<std::string> expected;
    for (const StepForm& form : StepForms()) {
        Match match = MatchForm(form.pattern, words);
        if (match.whole) return {form.kind, std::move(match.arguments), place.line, {}};
        if (match.reached > furthest) expected.clear();
        furthest = std::max(furthest, match.reached);
        if (match.reached == furthest &&
            std::find(expected.begin(), expected.end(), match.expected) == expected.end())
            expected.push_back(match.expected);
    }
    const bool atEnd = furthest == words.size();
    place.Fail(atEnd ? endColumn : words[furthest].column, furthest == 0 ? "a step" : Join(expected, " or "),
               atEnd ? "the end of the line" : "\"" + words[furthest].text + "\"");
}

std::string WithoutGapsAtEnds(std::string_view line) {
    while (!line.empty() && IsGap(line.front())) line.remove_prefix(1);
    while (!line.empty() && IsGap(line.back())) line.remove_suffix(1);
    return std::string(line);
}

}  // namespace

JournalSyntaxError::JournalSyntaxError(const std::string& file, std::size_t errorLine,
                                       std::size_t errorColumn, const std::string& expected,
                                       const std::string& found)
    : std::runtime_error(file + ":" + std::to_string(errorLine) + ":" + std::to_string(errorColumn) +
                         ": expected " + expected + ", found " + found),
      mLine(errorLine),
      mColumn(errorColumn) {}

std::vector<JournalStep> ParseJournal(std::string_view text, const std::string& file) {
    text = WithoutByteOrderMark(text);
    std::vector<JournalStep> steps;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        const Place place{file, number};
        WordReader reader(line, place);
        const std::vector<Word> words = reader.Words();
        if (words.empty()) continue;
        steps.push_back(MatchLine(words, place, reader.EndColumn()));
        steps.back().source = WithoutGapsAtEnds(line);
    }
    return steps;
}

std::string JournalText(std::string_view text) {
    std::string word = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\') word += '\\';
        if (character == '\r')
            word += "\\r";
        else if (character == '\n')
            word += "\\n";
        else
            word += character;
    }
    return word + "\"";
}

bool ParseJournalPoint(std::string_view text, double (&coordinates)[3]) {
    const std::vector<std::string> pieces = Split(text, ',');
    if (pieces.size() < 2 || pieces.size() > 3) return false;
    std::fill(std::begin(coordinates), std::end(coordinates), 0.0);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (!IsNumeric(pieces[i])) return false;
        coordinates[i] = LenientNumber(pieces[i]);
    }
    return true;
}

}  // namespace brenvik
