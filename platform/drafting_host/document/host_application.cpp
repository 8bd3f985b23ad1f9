// The list of open documents, object ids, and the measuring component.
#include "drafting_host/document/host_application.h"

#include <algorithm>
#include <utility>

#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/solids/shape_marks.h"

namespace brenvik {
namespace {

/// Closed documents are kept this far back, for callers that still hold a pointer to one.
constexpr std::size_t ClosedKept = 16;

class HostMeasurer final : public SolidMeasurer, public ShapeMarker {
  public:
    explicit HostMeasurer(const HostApplication& application) : mApplication(application) {}

    void MeasureSolid(std::int32_t objectId, double& d1, double& d2, double& d3, int& status) override {
        d1 = d2 = d3 = 0;
        status = solids::measure_status::Nothing;
        const auto* solid = dynamic_cast<const HostSolid*>(mApplication.FindByObjectId(objectId));
        if (solid == nullptr) return;
        const solids::Extents& extents = solid->Measures();
        d1 = extents.d1;
        d2 = extents.d2;
        d3 = extents.d3;
        status = extents.status;
    }
    ShapeMarks MarksOf(std::int32_t objectId) override {
        const auto* solid = dynamic_cast<const HostSolid*>(mApplication.FindByObjectId(objectId));
        return solid == nullptr ? ShapeMarks() : solids::MarksOf(solid->Shape());
    }

  private:
    const HostApplication& mApplication;
};

}  // namespace

int HostDocuments::Count() const { return static_cast<int>(mApplication.OpenDocuments().size()); }

AcadDocument* HostDocuments::Item(int index) {
    const auto& documents = mApplication.OpenDocuments();
    if (index < 0 || static_cast<std::size_t>(index) >= documents.size()) {
        throw host_failure::KeyNotFound("document " + std::to_string(index) + " of " +
                                        std::to_string(documents.size()));
    }
    return documents[static_cast<std::size_t>(index)].get();
}

AcadDocument* HostDocuments::Open(std::string_view fileName) { return &mApplication.OpenNamed(fileName); }

HostApplication::HostApplication(WholeFileWriter writer, WholeFileWriter scratchWriter)
    : mWriter(std::move(writer)), mScratchWriter(std::move(scratchWriter)), mDocumentList(*this) {}
HostApplication::~HostApplication() = default;

HostDocument* HostApplication::Active() const { return mActivation.empty() ? nullptr : mActivation.back(); }

AcadDocument* HostApplication::ActiveDocument() {
    if (mActivation.empty()) throw host_failure::NotPossible("no drawing is open");
    return mActivation.back();
}

AcadDocuments& HostApplication::Documents() { return mDocumentList; }
WindowStateKind HostApplication::WindowState() const { return mWindowState; }
void HostApplication::SetWindowState(WindowStateKind state) { mWindowState = state; }

// Whoever shows a drawing zooms; without an open one it fails all the same.
void HostApplication::ZoomExtents() { ActiveDocument(); }

std::unique_ptr<SolidMeasurer> HostApplication::CreateMeasurer() {
    return std::make_unique<HostMeasurer>(*this);
}

HostDocument& HostApplication::NewDocument() {
    mDocuments.push_back(std::make_unique<HostDocument>(*this));
    mActivation.push_back(mDocuments.back().get());
    return *mDocuments.back();
}

void HostApplication::Activate(HostDocument& document) {
    document.RequireOpen();
    std::erase(mActivation, &document);
    mActivation.push_back(&document);
}

void HostApplication::CloseDocument(HostDocument& document) {
    document.RequireOpen();
    const auto found = std::find_if(mDocuments.begin(), mDocuments.end(),
                                    [&](const auto& one) { return one.get() == &document; });
    if (found == mDocuments.end()) throw host_failure::InvalidArgument("a drawing of another host");
    if (mCommandLine != nullptr) mCommandLine->Forget(document);
    ForgetObjectsOf(document);
    document.Empty();
    std::erase(mActivation, &document);
    mClosed.push_back(std::move(*found));
    mDocuments.erase(found);
    if (mClosed.size() > ClosedKept) mClosed.erase(mClosed.begin());
}

std::filesystem::path HostApplication::Resolve(std::string_view fileName) const {
    return mResolver ? mResolver(fileName) : std::filesystem::path(fileName);
}

void HostApplication::WriteFile(const std::filesystem::path& file, std::string_view content) const {
    if (!mWriter) throw host_failure::NotPossible(file.string() + ": this host has nothing to save with");
    mWriter(file, content);
}

void HostApplication::WriteScratch(const std::filesystem::path& file, std::string_view content) const {
    if (mScratchWriter)
        mScratchWriter(file, content);
    else
        WriteFile(file, content);
}

std::int32_t HostApplication::ObjectIdOf(const HostEntity& entity) {
    const auto [place, isNew] = mIds.emplace(&entity, mNextId);
    if (isNew) {
        mById.emplace(mNextId, const_cast<HostEntity*>(&entity));
        ++mNextId;
    }
    return place->second;
}

HostEntity* HostApplication::FindByObjectId(std::int32_t objectId) const {
    const auto found = mById.find(objectId);
    if (found == mById.end() || found->second->Erased()) return nullptr;
    return found->second;
}

void HostApplication::ForgetObjectsOf(const HostDocument& document) {
    std::erase_if(mIds, [&](const auto& entry) {
        if (&entry.first->Document() != &document) return false;
        mById.erase(entry.second);
        return true;
    });
}

}  // namespace brenvik
