// Each form is made, looked over, and dropped: nothing of it is loaded or shown.
#include "commands/control_list.h"

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "export/frm_adjustments.h"
#include "export/frm_export.h"
#include "export/frm_login.h"
#include "forms/grid_control.h"
#include "grid/frm_main.h"
#include "journal/journal_lookup.h"
#include "parts/part_table.h"
#include "query/frm_filter.h"
#include "query/frm_new_sort.h"
#include "settings/frm_choice.h"
#include "settings/frm_choicetherm.h"
#include "settings/frm_materials.h"
#include "settings/frm_settings.h"

namespace brenvik::app {

namespace {

struct KnownForm {
    std::function<std::unique_ptr<Form>()> make;
    std::string_view opening;
};

template <class T>
std::unique_ptr<Form> Made() {
    return std::make_unique<T>();
}

std::vector<KnownForm> KnownForms() {
    return {
        {Made<frmMain>, "`command Show` opens it."},
        {Made<frmNewSort>, "`press tbMain.SORT` in frmMain opens it."},
        {Made<frmFilter>, "`press tbMain.FILTER` in frmMain opens it."},
        {Made<frmExport>, "`press tbMain.EXPORT` in frmMain opens it."},
        {Made<frmLogin>, "Opens where a database of frmExport has a password."},
        {Made<frmAdjustments>, "`command BVAdjustments` opens it, and `press Command1` in frmExport."},
        {Made<frmMaterials>, "`command BVMaterial` opens it."},
        {Made<frmSettings>, "`command ShowSettings` opens it."},
        {Made<frmChoice>, "Opens in a CNC run where none of a material's bits is the right one for a path."},
        {Made<frmChoicetherm>, "The same in a run for THERM."}};
}

/// A cell of a Markdown table holds neither bars nor line breaks.
std::string OnOneLine(std::string_view text) {
    return Trim(ReplaceAll(ReplaceAll(ReplaceAll(text, "\r", " "), "\n", " "), "|", "\\|"));
}

/// "&Quick Copy" has its letter for the keyboard marked.
std::string WithoutMark(std::string_view caption) { return ReplaceAll(caption, "&", ""); }

std::string KindOf(const Control& control) {
    constexpr std::string_view article = "the ";
    return std::string(KindInWords(control.Kind()).substr(article.size()));
}

/// At design time the headers of the list are the names of the table's columns.
std::string ColumnsOf(const GridControl& grid) {
    std::vector<std::string> headers;
    for (int column = 1; column <= grid.MaxCols(); ++column) {
        if (grid.Column(column).hidden) continue;
        const std::string& header = grid.Column(column).header;
        const PartColumn* part = FindPartColumn(header);
        headers.push_back(part == nullptr ? header : std::string(part->header));
    }
    return "columns: " + Join(headers, ", ");
}

/// What the control says, or what can be picked of it.
std::string ShownBy(const Control& control) {
    if (const auto* grid = dynamic_cast<const GridControl*>(&control)) return ColumnsOf(*grid);
    if (const auto* tabs = dynamic_cast<const TabStripControl*>(&control)) return Join(tabs->captions, ", ");
    return WithoutMark(control.Text());
}

void AddRow(std::string& page, std::string_view name, std::string_view kind, std::string_view shown) {
    page += "| `" + std::string(name) + "` | " + std::string(kind) + " | " + OnOneLine(shown) + " |\n";
}

void AddControl(std::string& page, const Control& control) {
    // The data control is nobody's to press or look at.
    if (control.Kind() == ControlKind::DataControl) return;
    if (const auto* bar = dynamic_cast<const ToolbarControl*>(&control)) {
        for (const ToolbarControl::Key& key : bar->keys)
            AddRow(page, control.Name() + "." + key.key, "toolbar key", key.caption);
        return;
    }
    AddRow(page, control.Name(), KindOf(control), ShownBy(control));
}

}  // namespace

std::string ControlList() {
    std::string page =
        "# Controls\n\n"
        "The controls of the forms, by the names that [journals](journals.md) call them by, in any case, and "
        "what\n"
        "each says. `brenvik help controls` prints this page.\n";
    for (const KnownForm& known : KnownForms()) {
        const std::unique_ptr<Form> form = known.make();
        page += "\n## " + form->Name() + "\n\n\"" + form->caption + "\". " + std::string(known.opening) +
                "\n\n| name | what it is | what it says |\n|---|---|---|\n";
        for (const auto& control : form->Controls()) AddControl(page, *control);
    }
    return page;
}

}  // namespace brenvik::app
