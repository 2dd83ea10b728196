#include "platform/plain_tool_tip.h"

#include <QTextDocument>

namespace velmo {

namespace {

// Letters.
constexpr int LongestLine = 80;

} // namespace

QString PlainToolTip(const QString& text) {
    if (text.size() <= LongestLine && !Qt::mightBeRichText(text))
        return text;
    // The toolkit breaks the lines of markup only.
    return QStringLiteral("<p style=\"white-space:pre-wrap\">%1</p>").arg(text.toHtmlEscaped());
}

} // namespace velmo
