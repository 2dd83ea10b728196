#pragma once

#include <QLabel>

namespace velmo {

// One line of plain text that may be narrower than it is long: then its middle gives way to an ellipsis, and
// the tooltip shows all of it. text() is always the whole text.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    // What of the text there is room for.
    QString ShownText() const;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QRect TextArea() const;
};

} // namespace velmo
