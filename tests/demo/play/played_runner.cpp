#include "played_runner.h"

namespace velmo {

void PlayedRunner::Start(const QString& workingFolder, const QString& configFolder) {
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), configFolder);
    try {
        VelmoRun run({program_, plugins_, workingFolder, environment});
        hands_(run);
        Q_EMIT Finished(run.WaitForEnd());
    } catch (const HarnessError& error) {
        error_ = QString::fromUtf8(error.what());
        Q_EMIT Failed(error_);
    }
}

} // namespace velmo
