// The system's dialogs on a screen: forms as windows, message boxes and file dialogs of the toolkit.
#pragma once

#include <QMessageBox>
#include <QStringList>

#include "form_windows/form_desk.h"
#include "session/ports/dialog_port.h"

namespace brenvik::desktop {

class DesktopDialogs : public DialogPort {
  public:
    explicit DesktopDialogs(FormDesk& desk) : mDesk(desk) {}

    ScreenSize Screen() const override;
    void ShowModal(Form& form) override;
    MessageAnswer Show(const MessageRequest& request) override;
    std::optional<std::string> ChooseFile(const FileRequest& request) override;
    void DoEvents() override;

  private:
    FormDesk& mDesk;
};

/// Fills a box with what is asked.
void PrepareBox(QMessageBox& box, const MessageRequest& request);
/// The button that gives this answer.
QAbstractButton* ButtonOf(const QMessageBox& box, MessageAnswer answer);

}  // namespace brenvik::desktop
