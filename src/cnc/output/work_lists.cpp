// The list of files, materials and quantities for a CAM package. Each target has its own file and form; the
// pass decides the folder. The list gets its name when the run has ended, so that the list of a run that was
// killed is never taken for a whole job.
#include "cnc/output/work_lists.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/fractions.h"
#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/skip.h"
#include "base/text.h"
#include "cnc/part/lengths.h"
#include "cnc/part/part_file_name.h"
#include "cnc/part/run_state.h"
#include "cnc/part/target_traits.h"
#include "session/ports/files_port.h"
#include "session/session.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

using Fields = std::vector<std::string>;

/// The list during the run.
std::string UnfinishedPath(std::string_view folder, std::string_view name) {
    return std::string(folder) + std::string(name) + std::string(UnfinishedListEnding);
}

std::string SideText(const RunState& run) { return run.FirstPass() ? "F" : "B"; }

std::string QuantityText(const RunState& run) {
    return std::to_string(std::int64_t{run.part.Quantity} * ToInteger(NumberSetting(setting::CNCMultiplier)));
}

/// A dimension with the blank that numbers have before them.
std::string Dimension(const std::string& text) { return NumberToTextBlank(LenientNumber(text)); }
std::string TrimmedDimension(const std::string& text) { return Trim(Dimension(text)); }

/// The key of the part's material, or with `ConvertMaterialName` the name that it has in inches.
std::string MaterialText(const RunState& run) {
    if (!SwitchIsOn(setting::ConvertMaterialName)) return run.part.MaterialKeyText;
    return MaterialNameForList(run.Metric() ? run.part.ExtentZ : run.part.ExtentZ * MillimetresInAnInch,
                               run.part.MaterialName);
}

/// ABC's list has the name alone there, since the thickness follows in columns of its own.
std::string MaterialNameText(const RunState& run) {
    return SwitchIsOn(setting::ConvertMaterialName) ? MaterialText(run) : run.part.MaterialName;
}

Fields CommonFields(const RunState& run) {
    const PartTexts& part = run.part.texts;
    return {run.part.writtenFile,
            MaterialText(run),
            std::to_string(run.part.Material.grain),
            QuantityText(run),
            part.PartName,
            part.SubAssembly,
            part.PN,
            part.EB1,
            part.EB2,
            part.EB3,
            part.EB4};
}

Fields FieldsOfBW(const RunState& run) {
    const bool small = run.part.ExtentX * run.part.ExtentY < NumberSetting(setting::BWPriority);
    return {"Piece",
            run.part.writtenFile,
            TrimmedDimension(run.part.DimL),
            TrimmedDimension(run.part.DimW),
            QuantityText(run),
            small ? "100" : "50",
            run.part.Material.grain == 1 ? "90" : "180",
            "0"};
}

Fields FieldsOfTHERM(const RunState& run) {
    return {QuantityText(run),
            WrittenFileName(run),
            MaterialText(run),
            "48",
            "96",
            Dimension(run.part.DimT),
            run.part.Material.grain == 0 ? "yes" : "no"};
}

Fields FieldsOfEnroute(const RunState& run) {
    return {WrittenFileName(run),
            run.part.texts.PartName,
            Dimension(run.part.DimW),
            Dimension(run.part.DimL),
            Dimension(run.part.DimT),
            MaterialText(run),
            run.part.texts.SubAssembly,
            QuantityText(run),
            std::to_string(run.part.Material.grain),
            "0",
            SideText(run)};
}

/// The last one is blank: a comma closes the line.
Fields FieldsOfRCIM(const RunState& run) {
    return {WrittenFileName(run),
            run.part.texts.PartName,
            TrimmedDimension(run.part.DimW),
            TrimmedDimension(run.part.DimL),
            TrimmedDimension(run.part.DimT),
            MaterialText(run),
            "1",
            QuantityText(run),
            std::to_string(run.part.Material.grain),
            SideText(run),
            "0",
            ""};
}

Fields FieldsOfABC(const RunState& run) {
    constexpr int thicknessDigits = 2;
    const PartTexts& part = run.part.texts;
    const auto upper = [](const std::string& text) { return FoldUpper(text); };
    const std::string fraction = DecimalToFraction(ClosestThirtySecond(run.part.PartThickness), false);
    const std::string thickness =
        Trim(NumberToTextBlank(RoundHalfEven(run.part.PartThickness, thicknessDigits)));
    const std::string folder = run.FirstPass() ? "C:\\BV-DXF\\" : "C:\\BV-DXF\\2-sided\\";
    return {QuantityText(run),
            upper(part.PartName),
            upper(part.SubAssembly),
            MaterialNameText(run),
            Dimension(run.part.DimL),
            Dimension(run.part.DimW),
            Dimension(run.part.DimT),
            upper(part.ORIE),
            upper(part.UserData1),
            upper(part.UserData2),
            upper(part.PN),
            upper(part.Price),
            upper(part.EB1),
            upper(part.EB2),
            upper(part.EB3),
            upper(part.EB4),
            upper(part.Face),
            SideText(run),
            fraction + " " + run.part.MaterialName,
            thickness + " " + run.part.MaterialName,
            folder + WrittenFileName(run)};
}

