// brenvik-desktop: words into options, and what ends the program into an exit status.
#include <QApplication>
#include <QCommandLineParser>
#include <QSurfaceFormat>
#include <iostream>

#include "base/failure.h"
#include "desktop_program.h"
#include "shell/exit_status.h"
#include "toolkit/clear_frames.h"
#include "toolkit/qt_text.h"

namespace brenvik::desktop {

namespace {

/// If both displays are there, the drawing can be shown by way of X alone. Without any, windows are drawn
/// nowhere: a journal doesn't mind that, a person gets a message.
bool ChooseDisplay(bool person) {
    const bool x11 = !qEnvironmentVariableIsEmpty("DISPLAY");
    const bool wayland = !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) return true;
    if (x11) qputenv("QT_QPA_PLATFORM", "xcb");
    if (!x11 && !wayland && !person) qputenv("QT_QPA_PLATFORM", "offscreen");
    return x11 || wayland || !person;
}

DesktopOptions OptionsOf(const QStringList& words) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Cut lists and CNC feature recognition, with windows."));
    parser.addHelpOption();
    parser.addPositionalArgument("DRAWING", "The drawings to open, each in a tab of its own", "[DRAWING...]");
    parser.addOptions({{"home", "The install folder", "DIR"},
                       {"journal", "Play this journal on the windows and end", "FILE"},
                       {"record", "Write a journal of what is done into this file", "FILE"},
                       {"pictures", "Write a picture of each window that opens into this folder", "DIR"},
                       {"part-picture", "Paint this part file of a CNC run, and end", "FILE"},
                       {"out", "The picture to paint: .png", "FILE"},
                       {"quiet", "Leave out remarks on the part file"}});
    parser.process(words);
    DesktopOptions options;
    options.home = FromQt(parser.value("home"));
    options.journal = FromQt(parser.value("journal"));
    options.record = FromQt(parser.value("record"));
    options.pictures = FromQt(parser.value("pictures"));
    options.partFile = FromQt(parser.value("part-picture"));
    options.out = FromQt(parser.value("out"));
    options.quiet = parser.isSet("quiet");
    const QStringList drawings = parser.positionalArguments();
    if (!drawings.isEmpty()) options.drawing = FromQt(drawings.front());
    for (const QString& drawing : drawings.mid(1)) options.furtherDrawings.push_back(FromQt(drawing));
    return options;
}

int Run(int argc, char** argv) {
    bool person = true, paints = false;
    for (int at = 1; at < argc; ++at) {
        person = person && std::string_view(argv[at]).substr(0, 9) != "--journal";
        paints = paints || std::string_view(argv[at]).substr(0, 14) == "--part-picture";
    }
    // A picture on paper is nobody's window.
    if (paints) qputenv("QT_QPA_PLATFORM", "offscreen");
    if (!ChooseDisplay(person)) {
        std::cerr << "brenvik-desktop: expected a display to open windows on; neither DISPLAY nor "
                     "WAYLAND_DISPLAY is set. From a shell, brenvik does the same work.\n";
        return static_cast<int>(app::ExitStatus::Incomplete);
    }
    // The window that carries the drawing's picture needs both.
    QSurfaceFormat format;
    format.setDepthBufferSize(24);
    format.setStencilBufferSize(8);
    QSurfaceFormat::setDefaultFormat(format);
    QApplication application(argc, argv);
    QApplication::setOrganizationName("Brenvik");
    QApplication::setApplicationName("Brenvik");
    QApplication::setStyle(new ClearFrames);
    try {
        const DesktopOptions options = OptionsOf(application.arguments());
        if (!options.journal.empty() && !options.record.empty())
            throw app::CommandError(
                app::ExitStatus::WrongWords,
                "--record writes what a person does, and --journal plays: expected one of them");
        if (!options.journal.empty() && !options.furtherDrawings.empty())
            throw app::CommandError(
                app::ExitStatus::WrongWords,
                "--journal plays on one drawing, in which it may open others: expected one DRAWING");
        if (!options.partFile.empty()) return static_cast<int>(PaintPartFile(options));
        return static_cast<int>(options.journal.empty() ? RunForAPerson(options) : RunForAJournal(options));
    } catch (const app::CommandError& error) {
        std::cerr << "brenvik: " << error.what() << '\n';
        return static_cast<int>(error.Status());
    } catch (const Failure& failure) {
        std::cerr << "brenvik: " << failure.what() << '\n';
        return static_cast<int>(app::ExitStatus::Incomplete);
    }
}

}  // namespace

}  // namespace brenvik::desktop

int main(int argc, char** argv) { return brenvik::desktop::Run(argc, argv); }
