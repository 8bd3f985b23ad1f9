// Opening a drawing in the host: one that it has written itself and holds in memory, or the file on disk.
#include <filesystem>
#include <memory>
#include <string>
#include <utility>

#include "drafting_host/document/files/drawing_files.h"
#include "drafting_host/document/host_application.h"

namespace brenvik {

HostDocument& HostApplication::OpenDrawing(const std::filesystem::path& path, const ReadOptions& options) {
    // Read first: a file that can't be read leaves the list of documents as it was.
    auto document = std::make_unique<HostDocument>(*this);
    if (const auto written = mWritten.Find(path))
        document->TakeOver(*written);
    else
        ReadDrawing(*document, path, options);
    document->SetFile(path.string());
    mDocuments.push_back(std::move(document));
    mActivation.push_back(mDocuments.back().get());
    return *mDocuments.back();
}

HostDocument& HostApplication::OpenNamed(std::string_view fileName) {
    HostDocument& document = OpenDrawing(Resolve(fileName));
    document.SetFile(std::string(fileName));
    return document;
}

}  // namespace brenvik
