#include "desktop_look.h"

#include <QApplication>
#include <QFont>
#include <QPalette>

namespace velmo::driver {

namespace {

void UseDarkColours() {
    const QColor window(0x2A, 0x2E, 0x32);
    const QColor base(0x1B, 0x1E, 0x20);
    const QColor text(0xEF, 0xF0, 0xF1);
    const QColor dim(0x8A, 0x93, 0x9C);
    QPalette palette(QColor(0x31, 0x36, 0x3B), window);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                           QPalette::ToolTipText, QPalette::HighlightedText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, dim);
    }
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, QColor(0x23, 0x26, 0x29));
    palette.setColor(QPalette::ToolTipBase, window);
    palette.setColor(QPalette::PlaceholderText, dim);
    palette.setColor(QPalette::Highlight, QColor(0x2F, 0x7F, 0xB5));
    QApplication::setPalette(palette);
}

void UseFontSize(int points) {
    QFont font = QApplication::font();
    font.setPointSize(points);
    QApplication::setFont(font);
}

} // namespace

void UseDesktopLook() {
    if (qEnvironmentVariable("VELMO_TEST_COLOURS") == "dark")
        UseDarkColours();
    if (const int points = qEnvironmentVariableIntValue("VELMO_TEST_FONT_SIZE"); points > 0)
        UseFontSize(points);
}

} // namespace velmo::driver
