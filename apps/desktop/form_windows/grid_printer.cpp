// Everything is measured in points of the printer before the first sheet, so that each sheet knows how many
// there are.
#include "form_windows/grid_printer.h"

#include <QDate>
#include <QFontMetricsF>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <algorithm>
#include <cmath>
#include <numeric>

#include "base/failure.h"
#include "base/numbers.h"
#include "form_windows/form_desk.h"
#include "forms/grid_control.h"
#include "toolkit/qt_text.h"

namespace brenvik::desktop {

namespace {

constexpr double TwipsPerPoint = 20, PointsPerInch = 72;
/// In points of type.
constexpr double LargestType = 9, SmallestType = 6, TypeStep = 0.5, HeadType = 11, FootType = 8;
/// Between a line and the text beside it, of the letters' height.
constexpr double Padding = 0.25;
constexpr double LineWidth = 0.4;
/// As printers have it that are out of paper or out of reach.
constexpr long PrinterFailure = 482;

struct PrintedColumn {
    int column = 0;  ///< 0 for the rows' numbers.
    double natural = 0, width = 0;
    bool numbers = true;
};

class Sheets {
  public:
    Sheets(QPrinter& device, const GridControl& printedGrid, const PrintJob& printedJob,
           std::string ofDrawing)
        : mPrinter(device), mGrid(printedGrid), mJob(printedJob), mDrawing(std::move(ofDrawing)) {
        mPage = QRectF(QPointF(), mPrinter.pageRect(QPrinter::DevicePixel).size());
        ChooseColumns();
        ChooseType();
        Measure();
        Divide();
    }
    int Count() const { return static_cast<int>(mFirstRows.size()); }

    void Paint(QPainter& painter, int sheet) const {
        PaintHead(painter);
        double top = mTop;
        if (mJob.columnHeaders) top = PaintRow(painter, 0, top);
        const std::size_t at = static_cast<std::size_t>(sheet);
        const int end = at + 1 < mFirstRows.size() ? mFirstRows[at + 1] : mGrid.MaxRows() + 1;
        for (int row = mFirstRows[at]; row < end; ++row) top = PaintRow(painter, row, top);
        PaintFoot(painter, sheet);
    }

  private:
    double Points(double points) const { return points * mPrinter.logicalDpiY() / PointsPerInch; }
    QFont Type(double points, bool bold = false) const {
        QFont font("Sans Serif");
        font.setPointSizeF(points);
        font.setBold(bold);
        return font;
    }
    QFontMetricsF Metrics(const QFont& font) const { return QFontMetricsF(font, &mPrinter); }
    double Pad() const { return Metrics(Type(mType)).height() * Padding; }

    QString Text(const PrintedColumn& column, int row) const {
        if (column.column == 0) return row == 0 ? QString() : QString::number(row);
        return ToQt(mGrid.CellText(column.column, row)).simplified();
    }

    void ChooseColumns() {
        if (mJob.rowHeaders) mColumns.push_back({});
        for (int column = 1; column <= mGrid.MaxCols(); ++column)
            if (!mGrid.Column(column).hidden && mGrid.Column(column).width > 0) mColumns.push_back({column});
        for (PrintedColumn& column : mColumns)
            for (int row = 1; row <= mGrid.MaxRows() && column.numbers; ++row) {
                const QString text = Text(column, row);
                column.numbers = text.isEmpty() || IsNumeric(FromQt(text));
            }
    }
    void MeasureColumns() {
        const QFontMetricsF plain = Metrics(Type(mType)), bold = Metrics(Type(mType, true));
        for (PrintedColumn& column : mColumns) {
            column.natural = mJob.columnHeaders ? bold.horizontalAdvance(Text(column, 0)) : 0;
            for (int row = 1; row <= mGrid.MaxRows(); ++row)
                column.natural = std::max(column.natural, plain.horizontalAdvance(Text(column, row)));
            // A hair more, so that rounding breaks no text.
            column.natural = std::ceil(column.natural) + 2 * Pad() + 2;
            column.width = column.natural;
        }
    }
    double NaturalWidth() const {
        return std::accumulate(mColumns.begin(), mColumns.end(), 0.0,
                               [](double sum, const PrintedColumn& column) { return sum + column.natural; });
    }
    void ChooseType() {
        for (mType = LargestType;; mType -= TypeStep) {
            MeasureColumns();
            if (NaturalWidth() <= mPage.width() || mType <= SmallestType) break;
        }
        if (NaturalWidth() > mPage.width()) NarrowTheWidest();
    }
    /// The widest columns give way until all of them fit.
    void NarrowTheWidest() {
        std::vector<double> widths;
        for (const PrintedColumn& column : mColumns) widths.push_back(column.natural);
        std::ranges::sort(widths);
        double left = mPage.width();
        for (std::size_t at = 0; at < widths.size(); ++at) {
            const double level = left / static_cast<double>(widths.size() - at);
            if (widths[at] > level) {
                for (PrintedColumn& column : mColumns) column.width = std::min(column.natural, level);
                return;
            }
            left -= widths[at];
        }
    }

