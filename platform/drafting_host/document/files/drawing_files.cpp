// Chooses the reader and the writer for a drawing file.
#include "drafting_host/document/files/drawing_files.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "base/ascii.h"
#include "base/byte_order_mark.h"
#include "base/handle_text.h"
#include "drafting_host/acis/acis_text.h"
#include "drafting_host/document/files/drawing_units.h"
#include "drafting_host/document/files/extension.h"
#include "drafting_host/document/files/imported_parts.h"
#include "drafting_host/document/files/read_file.h"
#include "drafting_host/document/files/step_door.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/host_application.h"
#include "drafting_host/dwg/dwg_reader.h"
#include "drafting_host/dxf/reading/dxf_reader.h"
#include "drafting_host/dxf/writing/dxf_writer.h"

namespace brenvik {
namespace {

constexpr std::string_view ExpectedContent = "a DXF or DWG drawing, a STEP file or ACIS data";

/// Binary drawings begin with their release: "AC10" and two digits, and otherwise in the first ones.
constexpr auto DwgBeginnings = std::to_array<std::string_view>({"AC10", "AC1.", "AC2.", "MC0."});

std::string_view WithoutBlanks(std::string_view text) {
    text = WithoutByteOrderMark(text);
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front())) != 0)
        text.remove_prefix(1);
    return text;
}

std::string_view TakeLine(std::string_view& text) {
    const std::size_t end = text.find_first_of("\r\n");
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end);
    while (!text.empty() && (text.front() == '\r' || text.front() == '\n')) text.remove_prefix(1);
    return line;
}

/// A group code alone on its line begins DXF text: 0 before SECTION, or 999 before a comment.
bool LooksLikeDxf(std::string_view text) {
    const std::string_view code = WithoutBlanks(TakeLine(text));
    const bool number = !code.empty() && code.find_first_not_of("0123456789 ") == std::string_view::npos;
    if (!number) return false;
    const std::string_view value = WithoutBlanks(TakeLine(text));
    if (code.starts_with("999")) return true;
    return value.starts_with("SECTION") || value.starts_with("EOF");
}

/// Four whole numbers open ACIS text: version, records, bodies, history.
bool LooksLikeAcis(std::string_view text) {
    std::string_view line = TakeLine(text);
    int numbers = 0;
    while (!(line = WithoutBlanks(line)).empty()) {
        const std::size_t end = std::min(line.find_first_of(" \t"), line.size());
        if (!std::ranges::all_of(line.substr(0, end), IsDigit)) return false;
        ++numbers;
        line.remove_prefix(end);
    }
    return numbers >= 3;
}

std::string Excerpt(std::string_view content) {
    if (content.empty()) return "an empty file";
    if (content.starts_with("\xFF\xFE") || content.starts_with("\xFE\xFF")) return "UTF-16 text";
    std::string shown;
    for (const char c : content.substr(0, 16))
        shown += std::isprint(static_cast<unsigned char>(c)) != 0 ? c : '.';
    return "\"" + shown + "\"";
}

LengthUnit UnitOf(const HostDocument& document, std::optional<LengthUnit> unit) {
    const std::optional<LengthUnit> own = UnitOfInsertUnits(document.Tables().insertUnits);
    return own.value_or(unit.value_or(LengthUnit::Millimetre));
}

/// A drawing that nobody has brought to the shop's unit may be in any; STEP and ACIS text are in two only.
void TellOtherUnit(const HostDocument& document, LengthUnit unit, std::vector<std::string>& problems) {
    const int own = document.Tables().insertUnits;
    if (own == 0 || UnitOfInsertUnits(own)) return;
    problems.push_back("the drawing's lengths are in another unit ($INSUNITS " + std::to_string(own) +
                       ") and stand here as " + (unit == LengthUnit::Inch ? "inches" : "millimetres"));
}

std::vector<std::string> SaveDxf(const HostDocument& document, const std::filesystem::path& path,
                                 std::optional<LengthUnit> unit) {
    std::vector<std::string> problems;
    DrawingData data = document.ToData(problems);
    if (data.insertUnits == 0 && unit) data.insertUnits = InsertUnitsOf(*unit);
    document.Host().WriteFile(path, document.Signed(WriteDxf(data, problems)));
    return problems;
}

