// Reading and writing the material library, and finding a part's material in it.
#include "settings/materials.h"

#include <algorithm>
#include <map>
#include <utility>

#include "base/failure.h"
#include "base/file_failure.h"
#include "base/fractions.h"
#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/quoted.h"
#include "base/skip.h"
#include "base/text.h"
#include "base/text_lines.h"
#include "base/utf8.h"
#include "base/western_text.h"
#include "session/ports/files_port.h"
#include "session/session.h"
#include "session/text_files.h"
#include "settings/material_faults.h"
#include "settings/material_keys.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr auto Keys = std::to_array<std::string_view>({
    "material=",
    "grain=",
    "direction=",
    "tool1=",
    "tool1dia=",
    "tool1ss=",
    "tool1fs=",
    "tool2=",
    "tool2dia=",
    "tool2ss=",
    "tool2fs=",
    "tool3=",
    "tool3dia=",
    "tool3ss=",
    "tool3fs=",
});
static_assert(Keys.size() == MaterialFieldCount);

enum Field : std::size_t { Name, Grain, Direction, FirstTool };
constexpr std::size_t FieldsOfATool = 4;
static_assert(FirstTool + FieldsOfATool * MaterialToolCount == MaterialFieldCount);

/// A record begins with a line of this start; what stands behind it, usually "=", is not looked at.
constexpr std::string_view Head = "material";

bool IsHead(std::string_view line) { return StartsWithIgnoreCase(line, Head); }

/// How many lines the record at a head line has: up to fifteen, ending before the next head.
std::size_t RecordLength(std::span<const std::string> lines, std::size_t head) {
    std::size_t length = 1;
    while (length < MaterialFieldCount && head + length < lines.size() && !IsHead(lines[head + length]))
        ++length;
    return length;
}

MaterialTexts TextsAt(std::span<const std::string> lines, std::size_t head, std::size_t length) {
    MaterialTexts texts;
    for (std::size_t field = 0; field < length; ++field)
        texts[field] = MaterialValue(lines[head + field], field);
    return texts;
}

std::string TooShort(std::string_view name, std::size_t length) {
    return "the material " + InQuotes(name) + " has " + std::to_string(length) + " lines, expected " +
           std::to_string(MaterialFieldCount);
}

std::optional<MaterialDamage> DamageOf(std::span<const std::string> lines, std::size_t head,
                                       std::size_t length) {
    for (std::size_t field = 0; field < length; ++field) {
        const std::string& line = lines[head + field];
        if (StartsWithIgnoreCase(line, Keys[field])) continue;
        return MaterialDamage{head + field + 1,
                              "expected " + InQuotes(Keys[field]) + ", found " + InQuotes(line)};
    }
    if (length == MaterialFieldCount) return std::nullopt;
    return MaterialDamage{head + 1, TooShort(MaterialValue(lines[head], Name), length)};
}

/// Of a record with all its lines; a line that lacks something has been reported as damage.
void AddFaultsOf(MaterialLibrary& library, std::span<const std::string> record, std::size_t head) {
    if (record.size() < MaterialFieldCount) return;
    const MaterialTexts& texts = library.materials.back();
    if (const std::string expected = MaterialKeyFault(texts[Name]); !expected.empty())
        library.faults.push_back(
            {head + 1, "the material " + InQuotes(texts[Name]) + ": expected " + expected, false});
    for (MaterialFault& fault : FaultsOfRecord(record, texts, head + 1)) {
        const bool isTold = std::ranges::any_of(
            library.damages, [&](const MaterialDamage& damage) { return damage.line == fault.line; });
        if (!isTold) library.faults.push_back(std::move(fault));
    }
}

MaterialFault StandsAgain(std::string_view name, std::size_t first, std::size_t again) {
    return {again,
            "the material " + InQuotes(name) + " stands in line " + std::to_string(first) +
                " already; the last one counts",
            false};
}

/// Where the records of this key begin, each of them whole.
std::vector<std::size_t> WholeRecordsOf(std::span<const std::string> lines, std::string_view key) {
    std::vector<std::size_t> heads;
    for (const std::size_t at : MaterialHeads(lines)) {
        if (!SameMaterialKey(MaterialValue(lines[at], Name), key)) continue;
        const std::size_t length = RecordLength(lines, at);
        // Reading on into the next material would cut with bits of another board.
        if (length < MaterialFieldCount)
            throw InputPastEnd(MaterialsPath() + ":" + std::to_string(at + 1) + ": " +
                               TooShort(MaterialValue(lines[at], Name), length));
        heads.push_back(at);
    }
    return heads;
}

}  // namespace

std::span<const std::string_view> MaterialFileKeys() { return Keys; }

std::vector<std::size_t> MaterialHeads(std::span<const std::string> lines) {
    std::vector<std::size_t> heads;
    for (std::size_t at = 0; at < lines.size(); ++at)
        if (IsHead(lines[at])) heads.push_back(at);
    return heads;
}

std::string MaterialValue(std::string_view line, std::size_t field) {
    return Mid(line, Keys[field].size() + 1);
}

MaterialRecord MaterialFromTexts(const MaterialTexts& texts) {
    MaterialRecord record;
    record.material = FoldLower(texts[Name]);
    if (const auto failure = Attempt([&] { record.grain = ToInteger(LenientNumber(texts[Grain])); }))
        throw Failure(failure->number(), failure->source(), failure->description(),
                      "the grain flag of the material " + InQuotes(texts[Name]) + " is " + texts[Grain]);
    record.direction = texts[Direction];
    std::size_t field = FirstTool;
    for (MaterialTool& tool : record.tools) {
        tool.number = texts[field];
        tool.diameter = LenientNumber(texts[field + 1]);
        tool.spindleSpeed = texts[field + 2];
        tool.feedSpeed = texts[field + 3];
        field += FieldsOfATool;
    }
    return record;
}

