// brenvik run: plays a journal on a drawing.
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>

#include "cnc/proof/run_proof.h"
#include "commands/all_commands.h"
#include "commands/journal_prompts.h"
#include "commands/journal_run.h"
#include "drafting_host/document/drawing_history.h"
#include "drafting_host/document/files/drawing_files.h"
#include "drawings/drawing_io.h"
#include "drawings/drawing_unit.h"
#include "drawings/given_material.h"
#include "drawings/grid_session.h"
#include "drawings/opened_drawings.h"
#include "file_roots/places.h"
#include "home/workplace.h"
#include "journal/journal_failure.h"
#include "journal/journal_parser.h"
#include "journal/journal_player.h"
#include "reports/host_refusals.h"
#include "reports/run_dialogs.h"
#include "reports/run_teller.h"
#include "reports/run_transcript.h"
#include "session/message_text.h"
#include "session/progress.h"
#include "settings/frm_materials.h"
#include "shell/drawing_options.h"
#include "shell/shell_word.h"

namespace brenvik::app {

namespace {

/// Shows what the journal does to whoever watches.
class StagedDialogs : public WatchedJournalDialogs {
  public:
    StagedDialogs(std::ostream& stream, const JournalStage& stage)
        : WatchedJournalDialogs(stream), mStage(stage) {}
    void ShowModal(Form& form) override {
        if (!mStage.showForm) return WatchedJournalDialogs::ShowModal(form);
        mStage.showForm(form, [this, &form] { WatchedJournalDialogs::ShowModal(form); });
    }
    MessageAnswer Show(const MessageRequest& request) override {
        const MessageAnswer answer = WatchedJournalDialogs::Show(request);
        if (mStage.showBox) mStage.showBox(request, answer);
        return answer;
    }

