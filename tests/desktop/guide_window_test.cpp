// The guide behind F1: each window has its chapter, and what chapters show and refer to is there.
#include "windows/guide_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTest>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "checkout_paths.h"
#include "form_windows/form_layouts.h"
#include "toolkit/qt_text.h"

namespace brenvik::desktop {
namespace {

const QString guide = QStringLiteral(BRENVIK_SOURCE_DIR "/docs/guide/");

QString Content(const QString& file) {
    QFile opened(file);
    EXPECT_TRUE(opened.open(QIODevice::ReadOnly)) << FromQt(file);
    return QString::fromUtf8(opened.readAll());
}

TEST(Guide, LiesBesideTheProgramOfACheckout) {
    EXPECT_EQ(FromQt(GuideFolder()), FromQt(QDir(guide).canonicalPath()));
}

TEST(Guide, HasAChapterForEachForm) {
    for (const char* form :
         {"frmMain", "frmNewSort", "frmFilter", "frmExport", "frmAdjustments", "frmLogin", "frmSettings",
          "frmMaterials", "frmChoice", "frmChoicetherm", "mainWindow", "outcome"}) {
        const QString chapter = ChapterOn(form);
        EXPECT_NE(FromQt(chapter), "index.md") << form;
        EXPECT_TRUE(QFile::exists(guide + chapter)) << form;
    }
    EXPECT_EQ(FromQt(ChapterOn("anything else")), "index.md");
    EXPECT_TRUE(Content(guide + ChapterOn("frmChoicetherm")).contains("Router Bit Choices"));
    EXPECT_TRUE(Content(guide + ChapterOn("frmChoice")).contains("Router Bit Choices"));
}

TEST(Guide, LinksAndPicturesOfItsChaptersAreThere) {
    const QRegularExpression target(QStringLiteral("\\]\\(([^)#]+)"));
    int links = 0;
    for (const QString& chapter : QDir(guide).entryList({"*.md"})) {
        auto found = target.globalMatch(Content(guide + chapter));
        while (found.hasNext()) {
            const QString to = found.next().captured(1);
            if (to.startsWith("http")) continue;
            EXPECT_TRUE(QFile::exists(guide + to)) << FromQt(chapter) << ": " << FromQt(to);
            ++links;
        }
    }
    EXPECT_GT(links, 30);
}

TEST(Guide, F1OpensTheChapterOfTheWindowThatOneIsIn) {
    const GuideKey key;
    QDialog form;
    form.setObjectName("frmExport");
    auto* const line = new QLineEdit(&form);
    form.setModal(true);
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    line->setFocus();
    QTest::keyClick(line, Qt::Key_F1);
    auto* const window = form.findChild<QDialog*>("guide");
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    const auto* const text = window->findChild<QTextBrowser*>("guideText");
    EXPECT_TRUE(text->toPlainText().startsWith("Export the list")) << FromQt(text->toPlainText().left(60));
    EXPECT_TRUE(text->toPlainText().contains(QChar(0xFFFC))) << "the chapter's picture";
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

}  // namespace
}  // namespace brenvik::desktop
