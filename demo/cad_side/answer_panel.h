#pragma once

#include "cad_side/cad_answer.h"

#include <QGroupBox>

class QLabel;
class QTableWidget;

namespace velmo {

// What came back: the symbol file, its library and a table of the variables.
class AnswerPanel : public QGroupBox {
    Q_OBJECT

public:
    explicit AnswerPanel(QWidget* parent = nullptr);

    void ShowAnswer(const CadAnswer& answer);

private:
    QLabel* symbol_;
    QLabel* library_;
    QTableWidget* variables_;
};

} // namespace velmo
