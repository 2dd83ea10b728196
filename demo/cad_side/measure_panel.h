#pragma once

#include <QGroupBox>

class QDoubleSpinBox;
class QLabel;
class QPushButton;

namespace velmo {

// Takes the distance that the program asked for: measured in the drawing or typed.
class MeasurePanel : public QGroupBox {
    Q_OBJECT

public:
    explicit MeasurePanel(QWidget* parent = nullptr);

    // label: the variable that gets the distance, as velmo.ret names it.
    void Begin(const QString& label);
    void SetDistance(double millimetres);

Q_SIGNALS:
    // 0 when the user goes back without a distance.
    void DistanceGiven(double millimetres);

private:
    QLabel* request_;
    QDoubleSpinBox* distance_;
    QPushButton* accept_;
};

} // namespace velmo
