#include "shell/widgets/term_grid_view.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QStyledItemDelegate>

#include "shell/widgets/numeric_key_filter.h"

namespace bm {

namespace {

constexpr int kStyleRole = Qt::UserRole + 1;

// Editors of the grid take numbers only.
class NumericDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
        if (editor) editor->installEventFilter(NumericKeyFilter::instance());
        return editor;
    }
};

}  // namespace

TermGridView::TermGridView(const QString& name, QWidget* parent) : GatedTable(parent) {
    setObjectName(name);
    setColumnCount(2);
    takeNumbersIn(0);
    takeNumbersIn(1);
    horizontalHeader()->setSectionResizeMode(0, QHeaderView::Interactive);
    horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    horizontalHeader()->resizeSection(0, 160);
    verticalHeader()->setDefaultSectionSize(24);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::AnyKeyPressed | QAbstractItemView::SelectedClicked);
}

void GatedTable::takeNumbersIn(int column) { setItemDelegateForColumn(column, new NumericDelegate(this)); }

bool GatedTable::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    const bool wouldEdit = trigger == QAbstractItemView::AllEditTriggers || (editTriggers() & trigger) != 0;
    if (wouldEdit && state() != QAbstractItemView::EditingState && index.isValid() && beforeEdit &&
        !beforeEdit(index.row(), index.column()))
        return false;
    return QTableWidget::edit(index, trigger, event);
}

void TermGridView::showGrid(const TermGrid& grid, const std::function<std::string(int, int)>& styleOf) {
    const QSignalBlocker block(this);
    setHorizontalHeaderLabels({QString::fromStdString(grid.timeHeading), QString::fromStdString(grid.concentrationHeading)});
    const int rows = static_cast<int>(grid.cells.size());
    if (rowCount() != rows) setRowCount(rows);
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < 2; ++c) showCell(r, c, grid.cell(r, c), styleOf(r, c));
}

void GatedTable::showCell(int row, int column, const std::string& text, const std::string& style) {
    QTableWidgetItem* it = item(row, column);
    if (!it) {
        it = new QTableWidgetItem;
        setItem(row, column, it);
    }
    // A marker cell shows its visible word; what stands behind it is the model's.
    const QString shown = style.empty() ? QString::fromStdString(text) : QStringLiteral("Monte Carlo");
    if (it->text() != shown) it->setText(shown);
    it->setData(kStyleRole, QString::fromStdString(style));
    it->setForeground(style.empty() ? palette().brush(QPalette::Text) : QBrush(TermGridView::styleColour()));
}

QString GatedTable::cellStyle(int row, int column) const {
    const QTableWidgetItem* it = item(row, column);
    return it ? it->data(kStyleRole).toString() : QString();
}

}  // namespace bm
