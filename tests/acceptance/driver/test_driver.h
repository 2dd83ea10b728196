#pragma once

#include "user_input.h"

#include <QDeadlineTimer>
#include <QJsonObject>
#include <QLocalSocket>

#include <deque>
#include <optional>

namespace velmo::driver {

// Carries out a test's commands inside the program under test. One command a line, a JSON object with "id"
// and "do"; one answer a line with the same "id" and either "result" or "error".
//
// Everything runs as single steps from the event loop, in the order of the commands and never from the
// socket's own slot. A command that acts is answered before it acts, so a question that follows a click is
// answered when the click is over or waits in a modal window's own event loop.
class TestDriver : public QObject {
    Q_OBJECT

public:
    explicit TestDriver(const QString& server);

private:
    struct Outcome {
        QJsonValue result;
        Steps steps;
    };

    void ReadCommands();
    void PostNext();
    void RunNext();
    // Whether the next step has to wait for a window manager, which gets so long at most.
    bool MustWait();
    void RunCommand(const QJsonObject& command);
    Outcome Execute(const QJsonObject& command);
    QJsonValue Ask(const QString& verb, const QJsonObject& command) const;
    Steps Act(const QString& verb, const QJsonObject& command);
    Spot Target(const QJsonObject& command) const;

    QLocalSocket socket_;
    UserInput input_;
    std::deque<Step> steps_;
    bool posted_ = false;
    bool activating_ = false;
    std::optional<QDeadlineTimer> windowDue_;
    QString lateError_;
};

} // namespace velmo::driver
