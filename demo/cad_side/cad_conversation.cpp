#include "cad_side/cad_conversation.h"

#include "platform/runtime_error.h"

namespace velmo {

CadConversation::CadConversation(CadSession session, ProgramRunner& runner, QObject* parent)
    : QObject(parent), session_(std::move(session)), runner_(runner) {
    connect(&runner_, &ProgramRunner::Finished, this, &CadConversation::Finish);
    connect(&runner_, &ProgramRunner::Failed, this, &CadConversation::FinishFailed);
}

QString CadConversation::MeasuredLabel() const {
    const int row = session_.MeasuredRow();
    const bool exists = row >= 1 && static_cast<std::size_t>(row) <= answer_.variables.size();
    return exists ? answer_.variables[static_cast<std::size_t>(row) - 1].label : QString();
}

void CadConversation::Ask(const CadRequest& request) {
    if (state_ == State::Running)
        return;
    try {
        session_.MarkAnswerOld();
        Q_EMIT Logged(
            QStringLiteral("▶ 設定: %1").arg(session_.WriteRequest(request).join(QStringLiteral("  "))));
    } catch (const RuntimeError& error) {
        FinishFailed(ErrorText(error));
        return;
    }
    Q_EMIT Logged(QStringLiteral("▶ velmo2 を起動"));
    SetState(State::Running);
    runner_.Start(session_.Folder(), session_.ConfigFolder());
}

void CadConversation::ReturnDistance(double millimetres) {
    Ask({CadRunMode::ReturnDistance, false, millimetres});
}

void CadConversation::SetState(State state) {
    state_ = state;
    Q_EMIT StateChanged();
}

void CadConversation::FinishFailed(const QString& text) {
    SetState(State::Idle);
    Q_EMIT Logged(QStringLiteral("× ") + text);
    Q_EMIT Failed(text);
}

void CadConversation::Finish(int exitStatus) {
    Q_EMIT Logged(QStringLiteral("◀ velmo2 が終了 (状態 %1)").arg(exitStatus));
    if (exitStatus != 0) {
        FinishFailed(QStringLiteral("velmo2 が状態 %1 で終了しました。").arg(exitStatus));
        return;
    }
    if (!session_.IsAnswerNew()) {
        Q_EMIT Logged(QStringLiteral("◀ 新しい回答はない"));
        SetState(State::Idle);
        Q_EMIT ClosedUnanswered();
        return;
    }
    try {
        ReadAnswer();
    } catch (const RuntimeError& error) {
        FinishFailed(ErrorText(error));
    }
}

void CadConversation::ReadAnswer() {
    answer_ = session_.ReadAnswer();
    LogAnswer();
    const bool isMeasurement = answer_.kind == AnswerKind::Symbol && session_.IsMeasurementAsked();
    if (isMeasurement)
        Q_EMIT Logged(QStringLiteral("◀ 設定: VlmMode=4  DistNo=%1").arg(session_.MeasuredRow()));
    SetState(isMeasurement ? State::Measuring : State::Idle);
    Q_EMIT Answered(answer_);
}

void CadConversation::LogAnswer() {
    if (answer_.kind == AnswerKind::NoSelection) {
        Q_EMIT Logged(QStringLiteral("◀ velmo.ret2: NO SELECT"));
        return;
    }
    Q_EMIT Logged(QStringLiteral("◀ velmo.ret2: %1 | %2").arg(answer_.symbolFile, answer_.libraryWord));
    QStringList lines = {QString::number(answer_.variables.size())};
    for (const CadVariable& variable : answer_.variables)
        lines << variable.label << variable.value;
    Q_EMIT Logged(QStringLiteral("◀ velmo.ret: %1").arg(lines.join(QStringLiteral(" | "))));
}

} // namespace velmo