Fields FieldsOf(const RunState& run) {
    switch (run.target) {
        case Target::C2C:
        case Target::ATP:
        case Target::ROV:
        case Target::CNI:
        case Target::ASP:
        case Target::WOP4:
        case Target::WOP5:
            return CommonFields(run);
        case Target::BW:
            return FieldsOfBW(run);
        case Target::THERM:
            return FieldsOfTHERM(run);
        case Target::Enroute:
            return FieldsOfEnroute(run);
        case Target::RCIM:
            return FieldsOfRCIM(run);
        case Target::ABC:
            return FieldsOfABC(run);
    }
    return {};
}

/// These lists don't quote, so a text with their separator in it shifts the columns after it.
void NoteShifts(RunState& run, const Fields& fields, std::string_view separator) {
    for (const std::string& field : fields)
        if (field.find(separator) != std::string::npos &&
            std::ranges::find(run.part.shiftingTexts, field) == run.part.shiftingTexts.end())
            run.part.shiftingTexts.push_back(field);
}

std::string_view SeparatorOf(Target target) { return target == Target::BW ? "\t" : ","; }

/// A part's names may come from another program with line breaks in them; a line of a list has none.
std::string LineOf(const Fields& fields, Target target) {
    std::string line = Join(fields, SeparatorOf(target));
    std::ranges::replace_if(
        line, [](char letter) { return letter == '\r' || letter == '\n'; }, ' ');
    return line;
}

/// The text before BW's first line.
std::string HeaderOfBW(std::string_view lineEnd) {
    const std::string end(lineEnd);
    return "PIECE SECTION" + end + end +
           Join(Fields{"Discr", "Piece path", "Length", "Width", "Q. min", "Prior", "Rot", "Offset"}, "\t") +
           end + end;
}

}  // namespace

std::string_view WorkListName(Target target) { return TraitsOf(target).list; }

bool IsWorkList(std::string_view fileName) {
    return std::ranges::any_of(AllTargets, [fileName](Target target) {
        return std::ranges::any_of(TraitsOf(target).clearedLists, [fileName](std::string_view list) {
            return EqualsIgnoreCase(fileName, list) ||
                   EqualsIgnoreCase(fileName, std::string(list) + std::string(UnfinishedListEnding));
        });
    });
}

std::string WorkListLine(const RunState& run) { return LineOf(FieldsOf(run), run.target); }

std::vector<std::string> WorkListHeader(Target target) {
    if (target != Target::BW) return {};
    std::vector<std::string> lines = Split(HeaderOfBW("\n"), '\n');
    lines.pop_back();
    return lines;
}

ListLine TakeListLine(RunState& run) {
    const Fields fields = FieldsOf(run);
    NoteShifts(run, fields, SeparatorOf(run.target));
    return {!run.FirstPass(), LineOf(fields, run.target)};
}

void WriteListLine(RunState& run, const ListLine& line) {
    FilesPort& files = *ThePlatform().files;
    const std::string_view lineEnd = files.LineEnd();
    const std::string path =
        UnfinishedPath(line.secondSide ? SecondSideFolder : OutputFolder, TraitsOf(run.target).list);
    std::string content = files.FileExists(path) ? files.ReadFile(path) : std::string();
    if (run.target == Target::BW) {
        bool& written = run.ListHeaderWritten[line.secondSide ? 1 : 0];
        if (!written) content = HeaderOfBW(lineEnd);
        written = true;
    }
    files.WriteFile(path, content + line.text + std::string(lineEnd));
}

void AddListLine(RunState& run) { WriteListLine(run, TakeListLine(run)); }

void ClearWorkLists(Target target) {
    FilesPort& files = *ThePlatform().files;
    for (const std::string_view folder : {OutputFolder, SecondSideFolder})
        for (const std::string_view name : TraitsOf(target).clearedLists) {
            for (const std::string& path :
                 {std::string(folder) + std::string(name), UnfinishedPath(folder, name)})
                if (files.FileExists(path)) Skip([&] { files.RemoveFile(path); });
        }
}

void FinishWorkLists(Target target) {
    FilesPort& files = *ThePlatform().files;
    const std::string_view name = TraitsOf(target).list;
    // The first side's list comes last: where it stands, the other one does too.
    for (const std::string_view folder : {SecondSideFolder, OutputFolder})
        if (const std::string path = UnfinishedPath(folder, name); files.FileExists(path))
            files.MoveFileOver(path, std::string(folder) + std::string(name));
}

}  // namespace brenvik
