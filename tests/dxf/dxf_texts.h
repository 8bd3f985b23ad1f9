// Small DXF texts for tests: each group is given as "code value", separated by "|".
#pragma once

#include <string>
#include <string_view>

#include "drafting_host/dxf/data/drawing_data.h"
#include "drafting_host/dxf/reading/dxf_reader.h"

namespace brenvik::test {

/// "0 LINE|8 Boards" as the four lines of two groups.
inline std::string Groups(std::string_view groups, std::string_view lineEnd = "\n") {
    std::string text;
    while (!groups.empty()) {
        const std::string_view group = groups.substr(0, groups.find('|'));
        groups.remove_prefix(std::min(groups.size(), group.size() + 1));
        const std::size_t blank = std::min(group.find(' '), group.size());
        text += group.substr(0, blank);
        text += lineEnd;
        text += group.substr(std::min(blank + 1, group.size()));
        text += lineEnd;
    }
    return text;
}

inline std::string Section(std::string_view name, std::string_view groups) {
    return Groups("0 SECTION|2 " + std::string(name)) + Groups(groups) + Groups("0 ENDSEC");
}

/// A file with one section ENTITIES.
inline std::string Entities(std::string_view groups) { return Section("ENTITIES", groups) + Groups("0 EOF"); }

inline DrawingData Read(const std::string& text) { return ReadDxf(text, "job.dxf"); }

inline const std::vector<EntityData>& ModelSpace(const DrawingData& data) {
    return data.blocks.at(0).entities;
}
inline const std::vector<EntityData>& PaperSpace(const DrawingData& data) {
    return data.blocks.at(1).entities;
}

inline std::string NotesOf(const DrawingData& data) {
    std::string all;
    for (const ReadNote& note : data.notes) all += std::to_string(note.line) + ": " + note.text + "\n";
    return all;
}

}  // namespace brenvik::test
