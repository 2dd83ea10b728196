#pragma once

#include "acceptance/velmo_run.h"
#include "cad_side/program_runner.h"

#include <functional>

namespace velmo {

// Runs the real program with the driver in it, and lets hands of its own use it before it waits for its end.
class PlayedRunner : public ProgramRunner {
    Q_OBJECT

public:
    // plugins: the folder that holds generic/<the driver>.
    PlayedRunner(QString program, QString plugins)
        : program_(std::move(program)), plugins_(std::move(plugins)) {}

    // What the hands do in the next run.
    void SetHands(std::function<void(VelmoRun&)> hands) { hands_ = std::move(hands); }
    // What went wrong in the runs so far; empty when nothing did.
    const QString& Error() const { return error_; }

    void Start(const QString& workingFolder, const QString& configFolder) override;

private:
    QString program_;
    QString plugins_;
    std::function<void(VelmoRun&)> hands_;
    QString error_;
};

} // namespace velmo
