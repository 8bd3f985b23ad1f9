// Walks over the tokens of a statement with a note of what may come next, so that no depth of brackets asks
// for more memory than another.
#include "drafting_host/step/step_grammar.h"

#include <cstddef>

namespace brenvik::step {
namespace {

constexpr std::string_view digits = "0123456789";
constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_0123456789";

enum class Token { Reference, Keyword, Value, Open, Close, Comma, Equals, End, Bad };

class Tokens {
  public:
    explicit Tokens(std::string_view text) : mText(text) {}

    Token Next() {
        if (!SkipBlanks() || mText.empty()) return Token::Bad;
        const char c = mText.front();
        switch (c) {
            case '(':
                return Take(1, Token::Open);
            case ')':
                return Take(1, Token::Close);
            case ',':
                return Take(1, Token::Comma);
            case '=':
                return Take(1, Token::Equals);
            case ';':
                return Take(1, Token::End);
            case '$':
            case '*':
                return Take(1, Token::Value);
            case '\'':
            case '"':
                return TakeTo(c);
            case '#':
                return TakeRun(1, digits, Token::Reference);
            case '!':
                return TakeRun(1, letters, Token::Keyword);
            default:
                return TakeWord();
        }
    }

  private:
    /// Blanks and comments; false for a comment without an end.
    bool SkipBlanks() {
        for (;;) {
            const std::size_t first = mText.find_first_not_of(" \t\r\n");
            mText.remove_prefix(first == std::string_view::npos ? mText.size() : first);
            if (!mText.starts_with("/*")) return true;
            const std::size_t end = mText.find("*/", 2);
            if (end == std::string_view::npos) return false;
            mText.remove_prefix(end + 2);
        }
    }

    Token Take(std::size_t length, Token token) {
        mText.remove_prefix(length);
        return token;
    }

    Token TakeTo(char quote) {
        // A doubled apostrophe stands for one in the text.
        do {
            const std::size_t end = mText.find(quote, 1);
            if (end == std::string_view::npos) return Token::Bad;
            mText.remove_prefix(end + 1);
        } while (quote == '\'' && mText.starts_with(quote));
        return Token::Value;
    }

    Token TakeRun(std::size_t start, std::string_view allowed, Token token) {
        const std::size_t end = mText.find_first_not_of(allowed, start);
        const std::size_t length = end == std::string_view::npos ? mText.size() : end;
        return length == start ? Token::Bad : Take(length, token);
    }

    Token TakeWord() {
        const char c = mText.front();
        if (c == '.' && (mText.size() < 2 || digits.find(mText[1]) == std::string_view::npos)) {
            const std::size_t end = mText.find_first_not_of(letters, 1);
            if (end == std::string_view::npos || end == 1 || mText[end] != '.') return Token::Bad;
            return Take(end + 1, Token::Value);
        }
        if (digits.find(c) != std::string_view::npos || c == '+' || c == '-' || c == '.') {
            const std::size_t sign = c == '+' || c == '-' ? 1 : 0;
            return TakeNumber(sign);
        }
        return TakeRun(0, letters, Token::Keyword);
    }

    Token TakeNumber(std::size_t at) {
        const auto run = [&] {
            const std::size_t from = at;
            while (at < mText.size() && digits.find(mText[at]) != std::string_view::npos) ++at;
            return at - from;
        };
        std::size_t count = run();
        const bool point = at < mText.size() && mText[at] == '.';
        if (point) {
            ++at;
            count += run();
        }
        if (count == 0) return Token::Bad;
        if (at < mText.size() && (mText[at] == 'E' || mText[at] == 'e')) {
            // The format, and the modeller with it, wants the point: "1e5" is no number there.
            if (!point) return Token::Bad;
            ++at;
            if (at < mText.size() && (mText[at] == '+' || mText[at] == '-')) ++at;
            if (run() == 0) return Token::Bad;
        }
        return Take(at, Token::Value);
    }

    std::string_view mText;
};

/// The values between the brackets that have just been opened, to their closing.
bool TakeValues(Tokens& tokens) {
    long depth = 1;
    for (bool first = true;;) {
        Token token = tokens.Next();
        if (token == Token::Keyword && (token = tokens.Next()) != Token::Open) return false;
        if (token == Token::Open) {
            ++depth;
            first = true;
            continue;
        }
        const bool value = token == Token::Value || token == Token::Reference;
        if (!value && !(first && token == Token::Close)) return false;
        // Behind a value, and behind each bracket that closes, stands a comma or the next closing one.
        if (!value) --depth;
        first = false;
        while (depth > 0 && (token = tokens.Next()) == Token::Close) --depth;
        if (depth == 0) return true;
        if (token != Token::Comma) return false;
    }
}

}  // namespace

bool IsWellFormed(std::string_view statement) {
    Tokens tokens(statement);
    if (tokens.Next() != Token::Reference || tokens.Next() != Token::Equals) return false;
    Token token = tokens.Next();
    if (token == Token::Keyword)
        return tokens.Next() == Token::Open && TakeValues(tokens) && tokens.Next() == Token::End;
    if (token != Token::Open) return false;
    while ((token = tokens.Next()) == Token::Keyword) {
        if (tokens.Next() != Token::Open || !TakeValues(tokens)) return false;
    }
    return token == Token::Close && tokens.Next() == Token::End;
}

}  // namespace brenvik::step
