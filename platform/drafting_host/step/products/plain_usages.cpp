// A statement of several kinds has the values of each kind in brackets behind its name.
#include "drafting_host/step/products/plain_usages.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

#include "base/numbers.h"
#include "drafting_host/step/texts/step_statements.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

constexpr std::string_view Plain = "NEXT_ASSEMBLY_USAGE_OCCURRENCE";
constexpr std::string_view Quantified = "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE";

/// What stands between the brackets behind a kind's name; null where the statement has no such kind.
std::optional<std::string> ValuesOf(std::string_view text, std::string_view kind) {
    for (std::size_t at = text.find(kind); at != text.npos; at = text.find(kind, at + 1)) {
        const char ahead = at == 0 ? ' ' : text[at - 1];
        const std::size_t open = text.find_first_not_of(" \t\r\n", at + kind.size());
        if (open == text.npos || text[open] != '(' || ahead == '_') continue;
        int depth = 0;
        bool isQuoted = false;
        for (std::size_t place = open; place < text.size(); ++place) {
            if (text[place] == '\'') isQuoted = !isQuoted;
            if (isQuoted) continue;
            depth += text[place] == '(' ? 1 : text[place] == ')' ? -1 : 0;
            if (depth == 0) return std::string(text.substr(open + 1, place - open - 1));
        }
    }
    return std::nullopt;
}

/// Values from the last comma on, outside of texts, which they don't end with.
std::size_t LastValue(std::string_view values) { return values.rfind(',') + 1; }

int NumberIn(std::string_view value) {
    const std::size_t mark = value.find('#');
    return mark == value.npos ? 0 : static_cast<int>(LenientNumber(std::string(value.substr(mark + 1))));
}

/// A usage in another form: the values of the plain one, and the statement of its quantity.
struct OddUsage {
    const Statement* statement = nullptr;
    std::string values;
    int quantity = 0;  ///< 0 for none.
};

std::optional<OddUsage> OddUsageOf(const Statements& statements, const Statement& statement) {
    const std::string_view text = TextOf(statements, statement);
    if (statement.kind == Quantified) {
        std::string values = ValuesOf(text, Quantified).value_or("");
        const std::size_t last = LastValue(values);
        if (last == 0) return std::nullopt;
        const int quantity = NumberIn(std::string_view(values).substr(last));
        return OddUsage{&statement, values.substr(0, last - 1), quantity};
    }
    if (!statement.kind.empty()) return std::nullopt;
    const auto quantity = ValuesOf(text, Quantified);
    if (!quantity && !ValuesOf(text, Plain)) return std::nullopt;
    const auto relation = ValuesOf(text, "PRODUCT_DEFINITION_RELATIONSHIP");
    if (!relation) return std::nullopt;
    const std::string designator = ValuesOf(text, "ASSEMBLY_COMPONENT_USAGE").value_or("");
    return OddUsage{&statement, *relation + "," + (designator.empty() ? "$" : designator),
                    quantity ? NumberIn(*quantity) : 0};
}

/// The pieces that a usage stands for; 0 where its quantity isn't a number of pieces.
int PiecesOf(const Statements& statements, const OddUsage& usage) {
    constexpr double most = 10000;
    if (usage.quantity == 0) return 1;
    const Statement* const measure = statements.Find(usage.quantity);
    if (measure == nullptr) return 0;
    const auto count = ValuesOf(TextOf(statements, *measure), "COUNT_MEASURE");
    const double pieces = count ? LenientNumber(*count) : 0;
    return pieces >= 1 && pieces <= most && pieces == std::floor(pieces) ? static_cast<int>(pieces) : 0;
}

class Rewriter {
  public:
    Rewriter(const Statements& statements, std::vector<StepNote>& notes)
        : mStatements(statements), mAdditions(statements), mNotes(notes) {}

    std::vector<TextEdit> Edits() {
        for (const Statement& statement : mStatements.All())
            if (const auto usage = OddUsageOf(mStatements, statement)) Take(*usage);
        TextEdit additions = mAdditions.Edit();
        std::erase(additions.text, '\n');
        mEdits.push_back(std::move(additions));
        return std::move(mEdits);
    }

  private:
    void Take(const OddUsage& usage) {
        const Statement& statement = *usage.statement;
        const std::string_view text = TextOf(mStatements, statement);
        const std::string values = std::string(Plain) + "(" + usage.values + ")";
        std::string plain = Shown(statement.number) + "=" + values + ";";
        plain.append(
            static_cast<std::size_t>(std::ranges::count(text, '\n') - std::ranges::count(plain, '\n')), '\n');
        mEdits.push_back({statement.place, statement.end - statement.place, std::move(plain)});
        const int pieces = PiecesOf(mStatements, usage);
        for (int piece = 1; piece < pieces; ++piece) Repeat(statement.number, values);
        if (pieces == 1) return;
        const std::string name = "the assembly usage " + Shown(statement.number);
        mNotes.push_back({pieces == 0
                              ? name + " stands for a quantity that is no number of pieces: one part of "
                                       "it is listed"
                              : name + " stands for " + std::to_string(pieces) +
                                    " pieces: as many parts are listed, in one place",
                          mStatements.LineAt(statement.place), pieces == 0});
    }

    /// One more usage, in the place of the first.
    void Repeat(int usage, const std::string& values) {
        const std::string again = Shown(mAdditions.Add(values));
        for (const Statement& shape : mStatements.All()) {
            const auto named = mStatements.ReferencesOf(shape);
            if (shape.kind != "PRODUCT_DEFINITION_SHAPE" || named.empty() || named[0].number != usage)
                continue;
            for (const Statement& placing : mStatements.All()) {
                const auto ends = mStatements.ReferencesOf(placing);
                const bool isItsPlace = placing.kind == "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION" &&
                                        ends.size() > 1 && ends[1].number == shape.number;
                const Statement* const relationship = isItsPlace ? mStatements.Find(ends[0].number) : nullptr;
                if (relationship == nullptr) continue;
                std::string_view text = TextOf(mStatements, *relationship);
                text.remove_prefix(text.find('=') + 1);
                text.remove_suffix(1);
                const std::string place = Shown(mAdditions.Add(std::string(text)));
                const std::string own =
                    Shown(mAdditions.Add("PRODUCT_DEFINITION_SHAPE('',''," + again + ")"));
                mAdditions.Add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(" + place + "," + own + ")");
            }
        }
    }

    const Statements& mStatements;
    NewStatements mAdditions;
    std::vector<StepNote>& mNotes;
    std::vector<TextEdit> mEdits;
};

}  // namespace

std::string WithPlainUsages(std::string content, std::vector<StepNote>& notes) {
    const bool mayHoldSome = content.find(Quantified) != content.npos ||
                             content.find("PRODUCT_DEFINITION_RELATIONSHIP") != content.npos;
    if (!mayHoldSome) return content;
    const Statements statements(content);
    std::vector<TextEdit> edits = Rewriter(statements, notes).Edits();
    if (edits.size() < 2) return content;
    return WithEdits(std::move(content), std::move(edits));
}

}  // namespace brenvik::step
