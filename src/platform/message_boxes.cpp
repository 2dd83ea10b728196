#include "platform/message_boxes.h"

#include <QApplication>
#include <QMessageBox>

namespace velmo {

namespace {

int ShowBox(QWidget* parent, QMessageBox::Icon icon, const QString& text, const QString& title,
            QMessageBox::StandardButtons buttons, QMessageBox::StandardButton usual = QMessageBox::NoButton) {
    QMessageBox box(icon, title, text, buttons, parent);
    // Texts are paths and names of files: they are never markup.
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(usual);
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    return box.exec();
}

} // namespace

void MessageBoxes::Inform(QWidget* parent, const QString& text, const QString& title) {
    ShowBox(parent, QMessageBox::Warning, text, title, QMessageBox::Ok);
}

bool MessageBoxes::Ask(QWidget* parent, const QString& text, const QString& title) {
    // Every question is whether something may get lost: a key pressed too often must not say yes.
    return ShowBox(parent, QMessageBox::Question, text, title, QMessageBox::Yes | QMessageBox::No,
                   QMessageBox::No) == QMessageBox::Yes;
}

void MessageBoxes::ShowError(QWidget* parent, const RuntimeError& error) {
    Inform(parent, ErrorText(error));
    if (!error.IsFatal())
        return;
    exitStatus_ = 1;
    QCoreApplication::exit(exitStatus_);
}

} // namespace velmo