    static constexpr int Breaking = Qt::TextWordWrap | Qt::TextWrapAnywhere;
    double RowHeight(int row) const {
        const QFontMetricsF metrics = Metrics(Type(mType, row == 0));
        double height = metrics.height();
        for (const PrintedColumn& column : mColumns) {
            if (row > 0 && column.width >= column.natural) continue;
            const QRectF room(0, 0, column.width - 2 * Pad(), mPage.height());
            height = std::max(height, metrics.boundingRect(room, Breaking, Text(column, row)).height());
        }
        return std::ceil(height + Pad());
    }
    void Measure() {
        mTop = Metrics(Type(HeadType, true)).height() * 1.6;
        mBottom = mPage.height() - Metrics(Type(FootType)).height() * 1.6;
        for (int row = 0; row <= mGrid.MaxRows(); ++row) mHeights.push_back(RowHeight(row));
    }
    void Divide() {
        double at = mBottom + 1;
        for (int row = 1; row <= mGrid.MaxRows(); ++row) {
            const double height = mHeights[static_cast<std::size_t>(row)];
            if (at + height > mBottom) {
                mFirstRows.push_back(row);
                at = mTop + (mJob.columnHeaders ? mHeights[0] : 0);
            }
            at += height;
        }
        if (mFirstRows.empty()) mFirstRows.push_back(1);
    }

    double PaintRow(QPainter& painter, int row, double top) const {
        const double height = mHeights[static_cast<std::size_t>(row)], pad = Pad();
        painter.setFont(Type(mType, row == 0));
        painter.setPen(QPen(Qt::black, Points(LineWidth)));
        double left = 0;
        for (const PrintedColumn& column : mColumns) {
            const QRectF cell(left, top, column.width, height);
            if (row == 0) painter.fillRect(cell, QColor(0xe6, 0xe6, 0xe6));
            if (mJob.gridLines) painter.drawRect(cell);
            const int side = column.numbers && row > 0 ? Qt::AlignRight : Qt::AlignLeft;
            painter.drawText(cell.adjusted(pad, 0, -pad, 0), side | Qt::AlignVCenter | Breaking,
                             Text(column, row));
            left += column.width;
        }
        return top + height;
    }
    void PaintHead(QPainter& painter) const {
        painter.setPen(Qt::black);
        painter.setFont(Type(HeadType, true));
        const QString name = ToQt(mDrawing.empty() ? mJob.jobName : mDrawing);
        painter.drawText(QRectF(0, 0, mPage.width(), mTop), Qt::AlignLeft | Qt::AlignTop, name);
        painter.setFont(Type(FootType));
        painter.drawText(QRectF(0, 0, mPage.width(), mTop), Qt::AlignRight | Qt::AlignTop, ToQt(mJob.header));
    }
    void PaintFoot(QPainter& painter, int sheet) const {
        painter.setPen(Qt::black);
        painter.setFont(Type(FootType));
        const QRectF line(0, mBottom, mPage.width(), mPage.height() - mBottom);
        painter.drawText(line, Qt::AlignRight | Qt::AlignBottom,
                         QObject::tr("Page %1 of %2").arg(sheet + 1).arg(Count()));
        QString left = QLocale().toString(QDate::currentDate(), QLocale::ShortFormat);
        if (!mJob.footer.empty()) left = ToQt(mJob.footer);
        painter.drawText(line, Qt::AlignLeft | Qt::AlignBottom, left);
    }

    QPrinter& mPrinter;
    const GridControl& mGrid;
    const PrintJob& mJob;
    std::string mDrawing;
    QRectF mPage;
    std::vector<PrintedColumn> mColumns;
    double mType = LargestType, mTop = 0, mBottom = 0;
    std::vector<double> mHeights;
    std::vector<int> mFirstRows;
};

}  // namespace

void SetUpPrinter(QPrinter& printer, const PrintJob& job) {
    printer.setDocName(ToQt(job.jobName));
    printer.setPageOrientation(job.orientation == PrintOrientation::Landscape ? QPageLayout::Landscape
                                                                              : QPageLayout::Portrait);
    printer.setPageMargins(
        QMarginsF(job.margins.left, job.margins.top, job.margins.right, job.margins.bottom) / TwipsPerPoint,
        QPageLayout::Point);
    printer.setColorMode(job.colour ? QPrinter::Color : QPrinter::GrayScale);
}

bool PaintSheets(QPrinter& printer, const GridControl& grid, const PrintJob& job,
                 const std::string& drawing) {
    const Sheets sheets(printer, grid, job, drawing);
    const int first = std::max(printer.fromPage(), 1);
    const int last = printer.toPage() == 0 ? sheets.Count() : std::min(printer.toPage(), sheets.Count());
    QPainter painter;
    if (!painter.begin(&printer)) return false;
    for (int sheet = first; sheet <= last; ++sheet) {
        if (sheet > first && !printer.newPage()) return false;
        sheets.Paint(painter, sheet - 1);
    }
    return painter.end();
}

void GridPrinter::PrintGrid(const GridControl& grid, const PrintJob& job) {
    QPrinter printer(QPrinter::HighResolution);
    SetUpPrinter(printer, job);
    const std::string drawing = mDrawing();
    QPrintPreviewDialog preview(&printer, mDesk.Top());
    preview.setObjectName("printPreview");
    preview.setWindowTitle(QObject::tr("Print the list"));
    preview.resize(1000, 740);
    // Nothing may be thrown through the toolkit's own code.
    bool refused = false;
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested,
                     [&](QPrinter* paper) { refused = !PaintSheets(*paper, grid, job, drawing) || refused; });
    preview.exec();
    if (refused) throw Failure(PrinterFailure, std::string(OwnSource), "Printer error");
}

}  // namespace brenvik::desktop
