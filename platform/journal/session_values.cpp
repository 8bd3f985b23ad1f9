// The table of session values, and each as text.
#include "journal/session_values.h"

#include <array>
#include <utility>

#include "base/letter_case.h"
#include "base/text.h"
#include "session/session.h"

namespace brenvik {

namespace {

std::string FromFlag(bool value) { return value ? "True" : "False"; }

std::string SortFieldsText(const Session& session) {
    std::vector<std::string> entries;
    for (const SortField& entry : session.SortFields) entries.push_back(entry.field + " " + entry.direction);
    return Join(entries, "; ");
}

std::string FilterCriteriaText(const Session& session) {
    std::vector<std::string> entries;
    for (const FilterCriterion& entry : session.FilterCriteria)
        entries.push_back(entry.column + " " + entry.criterion + " " + entry.value);
    return Join(entries, "; ");
}

std::string ColumnRelationText(const Session& session) {
    std::vector<std::string> entries;
    for (const ColumnRelationEntry& entry : session.ColumnRelation)
        if (!entry.column.empty()) entries.push_back(entry.caption + "=" + entry.column);
    return Join(entries, "; ");
}

using TextMember = std::string Session::*;
using FlagMember = bool Session::*;

constexpr std::array<std::pair<std::string_view, TextMember>, 13> TextMembers{{
    {"InstallFolder", &Session::InstallFolder},
    {"ApplicationPath", &Session::ApplicationPath},
    {"ApplicationVersion", &Session::ApplicationVersion},
    {"DialogWidth", &Session::DialogWidth},
    {"DialogHeight", &Session::DialogHeight},
    {"DialogLeft", &Session::DialogLeft},
    {"DialogTop", &Session::DialogTop},
    {"MDBPath", &Session::MDBPath},
    {"GridRecordSource", &Session::GridRecordSource},
    {"SortClause", &Session::SortClause},
    {"WhereClause", &Session::WhereClause},
    {"GroupFields", &Session::GroupFields},
    {"CurrentSQL", &Session::CurrentSQL},
}};

constexpr std::array<std::pair<std::string_view, FlagMember>, 4> FlagMembers{{
    {"ApplyBusy", &Session::ApplyBusy},
    {"SettingsEvent", &Session::SettingsEvent},
    {"MeasureNonSolids", &Session::MeasureNonSolids},
    {"NoMeasure", &Session::NoMeasure},
}};

using Teller = std::string (*)(const Session&);

constexpr std::array<std::pair<std::string_view, Teller>, 6> Tellers{{
    {"ExportTarget", [](const Session& session) { return std::to_string(session.ExportTarget); }},
    {"ReaderUseCount", [](const Session& session) { return std::to_string(session.ReaderUseCount); }},
    {"ColumnCaptions", [](const Session& session) { return Join(session.ColumnCaptions, "; "); }},
    {"ColumnRelation", ColumnRelationText},
    {"SortFields", SortFieldsText},
    {"FilterCriteria", FilterCriteriaText},
}};

}  // namespace

std::optional<std::string> SessionValueText(std::string_view name) {
    const Session& session = TheSession();
    for (const auto& [known, member] : TextMembers)
        if (EqualsIgnoreCase(known, name)) return session.*member;
    for (const auto& [known, member] : FlagMembers)
        if (EqualsIgnoreCase(known, name)) return FromFlag(session.*member);
    for (const auto& [known, tell] : Tellers)
        if (EqualsIgnoreCase(known, name)) return tell(session);
    return std::nullopt;
}

std::vector<std::string> SessionValueNames() {
    std::vector<std::string> names;
    names.reserve(TextMembers.size() + FlagMembers.size() + Tellers.size());
    for (const auto& entry : TextMembers) names.emplace_back(entry.first);
    for (const auto& entry : FlagMembers) names.emplace_back(entry.first);
    for (const auto& entry : Tellers) names.emplace_back(entry.first);
    return names;
}

}  // namespace brenvik
