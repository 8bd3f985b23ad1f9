// Leaving an entered viewport for as long as something is asked on the sheet.
#pragma once

#include "drafting_host/document/host_document.h"

namespace brenvik {

/// Viewports are objects of the sheet, so a viewport that was entered is left for as long as the command
/// runs, and entered again however it ends.
class StayOnSheet {
  public:
    explicit StayOnSheet(HostDocument& document) : mDocument(document), mEntered(document.MSpace()) {
        if (mEntered) mDocument.SetMSpace(false);
    }
    ~StayOnSheet() {
        if (!mEntered || mDocument.Closed()) return;
        // Meanwhile the sheet may have been left, or its viewports erased or turned off.
        if (mDocument.ActiveSpace() != ActiveSpaceKind::PaperSpace) return;
        const auto* viewport = dynamic_cast<const HostViewport*>(mDocument.ActivePViewport());
        if (viewport != nullptr && viewport->On()) mDocument.SetMSpace(true);
    }
    StayOnSheet(const StayOnSheet&) = delete;
    StayOnSheet& operator=(const StayOnSheet&) = delete;

  private:
    HostDocument& mDocument;
    bool mEntered;
};

}  // namespace brenvik
