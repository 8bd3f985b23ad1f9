// A small lexer for statements, the rewriting of what differs, and the test for plain selects.
#include "part_table/statement_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include "base/ascii.h"
#include "base/letter_case.h"
#include "base/numbers.h"
#include "part_table/failures.h"
#include "part_table/table_layout.h"

namespace brenvik::part_table {
namespace {

enum class TokenKind { Blank, Word, Number, Text, Symbol };

struct Token {
    TokenKind kind;
    std::string_view text;
};

bool IsBlankCharacter(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// Everything beyond ASCII may stand in a name.
bool IsWordCharacter(char c) {
    return IsAsciiLetter(c) || IsDigit(c) || c == '_' || c == '.' || static_cast<unsigned char>(c) >= 0x80;
}

Failure Refused(const std::string& description, std::string_view sql) {
    return DatabaseFailure(failure_number::StatementRefused, "Syntax error: " + description,
                           std::string(sql));
}

// Behind the quote that closes the text beginning at `at`; a doubled quote belongs to the text. A text
// with no end is left to the engine, whose parser mostly meets the true fault first: a single quote
// inside a value.
std::size_t TextEnd(std::string_view sql, std::size_t at, char closing) {
    for (std::size_t next = sql.find(closing, at + 1); next != std::string_view::npos;
         next = sql.find(closing, next + 1)) {
        if (next + 1 >= sql.size() || sql[next + 1] != closing) return next + 1;
        ++next;
    }
    return sql.size();
}

// The length of a number by the system's own rule; 0 where none begins, or a word goes on behind it.
std::size_t NumberAt(std::string_view sql, std::size_t at) {
    if (sql[at] == '+' || sql[at] == '-') return 0;
    const std::size_t length = NumberLength(sql.substr(at));
    return at + length < sql.size() && IsWordCharacter(sql[at + length]) ? 0 : length;
}

// The engine knows one letter for exponents.
std::string EngineNumber(std::string_view number) {
    std::string text(number);
    std::ranges::replace_if(
        text, [](char c) { return c == 'd' || c == 'D'; }, 'e');
    return text;
}

template <typename Belongs>
std::size_t RunEnd(std::string_view sql, std::size_t at, Belongs belongs) {
    while (at < sql.size() && belongs(sql[at])) ++at;
    return at;
}

std::vector<Token> Tokens(std::string_view sql) {
    if (const std::size_t zero = sql.find('\0'); zero != std::string_view::npos)
        throw Refused("a zero character stands at character " + std::to_string(zero + 1), sql);
    std::vector<Token> tokens;
    tokens.reserve(sql.size() / 4);
    for (std::size_t at = 0; at < sql.size();) {
        const char c = sql[at];
        TokenKind kind = TokenKind::Symbol;
        std::size_t end = at + 1;
        if (IsBlankCharacter(c)) {
            kind = TokenKind::Blank;
            end = RunEnd(sql, at, IsBlankCharacter);
        } else if (c == '\'') {
            kind = TokenKind::Text;
            end = TextEnd(sql, at, '\'');
        } else if (c == '[' || c == '`') {
            kind = TokenKind::Word;
            end = TextEnd(sql, at, c == '[' ? ']' : '`');
        } else if (const std::size_t length = NumberAt(sql, at); length > 0) {
            kind = TokenKind::Number;
            end = at + length;
        } else if (IsWordCharacter(c)) {
            kind = TokenKind::Word;
            end = RunEnd(sql, at, IsWordCharacter);
        } else if (c == '"') {
            throw Refused("a text in double quotes stands at character " + std::to_string(at + 1) +
                              "; single quotes were expected",
                          sql);
        } else if (sql.substr(at, 2) == "/*") {
            throw Refused("a remark begins at character " + std::to_string(at + 1), sql);
        }
        tokens.push_back({kind, sql.substr(at, end - at)});
        at = end;
    }
    return tokens;
}

bool IsWord(const Token& token, std::string_view word) {
    return token.kind == TokenKind::Word && EqualsIgnoreCase(token.text, word);
}

std::size_t SkipBlanks(const std::vector<Token>& tokens, std::size_t at) {
    while (at < tokens.size() && tokens[at].kind == TokenKind::Blank) ++at;
    return at;
}

// The place of the bracket that closes the one at `open`.
std::optional<std::size_t> ClosingBracket(const std::vector<Token>& tokens, std::size_t open) {
    int depth = 0;
    for (std::size_t at = open; at < tokens.size(); ++at) {
        if (tokens[at].kind != TokenKind::Symbol) continue;
        if (tokens[at].text == "(") ++depth;
        if (tokens[at].text == ")" && --depth == 0) return at;
    }
    return std::nullopt;
}

// Writes the tokens of one range, rewriting as it goes; calls itself for what stands inside isnull( ).
void Write(const std::vector<Token>& tokens, std::size_t begin, std::size_t end, int depth,
           std::string& out) {
    constexpr int deepestNesting = 100;
    for (std::size_t at = begin; at < end; ++at) {
        if (IsWord(tokens[at], "isnull") && depth < deepestNesting) {
            const std::size_t open = SkipBlanks(tokens, at + 1);
            const bool called = open < end && tokens[open].text == "(";
            const std::optional<std::size_t> close = called ? ClosingBracket(tokens, open) : std::nullopt;
            if (close) {
                out += "((";
                Write(tokens, open + 1, *close, depth + 1, out);
                out += ") is null)";
                at = *close;
                continue;
            }
        }
        if (tokens[at].text == "-" && !out.empty() && out.back() == '-') out += ' ';
        if (tokens[at].kind == TokenKind::Number)
            out += EngineNumber(tokens[at].text);
        else
            out += tokens[at].text;
    }
}

// Without square brackets.
std::string_view BareName(const Token& token) {
    if (token.text.size() >= 2 && token.text.front() == '[')
        return token.text.substr(1, token.text.size() - 2);
    return token.text;
}

bool IsTableColumn(const Token& token) {
    return token.kind == TokenKind::Word &&
           std::any_of(TableColumns.begin(), TableColumns.end(), [&](const TableColumn& column) {
               return EqualsIgnoreCase(column.name, BareName(token));
           });
}

// The place of the word "from" of a plain select: columns of the table or a star, the table alone behind
// "from", and nothing that makes one row out of several.
std::optional<std::size_t> FromOfPlainSelect(const std::vector<Token>& tokens) {
    std::size_t at = SkipBlanks(tokens, 0);
    if (at >= tokens.size() || !IsWord(tokens[at], "select")) return std::nullopt;
    for (bool more = true; more;) {
        at = SkipBlanks(tokens, at + 1);
        if (at >= tokens.size() || (tokens[at].text != "*" && !IsTableColumn(tokens[at])))
            return std::nullopt;
        at = SkipBlanks(tokens, at + 1);
        if (at >= tokens.size()) return std::nullopt;
        more = tokens[at].text == ",";
    }
    const std::size_t from = at;
    if (!IsWord(tokens[from], "from")) return std::nullopt;
    const std::size_t table = SkipBlanks(tokens, from + 1);
    if (table >= tokens.size() || !EqualsIgnoreCase(BareName(tokens[table]), TableName)) return std::nullopt;
    const std::size_t behind = SkipBlanks(tokens, table + 1);
    if (behind < tokens.size() && !IsWord(tokens[behind], "where") && !IsWord(tokens[behind], "order"))
        return std::nullopt;
    const bool combines = std::any_of(tokens.begin() + static_cast<std::ptrdiff_t>(table), tokens.end(),
                                      [](const Token& token) {
                                          return IsWord(token, "group") || IsWord(token, "union") ||
                                                 IsWord(token, "except") || IsWord(token, "intersect");
                                      });
    return combines ? std::nullopt : std::optional(from);
}

void RequireKnownStatement(const std::vector<Token>& tokens, std::string_view sql) {
    constexpr std::array<std::string_view, 7> known = {"select", "insert", "update", "delete",
                                                       "create", "drop",   "alter"};
    const std::size_t first = SkipBlanks(tokens, 0);
    if (first >= tokens.size()) throw Refused("the statement is blank", sql);
    if (std::none_of(known.begin(), known.end(),
                     [&](std::string_view word) { return IsWord(tokens[first], word); }))
        throw Refused("the statement begins with \"" + std::string(tokens[first].text) +
                          "\" where select, insert, update, delete, create, drop or alter was expected",
                      sql);
}

}  // namespace

StatementText TranslateStatement(std::string_view sql, bool withRowNumbers) {
    const std::vector<Token> tokens = Tokens(sql);
    RequireKnownStatement(tokens, sql);
    StatementText result;
    result.text.reserve(sql.size() + 16);
    const std::optional<std::size_t> from = withRowNumbers ? FromOfPlainSelect(tokens) : std::nullopt;
    result.selectsTableRows = from.has_value();
    Write(tokens, 0, from.value_or(tokens.size()), 0, result.text);
    if (from) {
        result.text += ", rowid ";
        Write(tokens, *from, tokens.size(), 0, result.text);
    }
    return result;
}

}  // namespace brenvik::part_table
