// A window that belongs to a modal one can be read and closed beside it; so the guide is made anew for each.
#include "windows/guide_window.h"

#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QMessageBox>
#include <QTextBrowser>
#include <QVBoxLayout>
#include <array>
#include <utility>

namespace brenvik::desktop {

namespace {

constexpr int Width = 760, Height = 680;

}  // namespace

QString GuideFolder() {
    // Programs lie in lib/SYSTEM/brenvik beside share, or in build/PRESET/bin of a checkout.
    for (const char* place : {"/../../../share/doc/brenvik/docs/guide", "/../../../docs/guide"}) {
        const QDir folder(QCoreApplication::applicationDirPath() + place);
        if (folder.exists("index.md")) return folder.canonicalPath();
    }
    return {};
}

QString ChapterOn(const QString& window) {
    constexpr std::array<std::pair<const char*, const char*>, 11> chapters{{{"mainWindow", "open-a-job"},
                                                                            {"frmMain", "the-list"},
                                                                            {"frmNewSort", "sort-and-filter"},
                                                                            {"frmFilter", "sort-and-filter"},
                                                                            {"frmExport", "export"},
                                                                            {"frmAdjustments", "export"},
                                                                            {"frmLogin", "export"},
                                                                            {"frmMaterials", "materials"},
                                                                            {"frmSettings", "settings"},
                                                                            {"frmChoice", "materials"},
                                                                            {"outcome", "cnc-run"}}};
    for (const auto& [name, chapter] : chapters)
        if (window.compare(QLatin1String(name), Qt::CaseInsensitive) == 0)
            return QLatin1String(chapter) + QStringLiteral(".md");
    return window.startsWith("frmChoice", Qt::CaseInsensitive) ? QStringLiteral("materials.md")
                                                               : QStringLiteral("index.md");
}

GuideWindow::GuideWindow(const QString& folder, QWidget* parent)
    : QDialog(parent), mText(new QTextBrowser(this)) {
    setObjectName("guide");
    setWindowTitle(tr("Guide"));
    mText->setObjectName("guideText");
    mText->setSearchPaths({folder});
    mText->setOpenExternalLinks(true);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(mText);
    resize(Width, Height);
}

void GuideWindow::ShowChapter(const QString& file) {
    mText->setSource(QUrl::fromLocalFile(mText->searchPaths().constFirst() + "/" + file),
                     QTextDocument::MarkdownResource);
}

GuideKey::GuideKey() { qApp->installEventFilter(this); }

GuideKey::~GuideKey() { qApp->removeEventFilter(this); }

bool GuideKey::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1)
        return QObject::eventFilter(watched, event);
    Open();
    return true;
}

void GuideKey::Open() {
    QWidget* const window = QApplication::activeWindow();
    if (window == nullptr || window == mWindow) return;
    const QString folder = GuideFolder();
    if (folder.isEmpty()) {
        QMessageBox::information(window, tr("Guide"),
                                 tr("The guide isn't installed beside the program (docs/guide)."));
        return;
    }
    if (mWindow != nullptr && mWindow->parentWidget() != window) delete mWindow;
    if (mWindow == nullptr) mWindow = new GuideWindow(folder, window);
    mWindow->ShowChapter(ChapterOn(window->objectName()));
    mWindow->show();
    mWindow->raise();
    mWindow->activateWindow();
}

}  // namespace brenvik::desktop
