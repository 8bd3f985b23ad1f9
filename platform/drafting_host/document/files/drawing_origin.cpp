// The mark in what is saved, and the look at the head of what stands somewhere already.
#include "drafting_host/document/files/drawing_origin.h"

#include <algorithm>
#include <fstream>
#include <optional>
#include <string_view>
#include <system_error>

#include "base/byte_order_mark.h"
#include "drafting_host/acis/sat_records.h"
#include "drafting_host/document/files/drawing_files.h"
#include "drafting_host/document/files/step_door.h"

namespace brenvik {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view Program = "Brenvik";
constexpr std::string_view Signature = "Saved by Brenvik";

/// The heads of STEP files, in which programs name themselves, are shorter.
constexpr std::size_t HeadLength = 65536;

/// The beginning of a file; null if no plain file is there, or it can't be read.
std::optional<std::string> HeadOf(const fs::path& place) {
    std::ifstream file(place, std::ios::binary);
    if (!file) return std::nullopt;
    std::string head(HeadLength, '\0');
    file.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(file.gcount()));
    return head;
}

bool IsPlainFile(const fs::path& place) {
    std::error_code unknown;
    return fs::is_regular_file(place, unknown);
}

/// The comment of SignedDxf; editors and version control may have changed the ends of its lines.
bool IsSigned(std::string_view head) {
    head = WithoutByteOrderMark(head);
    constexpr std::string_view comment = "999";
    if (!head.starts_with(comment)) return false;
    head.remove_prefix(comment.size());
    head.remove_prefix(std::min(head.find_first_not_of("\r\n"), head.size()));
    if (!head.starts_with(Signature)) return false;
    head.remove_prefix(Signature.size());
    return head.empty() || head.front() == '\r' || head.front() == '\n';
}

bool IsOwn(DrawingKind kind, const std::string& head) {
    switch (kind) {
        case DrawingKind::DxfText:
            return IsSigned(head);
        case DrawingKind::Step:
            return OpenedStepExchange().isWrittenHere(head);
        case DrawingKind::AcisText:
            return acis::SplitRecords(head).header.product == Program;
        case DrawingKind::DxfBinary:
        case DrawingKind::DwgBinary:
        case DrawingKind::AcisBinary:
        case DrawingKind::Unknown:
            return false;
    }
    return false;
}

/// Blank for what is no drawing.
std::string NameOf(DrawingKind kind) {
    switch (kind) {
        case DrawingKind::DxfText:
        case DrawingKind::DxfBinary:
            return "a DXF drawing";
        case DrawingKind::DwgBinary:
            return "a binary drawing (DWG)";
        case DrawingKind::Step:
            return "a STEP file";
        case DrawingKind::AcisText:
        case DrawingKind::AcisBinary:
            return "a file of ACIS data";
        case DrawingKind::Unknown:
            return {};
    }
    return {};
}

}  // namespace

std::string SignedDxf(std::string dxf) {
    const std::size_t at = dxf.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0;
    return dxf.insert(at, "999\r\n" + std::string(Signature) + "\r\n");
}

std::string ForeignFileAt(const fs::path& place) {
    if (!IsPlainFile(place)) return {};
    const std::optional<std::string> head = HeadOf(place);
    if (!head) return "a file that can't be read";
    if (head->empty()) return {};
    const DrawingKind kind = KindOfContent(*head);
    if (IsOwn(kind, *head)) return {};
    const std::string name = NameOf(kind);
    return name.empty() ? "a file that is no drawing of this program"
                        : name + " that this program did not save";
}

std::string DrawingAt(const fs::path& place) {
    if (!IsPlainFile(place)) return {};
    const std::optional<std::string> head = HeadOf(place);
    return head ? NameOf(KindOfContent(*head)) : std::string();
}

}  // namespace brenvik
