// Checks and prints of settings, session values, the drawing and files.
#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "base/invariant.h"
#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/skip.h"
#include "base/text.h"
#include "journal/journal_checks.h"
#include "journal/journal_lookup.h"
#include "journal/session_values.h"
#include "parts/part_table.h"
#include "session/ports/files_port.h"
#include "session/ports/host_interface.h"
#include "session/ports/settings_port.h"
#include "settings/setting_values.h"
#include "settings/settings_keys.h"

namespace brenvik {

namespace {

/// A value below the system's own key, or below one of its subkeys: "CSV_SAVE\CVS_EXPORT_PATH". A name that
/// nobody reads has a blank value for ever, so a check of it would hold by its slip.
void CheckSetting(const JournalStep& step, const JournalWorld& world) {
    std::string path(SettingsKeyPath), name = step.arguments[0], subkey;
    if (const std::size_t cut = name.rfind('\\'); cut != std::string::npos) {
        subkey = name.substr(0, cut);
        path += "\\" + subkey;
        name.erase(0, cut + 1);
    }
    const std::optional<std::string_view> known = SubkeyOfSetting(name);
    if (!known) FailStep(step, "the name of a setting", Quoted(step.arguments[0]));
    if (!EqualsIgnoreCase(*known, subkey))
        FailStep(step, known->empty() ? name : std::string(*known) + "\\" + name, Quoted(step.arguments[0]));
    RequireText(step, step.arguments[1], world.settings->GetSetting(SettingsRoot::LocalMachine, path, name));
}

std::string SessionValue(const JournalStep& step) {
    if (std::optional<std::string> value = SessionValueText(step.arguments[0])) return *value;
    FailStep(step, "one of the session values " + Join(SessionValueNames(), ", "), Quoted(step.arguments[0]));
}

void CheckSession(const JournalStep& step, const JournalWorld&) {
    RequireText(step, step.arguments[1], SessionValue(step));
}

AcadObject& FindObject(const JournalStep& step, const JournalWorld& world, const std::string& handle) {
    if (AcadObject* object = world.host->ActiveDocument()->HandleToObject(FoldUpper(handle))) return *object;
    FailStep(step, "an object with the handle " + handle, "none in the drawing");
}

/// The one text stored under a key; empty where the object has no data of that key.
std::optional<std::string> PartDataText(const AcadObject& object, std::string_view key) {
    std::vector<std::int16_t> types;
    std::vector<XDataValue> values;
    object.GetXData(key, types, values);
    if (values.size() < 2) return std::nullopt;
    const auto* text = std::get_if<std::string>(&values[1]);
    return text ? std::optional(*text) : std::nullopt;
}

/// Data of other programs are found by their names only where they stand.
void CheckData(const JournalStep& step, const JournalWorld& world) {
    const AcadObject& object = FindObject(step, world, step.arguments[0]);
    const std::string& key = step.arguments[1];
    const std::optional<std::string> text = PartDataText(object, key);
    const std::vector<std::string> keys = Split(PartDataKeyList, ',');
    if (!text && std::ranges::none_of(keys, [&](const std::string& k) { return EqualsIgnoreCase(k, key); }))
        FailStep(step, "one of the keys " + Join(keys, ", "), Quoted(key));
    RequireText(step, step.arguments[2], text.value_or(""));
}

void RequireLayer(const JournalStep& step, AcadDocument& document, const std::string& name) {
    AcadLayer* layer = nullptr;
    Skip([&] { layer = document.Layers().Item(name); });
    if (layer == nullptr) FailStep(step, "a layer of the drawing", Quoted(name));
}

void CheckEntityCount(const JournalStep& step, const JournalWorld& world) {
    int found = 0;
    RequireLayer(step, *world.host->ActiveDocument(), step.arguments[0]);
    world.host->ActiveDocument()->ModelSpace().ForEach([&](const AcadEntity& entity) {
        found += EqualsIgnoreCase(entity.Layer(), step.arguments[0]) ? 1 : 0;
    });
    if (found != static_cast<int>(LenientNumber(step.arguments[1])))
        FailStep(step, step.arguments[1] + " entities on layer " + Quoted(step.arguments[0]),
                 std::to_string(found));
}

template <bool visible>
void CheckEntityShown(const JournalStep& step, const JournalWorld& world) {
    const auto* entity = dynamic_cast<const AcadEntity*>(&FindObject(step, world, step.arguments[0]));
    if (!entity) FailStep(step, "an entity", "an object that is none");
    if (entity->Visible() != visible)
        FailStep(step, visible ? "it visible" : "it hidden", visible ? "it hidden" : "it visible");
}

void CheckFile(const JournalStep& step, const JournalWorld& world) {
    if (!world.files->FileExists(step.arguments[0]))
        FailStep(step, "the file " + Quoted(step.arguments[0]), "none of that name");
}

void CheckNoFile(const JournalStep& step, const JournalWorld& world) {
    if (world.files->FileExists(step.arguments[0]))
        FailStep(step, "no file " + Quoted(step.arguments[0]), "one of that name");
}

void CheckFileLine(const JournalStep& step, const JournalWorld& world) {
    CheckFile(step, world);
    const auto number = static_cast<std::size_t>(LenientNumber(step.arguments[1]));
    std::vector<std::string> lines = Split(world.files->ReadFile(step.arguments[0]), '\n');
    if (!lines.empty() && lines.back().empty()) lines.pop_back();
    if (number < 1 || number > lines.size())
        FailStep(step, "a line " + step.arguments[1], "a file of " + std::to_string(lines.size()) + " lines");
    std::string& line = lines[number - 1];
    if (line.ends_with('\r')) line.pop_back();
    RequireText(step, step.arguments[2], line);
}

struct WorldCheck {
    StepKind kind;
    void (*check)(const JournalStep&, const JournalWorld&);
};

constexpr std::array WorldChecks{
    WorldCheck{StepKind::ExpectSetting, CheckSetting},
    WorldCheck{StepKind::ExpectSession, CheckSession},
    WorldCheck{StepKind::ExpectData, CheckData},
    WorldCheck{StepKind::ExpectEntities, CheckEntityCount},
    WorldCheck{StepKind::ExpectVisibleEntity, CheckEntityShown<true>},
    WorldCheck{StepKind::ExpectHiddenEntity, CheckEntityShown<false>},
    WorldCheck{StepKind::ExpectFile, CheckFile},
    WorldCheck{StepKind::ExpectNoFile, CheckNoFile},
    WorldCheck{StepKind::ExpectFileLine, CheckFileLine},
};

}  // namespace

void CheckWorld(const JournalStep& step, const JournalWorld& world) {
    for (const auto& [kind, check] : WorldChecks)
        if (kind == step.kind) return check(step, world);
    InvariantBroken("every check of the world stands in the table");
}

void PrintFromWorld(const JournalStep& step, const JournalWorld& world) {
    if (step.kind == StepKind::PrintSession) {
        *world.output << SessionValue(step) << '\n';
        return;
    }
    Invariant(step.kind == StepKind::PrintData, "a print from the drawing");
    const AcadObject& object = FindObject(step, world, step.arguments[0]);
    for (const std::string& key : Split(PartDataKeyList, ','))
        if (const std::optional<std::string> text = PartDataText(object, key))
            *world.output << key << '=' << *text << '\n';
}

}  // namespace brenvik