  private:
    const JournalStage& mStage;
};

std::vector<JournalStep> ReadJournal(const std::string& name) {
    // It opens as a file does, and reads as an empty one.
    std::error_code unknown;
    if (std::filesystem::is_directory(PathFromText(name), unknown))
        throw CommandError(ExitStatus::Unreadable, name + ": expected a journal, found a folder");
    std::ifstream file(PathFromText(name), std::ios::binary);
    std::ostringstream content;
    if (file) content << file.rdbuf();
    // An empty file sets the failure bit of the target, which is no fault of the source.
    const bool isEmpty = file && !file.bad() && content.str().empty();
    if (isEmpty)
        throw CommandError(ExitStatus::Unreadable, name + ": expected a journal, found an empty file");
    if (!file || content.fail())
        throw CommandError(ExitStatus::Unreadable,
                           name + ": expected a journal, found no file that can be read");
    try {
        return ParseJournal(content.str(), name);
    } catch (const JournalSyntaxError& error) {
        throw CommandError(ExitStatus::Unreadable, error.what());
    }
}

/// The drawing that the journal stands in: a command may have gone on with another one.
HostDocument& PresentDrawing(Workplace& workplace) {
    HostDocument* document = workplace.host.Active();
    if (document == nullptr) throw CommandError(ExitStatus::Incomplete, "no drawing is open any more");
    return *document;
}

/// By the ending, as a conversion does. A STEP or SAT file is a copy for others: the drawing keeps its name,
/// since it is more than what stands there.
std::string SaveByEnding(const std::string& name, const RunOptions& options, Workplace& workplace,
                         std::ostream& transcript, Teller& teller) {
    if (!IsWritableFormat(name)) return WritableEndings();
    HostDocument& document = PresentDrawing(workplace);
    RequireNotOpen(workplace.host, name, document);
    if (IsDxfName(name)) {
        document.SaveAs(name, SaveAsKind::Dxf2000);
        return {};
    }
    TellLayerColors(document, name, teller);
    for (const std::string& loss :
         SaveDrawingInUnit(document, workplace.host.Resolve(name), DrawingUnitOfHome())) {
        transcript << name << ": " << loss << '\n';
        teller.MarkIncomplete();
    }
    DrawingOptions saved = options.drawing;
    saved.save = name;
    TellSheetsLeftOut(document, saved, teller);
    return {};
}

JournalWorld WorldOf(Workplace& workplace, std::ostream& transcript) {
    JournalWorld world;
    world.host = &workplace.host;
    world.settings = &workplace.settings;
    world.files = &workplace.files;
    world.select = [&workplace](const std::vector<std::string>& handles) {
        SelectHandles(PresentDrawing(workplace), handles);
    };
    world.callCommand = [&workplace](std::string_view method) {
        return workplace.typedCommands.Call(method);
    };
    world.setVisible = [&workplace](const std::string& handle, bool shown) {
        ShowEntity(PresentDrawing(workplace), handle, shown);
    };
    world.output = &std::cout;
    world.transcript = &transcript;
    return world;
}

/// Opens another drawing beside those that are open, or goes on in one of them.
void GoOnIn(const std::string& name, const RunOptions& options, Workplace& workplace, Teller& teller,
            OpenedDrawings& drawings) {
    const std::filesystem::path file = AbsolutePath(PathFromText(name)).lexically_normal();
    for (const auto& document : workplace.host.OpenDocuments())
        if (AbsolutePath(workplace.host.Resolve(document->FullName())).lexically_normal() == file)
            return workplace.host.Activate(*document);
    DrawingOptions wished;
    wished.drawing = name;
    wished.letters = options.drawing.letters;
    wished.quiet = options.drawing.quiet;
    HostDocument& document = OpenInHome(workplace, wished, options.unit, teller);
    TellBlockSolids(document, wished, teller);
    teller.Wipe();
    KeepHistory(document);
    drawings.Add(document, name);
}

/// Unsaved changes are lost with it, which is reported.
void CloseDrawing(const RunOptions& options, Workplace& workplace, RunTranscript& transcript, Teller& teller,
                  OpenedDrawings& drawings) {
    HostDocument& document = PresentDrawing(workplace);
    for (const OpenedDrawings::Opened& drawing : drawings.All()) {
        if (drawing.document != &document) continue;
        if (drawing.HasChanges())
            transcript.Stream() << drawing.name << " was changed and closed without being saved, by "
                                << options.journal << '\n';
        TellNotesSince(drawing.notes, document, drawing.name, teller);
    }
    drawings.NoteClosed(document);
    workplace.host.CloseDocument(document);
}

/// What stands typed or asked on the host's command line when the journal ends.
void TellUnfinishedLine(const RunOptions& options, Workplace& workplace, HostDocument& document,
                        Teller& teller) {
    HostCommandLine& line = workplace.typedCommands.Line();
    if (const std::string typed = line.NotEntered(document); !typed.empty())
        teller.Loss(
            options.journal + ": \"" + typed +
            "\" was typed on the host's command line and never entered: expected a blank or \\n behind it");
    if (line.Busy(document))
        teller.Loss(options.journal +
                    ": the journal ended while the host's command line asked: " + line.Prompt(document));
}

/// Plays the journal on the open drawing. Throws CommandError where a step fails.
void Play(const RunOptions& options, const JournalStage& stage, std::vector<JournalStep> steps,
          Workplace& workplace, JournalDialogs& dialogs, RunTranscript& transcript, Teller& teller,
          OpenedDrawings& drawings) {
    workplace.host.SetTranscript(
        [&](std::string_view line) { transcript.TellHostLine(line, !workplace.typedCommands.AtWork()); });
    HostRefusals refusals(workplace.host, workplace.typedCommands);
    JournalWorld world = WorldOf(workplace, transcript.Stream());
    world.hands = stage.hands;
    if (stage.callCommand) world.callCommand = stage.callCommand;
    world.takeRefusal = [&refusals] { return refusals.TakeOldest(); };
    world.save = [&](const std::string& name) {
        std::string expected = SaveByEnding(name, options, workplace, transcript.Stream(), teller);
        if (expected.empty()) drawings.NoteSaved(PresentDrawing(workplace), name);
        return expected;
    };
    world.open = [&](const std::string& name) { GoOnIn(name, options, workplace, teller, drawings); };
    world.closeDrawing = [&] { CloseDrawing(options, workplace, transcript, teller, drawings); };
    JournalPlayer player(std::move(steps), dialogs, std::move(world));
    refusals.presentLine = [&player] { return player.PresentLine(); };
    try {
        player.Play();
    } catch (const JournalFailure& failure) {
        refusals.TellOverlooked(options.journal, teller);
        throw CommandError(ExitStatus::Incomplete, options.journal + ": " + failure.what());
    }
    refusals.TellOverlooked(options.journal, teller);
    if (player.LooseEnds() > 0) teller.MarkIncomplete();
    if (HostDocument* const document = workplace.host.Active())
        TellUnfinishedLine(options, workplace, *document, teller);
}

RunWatch WatchOf(const std::string& home, WatchedJournalDialogs& dialogs, RunTranscript& transcript) {
    return {.programWords = ProgramWords(home),
            .takeTrouble = [&dialogs] { return dialogs.TakeTrouble(); },
            .boxesAreLookedAt = true,
            .line = [&transcript](const std::string& text) { transcript.Stream() << text << '\n'; }};
}

/// A box about something skipped or failed is no news to the journal that looks at it.
void TellOverlooked(const std::string& journal, WatchedJournalDialogs& dialogs, Teller& teller) {
    const std::vector<MessageRequest> boxes = dialogs.Overlooked();
    if (boxes.empty()) return;
    const std::string count = boxes.size() == 1 ? "a message box that reports"
                                                : std::to_string(boxes.size()) + " message boxes that report";
    teller.Loss(journal + ": no \"expect message\" looks at " + count +
                " something skipped or failed; the first: " + MessageLine(boxes.front()));
}

/// What a journal saves of the drawing, and what a run that it starts does.
void WatchSavings(Workplace& workplace, OpenedDrawings& drawings) {
    workplace.drawingWritten = [&](const std::filesystem::path& file) {
        for (const auto& document : workplace.host.OpenDocuments())
            if (file == workplace.host.Resolve(document->FullName()))
                drawings.NoteSaved(*document, TextFromPath(file));
    };
}

/// To leave a drawing as it was is a choice and no failure, but it may not be meant.
void TellUnsaved(const RunOptions& options, const OpenedDrawings& drawings, RunTranscript& transcript) {
    for (const OpenedDrawings::Opened& drawing : drawings.All()) {
        const bool isFirst = &drawing == &drawings.All().front();
        if ((isFirst && !options.drawing.save.empty()) || !drawing.HasChanges()) continue;
        transcript.Stream() << drawing.name
                            << (drawing.savedAs.empty() ? " was changed and not saved"
                                                        : " was changed after it was saved as " +
                                                              drawing.savedAs + ", and not saved since")
                            << ": expected a step save in " << options.journal
                            << (isFirst ? ", or --save\n" : "\n");
    }
}

/// Reports what the journal's lists have lost or changed of the parts, unless it is reported already.
void TellAboutLists(RunTranscript& transcript, Teller& teller) {
    const PartTroubleLines troubles = TakePartTroubleLines();
    for (const std::string& line : troubles.remarks) transcript.Stream() << line << '\n';
    for (const std::string& line : troubles.lines) transcript.Stream() << line << '\n';
    if (!troubles.allToldInBoxes) teller.MarkIncomplete();
    for (const std::string& line : TakeDroppedPartLines().lines) transcript.Stream() << line << '\n';
    // No box could be looked at, and the list went out as it is.
    TellExportTroubles(teller,
                       [&transcript](const std::string& text) { transcript.Stream() << text << '\n'; });
}

/// Materials that a saving of the library has left out.
void TellLibraryNotes(RunTranscript& transcript, Teller& teller) {
    for (const LibraryNote& note : TakeLibraryNotes()) {
        transcript.Stream() << note.text << '\n';
        if (note.isLoss) teller.MarkIncomplete();
    }
}

void KeepInputs(KeptFiles& kept, const RunOptions& options) {
    KeepDrawing(kept, options.drawing);
    kept.Keep(PathFromText(options.journal), "the journal that is played");
}

/// Ahead of everything that the run does, since the transcript is emptied when it is opened.
void RequireFreeTranscript(const std::string& home, const RunOptions& options) {
    if (options.transcript.empty()) return;
    KeptFiles kept;
    kept.KeepHome(HomeOf(home));
    KeepInputs(kept, options);
    kept.RequireFree(PathFromText(options.transcript), OutputKind::Transcript, options.transcript);
}

void KeepFilesOfRun(KeptFiles& kept, const RunOptions& options) {
    KeepInputs(kept, options);
    if (!options.transcript.empty()) kept.Keep(PathFromText(options.transcript), "the transcript of the run");
}

/// The drawing as the journal finds it.
HostDocument& OpenToPlay(Workplace& workplace, const RunOptions& options, Teller& teller) {
    TellDamagedSettings(workplace, teller);
    HostDocument& document = OpenInHome(workplace, options.drawing, options.unit, teller);
    TellBlockSolids(document, options.drawing, teller);
    SelectForCommand(document, options.drawing);
    GiveMaterial(document, options.drawing.material, teller);
    teller.Wipe();
    return document;
}

/// What a journal that has ended well leaves to be said.
void TellAtEnd(const RunOptions& options, const OpenedDrawings& drawings, WatchedJournalDialogs& dialogs,
               RunTranscript& transcript, Teller& teller) {
    TellOverlooked(options.journal, dialogs, teller);
    for (const OpenedDrawings::Opened& drawing : drawings.All())
        if (drawing.document != nullptr)
            TellNotesSince(drawing.notes, *drawing.document, drawing.name, teller);
    TellAboutLists(transcript, teller);
    TellLibraryNotes(transcript, teller);
}

/// As --save asks. A drawing of a part may stand open before the job's own.
void SaveFirst(const RunOptions& options, HostDocument& first, const OpenedDrawings& drawings,
               Workplace& workplace, Teller& teller) {
    if (options.drawing.save.empty()) return;
    const bool isGone = drawings.All().front().document == nullptr || first.Closed();
    SaveOutput(isGone ? PresentDrawing(workplace) : first, options.drawing.save, DrawingUnitOfHome(), teller);
}

}  // namespace

ExitStatus RunJournal(const std::string& home, const RunOptions& options, const JournalStage& stage) {
    if (!options.drawing.save.empty()) RequireWritableFormat(options.drawing.save);
    Teller teller(options.drawing.quiet);
    std::vector<JournalStep> steps = ReadJournal(options.journal);
    RequireFreeTranscript(home, options);
    RunTranscript transcript(options.transcript, options.drawing.quiet);
    StagedDialogs dialogs(transcript.Stream(), stage);
    JournalPrompts prompts(dialogs, transcript.Stream());
    Workplace workplace(home, dialogs);
    KeepFilesOfRun(workplace.kept, options);
    workplace.host.SetPrompts(&prompts);
    SetProof(!options.noProof);
    HostDocument& document = OpenToPlay(workplace, options, teller);
    if (stage.opened) stage.opened(workplace);
    // A journal types U and REDO as a person does.
    KeepHistory(document);
    OpenedDrawings drawings;
    drawings.Add(document, options.drawing.drawing);
    WatchSavings(workplace, drawings);
    ShowProgressBy(&dialogs.work);
    const RunTeller runs(teller, WatchOf(home, dialogs, transcript));
    // The list's losses are reported before the box that calls it complete, and also if the journal fails
    // after it.
    dialogs.beforeExportComplete = [&] { TellAboutLists(transcript, teller); };
    try {
        Play(options, stage, std::move(steps), workplace, dialogs, transcript, teller, drawings);
    } catch (const CommandError&) {
        TellAboutLists(transcript, teller);
        throw;
    }
    TellUnsaved(options, drawings, transcript);
    if (stage.closed) stage.closed();
    TellAtEnd(options, drawings, dialogs, transcript, teller);
    SaveFirst(options, document, drawings, workplace, teller);
    if (!transcript.Written()) teller.Loss(options.transcript + ": the transcript can't be written");
    return teller.Status();
}

Command RunCommand() {
    auto options = std::make_shared<RunOptions>();
    return {"run",
            "Play a journal on a drawing",
            {options->drawing.DrawingWord(),
             Argument("--journal", &options->journal, "The journal: a text file, a step per line").Required(),
             Argument("--transcript", &options->transcript,
                      "Write down here what the run reports, with all that goes over the host's command line")
                 .Named("FILE"),
             Argument("--no-proof", &options->noProof, std::string(NoProofHelp)), options->drawing.Select(),
             options->drawing.Letters(), options->unit.Option(), options->drawing.Material(),
             options->drawing.Save(), options->drawing.Quiet()},
            [options](const std::string& home) { return RunJournal(home, *options, {}); },
            {}};
}

}  // namespace brenvik::app
