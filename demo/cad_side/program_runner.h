#pragma once

#include <QObject>
#include <QProcess>

namespace velmo {

// Runs VELMO2 for the CAD side.
class ProgramRunner : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    // Starts the program in a folder, with its settings store below configFolder (native paths). Finished or
    // Failed follows, from the event loop or at once.
    virtual void Start(const QString& workingFolder, const QString& configFolder) = 0;

Q_SIGNALS:
    void Finished(int exitStatus);
    // The program could not be started or has crashed.
    void Failed(const QString& text);
};

// Runs it as a process of its own, without waiting for it.
class ProcessRunner : public ProgramRunner {
    Q_OBJECT

public:
    explicit ProcessRunner(QString program, QObject* parent = nullptr);

    void Start(const QString& workingFolder, const QString& configFolder) override;

private:
    QString program_;
    QProcess process_;
};

} // namespace velmo
