// The wiring of windows and platforms.
#include "desktop_program.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <iostream>
#include <optional>

#include "base/numbers.h"
#include "commands/journal_run.h"
#include "drafting_host/document/host_utility.h"
#include "drawings/part_file.h"
#include "file_roots/places.h"
#include "form_windows/desktop_dialogs.h"
#include "form_windows/form_window.h"
#include "form_windows/grid_printer.h"
#include "form_windows/widget_hands.h"
#include "journal/journal_parser.h"
#include "part_pictures/part_painter.h"
#include "recording/journal_recorder.h"
#include "recording/recording_ports.h"
#include "recovery/work_keeper.h"
#include "session/progress.h"
#include "session/session.h"
#include "toolkit/qt_text.h"
#include "windows/guide_window.h"
#include "windows/main_window.h"
#include "windows/progress_window.h"
#include "windows/window_pictures.h"

namespace brenvik::desktop {

namespace {

/// The host's questions to a person.
class AskingPrompts : public PromptPort {
  public:
    AskingPrompts(FormDesk& desk, MainWindow& window) : mDesk(desk), mWindow(window) {}

    std::optional<Point3> GetPoint(std::string_view prompt) override {
        if (mWindow.CanAskForPoint()) return mWindow.AskForPoint(prompt);
        const std::optional<std::string> text = Ask(prompt, "x,y,z");
        double coordinates[3];
        if (!text || !ParseJournalPoint(*text, coordinates)) return std::nullopt;
        return Point3{coordinates[0], coordinates[1], coordinates[2]};
    }
    std::optional<double> GetReal(std::string_view prompt) override {
        const std::optional<std::string> text = Ask(prompt, "");
        return text ? std::optional(LenientNumber(*text)) : std::nullopt;
    }
    std::optional<std::string> GetString(bool, std::string_view prompt) override { return Ask(prompt, ""); }
    std::optional<std::string> GetKeyword(std::string_view prompt) override { return Ask(prompt, ""); }
    std::optional<std::vector<AcadEntity*>> SelectOnScreen(AcadDocument& document) override {
        // What stands selected in the window is what the user points at.
        auto* const host = dynamic_cast<HostDocument*>(&document);
        if (host == nullptr || host->PreviousSelection().empty()) return std::nullopt;
        return std::vector<AcadEntity*>(host->PreviousSelection().begin(), host->PreviousSelection().end());
    }
    void Prompt(std::string_view text) override { mWindow.Tell(std::string(text)); }

  private:
    std::optional<std::string> Ask(std::string_view prompt, const char* hint) {
        bool given = false;
        const QString text =
            QInputDialog::getText(mDesk.Top(), QStringLiteral("Brenvik"), ToQt(prompt).trimmed(),
                                  QLineEdit::Normal, QString::fromLatin1(hint), &given);
        if (!given) return std::nullopt;
        return FromQt(text);
    }

    FormDesk& mDesk;
    MainWindow& mWindow;
};

/// A journal takes the place of no drawing and of nothing that the home lives by, and no list takes its own.
void RequireRecordPlace(const DesktopOptions& options, app::KeptFiles& kept) {
    const std::filesystem::path file = PathFromText(options.record);
    if (!options.drawing.empty())
        kept.Keep(PathFromText(options.drawing), "the drawing", OutputKind::Drawing);
    for (const std::string& drawing : options.furtherDrawings)
        kept.Keep(PathFromText(drawing), "a drawing", OutputKind::Drawing);
    kept.RequireFree(file, OutputKind::Transcript, options.record);
    kept.Keep(file, "the journal that is recorded");
}

}  // namespace

app::ExitStatus RunForAPerson(const DesktopOptions& options) {
    FormDesk desk;
    DesktopDialogs screen(desk);
    RecordingDialogs dialogs(screen);
    app::Workplace workplace(options.home, dialogs);
    MainWindow window(workplace, desk);
    AskingPrompts asking(desk, window);
    RecordingPrompts prompts(asking);
    workplace.host.SetPrompts(&prompts);
    ProgressWindow shown(desk);
    RecordingProgress progress(shown);
    ShowProgressBy(&progress);
    GridPrinter printer(desk, [&workplace] {
        const HostDocument* const document = workplace.host.Active();
        return document == nullptr ? std::string() : document->Name();
    });
    ThePlatform().print = &printer;
    workplace.toldSettings.tell = [&window](const std::string& line) { window.Tell(line); };
    WorkKeeper keeper(workplace.home, {[&desk] { return desk.AtRest(); },
                                       [&window](const std::string& line) { window.Tell(line); }});
    window.KeepWorkBy(&keeper);
    window.TellLossesOfActs();
    window.KeepLayout();
    std::optional<JournalRecorder> recorder;
    if (!options.record.empty()) {
        RequireRecordPlace(options, workplace.kept);
        recorder.emplace(PathFromText(options.record),
                         [&window](const std::string& line) { window.Tell(line); });
        desk.recorder = dialogs.recorder = prompts.recorder = progress.recorder = &*recorder;
    }
    const GuideKey guideKey;
    window.show();
    if (!options.drawing.empty()) window.OpenFile(options.drawing);
    window.OpenFiles(options.furtherDrawings);
    window.OfferRecovery(FindAbandonedWork(RecoveryFolder(workplace.home)));
    QApplication::exec();
    desk.recorder = dialogs.recorder = prompts.recorder = progress.recorder = nullptr;
    window.KeepWorkBy(nullptr);
    ShowProgressBy(nullptr);
    ThePlatform().print = &workplace.printer;
    workplace.host.SetPrompts(nullptr);
    workplace.toldSettings.tell = {};
    return app::ExitStatus::Done;
}

app::ExitStatus RunForAJournal(const DesktopOptions& options) {
    FormDesk desk;
    desk.KeepFailures(true);
    WidgetHands hands(desk);
    WindowPictures pictures(options.pictures);
    std::optional<MainWindow> window;
    app::JournalStage stage;
    stage.hands = &hands;
    stage.opened = [&](app::Workplace& workplace) {
        window.emplace(workplace, desk);
        window->show();
        window->ShowDrawing();
        pictures.Take(*window, "main");
    };
    stage.closed = [&] {
        window->ShowDrawing();
        pictures.Take(*window, "main-end");
        if (window->TakeOutcomeNews()) pictures.Take(window->ShowOutcome(), "outcome");
        window.reset();
    };
    stage.showForm = [&](Form& form, const std::function<void()>& play) {
        // What was done in the window that this one will cover.
        if (const auto* const below = dynamic_cast<FormWindow*>(desk.Top()))
            pictures.Take(*desk.Top(), below->Shown().Name() + "-below");
        desk.Open(form, [&](FormWindow& shown) {
            pictures.Take(shown, form.Name());
            play();
            pictures.Take(shown, form.Name() + "-end");
        });
    };
    stage.showBox = [&](const MessageRequest& request, MessageAnswer answer) {
        desk.ShowModels();
        QMessageBox box(desk.Top());
        PrepareBox(box, request);
        box.show();
        pictures.Take(box, "message");
        if (QAbstractButton* const button = ButtonOf(box, answer)) button->click();
    };
    app::RunOptions run;
    run.drawing.drawing = options.drawing;
    run.journal = options.journal;
    struct WindowGone {
        std::optional<MainWindow>& window;
        ~WindowGone() { window.reset(); }
    } const gone{window};
    return app::RunJournal(options.home, run, stage);
}

app::ExitStatus PaintPartFile(const DesktopOptions& options) {
    return app::DrawPicture(options.home, {options.partFile, options.out, options.quiet}, PictureAsPng);
}

}  // namespace brenvik::desktop
