#pragma once

#include "drawing/drawing.h"

#include <QWidget>

#include <optional>

namespace velmo {

// The CAD side's drawing area: shows a drawing to scale and measures the distance of two points. The wheel
// zooms, dragging moves the sheet, a double click shows everything.
class DrawingView : public QWidget {
    Q_OBJECT

public:
    explicit DrawingView(QWidget* parent = nullptr);

    void ShowDrawing(const Drawing& drawing);
    // Stands in the middle while nothing is drawn.
    void SetHint(const QString& hint);

    // The next two clicks give a distance.
    void StartMeasuring();
    void StopMeasuring();

    // Where a point of the drawing lies in the widget.
    QPointF ToWidget(QPointF point) const;

Q_SIGNALS:
    // Millimetres between the two points, rounded to hundredths.
    void Measured(double distance);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    QPointF ToDrawing(QPointF position) const;
    // The nearest corner within reach of the pointer, else a crossing of the grid, else the point itself.
    QPointF Snapped(QPointF position) const;
    void ShowAll();
    void PaintGrid(QPainter& painter) const;
    void PaintDrawing(QPainter& painter) const;
    void PaintScale(QPainter& painter) const;
    void PaintMeasurement(QPainter& painter) const;

    Drawing drawing_; // texts as strokes
    QString hint_;
    double scale_ = 4; // pixels to a millimetre
    QPointF origin_;   // where (0, 0) lies in the widget
    bool hasOwnView_ = false;
    bool isMeasuring_ = false;
    std::optional<QPointF> first_;
    std::optional<QPointF> second_;
    std::optional<QPointF> pointer_; // in the drawing, snapped
    std::optional<QPointF> dragFrom_;
};

} // namespace velmo
