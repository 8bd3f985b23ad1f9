// What the system shows a person and asks of them: modal forms, message boxes, file dialogs, printing,
// and documents handed to the operating system.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace brenvik {

class Form;
class GridControl;

/// The numbers of icons, buttons and answers are those of the original message boxes.
enum class MessageIcon { None = 0, Stop = 16, Question = 32, Exclamation = 48, Information = 64 };
enum class MessageButtons { Ok = 0, OkCancel = 1, YesNoCancel = 3, YesNo = 4 };
enum class MessageAnswer { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

struct MessageRequest {
    std::string text;
    std::string title;
    MessageIcon icon = MessageIcon::None;
    MessageButtons buttons = MessageButtons::Ok;
};

struct FileRequest {
    std::string title;
    /// "Comma Separated Values (*.csv)|*.csv|All Files (*.*)|*.*": names and patterns in turn.
    std::string filter;
    std::string defaultExtension;
    std::string fileName;
    bool saving = false;
};

/// The size of the screen in twips.
struct ScreenSize {
    double width, height;
};

class DialogPort {
  public:
    virtual ~DialogPort() = default;
    /// What forms are centred on. Without a screen it is one of 1280 by 1024 points at 15 twips each.
    virtual ScreenSize Screen() const { return {19200, 15360}; }
    /// Loads the form if need be and returns when it has been unloaded. Forms nest.
    virtual void ShowModal(Form& form) = 0;
    virtual MessageAnswer Show(const MessageRequest& request) = 0;
    /// The chosen path, or null when the dialog was cancelled.
    virtual std::optional<std::string> ChooseFile(const FileRequest& request) = 0;
    /// Lets pending events run once.
    virtual void DoEvents() = 0;
};

/// The numbers are those of the grid's own print settings.
enum class PrintOrientation { Portrait = 1, Landscape = 2 };

/// In twips, from the edges of the sheet.
struct PrintMargins {
    double left = 0, top = 0, right = 0, bottom = 0;
};

/// How a grid is to be printed: its visible columns and all of its rows.
struct PrintJob {
    /// Given: shown while a job runs that can be cancelled. None of our printers takes so long.
    std::string abortMessage;
    std::string jobName;
    /// A line above and a line below the cells of each sheet.
    std::string header, footer;
    bool columnHeaders = true, rowHeaders = false;
    PrintMargins margins;
    bool gridLines = true;
    bool colour = false;
    PrintOrientation orientation = PrintOrientation::Portrait;
};

class PrintPort {
  public:
    virtual ~PrintPort() = default;
    /// Fails as the printer does; a job that the user cancels does not fail.
    virtual void PrintGrid(const GridControl& grid, const PrintJob& job) = 0;
};

class ShellPort {
  public:
    virtual ~ShellPort() = default;
    /// Opens a document with the program that is registered for it. A result of 33 or above is success;
    /// 0, 2, 3, 11 and 31 are the shell's own failures (memory, file, path, format, no association).
    virtual int OpenDocument(std::string_view folder, std::string_view file, int show) = 0;
    virtual void RunProgram(std::string_view commandLine) = 0;
};

}  // namespace brenvik
