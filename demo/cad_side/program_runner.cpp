#include "cad_side/program_runner.h"

namespace velmo {

ProcessRunner::ProcessRunner(QString program, QObject* parent)
    : ProgramRunner(parent), program_(std::move(program)) {
    process_.setProgram(program_);
    process_.setProcessChannelMode(QProcess::ForwardedChannels);
    connect(&process_, &QProcess::finished, this, [this](int exitStatus, QProcess::ExitStatus status) {
        if (status == QProcess::CrashExit)
            Q_EMIT Failed(QStringLiteral("VELMO2 が異常終了しました。"));
        else
            Q_EMIT Finished(exitStatus);
    });
    connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            Q_EMIT Failed(QStringLiteral("%1 を起動できません。\n%2").arg(program_, process_.errorString()));
    });
}

void ProcessRunner::Start(const QString& workingFolder, const QString& configFolder) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), configFolder);
    process_.setProcessEnvironment(environment);
    process_.setWorkingDirectory(workingFolder);
    process_.start();
}

} // namespace velmo
