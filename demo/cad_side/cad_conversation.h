#pragma once

#include "cad_side/cad_session.h"
#include "cad_side/program_runner.h"

namespace velmo {

// The CAD side's part of the talk: stores a request, starts the program, reads the answer when it has
// ended, and goes round again when the program asks for a distance.
class CadConversation : public QObject {
    Q_OBJECT

public:
    enum class State {
        Idle,
        Running,   // the program is open
        Measuring, // the program has ended and wants a distance
    };

    CadConversation(CadSession session, ProgramRunner& runner, QObject* parent = nullptr);

    State CurrentState() const { return state_; }
    const CadSession& Session() const { return session_; }
    const CadAnswer& Answer() const { return answer_; }
    bool CanReopen() const { return answer_.kind == AnswerKind::Symbol; }
    // The label of the variable that gets the distance; empty when the row does not exist.
    QString MeasuredLabel() const;

    // Does nothing while the program is open.
    void Ask(const CadRequest& request);
    // Goes on after a measurement; 0 leaves the variable's value as it was.
    void ReturnDistance(double millimetres);

Q_SIGNALS:
    void StateChanged();
    // The program has ended with an answer, also with one that nothing was chosen.
    void Answered(const velmo::CadAnswer& answer);
    // The program has ended without writing an answer.
    void ClosedUnanswered();
    void Failed(const QString& text);
    // A line for the record of what was handed over.
    void Logged(const QString& line);

private:
    void SetState(State state);
    void Finish(int exitStatus);
    void FinishFailed(const QString& text);
    void ReadAnswer();
    void LogAnswer();

    CadSession session_;
    ProgramRunner& runner_;
    State state_ = State::Idle;
    CadAnswer answer_;
};

} // namespace velmo
