// Looking at the lines of a file, section by section.
#include "export/adjustment_faults.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/quoted.h"
#include "base/text.h"
#include "export/adjustment_file.h"
#include "grid/column_relation.h"
#include "parts/part_data_faults.h"
#include "parts/part_table.h"
#include "session/text_files.h"

namespace brenvik {

namespace {

bool IsAmount(std::string_view key) {
    return EqualsIgnoreCase(key, "l") || EqualsIgnoreCase(key, "w") || EqualsIgnoreCase(key, "t");
}

std::string KnownKeys() {
    return Join(std::vector<std::string>(AdjustmentKeys().begin(), AdjustmentKeys().end()), ", ");
}

std::string AmountFault(std::string_view value) {
    if (value.empty() || IsNumeric(value)) return {};
    return "expected a decimal number such as 0.125 or -1.5, found " + InQuotes(value) + "; nothing is added";
}

/// A size is compared as the text that a list has for it. No list takes a part with a quote in its data.
std::string CriterionFault(std::string_view field, std::string_view value) {
    const PartColumn* column = FindPartColumn(field);
    const std::string text = Trim(value);
    if (text.find('\'') != std::string::npos)
        return "expected no quote ('), which no list takes, found " + InQuotes(text) + "; no part meets it";
    if (EqualsIgnoreCase(CaptionForColumn(field), "ORIE") && LettersFault(FoldUpper(text)))
        return "expected the letters L, W and T in some order, found " + InQuotes(text) +
               "; no part meets it";
    if (column == nullptr || column->kind != PartColumnKind::Number || text.empty()) return {};
    const std::string shown = IsNumeric(text) ? NumberToText(StrictNumber(text)) : std::string();
    if (shown == text) return {};
    return "expected " + (shown.empty() ? "a number as the list has it, such as 24.5" : InQuotes(shown)) +
           ", found " + InQuotes(text) + "; no part meets it";
}

class FileLook {
  public:
    void At(std::size_t number, const std::string& line) {
        if (const std::string fault = ControlCharacterFault(line); !fault.empty() && !line.starts_with('#'))
            Tell(number, fault);
        if (line.starts_with('['))
            AtHeader(number, line);
        else if (!IsBlank(line) && !line.starts_with('#'))
            AtValue(number, line);
    }

    /// The end of a section, at the next one or at the file's end.
    void AtEnd() {
        if (mInSection && mIsRead && !mHasAmount)
            Tell(mHeaderLine, "the adjustment " + mHeader +
                                  " has no amount, expected l=, w= or t= with a number; it changes nothing");
    }

    std::vector<AdjustmentFault> faults;

  private:
    void AtHeader(std::size_t number, const std::string& line) {
        const bool isRepeated = mInSection && EqualsIgnoreCase(line, mHeader);
        if (!isRepeated) {
            AtEnd();
            mHasAmount = false;
        }
        mIsRead = !isRepeated;
        if (!mIsRead)
            Tell(number, "the adjustment " + line + " stands in line " + std::to_string(mHeaderLine) +
                             " already; the lines below it here are not read");
        else if (!line.ends_with(']'))
            Tell(number, "expected \"]\" at the end of the name, found " + InQuotes(line));
        if (mIsRead) mHeaderLine = number;
        mHeader = line;
        mInSection = true;
        mKeys.clear();
    }

    void AtValue(std::size_t number, const std::string& line) {
        if (!mInSection)
            return Tell(number, "expected the name of an adjustment in square brackets ahead of it, found " +
                                    InQuotes(line));
        if (!mIsRead) return;
        const HeadAndTail halves = SplitAtFirst(line, '=');
        if (!halves.found)
            return Tell(number, "expected KEY=VALUE, found " + InQuotes(line) + "; it is not read");
        const std::string field = ColumnForCaption(halves.head);
        if (!IsAmount(halves.head) && field.empty())
            return Tell(number, "expected one of " + KnownKeys() + " before the \"=\", found " +
                                    InQuotes(halves.head) + "; parts aren't asked for it");
        if (const auto [first, isNew] = mKeys.try_emplace(halves.head, number); !isNew)
            return Tell(number, InQuotes(halves.head) + " stands in line " + std::to_string(first->second) +
                                    " already, found it again with " + InQuotes(halves.tail));
        // Amounts that are no numbers are reported elsewhere.
        mHasAmount = mHasAmount || (IsAmount(halves.head) && !halves.tail.empty());
        const std::string fault =
            IsAmount(halves.head) ? AmountFault(halves.tail) : CriterionFault(field, halves.tail);
        if (!fault.empty()) Tell(number, halves.head + ": " + fault);
    }

    void Tell(std::size_t number, std::string text) { faults.push_back({number, std::move(text)}); }

    bool mInSection = false, mIsRead = false, mHasAmount = false;
    std::string mHeader;
    std::size_t mHeaderLine = 0;
    /// Of the present section, with their lines.
    std::map<std::string, std::size_t, LessIgnoreCase> mKeys;
};

}  // namespace

std::vector<AdjustmentFault> AdjustmentFaults(std::span<const std::string> lines) {
    FileLook look;
    for (std::size_t at = 0; at < lines.size(); ++at) look.At(at + 1, lines[at]);
    look.AtEnd();
    return std::move(look.faults);
}

}  // namespace brenvik
