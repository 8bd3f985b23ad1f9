// Rows and columns of the toolkit count from 0, those of the grid from 1.
#include "form_windows/grid_view.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QToolTip>

#include "form_windows/form_desk.h"
#include "form_windows/form_steps.h"
#include "form_windows/grid_history.h"
#include "forms/grid_block.h"
#include "toolkit/qt_text.h"

namespace brenvik::desktop {

namespace {

class GridModel : public QAbstractTableModel {
  public:
    explicit GridModel(GridControl& grid) : mGrid(grid) {}

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : mRows; }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : mGrid.MaxCols();
    }
    QVariant data(const QModelIndex& index, int role) const override {
        const int column = index.column() + 1, row = index.row() + 1;
        if (row > mGrid.MaxRows()) return {};
        if (role == Qt::DisplayRole || role == Qt::EditRole) return ToQt(mGrid.CellText(column, row));
        if (role == Qt::BackgroundRole && mGrid.CellLocked(column, row))
            return QApplication::palette().color(QPalette::Disabled, QPalette::Button);
        if (role == Qt::TextAlignmentRole && mGrid.Column(column).numeric)
            return QVariant(Qt::AlignRight | Qt::AlignVCenter);
        return {};
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (role != Qt::DisplayRole) return {};
        if (orientation == Qt::Vertical) return section + 1;
        return ToQt(mGrid.CellText(section + 1, 0));
    }
    Qt::ItemFlags flags(const QModelIndex& index) const override {
        const Qt::ItemFlags seen = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
        const bool locked =
            index.row() + 1 > mGrid.MaxRows() || mGrid.CellLocked(index.column() + 1, index.row() + 1);
        return locked ? seen : seen | Qt::ItemIsEditable;
    }
    /// After anything may have changed.
    void ShowGrid() {
        if (mRows != mGrid.MaxRows()) {
            beginResetModel();
            mRows = mGrid.MaxRows();
            endResetModel();
            return;
        }
        if (mRows > 0) emit dataChanged(index(0, 0), index(mRows - 1, columnCount() - 1));
        emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    }

  private:
    GridControl& mGrid;
    int mRows = 0;
};

/// Takes a key only where the grid lets its character into the cell.
class CellEdit : public QLineEdit {
  public:
    CellEdit(GridControl& grid, const QModelIndex& cell, QWidget* parent)
        : QLineEdit(parent), mGrid(grid), mColumn(cell.column() + 1), mRow(cell.row() + 1) {
        setFrame(false);
    }

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        const QString typed = event->text();
        const bool isText = !typed.isEmpty() && (typed.front().isPrint() || typed.front().isSurrogate());
        if (isText && mGrid.onKey && !mGrid.onKey(mColumn, mRow, FromQt(typed))) return;
        QLineEdit::keyPressEvent(event);
    }

  private:
    GridControl& mGrid;
    int mColumn, mRow;
};

class CellDelegate : public QStyledItemDelegate {
  public:
    CellDelegate(GridControl& grid, FormDesk& desk, GridHistory& history)
        : mGrid(grid), mDesk(desk), mHistory(history) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override {
        return new CellEdit(mGrid, index, parent);
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        static_cast<QLineEdit*>(editor)->setText(index.data(Qt::EditRole).toString());
    }
    void setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const override {
        const std::string text = FromQt(static_cast<QLineEdit*>(editor)->text());
        mTaken = false;
        mDesk.Do([&] {
            const int column = index.column() + 1, row = index.row() + 1;
            const auto note = [this](int c, int r, std::string_view typed) {
                mDesk.Note(CellStep(mGrid, c, r, typed));
            };
            mHistory.Keep(note, [&](const BeforeTyping& typing) {
                typing(column, row, text);
                mTaken = mGrid.UserEdit(column, row, text);
            });
        });
    }
    /// Whether the cell has taken the last text.
    bool Taken() const { return mTaken; }

  private:
    GridControl& mGrid;
    FormDesk& mDesk;
    GridHistory& mHistory;
    mutable bool mTaken = false;
};

