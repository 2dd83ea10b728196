#include "platform/velmo_style.h"

#include "platform/font_scale.h"
#include "platform/svg_icon.h"

#include <QApplication>
#include <QComboBox>
#include <QPainter>
#include <QStyleOptionViewItem>
#include <QWidget>

namespace velmo {

namespace {

// How much is left of the selection's colour in a view without the focus, and of the text's in a frame.
constexpr double Faded = 0.3;
// How much of the text's colour a hint has.
constexpr float HintStrength = 0.6F;

QColor Mixed(const QColor& full, const QColor& ground) {
    const auto part = [](double a, double b) { return float(a * Faded + b * (1 - Faded)); };
    return QColor::fromRgbF(part(full.redF(), ground.redF()), part(full.greenF(), ground.greenF()),
                            part(full.blueF(), ground.blueF()));
}

// An item of a view whose selection is to be seen, but not as the one that keys go to.
bool IsFaded(const QStyleOption* option, const QWidget* widget) {
    return widget && option->state.testFlag(QStyle::State_Selected) && !widget->hasFocus();
}

// The window of a combo box's list. What the toolkit frames it with is darker than any dark ground.
bool IsDroppedDown(const QWidget* widget) {
    return widget && widget->windowType() == Qt::Popup && qobject_cast<QComboBox*>(widget->parentWidget());
}

QStyleOptionViewItem FadedItem(const QStyleOptionViewItem& item) {
    QStyleOptionViewItem faded = item;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const QPalette& palette = item.palette;
        faded.palette.setColor(
            group, QPalette::Highlight,
            Mixed(palette.color(group, QPalette::Highlight), palette.color(group, QPalette::Base)));
        faded.palette.setColor(group, QPalette::HighlightedText, palette.color(group, QPalette::Text));
    }
    return faded;
}

// A desktop's font may have no Japanese letters; those that stand in for them can be higher.
int JapaneseHeight(const QFontMetrics& metrics) {
    return metrics.size(Qt::TextSingleLine, QStringLiteral("あ")).height();
}

} // namespace

// Not every desktop says how hints look; left alone they would be black on the dark ones.
void VelmoStyle::polish(QPalette& palette) {
    QProxyStyle::polish(palette);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QColor hint = palette.color(group, QPalette::Text);
        hint.setAlphaF(HintStrength);
        palette.setColor(group, QPalette::PlaceholderText, hint);
    }
}

QIcon VelmoStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    switch (icon) {
    case SP_ToolBarHorizontalExtensionButton:
        return PlatformIcon(QStringLiteral("more_right"));
    case SP_ToolBarVerticalExtensionButton:
        return PlatformIcon(QStringLiteral("more_below"));
    case SP_MessageBoxWarning:
        return PlatformIcon(QStringLiteral("message_warning"));
    case SP_MessageBoxQuestion:
        return PlatformIcon(QStringLiteral("message_question"));
    case SP_LineEditClearButton:
        return PlatformIcon(QStringLiteral("clear_text"));
    default:
        return QProxyStyle::standardIcon(icon, option, widget);
    }
}

int VelmoStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returned) const {
    switch (hint) {
    // What the toolkit would draw on はい and いいえ is made of pixels; the words say enough.
    case SH_DialogButtonBox_ButtonsHaveIcons:
    // On a dark ground the shadow of a greyed text reads like a second text.
    case SH_EtchDisabledText:
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returned);
    }
}

int VelmoStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    const int pixels = QProxyStyle::pixelMetric(metric, option, widget);
    switch (metric) {
    case PM_SmallIconSize:
    case PM_ListViewIconSize:
    case PM_ButtonIconSize:
    case PM_ToolBarIconSize:
    case PM_MessageBoxIconSize: {
        const QFontMetrics font = widget ? widget->fontMetrics() : QFontMetrics(QApplication::font());
        return qRound(pixels * FontScale(font));
    }
    default:
        return pixels;
    }
}

QSize VelmoStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                   const QWidget* widget) const {
    const auto sizeFor = [&](const QSize& room) {
        return QProxyStyle::sizeFromContents(type, option, room, widget);
    };
    switch (type) {
    case CT_MenuItem:
        // The toolkit elides texts that would fit: it measures an entry without its mnemonic's ampersand and
        // counts it when it draws, and its margins are those of a small font.
        return sizeFor(contents) + QSize(option->fontMetrics.height(), 0);
    case CT_PushButton:
    case CT_LineEdit:
        return sizeFor(contents.expandedTo({0, JapaneseHeight(option->fontMetrics)}));
    default:
        return sizeFor(contents);
    }
}

void VelmoStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
    if (element == CE_ShapedFrame && IsDroppedDown(widget)) {
        const QPalette& palette = option->palette;
        painter->setPen(Mixed(palette.color(QPalette::WindowText), palette.color(QPalette::Window)));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        return;
    }
    const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option);
    if (element != CE_ItemViewItem || !item || !IsFaded(option, widget)) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    const QStyleOptionViewItem faded = FadedItem(*item);
    QProxyStyle::drawControl(element, &faded, painter, widget);
}

void VelmoStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option);
    if (element != PE_PanelItemViewRow || !item || !IsFaded(option, widget)) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    const QStyleOptionViewItem faded = FadedItem(*item);
    QProxyStyle::drawPrimitive(element, &faded, painter, widget);
}

} // namespace velmo
