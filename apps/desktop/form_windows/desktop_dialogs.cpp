// Modal windows by event loops of their own: a call of the system returns when its form has gone.
#include "form_windows/desktop_dialogs.h"

#include <QEventLoop>
#include <QFileDialog>
#include <QGuiApplication>
#include <QPushButton>
#include <QScreen>
#include <utility>

#include "base/text.h"
#include "form_windows/form_window.h"
#include "toolkit/qt_text.h"

namespace brenvik::desktop {

namespace {

constexpr double TwipsPerPixel = 15;

QMessageBox::StandardButtons ButtonsOf(MessageButtons buttons) {
    switch (buttons) {
        case MessageButtons::Ok:
            return QMessageBox::Ok;
        case MessageButtons::OkCancel:
            return QMessageBox::Ok | QMessageBox::Cancel;
        case MessageButtons::YesNoCancel:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
        case MessageButtons::YesNo:
            return QMessageBox::Yes | QMessageBox::No;
    }
    return QMessageBox::Ok;
}

QMessageBox::Icon IconOf(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::None:
            return QMessageBox::NoIcon;
        case MessageIcon::Stop:
            return QMessageBox::Critical;
        case MessageIcon::Question:
            return QMessageBox::Question;
        case MessageIcon::Exclamation:
            return QMessageBox::Warning;
        case MessageIcon::Information:
            return QMessageBox::Information;
    }
    return QMessageBox::NoIcon;
}

constexpr std::pair<MessageAnswer, QMessageBox::StandardButton> Answers[] = {
    {MessageAnswer::Ok, QMessageBox::Ok},
    {MessageAnswer::Cancel, QMessageBox::Cancel},
    {MessageAnswer::Yes, QMessageBox::Yes},
    {MessageAnswer::No, QMessageBox::No}};

/// "Text (*.txt)|*.txt|All|*.*" as the toolkit has it.
QStringList FileFilters(const std::string& filter) {
    QStringList filters;
    const std::vector<std::string> pieces = Split(filter, '|');
    for (std::size_t at = 0; at + 1 < pieces.size(); at += 2) {
        const std::string name = Trim(pieces[at].substr(0, pieces[at].find('(')));
        filters << ToQt(name + " (" + ReplaceAll(pieces[at + 1], ";", " ") + ")");
    }
    return filters;
}

}  // namespace

void PrepareBox(QMessageBox& box, const MessageRequest& request) {
    box.setWindowTitle(request.title.empty() ? QStringLiteral("Brenvik") : ToQt(request.title));
    box.setTextFormat(Qt::PlainText);
    box.setText(ToQt(request.text));
    box.setIcon(IconOf(request.icon));
    box.setStandardButtons(ButtonsOf(request.buttons));
}

QAbstractButton* ButtonOf(const QMessageBox& box, MessageAnswer answer) {
    for (const auto& [given, button] : Answers)
        if (given == answer) return box.button(button);
    return nullptr;
}

ScreenSize DesktopDialogs::Screen() const {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) return DialogPort::Screen();
    const QSize size = screen->availableGeometry().size();
    return {size.width() * TwipsPerPixel, size.height() * TwipsPerPixel};
}

void DesktopDialogs::ShowModal(Form& form) {
    mDesk.Open(form, [&form](FormWindow&) {
        QEventLoop loop;
        const auto before = std::exchange(form.onUnloaded, [&loop] { loop.quit(); });
        loop.exec();
        form.onUnloaded = before;
    });
}

MessageAnswer DesktopDialogs::Show(const MessageRequest& request) {
    mDesk.ShowModels();
    QMessageBox box(mDesk.Top());
    PrepareBox(box, request);
    box.exec();
    for (const auto& [answer, button] : Answers)
        if (box.standardButton(box.clickedButton()) == button) return answer;
    return request.buttons == MessageButtons::YesNo ? MessageAnswer::No : MessageAnswer::Ok;
}

std::optional<std::string> DesktopDialogs::ChooseFile(const FileRequest& request) {
    QFileDialog dialog(mDesk.Top(), ToQt(request.title));
    dialog.setNameFilters(FileFilters(request.filter));
    dialog.setDefaultSuffix(ToQt(request.defaultExtension));
    dialog.setAcceptMode(request.saving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    // The forms ask themselves before they write over a file.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setFileMode(request.saving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    if (!request.fileName.empty()) dialog.selectFile(ToQt(request.fileName));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return FromQt(dialog.selectedFiles().front());
}

void DesktopDialogs::DoEvents() {
    mDesk.ShowModels();
    QGuiApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace brenvik::desktop
