#pragma once

#include "platform/slide.h"
#include "platform/slide_camera.h"
#include "platform/slide_picture.h"

#include <QAction>
#include <QTimer>
#include <QWidget>

#include <optional>

namespace velmo {

// Shows one slide on the dark ground of a drawing window, fitted into the view or enlarged: the wheel zooms
// around the pointer, the left or middle button drags, + - 0 Home and the arrow keys do the same. Whatever
// another slide was looked at with ends when a slide is given.
class SlideView : public QWidget {
    Q_OBJECT

public:
    explicit SlideView(QWidget* parent = nullptr);

    // Reads and shows a slide file (stored path). What cannot be shown, or an empty name, empties the view;
    // a line in it and its tooltip tell what is wrong with a file. It is read here and never again.
    void ShowSlide(const QString& stored);
    void Clear();

    // The stored path last given to ShowSlide; empty after Clear.
    QString SlideFile() const { return file_; }
    // True when something is drawn; a slide without any line shows nothing.
    bool HasPicture() const { return !slide_.drawing.IsEmpty(); }
    // What could be read; its damage says whether that is all.
    const Slide& Shown() const { return slide_; }
    // How it is looked at now.
    SlideLook Look() const { return camera_.Look(); }

    // What the user is told about a slide that does not show all that it should; empty for any other.
    QString Trouble() const;

    // A hint in the middle of a view without any slide; empty for none.
    void SetEmptyText(const QString& text);
    QString EmptyText() const { return emptyText_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    // A mouse button held down on the enlarged slide.
    struct Grip {
        Qt::MouseButton button;
        QPointF at;
        bool moved = false; // far enough to be no click
    };

    void SetSlide(const QString& file, Slide slide);
    void PaintHint(QPainter& painter) const;
    void PaintNote(QPainter& painter) const;
    void TellTrouble();
    void PaintPicture(QPainter& painter);
    // Whether drawing takes so long that it would be felt while something moves.
    bool IsSlow(const SlideFit& fit) const;

    void Fit();
    void Zoom(QPointF point, int amount);
    void Pan(QPointF distance);
    void LookChanged();
    void LetGo();
    void ShowCursor();

    QString file_;
    QString emptyText_;
    Slide slide_;
    double lengths_ = 0; // of all lines, in dots
    SlideCamera camera_;
    SlidePicture picture_;
    QTimer settling_; // runs while a stretched picture shows
    bool settled_ = false;
    std::optional<Grip> grip_;
    QAction* SlideFit_;
};

} // namespace velmo
