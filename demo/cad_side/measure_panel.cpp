#include "cad_side/measure_panel.h"

#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmo {

MeasurePanel::MeasurePanel(QWidget* parent)
    : QGroupBox(QStringLiteral("距離の計測"), parent),
      request_(new QLabel(this)),
      distance_(new QDoubleSpinBox(this)),
      accept_(new QPushButton(QStringLiteral("この距離で続ける"), this)) {
    request_->setWordWrap(true);
    distance_->setObjectName(QStringLiteral("measuredDistance"));
    distance_->setRange(0, 99999.99);
    distance_->setSuffix(QStringLiteral(" mm"));
    distance_->setButtonSymbols(QAbstractSpinBox::NoButtons);
    accept_->setObjectName(QStringLiteral("returnDistance"));
    auto* skip = new QPushButton(QStringLiteral("計測せずに戻る"), this);
    skip->setObjectName(QStringLiteral("returnWithoutDistance"));

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(accept_);
    buttons->addWidget(skip);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(request_);
    layout->addWidget(distance_);
    layout->addLayout(buttons);

    connect(distance_, &QDoubleSpinBox::valueChanged, accept_,
            [this](double value) { accept_->setEnabled(value > 0); });
    connect(accept_, &QPushButton::clicked, this, [this] { Q_EMIT DistanceGiven(distance_->value()); });
    connect(skip, &QPushButton::clicked, this, [this] { Q_EMIT DistanceGiven(0); });
}

void MeasurePanel::Begin(const QString& label) {
    request_->setText(
        QStringLiteral("変数 %1 に入れる距離を、図面の 2 点をクリックして測るか、下に入力してください。")
            .arg(label));
    distance_->setValue(0);
    accept_->setEnabled(false);
}

void MeasurePanel::SetDistance(double millimetres) {
    distance_->setValue(millimetres);
    accept_->setFocus();
}

} // namespace velmo
