// Walks over the tokens of a statement with a note of what may come next, so that no depth of brackets asks
// for more memory than another. Every file is walked over once, so a table classifies the characters.
#include "drafting_host/step/texts/step_grammar.h"

#include <array>
#include <cstdint>

namespace brenvik::step {
namespace {

enum : std::uint8_t { blank = 1, digit = 2, letter = 4 };

constexpr std::array<std::uint8_t, 256> Kinds = [] {
    std::array<std::uint8_t, 256> table{};
    for (std::size_t c = 0; c <= ' '; ++c) table[c] = blank;
    for (std::size_t c = '0'; c <= '9'; ++c) table[c] = digit | letter;
    for (std::size_t c = 'A'; c <= 'Z'; ++c) table[c] = table[c + 'a' - 'A'] = letter;
    table['_'] = letter;
    return table;
}();

bool Is(char c, std::uint8_t kind) { return (Kinds[static_cast<unsigned char>(c)] & kind) != 0; }

enum class Token { Reference, Keyword, Value, Open, Close, Comma, Equals, End, Bad };

class Tokens {
  public:
    Tokens(std::string_view text, std::size_t place) : mText(text), mPlace(place) {}

    Token Next() {
        if (!SkipBlanks() || mPlace == mText.size()) return Token::Bad;
        mStart = mPlace;
        const char c = mText[mPlace];
        switch (c) {
            case '(':
                return Take(Token::Open);
            case ')':
                return Take(Token::Close);
            case ',':
                return Take(Token::Comma);
            case '=':
                return Take(Token::Equals);
            case ';':
                return Take(Token::End);
            case '$':
            case '*':
                return Take(Token::Value);
            case '\'':
            case '"':
                return TakeTo(c);
            case '#':
                ++mPlace;
                return TakeRun(digit, Token::Reference);
            case '!':
                ++mPlace;
                return TakeRun(letter, Token::Keyword);
            default:
                return TakeWord();
        }
    }

    /// Where the last token starts, and where the next one is looked for.
    std::size_t Start() const { return mStart; }
    std::size_t Place() const { return mPlace; }
    std::string_view Last() const { return mText.substr(mStart, mPlace - mStart); }

  private:
    bool At(std::uint8_t kind) const { return mPlace < mText.size() && Is(mText[mPlace], kind); }
    bool At(char c) const { return mPlace < mText.size() && mText[mPlace] == c; }

    /// Blanks and comments; false for a comment without an end.
    bool SkipBlanks() {
        for (;;) {
            while (At(blank)) ++mPlace;
            if (!At('/') || mText.substr(mPlace, 2) != "/*") return true;
            const std::size_t end = mText.find("*/", mPlace + 2);
            if (end == std::string_view::npos) return false;
            mPlace = end + 2;
        }
    }

    Token Take(Token token) {
        ++mPlace;
        return token;
    }

    Token TakeTo(char quote) {
        // A doubled apostrophe stands for one in the text.
        do {
            const std::size_t end = mText.find(quote, mPlace + 1);
            if (end == std::string_view::npos) return Token::Bad;
            mPlace = end + 1;
        } while (quote == '\'' && At(quote));
        return Token::Value;
    }

    Token TakeRun(std::uint8_t allowed, Token token) {
        const std::size_t from = mPlace;
        while (At(allowed)) ++mPlace;
        return mPlace == from ? Token::Bad : token;
    }

    Token TakeWord() {
        const char c = mText[mPlace];
        const char next = mPlace + 1 < mText.size() ? mText[mPlace + 1] : '\0';
        if (c == '.' && !Is(next, digit)) {
            ++mPlace;
            if (TakeRun(letter, Token::Value) == Token::Bad || !At('.')) return Token::Bad;
            return Take(Token::Value);
        }
        if (Is(c, digit) || c == '+' || c == '-' || c == '.') return TakeNumber();
        return TakeRun(letter, Token::Keyword);
    }

    Token TakeNumber() {
        if (At('+') || At('-')) ++mPlace;
        const auto run = [&] {
            const std::size_t from = mPlace;
            while (At(digit)) ++mPlace;
            return mPlace - from;
        };
        std::size_t count = run();
        const bool point = At('.');
        if (point) {
            ++mPlace;
            count += run();
        }
        if (count == 0) return Token::Bad;
        if (At('E') || At('e')) {
            // The format, and the modeller with it, wants the point: "1e5" is no number there.
            if (!point) return Token::Bad;
            ++mPlace;
            if (At('+') || At('-')) ++mPlace;
            if (run() == 0) return Token::Bad;
        }
        return Token::Value;
    }

    std::string_view mText;
    std::size_t mPlace, mStart = 0;
};

/// The values between the brackets that have just been opened, to their closing.
bool TakeValues(Tokens& tokens, StatementWalk& walk) {
    long depth = 1;
    bool inList = false;  // The bracket that was opened last is that of a list.
    for (bool first = true;;) {
        Token token = tokens.Next();
        const bool hasKeyword = token == Token::Keyword;
        if (hasKeyword && (token = tokens.Next()) != Token::Open) return false;
        if (token == Token::Open) {
            ++depth;
            first = true;
            inList = !hasKeyword;
            continue;
        }
        const bool value = token == Token::Value || token == Token::Reference;
        if (token == Token::Reference) walk.references.push_back(tokens.Start());
        if (!value && !(first && token == Token::Close)) return false;
        if (!value && inList && walk.emptyList == 0) walk.emptyList = tokens.Start();
        // Behind a value, and behind each bracket that closes, stands a comma or the next closing one.
        if (!value) --depth;
        first = false;
        while (depth > 0 && (token = tokens.Next()) == Token::Close) --depth;
        if (depth == 0) return true;
        if (token != Token::Comma) return false;
    }
}

bool TakeStatement(Tokens& tokens, StatementWalk& walk) {
    if (tokens.Next() != Token::Reference || tokens.Next() != Token::Equals) return false;
    Token token = tokens.Next();
    if (token == Token::Keyword) {
        walk.kind = tokens.Last();
        return tokens.Next() == Token::Open && TakeValues(tokens, walk) && tokens.Next() == Token::End;
    }
    if (token != Token::Open) return false;
    while ((token = tokens.Next()) == Token::Keyword)
        if (tokens.Next() != Token::Open || !TakeValues(tokens, walk)) return false;
    return token == Token::Close && tokens.Next() == Token::End;
}

}  // namespace

void WalkStatement(std::string_view content, std::size_t place, StatementWalk& walk) {
    Tokens tokens(content, place);
    walk.kind = {};
    walk.references.clear();
    walk.emptyList = 0;
    walk.wellFormed = TakeStatement(tokens, walk);
    walk.end = walk.wellFormed ? tokens.Place() : tokens.Start();
}

}  // namespace brenvik::step