std::string MaterialsPath() { return ApplicationFolder() + std::string(MaterialsFile); }

std::string MaterialsBackupPath() { return ApplicationFolder() + "materials.bak"; }

MaterialLibrary ParseMaterials(std::string_view content) {
    MaterialLibrary library;
    const std::string text = WesternAsUtf8(content);
    if (const std::size_t end = text.find_first_of("\r\n"); end != std::string::npos)
        library.lineEnd = text.compare(end, 2, "\r\n") == 0 ? "\r\n" : text.substr(end, 1);
    const std::vector<std::string> lines = LinesOf(text);
    std::map<std::string, std::size_t> headOf;
    bool inStray = false;
    for (std::size_t at = 0; at < lines.size();) {
        if (!IsHead(lines[at])) {
            // A run of lines without a record is reported once.
            if (!inStray && !IsBlank(lines[at])) {
                library.damages.push_back(
                    {at + 1, "expected " + InQuotes(Keys[Name]) + ", found " + InQuotes(lines[at])});
                inStray = true;
            }
            ++at;
            continue;
        }
        inStray = false;
        const std::size_t length = RecordLength(lines, at);
        library.materials.push_back(TextsAt(lines, at, length));
        if (std::optional<MaterialDamage> damage = DamageOf(lines, at, length))
            library.damages.push_back(std::move(*damage));
        AddFaultsOf(library, std::span(lines).subspan(at, length), at);
        const auto [first, isNew] =
            headOf.try_emplace(ComparableMaterialKey(library.materials.back()[Name]), at + 1);
        if (!isNew)
            library.faults.push_back(StandsAgain(library.materials.back()[Name], first->second, at + 1));
        at += length;
    }
    return library;
}

// What is no text in either of the two code pages has no lines.
std::string ReadMaterialsContent() {
    std::string content = ThePlatform().files->ReadFile(MaterialsPath());
    const std::string expected = "expected plain text in UTF-8 or the Western code page";
    if (const std::string found = OtherEncodingOf(content); !found.empty())
        throw InvalidFileFormat(MaterialsPath() + ": " + expected + ", found " + found);
    if (const std::size_t zero = content.find('\0'); zero != std::string::npos)
        throw InvalidFileFormat(MaterialsPath() + ", line " +
                                std::to_string(LinesOf(content.substr(0, zero + 1)).size()) + ": " +
                                expected + ", found the byte 00");
    return content;
}

MaterialLibrary ReadMaterials() { return ParseMaterials(ReadMaterialsContent()); }

std::string MaterialsText(std::span<const MaterialTexts> materials, std::string_view lineEnd) {
    std::string text;
    for (const MaterialTexts& material : materials)
        for (std::size_t field = 0; field < MaterialFieldCount; ++field) {
            text += Keys[field];
            text += material[field];
            text += lineEnd;
        }
    return text;
}

void KeepMaterials() { ThePlatform().files->CopyFileOver(MaterialsPath(), MaterialsBackupPath()); }

void SaveMaterials(std::span<const MaterialTexts> materials, std::string_view lineEnd) {
    // A shop that begins without a library has nothing to keep.
    if (ThePlatform().files->FileExists(MaterialsPath())) KeepMaterials();
    ThePlatform().files->WriteFile(MaterialsPath(), MaterialsText(materials, lineEnd));
}

std::string MaterialKey(double thickness, std::string_view materialName, double exportScaleSetting) {
    const bool metric = exportScaleSetting == 2 || exportScaleSetting == 3;
    return NumberToTextNoZero(thickness, metric ? 2 : 5) + " " + FoldUpper(materialName);
}

std::optional<CheckedMaterial> FindCheckedMaterial(std::string_view key) {
    const FileLines file = LinesInUtf8(ReadMaterialsContent());
    const std::vector<std::string>& lines = file.lines;
    const std::vector<std::size_t> heads = WholeRecordsOf(lines, key);
    if (heads.empty()) return std::nullopt;
    const std::size_t head = heads.back();
    const MaterialTexts texts = TextsAt(lines, head, MaterialFieldCount);
    CheckedMaterial found{texts, head + 1,
                          FaultsOfRecord(std::span(lines).subspan(head, MaterialFieldCount), texts, head + 1),
                          GuessedLines(file, head, head + MaterialFieldCount)};
    if (heads.size() > 1) found.faults.push_back(StandsAgain(texts[Name], heads.front() + 1, head + 1));
    return found;
}

std::string MaterialFaultText(const MaterialFault& fault) {
    return MaterialsPath() + ":" + std::to_string(fault.line) + ": " + fault.text;
}

std::optional<CheckedMaterial> LookupMaterial(std::string_view key, MaterialRecord& record) {
    std::optional<CheckedMaterial> found = FindCheckedMaterial(key);
    if (found) record = MaterialFromTexts(found->texts);
    return found;
}

std::string UnknownMaterialText(std::string_view key) {
    return "You do not have the material " + std::string(key) +
           " in the material database, so this part export will be skipped.";
}

std::string MaterialNameForList(double thicknessInMillimetres, std::string_view materialName) {
    if (!SwitchIsOn(setting::ConvertMaterialName)) return std::string(materialName);
    constexpr double inchesInAMillimetre = 0.0393700787401575;
    const double inches = ClosestThirtySecond(thicknessInMillimetres * inchesInAMillimetre);
    return DecimalToFraction(inches, false) + " " + std::string(materialName);
}

}  // namespace brenvik
