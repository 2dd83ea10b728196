#pragma once

#include "cad_side/cad_session.h"
#include "cad_side/program_runner.h"
#include "support/temp_folder.h"

#include <functional>

namespace velmo {

// A library home with one symbol, SMB\BOLT.TXT (variables d and L), and a session on a copy of it.
class DemoSession {
public:
    DemoSession();

    CadSession Session() const;
    const TempFolder& Folder() const { return folder_; }
    // The symbol as the program would name it.
    QString SymbolFile() const { return Session().Home() + QStringLiteral("\\SMB\\BOLT.TXT"); }

    void WriteExchange(const QString& name, const QStringList& lines) const;
    // velmo.ret2 and velmo.ret as after OK.
    void WriteAnswer(const QString& length) const;
    // The settings file as the program finds or leaves it.
    QString Settings() const;
    void ReplaceSetting(const QString& from, const QString& to) const;

private:
    TempFolder folder_;
};

// Does what a test says instead of starting a program.
class FakeRunner : public ProgramRunner {
    Q_OBJECT

public:
    // What the "program" does before it ends with an exit status.
    std::function<int()> program = [] { return 0; };
    int starts = 0;

    void Start(const QString& workingFolder, const QString& configFolder) override;
};

} // namespace velmo
