// Only statements whose text is long are looked at more closely, so that a usual file costs nothing.
#include "drafting_host/step/texts/long_statements.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <vector>

#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

constexpr std::size_t LongText = 100000;
constexpr std::size_t MostEntries = 5000;

bool IsDeep(std::string_view text) {
    long depth = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\'') at = std::min(text.find('\'', at + 1), text.size());
        if (at == text.size()) return false;
        depth += text[at] == '(' ? 1 : text[at] == ')' ? -1 : 0;
        if (depth > DeepestBrackets) return true;
    }
    return false;
}

bool IsLong(const Statement& statement) { return statement.end - statement.place > LongText; }

bool IsMesh(const Statement& statement) {
    return statement.kind == "COORDINATES_LIST" || statement.kind == "TESSELLATED_CURVE_SET" ||
           statement.kind.find("TRIANGULATED") != std::string_view::npos;
}

bool CanBeCut(const Statement& statement) {
    return statement.kind == "PRESENTATION_LAYER_ASSIGNMENT" ||
           statement.kind == "MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION";
}

/// Empties the lists within a statement's brackets.
void EmptyLists(std::string_view content, const Statement& statement, std::vector<TextEdit>& edits) {
    long depth = 0;
    std::size_t open = 0;
    for (std::size_t at = statement.place; at < statement.end; ++at) {
        if (content[at] == '\'') at = std::min(content.find('\'', at + 1), statement.end);
        if (at == statement.end) return;
        if (content[at] == '(' && ++depth == 2) open = at + 1;
        if (content[at] == ')' && depth-- == 2) edits.push_back({open, at - open, ""});
    }
}

class Cutter {
  public:
    Cutter(const Statements& statements, std::string_view content, std::vector<TextEdit>& edits)
        : mStatements(statements), mContent(content), mAdditions(statements), mEdits(edits) {}

    /// The first entries stay where they are, the others go into statements of their own.
    void Cut(const Statement& statement) {
        const auto references = mStatements.ReferencesOf(statement);
        if (references.size() <= MostEntries) return;
        const std::size_t first = references[0].place, close = mContent.find(')', first);
        const auto behind = std::ranges::partition_point(
            references, [&](const Reference& reference) { return reference.place < close; });
        const auto entries = static_cast<std::size_t>(behind - references.begin());
        const std::string_view text = TextOf(mStatements, statement);
        if (entries <= MostEntries || text.find("/*") != text.npos) return;
        const std::size_t equals = mContent.find('=', statement.place);
        const std::string head(mContent.substr(equals + 1, first - equals - 1));
        const std::string tail(mContent.substr(close, statement.end - 1 - close));
        std::string& all = mPieces[statement.number] = Shown(statement.number);
        for (std::size_t from = MostEntries; from < entries; from += MostEntries) {
            std::string list;
            for (std::size_t at = from; at < std::min(entries, from + MostEntries); ++at)
                list += (at == from ? "" : ",") + Shown(references[at].number);
            all += "," + Shown(mAdditions.Add(head + list + tail));
        }
        const std::size_t last = references[MostEntries - 1].place;
        const std::size_t end = mContent.find_first_not_of("0123456789", last + 1);
        mEdits.push_back({end, close - end, ""});
    }

    /// A hidden layer is hidden in all its pieces.
    void Finish() {
        if (mPieces.empty()) return;
        for (const Statement& statement : mStatements.All()) {
            if (statement.kind != "INVISIBILITY") continue;
            for (const Reference& reference : mStatements.ReferencesOf(statement))
                if (const auto pieces = mPieces.find(reference.number); pieces != mPieces.end())
                    mEdits.push_back(ReferenceEdit(mContent, reference.place, pieces->second));
        }
        mEdits.push_back(mAdditions.Edit());
    }

  private:
    const Statements& mStatements;
    std::string_view mContent;
    NewStatements mAdditions;
    std::vector<TextEdit>& mEdits;
    std::map<int, std::string> mPieces;  ///< Of a statement, as references to them.
};

}  // namespace

std::optional<std::size_t> TooDeep(const Statements& statements) {
    const auto all = statements.All();
    const std::string_view head =
        statements.Content().substr(0, all.empty() ? statements.Content().size() : all.front().place);
    if (IsDeep(head)) return 0;
    for (const Statement& statement : all)
        if (statement.end - statement.place > DeepestBrackets && IsDeep(TextOf(statements, statement)))
            return statement.place;
    return std::nullopt;
}

bool HasLongLists(const Statements& statements) {
    return std::ranges::any_of(statements.All(), [](const Statement& statement) {
        return IsLong(statement) && (IsMesh(statement) || CanBeCut(statement));
    });
}

std::string WithoutLongLists(std::string content) {
    const Statements statements(content);
    std::vector<TextEdit> edits;
    Cutter cutter(statements, content, edits);
    for (const Statement& statement : statements.All()) {
        if (!IsLong(statement) || !statement.wellFormed) continue;
        if (IsMesh(statement)) EmptyLists(content, statement, edits);
        if (CanBeCut(statement)) cutter.Cut(statement);
    }
    cutter.Finish();
    return WithEdits(std::move(content), std::move(edits));
}

}  // namespace brenvik::step
