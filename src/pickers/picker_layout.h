#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>

namespace velmo {

// The looks that the pickers share.

template <typename Control>
Control* Named(Control* control, const char* name, const QString& accessibleName) {
    control->setObjectName(QLatin1String(name));
    control->setAccessibleName(accessibleName);
    return control;
}

// The control below its label.
QWidget* Labelled(const QString& label, QWidget* control);

// Lays a dialog out: what is chosen from, the choice behind its label, and the buttons at the right.
void AddPickerRows(QDialog& dialog, QWidget* offered, const QString& label, QLineEdit* choice,
                   const QList<QPushButton*>& buttons);

} // namespace velmo
