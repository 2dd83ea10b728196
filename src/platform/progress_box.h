#pragma once

#include <QProgressDialog>

#include <optional>

namespace velmo {

// Tells the user how far a long action has come, from the moment at which one begins to wonder. An action
// that is over before that costs nothing.
class ProgressBox {
public:
    enum class Cancel { No, Yes };

    ProgressBox(QWidget* parent, QString label, Cancel cancel)
        : parent_(parent), label_(std::move(label)), cancel_(cancel) {}

    // How much is done of the whole. False when the user wants to stop.
    bool Report(qint64 done, qint64 whole);
    // Something is waited for, nobody knows how long. False when the user wants to stop.
    bool ReportWaiting();

private:
    QWidget* parent_;
    QString label_;
    Cancel cancel_;
    std::optional<QProgressDialog> dialog_;
    int waited_ = 0;
};

} // namespace velmo
