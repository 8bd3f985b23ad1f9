// Edits are made in the order of the text, whatever order they come in.
#include "drafting_host/step/texts/text_edits.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace brenvik::step {

TextEdit ReferenceEdit(std::string_view content, std::size_t place, std::string text) {
    const std::size_t end = content.find_first_not_of("0123456789", place + 1);
    return {place, std::min(end, content.size()) - place, std::move(text)};
}

std::string Shown(int number) { return "#" + std::to_string(number); }

NewStatements::NewStatements(const Statements& statements) : mText("\n") {
    for (const Statement& statement : statements.All()) {
        mLast = std::max(mLast, statement.number);
        mPlace = std::max(mPlace, statement.end);
    }
}

int NewStatements::Add(const std::string& values) {
    if (mLast >= HighestStatement) return 0;
    mText += Shown(++mLast) + "=" + values + ";\n";
    return mLast;
}

std::string WithEdits(std::string content, std::vector<TextEdit> edits) {
    if (edits.empty()) return content;
    std::ranges::stable_sort(edits, std::less<>(), &TextEdit::place);
    std::string result;
    result.reserve(content.size());
    std::size_t behind = 0;
    for (const TextEdit& edit : edits) {
        if (edit.place < behind) continue;
        result.append(content, behind, edit.place - behind).append(edit.text);
        behind = edit.place + edit.length;
    }
    return result.append(content, behind);
}

}  // namespace brenvik::step
