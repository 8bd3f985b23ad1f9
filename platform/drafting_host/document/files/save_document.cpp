// Saving by the object model: under the drawing's name, under another, and a part of it.
#include <filesystem>
#include <memory>
#include <system_error>

#include "base/letter_case.h"
#include "drafting_host/document/files/drawing_files.h"
#include "drafting_host/document/files/drawing_origin.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/host_application.h"
#include "drafting_host/dxf/writing/dxf_writer.h"

namespace brenvik {
namespace {

/// A name without an extension gets the one of the kind.
std::string WithExtension(std::string_view fileName, SaveAsKind kind) {
    const std::size_t slash = fileName.find_last_of("/\\");
    const std::size_t name = slash == std::string_view::npos ? 0 : slash + 1;
    if (name >= fileName.size()) throw BadFileName(std::string(fileName));
    if (fileName.find('.', name) != std::string_view::npos) return std::string(fileName);
    return std::string(fileName) + (kind == SaveAsKind::Dxf2000 ? ".dxf" : ".dwg");
}

void KeepProblems(HostDocument& document, std::string_view fileName,
                  const std::vector<std::string>& problems) {
    for (const std::string& problem : problems)
        document.Tables().notes.push_back({0, "left out of " + std::string(fileName) + ": " + problem, true});
}

/// Where the content was written that is kept last. Whoever uses it looks what stands there now.
std::filesystem::path& FileOfContent() {
    static std::filesystem::path file;
    return file;
}

/// Makes the file a second name of the one that holds this drawing already: it is deleted like a file of its
/// own, and costs the disk nothing. Both are only ever replaced as a whole. False where the first is another
/// one by now, where something stands in the place already, or where the file system has no such names.
bool LinkToContent(WrittenDrawings& written, const DrawingSnapshot& drawing,
                   const std::filesystem::path& file) {
    const std::shared_ptr<const DrawingSnapshot> there = written.Find(FileOfContent());
    if (there == nullptr || written.ContentOf(*there) != written.ContentOf(drawing)) return false;
    std::error_code unlinked;
    std::filesystem::create_hard_link(FileOfContent(), file, unlinked);
    return !unlinked;
}

}  // namespace

void RequireNotOpen(const HostApplication& host, std::string_view fileName, const HostDocument& own) {
    const std::filesystem::path place = host.Resolve(fileName);
    const auto isThere = [&](const std::filesystem::path& other) {
        std::error_code unknown;
        const bool same = std::filesystem::equivalent(place, other, unknown);
        return same || place.lexically_normal() == other.lexically_normal();
    };
    for (const auto& document : host.OpenDocuments()) {
        if (document.get() == &own || document->FullName().empty()) continue;
        if (isThere(host.Resolve(document->FullName())))
            throw host_failure::NotPossible(std::string(fileName) +
                                            " stands open as another drawing; close that first");
    }
}

void HostDocument::Save() {
    RequireOpen();
    if (mFullName.empty()) throw host_failure::NotPossible("the drawing has no name yet");
    if (mImported) {
        throw host_failure::NotPossible(mFullName +
                                        " is no drawing file; save the drawing under a name of its own");
    }
    if (!mOnlyRead.empty()) return SaveBesideOriginal();
    const std::filesystem::path path = mApplication.Resolve(mFullName);
    KeepProblems(*this, mFullName, SaveDrawing(*this, path));
}

void HostDocument::SaveBesideOriginal() {
    const std::size_t dot = mFullName.find_last_of("./\\");
    const bool hasExtension = dot != std::string::npos && mFullName[dot] == '.';
    const std::string name = mFullName.substr(0, hasExtension ? dot : mFullName.size()) + ".dxf";
    const std::filesystem::path path = mApplication.Resolve(name);
    if (std::filesystem::exists(path)) {
        throw host_failure::NotPossible(mFullName + " is a binary drawing, which is only read, and " + name +
                                        " exists already; save the drawing under a name of its own");
    }
    KeepProblems(*this, name, SaveDrawing(*this, path));
    Tables().notes.push_back(
        {0, "saved as " + name + ", DXF text: binary drawings (DWG) are read and not written", false});
    mFullName = name;
    mOnlyRead.clear();
}

void HostDocument::RequireOtherThanOriginal(const std::filesystem::path& path) const {
    std::error_code ignored;
    if (mOnlyRead.empty() || !std::filesystem::equivalent(path, mOnlyRead, ignored)) return;
    throw host_failure::NotPossible(
        path.string() +
        (mImported ? " is the STEP file that was read, by another program, which may hold more than "
                     "is read of it (tolerances, features, assemblies); give another name"
                   : " is the binary drawing itself, which is only read; give another name"));
}

std::string HostDocument::Signed(std::string dxf) const {
    return mSignsSavings ? SignedDxf(std::move(dxf)) : std::move(dxf);
}

void HostDocument::SaveAs(std::string_view fileName, SaveAsKind kind) {
    RequireOpen();
    if (kind != SaveAsKind::Native && kind != SaveAsKind::Dxf2000)
        throw host_failure::InvalidArgument("a file type of " + std::to_string(static_cast<int>(kind)));
    const std::string name = WithExtension(fileName, kind);
    RequireOtherThanOriginal(mApplication.Resolve(name));
    // Of the files of a run, which are DXF, the latest run's stand, whoever looks at earlier ones.
    if (kind == SaveAsKind::Native) RequireNotOpen(mApplication, name, *this);
    // Both file types are DXF text here, whatever the name ends in.
    std::vector<std::string> problems;
    const DrawingData data = ToData(problems);
    mApplication.WriteFile(mApplication.Resolve(name), Signed(WriteDxf(data, problems)));
    KeepProblems(*this, name, problems);
    mFullName = name;
    mImported = false;
    mOnlyRead.clear();
}

void HostDocument::Wblock(std::string_view fileName, AcadSelectionSet& set) {
    RequireOpen();
    const auto* own = dynamic_cast<const HostSelectionSet*>(&set);
    if (own == nullptr) throw ObjectNotSet("a selection set of the drafting host is expected");
    const std::span<HostEntity* const> members = own->Members();
    if (members.empty()) throw host_failure::NotPossible("the selection set " + set.Name() + " is empty");
    if (&members.front()->Document() != this)
        throw host_failure::InvalidArgument("a selection set of another drawing");
    const auto drawing = std::make_shared<const DrawingSnapshot>(Extracted(members, UcsToWorld().Inverse()));
    const std::filesystem::path file = mApplication.Resolve(WithExtension(fileName, SaveAsKind::Native));
    WrittenDrawings& written = mApplication.Written();
    if (const std::string* content = written.ContentOf(*drawing)) {
        if (!LinkToContent(written, *drawing, file)) mApplication.WriteScratch(file, *content);
        written.Keep(file, drawing);
        return;
    }
    std::vector<std::string> problems;
    std::string content = WriteDxf(WithBodyTexts(*drawing, problems));
    mApplication.WriteScratch(file, content);
    KeepProblems(*this, fileName, problems);
    // A drawing with problems lacks in its file what the memory would still have.
    if (!problems.empty()) return;
    written.Keep(file, drawing);
    written.KeepContent(drawing, std::move(content));
    FileOfContent() = file;
}

}  // namespace brenvik
