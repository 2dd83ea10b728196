#include "platform/plain_tool_tip.h"

#include <QTextDocument>

namespace velmo {

QString PlainToolTip(const QString& text) {
    if (!Qt::mightBeRichText(text))
        return text;
    return QStringLiteral("<p style=\"white-space:pre-wrap\">%1</p>").arg(text.toHtmlEscaped());
}

} // namespace velmo
