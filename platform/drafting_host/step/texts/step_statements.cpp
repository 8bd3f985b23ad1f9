// One walk from the head of the file to its end mark. Sections other than the data have no numbered
// statements and are only parted at their semicolons.
#include "drafting_host/step/texts/step_statements.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "base/ascii.h"
#include "drafting_host/step/texts/step_grammar.h"

namespace brenvik::step {
namespace {

constexpr std::string_view Ending = "END-ISO-10303-21";
constexpr std::size_t Nowhere = std::string_view::npos;

bool IsBlank(char c) { return static_cast<unsigned char>(c) <= ' '; }

/// The number behind the "#" at `place`; 0 where none does or it is beyond the highest.
int NumberAt(std::string_view content, std::size_t place) {
    long number = 0;
    const auto read = std::from_chars(content.data() + place + 1, content.data() + content.size(), number);
    return read.ec == std::errc{} && number > 0 && number <= HighestStatement ? static_cast<int>(number) : 0;
}

/// Behind a text in quotes or a comment that starts at `place`; nowhere when it doesn't end.
std::size_t BehindQuoted(std::string_view content, std::size_t place) {
    const bool text = content[place] == '\'';
    const std::size_t close = text ? content.find('\'', place + 1) : content.find("*/", place + 2);
    return close == Nowhere ? close : close + (text ? 1 : 2);
}

bool OpensQuoted(std::string_view content, std::size_t place) {
    return content[place] == '\'' || content.substr(place, 2) == "/*";
}

/// Whether a statement "#1=" begins at `place`.
bool BeginsStatement(std::string_view content, std::size_t place) {
    if (content[place] != '#') return false;
    std::size_t after = place + 1;
    while (after < content.size() && IsDigit(content[after])) ++after;
    if (after == place + 1) return false;
    while (after < content.size() && IsBlank(content[after])) ++after;
    return after < content.size() && content[after] == '=';
}

}  // namespace

Statements::Statements(std::string_view content) : mContent(content) {
    Walk();
    Number();
}

void Statements::Walk() {
    // A statement of real files takes some 60 bytes and has two references.
    mStatements.reserve(mContent.size() / 64);
    mReferences.reserve(mContent.size() / 32);
    bool inData = false;
    for (std::size_t place = 0; place < mContent.size() && !mEnd;) {
        if (IsBlank(mContent[place])) {
            ++place;
        } else if (mContent.substr(place, 2) == "/*") {
            place = std::min(BehindQuoted(mContent, place), mContent.size());
        } else if (inData && mContent[place] == '#') {
            place = TakeStatement(place);
        } else {
            const std::size_t start = place;
            place = TakeFrame(start);
            const std::string_view text = mContent.substr(start, place - start);
            mFrame.push_back({start, place});
            if (text.starts_with("DATA"))
                inData = true;
            else if (text.starts_with("ENDSEC"))
                inData = false;
            else if (text.starts_with(Ending))
                mEnd = place;
            else if (inData && text != ";" && !mBrokenData)
                mBrokenData = start;
        }
    }
}

/// A piece without a number, to behind its ";". Brackets that don't match break it.
std::size_t Statements::TakeFrame(std::size_t start) {
    long depth = 0;
    // The end mark may lack its semicolon at the end of a file.
    const bool end = mContent.substr(start).starts_with(Ending);
    for (std::size_t place = start; place < mContent.size();) {
        if (OpensQuoted(mContent, place)) {
            place = BehindQuoted(mContent, place);
            if (place == Nowhere) break;
            continue;
        }
        const char c = mContent[place++];
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        if (c == ';') {
            if (depth != 0 && !mBrokenHead) mBrokenHead = start;
            return place;
        }
        if (end && (c == '\n' || c == '\r')) return place;
    }
    if (!end && !mBrokenHead) mBrokenHead = start;
    return mContent.size();
}

std::size_t Statements::TakeStatement(std::size_t place) {
    thread_local StatementWalk walk;
    WalkStatement(mContent, place, walk);
    Statement statement;
    statement.number = NumberAt(mContent, place);
    statement.place = place;
    statement.kind = walk.kind;
    statement.wellFormed = walk.wellFormed;
    statement.end = walk.wellFormed ? walk.end : BehindBroken(place, std::max(walk.end, place + 1));
    statement.firstReference = mReferences.size();
    statement.references = walk.references.size();
    statement.emptyList = walk.emptyList;
    for (const std::size_t at : walk.references) mReferences.push_back({NumberAt(mContent, at), at});
    mStatements.push_back(statement);
    return statement.end;
}

/// Where the next statement can begin behind a broken one: behind the next ";", or before one that follows
/// without it. A quote that doesn't end swallows the next statements; each begins a line of its own.
std::size_t Statements::BehindBroken(std::size_t start, std::size_t from) const {
    const std::string_view span = mContent.substr(0, from);
    for (std::size_t at = span.find("\n#", start); at != Nowhere; at = span.find("\n#", at + 1))
        if (BeginsStatement(mContent, at + 1)) return at + 1;
    for (std::size_t place = from; place < mContent.size();) {
        if (mContent[place] == ';') return place + 1;
        if (BeginsStatement(mContent, place)) return place;
        const std::size_t behind = OpensQuoted(mContent, place) ? BehindQuoted(mContent, place) : Nowhere;
        const bool onOneLine =
            behind != Nowhere && mContent.substr(place, behind - place).find('\n') == Nowhere;
        place = onOneLine ? behind : place + 1;
    }
    return mContent.size();
}

/// Fills the table from numbers to statements.
void Statements::Number() {
    int highest = 0;
    for (const Statement& statement : mStatements) highest = std::max(highest, statement.number);
    const bool dense = static_cast<std::size_t>(highest) <= 16 * mStatements.size() + 1024;
    if (dense) mDense.assign(static_cast<std::size_t>(highest) + 1, 0);
    for (std::size_t index = 0; index < mStatements.size(); ++index) {
        const int number = mStatements[index].number;
        if (number == 0) continue;
        std::uint32_t& known = dense ? mDense[static_cast<std::size_t>(number)] : mSparse[number];
        if (known == 0)
            known = static_cast<std::uint32_t>(index + 1);
        else if (!mRepeated)
            mRepeated = RepeatedStatement{number, mStatements[known - 1].place, mStatements[index].place};
    }
}

const Statement* Statements::Find(int number) const {
    std::uint32_t index = 0;
    if (!mDense.empty()) {
        if (number >= 0 && static_cast<std::size_t>(number) < mDense.size())
            index = mDense[static_cast<std::size_t>(number)];
    } else if (const auto found = mSparse.find(number); found != mSparse.end()) {
        index = found->second;
    }
    return index == 0 ? nullptr : &mStatements[index - 1];
}

std::vector<std::string_view> Statements::KindsOf(const Statement& statement) const {
    if (!statement.kind.empty()) return {statement.kind};
    std::vector<std::string_view> kinds;
    long depth = 0;
    for (std::size_t place = statement.place; place < statement.end;) {
        if (OpensQuoted(mContent, place)) {
            place = std::min(BehindQuoted(mContent, place), statement.end);
            continue;
        }
        const char c = mContent[place];
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        std::size_t end = place;
        while (depth == 1 && end < statement.end &&
               ((mContent[end] >= 'A' && mContent[end] <= 'Z') || mContent[end] == '_' ||
                (end > place && IsDigit(mContent[end]))))
            ++end;
        if (end > place) kinds.push_back(mContent.substr(place, end - place));
        place = std::max(end, place + 1);
    }
    return kinds;
}

std::size_t Statements::LineAt(std::size_t place) const {
    if (mBreaks.empty()) {
        for (std::size_t at = mContent.find('\n'); at != Nowhere; at = mContent.find('\n', at + 1))
            mBreaks.push_back(at);
        mBreaks.push_back(Nowhere);
    }
    return 1 + static_cast<std::size_t>(std::ranges::lower_bound(mBreaks, place) - mBreaks.begin());
}

std::size_t Statements::LineOf(int number) const {
    const Statement* statement = Find(number);
    return statement == nullptr ? 0 : LineAt(statement->place);
}

int FirstOf(const Statements& statements, int number) {
    const Statement* const statement = statements.Find(number);
    const bool isEmpty = statement == nullptr || statements.ReferencesOf(*statement).empty();
    return isEmpty ? 0 : statements.ReferencesOf(*statement)[0].number;
}

std::optional<Tail> TailOf(const Statements& statements) {
    const std::string_view content = statements.Content();
    std::size_t place = statements.End().value_or(content.size());
    while (place < content.size() && IsBlank(content[place])) ++place;
    if (place == content.size()) return std::nullopt;
    Tail tail{place, content.find("ISO-10303-21;", place) != Nowhere};
    for (std::size_t at = content.find('#', place); at != Nowhere && !tail.holdsRecords;
         at = content.find('#', at + 1))
        tail.holdsRecords = BeginsStatement(content, at);
    return tail;
}

}  // namespace brenvik::step
