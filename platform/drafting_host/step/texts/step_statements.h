// The statements of a STEP file as its text has them, found in one walk: their numbers, kinds and references,
// what is wrong with their form, and what stands behind the end of the file. Only text outside of quotes and
// comments counts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace brenvik::step {

/// The modeller keeps the numbers of statements in 32 bits, and falls over higher ones.
inline constexpr long HighestStatement = 2147483647;

/// "#1=KIND(...);" in the data of a file.
struct Statement {
    int number = 0;         ///< 0 for one beyond `HighestStatement`.
    std::size_t place = 0;  ///< Of its "#".
    std::size_t end = 0;    ///< Behind its ";".
    std::string_view kind;  ///< Blank for a statement of several kinds.
    bool wellFormed = true;
    std::size_t firstReference = 0, references = 0;  ///< Among those of the file.
    std::size_t emptyList = 0;  ///< Place in the first list without an entry; 0 for none.
};

/// A "#" within a statement.
struct Reference {
    int number = 0;  ///< 0 for one beyond `HighestStatement`.
    std::size_t place = 0;
};

/// A statement number that stands twice.
struct RepeatedStatement {
    int number = 0;
    std::size_t first = 0, second = 0;  ///< Their places.
};

/// A piece without a number, from its first word to behind its ";": the end of a section, an entry of the
/// head.
struct FramePiece {
    std::size_t place = 0, end = 0;
};

class Statements {
  public:
    explicit Statements(std::string_view content);

    std::string_view Content() const { return mContent; }
    std::span<const Statement> All() const { return mStatements; }
    std::span<const Reference> ReferencesOf(const Statement& statement) const {
        return std::span(mReferences).subspan(statement.firstReference, statement.references);
    }
    /// Null if the file has none of that number. Of a number that stands twice the first.
    const Statement* Find(int number) const;
    /// All kinds of a statement.
    std::vector<std::string_view> KindsOf(const Statement& statement) const;

    /// Behind the end mark of the file and its ";", nothing where the file has none.
    std::optional<std::size_t> End() const { return mEnd; }
    /// Where something breaks the form outside of the numbered statements: in the data, and elsewhere.
    std::optional<std::size_t> BrokenData() const { return mBrokenData; }
    std::optional<std::size_t> BrokenHead() const { return mBrokenHead; }
    std::optional<RepeatedStatement> Repeated() const { return mRepeated; }
    /// All pieces outside of the numbered statements, in their order.
    std::span<const FramePiece> Frame() const { return mFrame; }

    /// The line (from 1) of a place.
    std::size_t LineAt(std::size_t place) const;
    /// The line (from 1) of the statement, 0 when there is none of that number.
    std::size_t LineOf(int number) const;

  private:
    void Walk();
    std::size_t TakeFrame(std::size_t place);
    std::size_t TakeStatement(std::size_t place);
    std::size_t BehindBroken(std::size_t start, std::size_t from) const;
    void Number();

    std::string_view mContent;
    std::vector<Statement> mStatements;
    std::vector<Reference> mReferences;
    std::vector<FramePiece> mFrame;
    std::vector<std::uint32_t> mDense;  ///< By number, the index one past its statement; 0 for none.
    std::unordered_map<int, std::uint32_t> mSparse;  ///< Instead, where the numbers lie far apart.
    std::optional<std::size_t> mEnd, mBrokenData, mBrokenHead;
    std::optional<RepeatedStatement> mRepeated;
    mutable std::vector<std::size_t> mBreaks;  ///< Of the lines, gathered at the first question.
};

/// What follows the end of a file, for a message; none where that is blank.
struct Tail {
    std::size_t place = 0;
    bool holdsRecords = false;  ///< Statements, or a second file.
};
std::optional<Tail> TailOf(const Statements& statements);

/// The number that a statement names first; 0 if it names none, or there is no such statement.
int FirstOf(const Statements& statements, int number);

/// From its "#" to its ";".
inline std::string_view TextOf(const Statements& statements, const Statement& statement) {
    return statements.Content().substr(statement.place, statement.end - statement.place);
}

}  // namespace brenvik::step
