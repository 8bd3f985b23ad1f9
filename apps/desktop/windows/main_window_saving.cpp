// Drawings saved, and what isn't saved asked about before it is lost.
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QStatusBar>
#include <algorithm>
#include <utility>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/text.h"
#include "drafting_host/document/files/drawing_files.h"
#include "drawings/drawing_io.h"
#include "drawings/drawing_unit.h"
#include "file_roots/places.h"
#include "journal/journal_parser.h"
#include "recovery/work_keeper.h"
#include "toolkit/qt_text.h"
#include "windows/drawing_filters.h"
#include "windows/main_window.h"

namespace brenvik::desktop {

namespace {

/// A path alone would read as if all were well.
std::string TextOf(const Failure& failure) {
    if (failure.detail().empty()) return failure.description();
    return failure.description() + ": " + failure.detail();
}

}  // namespace

void MainWindow::MarkChanged(const HostDocument& document) {
    if (OpenDrawing* const drawing = mDrawings.Find(document)) drawing->changed = true;
    if (mKeeper != nullptr) mKeeper->NoteChange(document);
}

void MainWindow::MarkSaved(const HostDocument& document) {
    if (OpenDrawing* const drawing = mDrawings.Find(document)) *drawing = {};
    if (mKeeper != nullptr) mKeeper->Follow(document);
}

/// Null where the place is free, and else what is wrong with it: the drawing there would be another one than
/// its tab shows.
std::optional<std::string> MainWindow::OtherTabAt(const std::string& name) const {
    const HostDocument* const other = mDrawings.OfFile(Settled(mWorkplace.host.Resolve(name)));
    if (other == nullptr || other == Document()) return std::nullopt;
    return name + " stands open in another tab. Close that first, or give another name.";
}

bool MainWindow::SaveUnder(const std::string& name) {
    if (const std::optional<std::string> reason = OtherTabAt(name)) {
        QMessageBox::warning(this, tr("Save"), ToQt(*reason));
        return false;
    }
    const auto fail = [this](const std::string& reason) {
        mDesk.NoteFailure();
        QMessageBox::warning(this, tr("Save"), tr("The drawing has not been saved.\n%1").arg(ToQt(reason)));
        return false;
    };
    mDesk.Note("save " + JournalText(name));
    try {
        if (app::IsDxfName(name)) {
            Document()->SaveAs(name, SaveAsKind::Dxf2000);
        } else {
            app::RequireWritableFormat(name);
            QStringList losses;
            for (const std::string& loss :
                 SaveDrawingInUnit(*Document(), PathFromText(name), app::DrawingUnitOfHome()))
                losses << ToQt(loss);
            if (!losses.isEmpty())
                QMessageBox::warning(this, tr("Save"), ToQt(name) + ":\n" + losses.join("\n"));
        }
    } catch (const Failure& failure) {
        return fail(TextOf(failure));
    } catch (const std::exception& failure) {
        return fail(failure.what());
    }
    AddRecent(name);
    MarkSaved(*Document());
    ShowDrawing();
    statusBar()->showMessage(tr("Saved as %1.").arg(ToQt(name)));
    return true;
}

/// A command has saved a drawing: what it does to it later in the same breath is not in the file.
void MainWindow::NoteWritten(const std::filesystem::path& file) {
    for (HostDocument* const document : mDrawings.All())
        if (OpenDrawing* const drawing = mDrawings.Find(*document);
            drawing != nullptr && file == mWorkplace.host.Resolve(document->FullName()))
            drawing->written.emplace(*document);
}

void MainWindow::TakeSaving() {
    for (HostDocument* const document : mDrawings.All()) {
        OpenDrawing* const drawing = mDrawings.Find(*document);
        if (drawing == nullptr) continue;
        const std::optional<DrawingState> written = std::exchange(drawing->written, std::nullopt);
        if (written && *written == DrawingState(*document)) MarkSaved(*document);
    }
}

/// The host's words for saving, which a user types from habit; a name may follow the latter two. False for
/// anything else, and for an answer to what the line asks.
bool MainWindow::SavesAsTyped(const std::string& typed) {
    if (mWorkplace.typedCommands.Line().Busy(*Document())) return false;
    const HeadAndTail words = SplitAtFirst(Trim(typed), ' ');
    const std::string& word = words.head;
    std::string name = Trim(words.tail);
    if (name.size() > 1 && name.front() == '"' && name.back() == '"') name = name.substr(1, name.size() - 2);
    if (EqualsIgnoreCase(word, "QSAVE") && name.empty()) return Save(), true;
    if (!EqualsIgnoreCase(word, "SAVE") && !EqualsIgnoreCase(word, "SAVEAS")) return false;
    if (name.empty()) return SaveAsAsked(), true;
    if (!app::IsWritableFormat(name)) name += ".dxf";
    return SaveUnder(name), true;
}

bool MainWindow::Save() {
    if (Document() == nullptr) return false;
    const std::string name = Document()->FullName();
    // What came from another system keeps its file; the drawing to keep is a DXF.
    if (name.empty() || FoldLower(name).rfind(".dxf") != name.size() - 4) return SaveAsAsked();
    return SaveUnder(name);
}

bool MainWindow::SaveAsAsked() {
    if (Document() == nullptr) return false;
    const QFileInfo present(ToQt(Document()->FullName()));
    const QString proposed = present.path() + "/" + present.completeBaseName() + ".dxf";
    QString name = QFileDialog::getSaveFileName(this, tr("Save the drawing"), proposed, FilterForSaving());
    if (name.isEmpty()) return false;
    if (QFileInfo(name).suffix().isEmpty()) name += ".dxf";
    return SaveUnder(FromQt(name));
}

/// The question is about the drawing that is in sight.
bool MainWindow::MayLose(HostDocument& document) {
    if (!mDrawings.IsChanged(document)) return true;
    TurnTo(document);
    const auto answer = QMessageBox::question(
        this, tr("Brenvik"), tr("%1 has been changed. Save it?").arg(ToQt(mDrawings.NameOf(document))),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    if (answer == QMessageBox::Save) return Save();
    return answer == QMessageBox::Discard;
}

bool MainWindow::MayLeave() {
    const std::vector<HostDocument*> changed = mDrawings.Changed();
    if (changed.empty()) return true;
    if (changed.size() == 1) return MayLose(*changed.front());
    QStringList names;
    for (const HostDocument* const document : changed) names << ToQt(mDrawings.NameOf(*document));
    QMessageBox box(this);
    box.setObjectName("leaving");
    box.setIcon(QMessageBox::Question);
    box.setWindowTitle(tr("Brenvik"));
    box.setTextFormat(Qt::PlainText);
    box.setText(tr("%1 drawings have been changed. Save them?").arg(changed.size()));
    box.setInformativeText(names.join("\n"));
    QPushButton* const save = box.addButton(tr("Save all"), QMessageBox::AcceptRole);
    QPushButton* const discard = box.addButton(tr("Discard all"), QMessageBox::DestructiveRole);
    QPushButton* const cancel = box.addButton(QMessageBox::Cancel);
    box.setDefaultButton(save);
    box.setEscapeButton(cancel);
    box.exec();
    if (box.clickedButton() == discard) return true;
    if (box.clickedButton() != save) return false;
    return std::ranges::all_of(changed, [this](HostDocument* document) {
        TurnTo(*document);
        return Save();
    });
}

void MainWindow::closeEvent(QCloseEvent* event) {
    // The command has to come to its end first.
    if (mAsked != nullptr) {
        Escape();
        return event->ignore();
    }
    if (!MayLeave()) return event->ignore();
    SaveLayout();
    // What isn't saved by now isn't wanted.
    if (mKeeper != nullptr)
        for (const HostDocument* const document : mDrawings.All()) mKeeper->Forget(*document);
    event->accept();
}

}  // namespace brenvik::desktop
