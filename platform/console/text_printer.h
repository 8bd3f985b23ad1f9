// A printer for plain machines: the grid as aligned text, to a stream or into a file.
#pragma once

#include <filesystem>
#include <ostream>
#include <string>

#include "session/ports/dialog_port.h"

namespace brenvik {

/// The grid as text in UTF-8: header, column captions under which the cells are lined up, rows, footer.
/// Hidden columns are left out; columns of numbers are lined up at the right. Line breaks and tabs in a cell
/// become blanks. Margins, colour and orientation have no meaning here.
std::string GridAsText(const GridControl& grid, const PrintJob& job);

class TextPrinter : public PrintPort {
  public:
    /// Prints to a stream, which must outlive the printer.
    explicit TextPrinter(std::ostream& outputStream) : mOutput(&outputStream) {}
    /// Prints into a file; each job replaces the one before.
    explicit TextPrinter(std::filesystem::path outputFile) : mFile(std::move(outputFile)) {}

    /// Fails with 75 when the file can't be written; then the file of an earlier job stands as it was. Fails
    /// with 482 when the stream takes no more.
    void PrintGrid(const GridControl& grid, const PrintJob& job) override;

  private:
    std::ostream* mOutput = nullptr;
    std::filesystem::path mFile;
};

}  // namespace brenvik
