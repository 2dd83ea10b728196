#include "library/found_name_delegate.h"

#include "library/find_results_model.h"

#include <QPainter>

namespace velmo {

namespace {

// Pixels.
constexpr int Margin = 3;
constexpr int IconGap = 5;

// How much of the text's colour is left in the way's, of 255.
constexpr int DimmedAlpha = 150;

} // namespace

FoundNameDelegate::FoundNameDelegate(const QWidget& field, QObject* parent)
    : QStyledItemDelegate(parent), field_(field) {}

void FoundNameDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const {
    const bool hasKeyboard = field_.hasFocus();
    // The style fades a whole item, for it knows of the view alone.
    if (hasKeyboard)
        option.widget->style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
    else
        option.widget->style()->drawControl(QStyle::CE_ItemViewItem, &option, painter, option.widget);

    const QRect inner = option.rect.adjusted(Margin, Margin, -Margin, -Margin);
    const QRect icon(inner.topLeft(), QSize(option.decorationSize.width(), inner.height()));
    qvariant_cast<QIcon>(index.data(Qt::DecorationRole)).paint(painter, icon);

    const QRect texts = inner.adjusted(option.decorationSize.width() + IconGap, 0, 0, 0);
    const bool selected = option.state.testFlag(QStyle::State_Selected) && hasKeyboard;
    const QPalette::ColorGroup group =
        option.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
    QColor colour = option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
    const auto draw = [&](const QRect& line, const QString& text) {
        painter->setPen(colour);
        painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          option.fontMetrics.elidedText(text, Qt::ElideMiddle, line.width()));
    };
    painter->save();
    painter->setFont(option.font);
    const QString way = index.data(FindResultsModel::WayRole).toString();
    const QRect upper(texts.topLeft(), QSize(texts.width(), texts.height() / 2));
    draw(way.isEmpty() ? texts : upper, index.data(Qt::DisplayRole).toString());
    // On the selection's ground a dimmed text is hard to read.
    if (!selected)
        colour.setAlpha(DimmedAlpha);
    draw(upper.translated(0, upper.height()), way);
    painter->restore();
}

QSize FoundNameDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    // The view gives every row its own width.
    return {option.decorationSize.width(), 2 * option.fontMetrics.height() + 2 * Margin};
}

} // namespace velmo