std::vector<std::string> SaveStep(const HostDocument& document, const std::filesystem::path& path,
                                  LengthUnit unit) {
    std::vector<std::string> problems;
    TellOtherUnit(document, unit, problems);
    const std::vector<step::StepSolid> solids = StepSolidsOf(document, problems);
    document.Host().WriteFile(path, OpenedStepExchange().text(path, solids, unit));
    return problems;
}

/// All solids' records in one text need one numbering, so the writer gets them as one shape.
std::vector<std::string> SaveSat(const HostDocument& document, const std::filesystem::path& path,
                                 LengthUnit unit) {
    std::vector<std::string> problems;
    TellOtherUnit(document, unit, problems);
    std::string content;
    for (const std::string& line : AcisLinesOf(document, unit, problems)) content += line + "\n";
    document.Host().WriteFile(path, content);
    return problems;
}

/// The file's text is gone before the bodies are built: they are three times its size.
void TakeOverFromDxf(HostDocument& document, std::string& content, const std::filesystem::path& path) {
    DrawingData data = ReadDxf(content, path.string());
    std::string().swap(content);
    document.TakeOver(std::move(data));
}

}  // namespace

DrawingKind KindOfContent(std::string_view head) {
    if (head.starts_with("AutoCAD Binary DXF")) return DrawingKind::DxfBinary;
    if (std::ranges::any_of(DwgBeginnings, [&](std::string_view each) { return head.starts_with(each); }))
        return DrawingKind::DwgBinary;
    if (head.starts_with("ACIS BinaryFile") || head.starts_with("ASM BinaryFile"))
        return DrawingKind::AcisBinary;
    const std::string_view text = WithoutBlanks(head);
    if (text.starts_with("ISO-10303-21") || text.starts_with("/*")) return DrawingKind::Step;
    if (LooksLikeDxf(text)) return DrawingKind::DxfText;
    if (LooksLikeAcis(text)) return DrawingKind::AcisText;
    return DrawingKind::Unknown;
}

void ReadDrawing(HostDocument& document, const std::filesystem::path& path, const ReadOptions& options) {
    ReadDrawingInUnit(document, path, options, {});
}

void ReadDrawingInUnit(HostDocument& document, const std::filesystem::path& path, const ReadOptions& options,
                       const UnitChoice& choice) {
    std::string content = ReadWholeFile(path);
    const auto refuse = [&](std::string_view found) {
        throw host_failure::InvalidFile(path.string(), 1, ExpectedContent, found);
    };
    switch (KindOfContent(content)) {
        case DrawingKind::DxfText:
        case DrawingKind::DxfBinary:
            TakeOverFromDxf(document, content, path);
            BringToUnit(document, choice);
            return;
        case DrawingKind::Step:
            ImportStep(document, path, options, choice);
            return;
        case DrawingKind::AcisText:
        case DrawingKind::AcisBinary:
            ImportAcis(document, content, path, options, choice);
            return;
        case DrawingKind::DwgBinary:
            document.TakeOver(ReadDwg(content, path.string()));
            document.MarkOnlyRead(path);
            BringToUnit(document, choice);
            return;
        case DrawingKind::Unknown:
            refuse(Excerpt(content));
            return;
    }
}

std::vector<std::string> SaveDrawing(const HostDocument& document, const std::filesystem::path& path) {
    return SaveDrawingInUnit(document, path, std::nullopt);
}

std::vector<std::string> SaveDrawingInUnit(const HostDocument& document, const std::filesystem::path& path,
                                           std::optional<LengthUnit> unit) {
    document.RequireOpen();
    document.RequireOtherThanOriginal(path);
    const std::string extension = ExtensionOf(path);
    if (IsDrawingExtension(extension)) return SaveDxf(document, path, unit);
    if (IsStepExtension(extension)) return SaveStep(document, path, UnitOf(document, unit));
    if (extension == ".sat") return SaveSat(document, path, UnitOf(document, unit));
    throw host_failure::InvalidArgument(path.string() + ": expected a name ending in " +
                                        EndingsOfWrittenDrawings());
}

}  // namespace brenvik
