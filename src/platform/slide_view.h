#pragma once

#include "platform/slide.h"

#include <QPixmap>
#include <QWidget>

namespace velmo {

// Shows one slide on the dark ground of a drawing window, as large as its size allows.
class SlideView : public QWidget {
    Q_OBJECT

public:
    explicit SlideView(QWidget* parent = nullptr);

    // Reads and shows a slide file (stored path). What cannot be shown, or an empty name, empties the view.
    // The file is read here and never again.
    void ShowSlide(const QString& stored);
    void Clear();

    // The stored path last given to ShowSlide; empty after Clear.
    QString SlideFile() const { return file_; }
    // True when something is drawn; a slide without any line shows nothing.
    bool HasPicture() const { return !slide_.drawing.IsEmpty(); }
    // What could be read; its damage says whether that is all.
    const Slide& Shown() const { return slide_; }

    // A hint in the middle of an empty view; empty for none.
    void SetEmptyText(const QString& text);
    QString EmptyText() const { return emptyText_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void SetSlide(const QString& file, Slide slide);
    void Render(QSize pixels, double ratio);

    QString file_;
    QString emptyText_;
    Slide slide_;
    QPixmap picture_; // null when it must be drawn anew
};

} // namespace velmo
