#include "pickers/picker_layout.h"

#include <QBoxLayout>
#include <QLabel>

namespace velmo {

namespace {

// Pixels.
constexpr int Gap = 8;
constexpr int LabelGap = 4;
constexpr int ButtonWidth = 100;

QLabel* LabelOf(const QString& text, QWidget* control) {
    auto* label = new QLabel(text);
    label->setBuddy(control);
    return label;
}

} // namespace

QWidget* Labelled(const QString& label, QWidget* control) {
    auto* pane = new QWidget;
    auto* column = new QVBoxLayout(pane);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(LabelGap);
    column->addWidget(LabelOf(label, control));
    column->addWidget(control, 1);
    return pane;
}

void AddPickerRows(QDialog& dialog, QWidget* offered, const QString& label, QLineEdit* choice,
                   const QList<QPushButton*>& buttons) {
    auto* choiceRow = new QHBoxLayout;
    choiceRow->setSpacing(Gap);
    choiceRow->addWidget(LabelOf(label, choice));
    choiceRow->addWidget(choice, 1);
    auto* buttonRow = new QHBoxLayout;
    buttonRow->setSpacing(Gap);
    buttonRow->addStretch(1);
    for (QPushButton* button : buttons) {
        button->setMinimumWidth(ButtonWidth);
        buttonRow->addWidget(button);
    }
    auto* rows = new QVBoxLayout(&dialog);
    rows->setContentsMargins(Gap, Gap, Gap, Gap);
    rows->setSpacing(Gap);
    rows->addWidget(offered, 1);
    rows->addLayout(choiceRow);
    rows->addLayout(buttonRow);
}

} // namespace velmo
