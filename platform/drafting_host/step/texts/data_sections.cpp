// A section goes from its word, "DATA;" or "DATA('A',('SCHEMA'));", to the next "ENDSEC;".
#include "drafting_host/step/texts/data_sections.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

constexpr std::string_view SectionEnd = "ENDSEC", Data = "DATA", FileEnd = "END-ISO";

std::string_view TextOf(const Statements& statements, const FramePiece& piece) {
    return statements.Content().substr(piece.place, piece.end - piece.place);
}

/// What stands between the head and the first data, between data and data, and behind the last, where that is
/// more than the words of the format's first edition.
std::vector<TextEdit> Edits(const Statements& statements) {
    std::vector<TextEdit> edits;
    const auto frame = statements.Frame();
    const auto is = [&](std::size_t at, std::string_view word) {
        return TextOf(statements, frame[at]).starts_with(word);
    };
    std::size_t at = 0;
    while (at < frame.size() && !is(at, SectionEnd)) ++at;
    for (bool isFirst = true; at < frame.size(); isFirst = false) {
        std::size_t next = at + 1;
        while (next < frame.size() && !is(next, Data) && !is(next, FileEnd)) ++next;
        if (next == frame.size()) break;
        const std::size_t from = frame[at].end;
        if (is(next, FileEnd)) {
            if (next > at + 1) edits.push_back({from, frame[next].place - from, "\n"});
            break;
        }
        const bool isPlain = next == at + 1 && TextOf(statements, frame[next]).find('(') == std::string::npos;
        if (!isFirst)
            edits.push_back({frame[at].place, frame[next].end - frame[at].place, "\n"});
        else if (!isPlain)
            edits.push_back({from, frame[next].end - from, "\nDATA;"});
        for (at = next + 1; at < frame.size() && !is(at, SectionEnd);) ++at;
    }
    return edits;
}

}  // namespace

bool HasManySections(const Statements& statements) { return !Edits(statements).empty(); }

std::string WithOneSection(std::string content) {
    std::vector<TextEdit> edits = Edits(Statements(content));
    return WithEdits(std::move(content), std::move(edits));
}

}  // namespace brenvik::step
