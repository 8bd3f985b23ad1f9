// The user guide in a window of the program: the chapter that belongs to the window one is in.
#pragma once

#include <QDialog>
#include <QPointer>
#include <QString>

class QTextBrowser;

namespace brenvik::desktop {

/// The folder of the guide's chapters, as it is installed or as it lies in a checkout; blank where there is
/// none.
QString GuideFolder();

/// The file name of the chapter on a window of this name; windows without one have the table of contents.
QString ChapterOn(const QString& window);

class GuideWindow : public QDialog {
  public:
    GuideWindow(const QString& folder, QWidget* parent);
    void ShowChapter(const QString& file);

  private:
    QTextBrowser* mText;
};

/// Watches the keyboard of the whole program for F1 as long as it lives.
class GuideKey : public QObject {
  public:
    GuideKey();
    ~GuideKey() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Open();

    QPointer<GuideWindow> mWindow;
};

}  // namespace brenvik::desktop
