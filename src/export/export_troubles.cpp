// The lines, in the order in which they come.
#include "export/export_troubles.h"

#include <algorithm>
#include <utility>

#include "session/module_state.h"

namespace brenvik {

namespace {

struct TroublesOfExports {
    std::vector<std::string> lines;
};

}  // namespace

void NoteExportTrouble(std::string text) {
    std::vector<std::string>& lines = StateOf<TroublesOfExports>().lines;
    if (std::ranges::find(lines, text) == lines.end()) lines.push_back(std::move(text));
}

void NoteExportTrouble(std::string_view path, std::size_t line, std::string_view text) {
    NoteExportTrouble(std::string(path) + ":" + std::to_string(line) + ": " + std::string(text));
}

std::vector<std::string> TakeExportTroubles() {
    return std::exchange(StateOf<TroublesOfExports>().lines, {});
}

}  // namespace brenvik
