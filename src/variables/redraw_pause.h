#pragma once

#include <QList>
#include <QWidget>

#include <initializer_list>

namespace velmo {

// Stops the redrawing of widgets while many of their cells change.
class RedrawPause {
public:
    explicit RedrawPause(std::initializer_list<QWidget*> widgets) : widgets_(widgets) {
        for (QWidget* widget : widgets_)
            widget->setUpdatesEnabled(false);
    }
    ~RedrawPause() {
        for (QWidget* widget : widgets_)
            widget->setUpdatesEnabled(true);
    }
    RedrawPause(const RedrawPause&) = delete;
    RedrawPause& operator=(const RedrawPause&) = delete;

private:
    QList<QWidget*> widgets_;
};

} // namespace velmo
