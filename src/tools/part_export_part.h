// The work of the part-per-file export on one part: laid flat by its largest face and edges, turned by its
// letters, put on its material's layer, and saved under its name.
#pragma once

#include <string>

#include "cnc/part/run_state.h"

namespace brenvik {

class AcadApplication;
class AcadDocument;

class PartExport {
  public:
    PartExport(AcadApplication& application, int partIndex) : mApp(application), mIndex(partIndex) {}

    /// Works on "Part<n>.dwg", which has to be there. Returns whether the command continues; the part itself
    /// may have been skipped, after a message. Fails as the host does.
    PassOutcome Run();
    /// Closes the part's drawing, if it is open still, and deletes the drawings that it needed on its way.
    void CleanUp();
    /// The name of the finished drawing; blank when there is none.
    const std::string& Written() const { return mWritten; }

  private:
    void OpenScaled();
    PassOutcome FinishWithoutFlatSide();
    /// Writes what there is to the work drawing, and goes on there.
    void ContinueInWorkDrawing();
    /// False for letters that name no sizes, which has been reported then.
    bool TurnAndMove();
    void PutOnMaterialLayer();
    void SaveAndClose();

    AcadApplication& mApp;
    const int mIndex;
    AcadDocument* mDrawing = nullptr;
    std::string mDimT = "0", mWritten;
};

}  // namespace brenvik
