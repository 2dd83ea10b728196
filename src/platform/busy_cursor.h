#pragma once

#include <QObject>

namespace velmo {

// While the program waits long for a database, the pointer tells that it is busy, until it handles events
// again. Watches the application, which is there already.
class BusyCursor : public QObject {
    Q_OBJECT

public:
    BusyCursor();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace velmo
