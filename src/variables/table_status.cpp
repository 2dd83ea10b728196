#include "variables/table_status.h"

#include <QStatusBar>

namespace velmo {

namespace {

QLabel* AddPanel(QStatusBar& bar, const char* name, const QString& widest) {
    auto* panel = new QLabel;
    panel->setObjectName(QLatin1String(name));
    panel->setTextFormat(Qt::PlainText);
    panel->setMinimumWidth(panel->fontMetrics().horizontalAdvance(widest) + 12);
    bar.addPermanentWidget(panel);
    return panel;
}

QString Characters(const TableEditor& editor, int row, int column, qsizetype used) {
    const TableVariable* variable = editor.VariableOf(column);
    if (row < 1 || !variable)
        return {};
    const QString text = QStringLiteral("%1 / %2 文字").arg(used).arg(variable->width);
    return used > variable->width ? text + QStringLiteral(" (長すぎます)") : text;
}

} // namespace

TableStatus::TableStatus(QStatusBar& bar)
    : changed_(AddPanel(bar, "VedtChangedPanel", QStringLiteral("変更なし"))),
      size_(AddPanel(bar, "VedtSizePanel", QStringLiteral("32767 行 × 30 列"))),
      characters_(AddPanel(bar, "VedtLengthPanel", QStringLiteral("10 / 10 文字"))) {}

void TableStatus::Show(const TableEditor& editor, int row, int column) {
    changed_->setText(editor.IsChanged() ? QStringLiteral("変更あり") : QStringLiteral("変更なし"));
    size_->setText(QStringLiteral("%1 行 × %2 列").arg(editor.DataRows()).arg(editor.DataColumns()));
    const GridCells& cells = editor.Cells();
    // While rows go, the grid's current one may be beyond the last.
    const bool exists = row > 0 && row < cells.Rows() && column > 0 && column < cells.Cols();
    ShowLength(editor, exists ? row : 0, column, exists ? cells.TextView(row, column).size() : 0);
}

void TableStatus::ShowLength(const TableEditor& editor, int row, int column, qsizetype length) {
    characters_->setText(Characters(editor, row, column, length));
}

} // namespace velmo
