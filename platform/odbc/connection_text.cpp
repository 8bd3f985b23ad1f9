// Walking the attributes of a connection string.
#include "odbc/connection_text.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "base/letter_case.h"
#include "base/text.h"

namespace brenvik::odbc {
namespace {

constexpr std::string_view FileAttributeOfTheSystem = "Dbq";

// One piece of the string: `text` is all of it up to its semicolon, name and value are cut out of it. A piece
// with no "=" has no name.
struct Piece {
    std::string_view text;
    std::string name;
    std::string value;
};

// Where the piece that begins at `at` ends: the first semicolon that does not stand in braces. A closing
// brace that stands twice is a character of the value.
std::size_t PieceEnd(std::string_view text, std::size_t at) {
    const std::size_t equals = text.find('=', at);
    const std::size_t semicolon = text.find(';', at);
    if (equals == std::string_view::npos || semicolon < equals)
        return semicolon == std::string_view::npos ? text.size() : semicolon;
    std::size_t from = text.find_first_not_of(' ', equals + 1);
    if (from == std::string_view::npos) return text.size();
    if (text[from] == '{') {
        std::size_t closing = text.find('}', from);
        while (closing != std::string_view::npos && text.substr(closing, 2) == "}}")
            closing = text.find('}', closing + 2);
        if (closing == std::string_view::npos) return text.size();
        from = closing;
    }
    return std::min(text.find(';', from), text.size());
}

std::string WithoutBraces(const std::string& value) {
    if (value.size() < 2 || value.front() != '{' || value.back() != '}') return value;
    return ReplaceAll(value.substr(1, value.size() - 2), "}}", "}");
}

std::vector<Piece> PiecesOf(std::string_view text) {
    std::vector<Piece> pieces;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = PieceEnd(text, at);
        const std::string_view piece = text.substr(at, end - at);
        const HeadAndTail parts = SplitAtFirst(piece, '=');
        pieces.push_back({piece, parts.found ? Trim(parts.head) : std::string(),
                          parts.found ? WithoutBraces(Trim(parts.tail)) : std::string()});
        at = end + 1;
    }
    return pieces;
}

// Braces only where the value would be cut otherwise: not every driver takes them off again.
std::string Quoted(const std::string& value) {
    const bool needed =
        value.find(';') != std::string::npos || value.starts_with('{') || Trim(value) != value;
    return needed ? "{" + ReplaceAll(value, "}", "}}") + "}" : value;
}

}  // namespace

std::string AttributeValue(std::string_view connectionString, std::string_view name) {
    for (const Piece& piece : PiecesOf(connectionString))
        if (!piece.name.empty() && EqualsIgnoreCase(piece.name, name)) return piece.value;
    return {};
}

std::string ForDriver(std::string_view connectionString, const DriverEntry& driver,
                      const std::function<std::string(std::string_view)>& realPlace) {
    std::string result;
    for (const Piece& piece : PiecesOf(connectionString)) {
        if (!result.empty()) result += ';';
        if (!EqualsIgnoreCase(piece.name, FileAttributeOfTheSystem)) {
            result += piece.text;
            continue;
        }
        result += driver.fileAttribute.empty() ? piece.name : driver.fileAttribute;
        result += '=' + (IsBlank(piece.value) ? piece.value : Quoted(realPlace(piece.value)));
    }
    if (connectionString.ends_with(';')) result += ';';
    if (driver.moreAttributes.empty()) return result;
    if (!result.ends_with(';')) result += ';';
    return result + driver.moreAttributes;
}

}  // namespace brenvik::odbc
