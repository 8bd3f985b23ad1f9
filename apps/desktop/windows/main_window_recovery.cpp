// Work that a crash has left: offered, opened and reported; and how often work is kept.
#include <QDateTime>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

#include "drawings/drawing_io.h"
#include "file_roots/places.h"
#include "recovery/work_keeper.h"
#include "toolkit/qt_text.h"
#include "windows/main_window.h"

namespace brenvik::desktop {

namespace {

constexpr int MostMinutes = 60;

/// "kitchen (recovered).dxf" beside the file, a name that nothing has yet, nor an open drawing.
std::string FreeNameBeside(const std::string& file, const OpenDrawings& drawings) {
    const QFileInfo source(ToQt(file));
    for (int number = 1;; ++number) {
        const QString end = number == 1 ? QStringLiteral(" (recovered).dxf")
                                        : QStringLiteral(" (recovered %1).dxf").arg(number);
        const QString name = source.path() + "/" + source.completeBaseName() + end;
        if (!QFileInfo::exists(name) && drawings.OfFile(PathFromText(FromQt(name))) == nullptr)
            return FromQt(name);
    }
}

QString StateOfSource(const AbandonedWork& work) {
    if (!work.SourceChanged()) return {};
    return work.SourceIsThere()
               ? QObject::tr("The file has been changed since. The recovered work gets a name of its own.")
               : QObject::tr("The file is no longer there.");
}

enum class Wish { Recover, Delete, Later };

Wish AskAbout(const AbandonedWork& work, QWidget* owner) {
    QMessageBox box(owner);
    box.setObjectName("recovery");
    box.setIcon(QMessageBox::Question);
    box.setWindowTitle(QObject::tr("Unsaved work"));
    box.setTextFormat(Qt::PlainText);
    box.setText(
        QObject::tr("The program ended before this drawing was saved:\n\n%1\n\nIts work was kept at %2.")
            .arg(ToQt(work.Note().file), ToQt(work.Note().time)));
    box.setInformativeText(StateOfSource(work));
    QPushButton* const recover = box.addButton(QObject::tr("Recover"), QMessageBox::AcceptRole);
    QPushButton* const remove = box.addButton(QObject::tr("Delete"), QMessageBox::DestructiveRole);
    QPushButton* const later = box.addButton(QObject::tr("Ask again later"), QMessageBox::RejectRole);
    box.setDefaultButton(recover);
    box.setEscapeButton(later);
    box.exec();
    if (box.clickedButton() == recover) return Wish::Recover;
    return box.clickedButton() == remove ? Wish::Delete : Wish::Later;
}

}  // namespace

void MainWindow::OfferRecovery(FoundWork found) {
    for (const std::filesystem::path& place : found.damaged) {
        const std::string text =
            "Unsaved work of an earlier start can't be offered, since its note is damaged. What is "
            "left of it lies in " +
            TextFromPath(place) + "; a drawing in it can be opened from there.";
        Tell(text);
        QMessageBox box(QMessageBox::Warning, tr("Unsaved work"), ToQt(text), QMessageBox::Ok, this);
        box.setObjectName("damagedWork");
        box.setTextFormat(Qt::PlainText);
        box.exec();
    }
    for (AbandonedWork& work : found.works) {
        const Wish wish = AskAbout(work, this);
        if (wish == Wish::Delete) work.Remove();
        if (wish != Wish::Recover || Recover(work)) continue;
        Tell("The kept work could not be opened and stays where it is: " + TextFromPath(work.Drawing()));
    }
}

bool MainWindow::Recover(AbandonedWork& work) {
    HostDocument* const open = mDrawings.OfFile(PathFromText(work.Note().file));
    HostDocument* const document = Read(TextFromPath(work.Drawing()));
    if (document == nullptr) return false;
    const bool isTaken = open != nullptr && mDrawings.IsChanged(*open);
    // The drawing as its file has it makes room for the work on it.
    if (open != nullptr && !isTaken) {
        LetGoOf(*open);
        mWorkplace.host.CloseDocument(*open);
    }
    const bool sourceChanged = work.SourceChanged() && work.SourceIsThere(),
               otherFile = sourceChanged || isTaken;
    const std::string name = otherFile ? FreeNameBeside(work.Note().file, mDrawings) : work.Note().file;
    document->SetFile(name);
    // A source of another system is never written over.
    if (!app::IsDxfName(name)) document->MarkImported();
    if (QFileInfo(ToQt(name)).suffix().compare("dxf", Qt::CaseInsensitive) != 0)
        document->MarkOnlyRead(PathFromText(name));
    mWorkplace.drawingFiles.Know(PathFromText(name));
    Tell("Recovered the work of " + work.Note().time + " on " + work.Note().file +
         ", which is not saved yet.");
    if (otherFile)
        Tell(work.Note().file +
             (sourceChanged ? " has been changed since" : " stands open with other unsaved work") +
             "; the recovered work is " + name + ".");
    NoteOpening(work.Note().file);
    mDesk.Note("# That was opened with work of " + work.Note().time + ", which a journal can't do again.");
    TakeDrawings();
    if (OpenDrawing* const drawing = mDrawings.Find(*document)) drawing->changed = true;
    if (mKeeper != nullptr) {
        mKeeper->FollowRecovered(*document, otherFile ? std::nullopt : work.Note().source);
        // It is kept here before it goes there.
        if (mKeeper->KeepNow()) work.Remove();
    }
    ShowDrawing();
    return true;
}

void MainWindow::AskKeepingInterval() {
    bool given = false;
    const int minutes =
        QInputDialog::getInt(this, tr("Keep unsaved work"),
                             tr("Minutes between two keepings, for the next start after a crash (0: never)"),
                             WorkKeeper::Minutes(), 0, MostMinutes, 1, &given);
    if (!given) return;
    WorkKeeper::SetMinutes(minutes);
    if (mKeeper != nullptr) mKeeper->TakeInterval();
}

}  // namespace brenvik::desktop
