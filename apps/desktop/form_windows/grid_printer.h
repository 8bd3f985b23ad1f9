// The grid on paper: a preview with page set-up, from which it goes to a printer or into a PDF file.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "session/ports/dialog_port.h"

class QPainter;
class QPrinter;
class QRectF;

namespace brenvik::desktop {

class FormDesk;

class GridPrinter : public PrintPort {
  public:
    /// `drawing` names what the list is of, for the head of each sheet.
    GridPrinter(FormDesk& desk, std::function<std::string()> drawing)
        : mDesk(desk), mDrawing(std::move(drawing)) {}
    /// Fails with 482 when what the user has printed from the preview was refused.
    void PrintGrid(const GridControl& grid, const PrintJob& job) override;

  private:
    FormDesk& mDesk;
    std::function<std::string()> mDrawing;
};

/// The paper, margins and names of a job.
void SetUpPrinter(QPrinter& printer, const PrintJob& job);

/// Paints all sheets that the printer is asked for: the captions stand on each, its number below. Columns
/// that are too wide together get smaller letters, and then break their texts; nothing is cut off. False when
/// the printer refuses, as it does for a file that can't be written.
bool PaintSheets(QPrinter& printer, const GridControl& grid, const PrintJob& job, const std::string& drawing);

}  // namespace brenvik::desktop
