// The table of endings in words.
#include "drafting_host/document/files/extension.h"

#include <utility>
#include <vector>

#include "base/text.h"

namespace brenvik {
namespace {

std::string AsChoice(std::vector<std::string> endings) {
    const std::string last = std::move(endings.back());
    endings.pop_back();
    return Join(endings, ", ") + " or " + last;
}

}  // namespace

std::string EndingsOfDrawings() {
    std::vector<std::string> endings;
    for (const DrawingEnding& ending : DrawingEndings) endings.emplace_back(ending.text);
    return AsChoice(std::move(endings));
}

std::string EndingsOfWrittenDrawings() {
    std::vector<std::string> endings;
    for (const DrawingEnding& ending : DrawingEndings)
        if (ending.isWritten) endings.emplace_back(ending.text);
    return AsChoice(std::move(endings));
}

}  // namespace brenvik
