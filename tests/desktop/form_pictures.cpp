// Not a test, but for eyes: pictures of all windows, empty and at work, by scripts/form-pictures.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QTemporaryDir>
#include <filesystem>
#include <iostream>

#include "checkout_paths.h"
#include "console/console_dialogs.h"
#include "dark_colours.h"
#include "desktop_program.h"
#include "export/frm_adjustments.h"
#include "export/frm_export.h"
#include "export/frm_login.h"
#include "form_windows/form_desk.h"
#include "form_windows/form_window.h"
#include "grid/frm_main.h"
#include "home/workplace.h"
#include "query/frm_filter.h"
#include "query/frm_new_sort.h"
#include "settings/frm_choice.h"
#include "settings/frm_choicetherm.h"
#include "settings/frm_materials.h"
#include "settings/frm_settings.h"
#include "toolkit/clear_frames.h"
#include "toolkit/qt_text.h"

namespace brenvik::desktop {
namespace {

namespace fs = std::filesystem;

template <class Form>
void TakeEmpty(const QString& folder) {
    FormDesk desk;
    Form form;
    FormWindow window(form, desk, nullptr);
    window.ShowModel();
    window.PlaceAsForm();
    window.show();
    QApplication::processEvents();
    const QString name = folder + "/" + ToQt(form.Name());
    ASSERT_TRUE(window.grab().save(name + "-empty.png"));
    window.resize(window.minimumSizeHint());
    QApplication::processEvents();
    ASSERT_TRUE(window.grab().save(name + "-smallest.png"));
}

/// Forms read settings when they are made, so there is a home.
void TakeEmptyForms(const QString& folder) {
    const QTemporaryDir home;
    ConsoleDialogs dialogs(std::cerr);
    const app::Workplace workplace(FromQt(home.filePath("home")), dialogs);
    TakeEmpty<frmMain>(folder);
    TakeEmpty<frmNewSort>(folder);
    TakeEmpty<frmFilter>(folder);
    TakeEmpty<frmExport>(folder);
    TakeEmpty<frmAdjustments>(folder);
    TakeEmpty<frmLogin>(folder);
    TakeEmpty<frmSettings>(folder);
    TakeEmpty<frmMaterials>(folder);
    TakeEmpty<frmChoice>(folder);
    TakeEmpty<frmChoicetherm>(folder);
}

TEST(FormPictures, DISABLED_OfAllWindows) {
    const QString folder = qEnvironmentVariable("BRENVIK_PICTURES");
    ASSERT_TRUE(!folder.isEmpty() && QDir().mkpath(folder));
    QApplication::setStyle(new ClearFrames);
    if (qEnvironmentVariableIsSet("BRENVIK_DARK")) QApplication::setPalette(DarkColours());
    TakeEmptyForms(folder);
    for (const char* journal : {"sort_and_filter", "export", "materials", "settings", "cnc_run"}) {
        const QTemporaryDir job;
        const fs::path place = job.path().toStdString(), source = BRENVIK_SOURCE_DIR;
        fs::copy_file(source / "samples/base-cabinet.dxf", place / "cabinet.dxf");
        fs::current_path(place);
        DesktopOptions options;
        options.home = (place / "home").string();
        options.drawing = "cabinet.dxf";
        options.journal = (source / "docs/guide/journals" / (std::string(journal) + ".journal")).string();
        options.pictures = FromQt(folder + "/" + journal);
        RunForAJournal(options);
    }
}

}  // namespace
}  // namespace brenvik::desktop