class GridView : public QTableView {
  public:
    GridView(GridControl& grid, FormDesk& desk, QWidget* parent)
        : QTableView(parent),
          mGrid(grid),
          mDesk(desk),
          mHistory(grid),
          mModel(grid),
          mDelegate(grid, desk, mHistory) {
        setModel(&mModel);
        setItemDelegate(&mDelegate);
        setAlternatingRowColors(true);
        setSelectionMode(QAbstractItemView::ContiguousSelection);
        setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
        verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
        connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int section, int, int width) {
            if (mShowing || width <= 0) return;
            mGrid.Column(section + 1).width = static_cast<double>(width) / CharacterWidth();
            // A drag goes through many widths, and the last one counts.
            const std::string step = WidthStep(mGrid, section + 1);
            mDesk.Note(step, step.substr(0, step.rfind(' ') + 1));
        });
    }
    ~GridView() override { setModel(nullptr); }

    void ShowGrid() {
        if (mShowing || !mGrid.reDraw) return;
        mShowing = true;
        mModel.ShowGrid();
        for (int column = 0; column < mGrid.MaxCols(); ++column) {
            const GridColumn& shown = mGrid.Column(column + 1);
            setColumnHidden(column, shown.hidden);
            const int width = std::max(static_cast<int>(shown.width * CharacterWidth()), 4);
            if (!shown.hidden && shown.width > 0 && columnWidth(column) != width)
                setColumnWidth(column, width);
        }
        const QModelIndex active = mModel.index(mGrid.ActiveRow() - 1, mGrid.ActiveColumn() - 1);
        if (active.isValid() && active != currentIndex()) setCurrentIndex(active);
        mShowing = false;
    }

    void GoTo(int column, int row) {
        const QModelIndex cell = mModel.index(row - 1, column - 1);
        // A click on the current cell is passed on as well.
        if (cell == currentIndex()) return Enter(cell);
        setCurrentIndex(cell);
    }
    void SetWidth(int column, double width) {
        mGrid.Column(column).width = width;
        ShowGrid();
    }
    bool TypeInto(int column, int row, std::string_view text) {
        const QModelIndex cell = mModel.index(row - 1, column - 1);
        if (cell != currentIndex()) setCurrentIndex(cell);
        if (!mModel.flags(cell).testFlag(Qt::ItemIsEditable)) return false;
        // What no key types comes from the clipboard.
        if (text.find_first_of("\r\n\t") != std::string_view::npos) return Take(column, row, text);
        edit(cell);
        auto* const editor = qobject_cast<QLineEdit*>(indexWidget(cell) != nullptr ? indexWidget(cell)
                                                                                   : findChild<QLineEdit*>());
        if (editor == nullptr) return false;
        editor->clear();
        for (const char32_t character : ToQt(text).toUcs4()) {
            QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString::fromUcs4(&character, 1));
            QApplication::sendEvent(editor, &press);
        }
        // Where no key passes, the cell stays as it is.
        if (editor->text().isEmpty() && !text.empty()) {
            closeEditor(editor, QAbstractItemDelegate::NoHint);
            return Take(column, row, text);
        }
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
        return mDelegate.Taken();
    }

  protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override {
        QTableView::currentChanged(current, previous);
        if (!mShowing && current.isValid()) Enter(current);
    }
    void keyPressEvent(QKeyEvent* event) override {
        // An open cell ends by itself at Enter, and hands the key on.
        if (state() == EditingState) return;
        if (event->matches(QKeySequence::Copy)) return Copy();
        if (event->matches(QKeySequence::Paste)) return Paste();
        if (event->key() == Qt::Key_D && event->modifiers() == Qt::ControlModifier)
            return Edit([this](const BeforeTyping& typing) { return FillDown(mGrid, Marked(), typing); });
        if (event->key() == Qt::Key_Delete)
            return Edit([this](const BeforeTyping& typing) { return ClearBlock(mGrid, Marked(), typing); });
        if (event->matches(QKeySequence::Undo)) return Go(&GridHistory::TakeBack, "taken back");
        const bool isCtrlY = event->key() == Qt::Key_Y && event->modifiers() == Qt::ControlModifier;
        if (isCtrlY || event->matches(QKeySequence::Redo)) return Go(&GridHistory::DoAgain, "done again");
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return GoDown();
        QTableView::keyPressEvent(event);
    }
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override {
        QTableView::closeEditor(editor, hint);
        // Enter: on to the next row, as in a spreadsheet.
        if (hint == QAbstractItemDelegate::SubmitModelCache) GoDown();
    }

  private:
    bool Take(int column, int row, std::string_view text) {
        bool taken = false;
        mDesk.Do([&] {
            mHistory.Keep({}, [&](const BeforeTyping& typing) {
                typing(column, row, text);
                taken = mGrid.UserEdit(column, row, text);
            });
        });
        return taken;
    }
    /// A block that the user types, as one step to take back. What of it is lost, since it finds no row or
    /// column, is said in a box; locked cells are seen as locked.
    void Edit(const std::function<BlockOutcome(const BeforeTyping& typing)>& edit) {
        BlockOutcome outcome;
        mDesk.Do(
            [&] { mHistory.Keep(Noted(), [&](const BeforeTyping& typing) { outcome = edit(typing); }); });
        if (outcome.beyond == 0) return;
        auto* const box = new QMessageBox(
            QMessageBox::Warning, windowTitle(),
            tr("%1 of %2 cells were not pasted: they lie beyond the rows and columns of the list.")
                .arg(outcome.beyond)
                .arg(outcome.taken + outcome.refused + outcome.beyond),
            QMessageBox::Ok, this);
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->open();
    }
    void Go(GridHistory::Outcome (GridHistory::*way)(const BeforeTyping&), const char* words) {
        GridHistory::Outcome outcome = GridHistory::Outcome::Nothing;
        mDesk.Do([&] { outcome = (mHistory.*way)(Noted()); });
        if (outcome == GridHistory::Outcome::Refused)
            QToolTip::showText(viewport()->mapToGlobal(viewport()->rect().center()),
                               tr("This can't be %1: its cells are locked, not shown, or have been changed "
                                  "since.")
                                   .arg(words),
                               this);
    }
    double CharacterWidth() const { return fontMetrics().averageCharWidth() + 1.0; }

    void Enter(const QModelIndex& cell) {
        mDesk.Do([this, cell] {
            mDesk.Note(GotoStep(mGrid, cell.column() + 1, cell.row() + 1));
            mGrid.SetActiveCell(cell.column() + 1, cell.row() + 1);
            if (mDesk.onRowEntered) mDesk.onRowEntered(mGrid.CellText(1, cell.row() + 1));
        });
    }
    void GoDown() {
        const QModelIndex below = currentIndex().siblingAtRow(currentIndex().row() + 1);
        if (below.isValid()) setCurrentIndex(below);
    }
    /// Cells that are typed into by a block are steps of the journal one by one.
    BeforeTyping Noted() const {
        return [this](int column, int row, std::string_view text) {
            mDesk.Note(CellStep(mGrid, column, row, text));
        };
    }
    /// What is marked, or the cell where the user stands.
    GridBlock Marked() const {
        GridBlock block{mGrid.ActiveColumn(), mGrid.ActiveRow(), mGrid.ActiveColumn(), mGrid.ActiveRow()};
        for (const QItemSelectionRange& range : selectionModel()->selection())
            block = {range.left() + 1, range.top() + 1, range.right() + 1, range.bottom() + 1};
        return block;
    }
    void Copy() {
        mDesk.Do([this] { QApplication::clipboard()->setText(ToQt(CopyBlock(mGrid, Marked()))); });
    }
    void Paste() {
        const std::string text = FromQt(QApplication::clipboard()->text());
        Edit([&](const BeforeTyping& typing) {
            const GridBlock block = Marked();
            return PasteBlock(mGrid, block.column, block.row, text, typing);
        });
    }

    GridControl& mGrid;
    FormDesk& mDesk;
    GridHistory mHistory;
    GridModel mModel;
    CellDelegate mDelegate;
    bool mShowing = false;
};

class GridBinding : public ControlBinding {
  public:
    GridBinding(GridControl& grid, GridView& shown) : ControlBinding(grid, shown), view(shown) {}
    void Show() override {
        ControlBinding::Show();
        view.ShowGrid();
    }
    GridView& view;
};

}  // namespace

std::unique_ptr<ControlBinding> BindGrid(GridControl& grid, FormDesk& desk, QWidget* parent) {
    auto* const view = new GridView(grid, desk, parent);
    view->setObjectName(ToQt(grid.Name()));
    return std::make_unique<GridBinding>(grid, *view);
}

void GoToCell(ControlBinding& binding, int column, int row) {
    dynamic_cast<GridBinding&>(binding).view.GoTo(column, row);
}

void SetColumnWidth(ControlBinding& binding, int column, double width) {
    dynamic_cast<GridBinding&>(binding).view.SetWidth(column, width);
}

bool TypeIntoCell(ControlBinding& binding, int column, int row, std::string_view text) {
    return dynamic_cast<GridBinding&>(binding).view.TypeInto(column, row, text);
}

}  // namespace brenvik::desktop
