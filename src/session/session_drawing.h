// The drawing that the session stands at: part data and measures are read by way of it.
#pragma once

namespace brenvik {

class AcadDocument;

/// The session stands at this drawing from now on; null for none.
void GoToDrawing(AcadDocument* drawing);

/// What lives with it may take the session to other drawings; at its end it is back.
class BackToDrawing {
  public:
    BackToDrawing();
    ~BackToDrawing();
    BackToDrawing(const BackToDrawing&) = delete;
    BackToDrawing& operator=(const BackToDrawing&) = delete;

  private:
    AcadDocument* mDrawing;
};

}  // namespace brenvik
