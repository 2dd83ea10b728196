#pragma once

#include <QWidget>

namespace velmo {

// A bar between two panes, which the user drags along its parent or moves with the arrow keys: an image that
// is unseen unless it has the focus, and a picture that is seen while it is dragged.
class SplitBar : public QWidget {
    Q_OBJECT

public:
    // The bar's own way: a vertical one moves to the left and right. image, picture: the objectNames.
    SplitBar(Qt::Orientation orientation, const char* image, const char* picture, QWidget* parent);

    Qt::Orientation Way() const { return orientation_; }
    // Image and picture are put there; between first and last the user may move the left or top edge. Pixels
    // of the parent.
    void Place(const QRect& place, int first, int last);
    bool IsDragged() const { return dragged_; }

Q_SIGNALS:
    // It was dropped with its left or top edge here.
    void Dropped(int place);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int Along(const QPointF& point) const;
    void EndDrag();

    Qt::Orientation orientation_;
    QWidget* picture_;
    int first_ = 0;
    int last_ = 0;
    bool dragged_ = false;
    // Where the mouse took hold of it.
    int hold_ = 0;
};

} // namespace velmo
