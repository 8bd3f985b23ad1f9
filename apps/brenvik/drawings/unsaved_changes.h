// Whether a drawing holds what no file has yet.
#pragma once

#include "drafting_host/document/drawing_state.h"
#include "drafting_host/document/host_document.h"

namespace brenvik::app {

/// Counts a drawing as saved when this is made, as it has just been read.
class UnsavedChanges {
  public:
    explicit UnsavedChanges(const HostDocument& document) : mDocument(document), mSaved(document) {}

    void NoteSaved() { mSaved = DrawingState(mDocument); }
    /// None in a drawing that was closed since: whoever closed it has saved or discarded them.
    bool Any() const { return !mDocument.Closed() && !(mSaved == DrawingState(mDocument)); }

  private:
    const HostDocument& mDocument;
    DrawingState mSaved;
};

}  // namespace brenvik::app
