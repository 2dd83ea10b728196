#include "demo_session.h"

namespace velmo {

DemoSession::DemoSession() {
    folder_.WriteLines(QStringLiteral("library\\SMB\\BOLT.TXT"),
                       {QStringLiteral("ボルト"), "$VAR", "V1=PRO(\"d\",10)", "V2=PRO(\"L\",40)", "$GEO",
                        "RECT 0 -d/2 L d/2", "DIM 0 -d/2 L -d/2 -8 \"L\""});
}

CadSession DemoSession::Session() const {
    const QString folder = folder_.Path().chopped(1);
    return {folder + QStringLiteral("/session"), folder + QStringLiteral("/library")};
}

void DemoSession::WriteExchange(const QString& name, const QStringList& lines) const {
    folder_.WriteLines(QStringLiteral("session\\exchange\\") + name, lines);
}

void DemoSession::WriteAnswer(const QString& length) const {
    WriteExchange(QStringLiteral("velmo.ret"), {"2", "V1(d)", "10", "V2(L)", length});
    WriteExchange(QStringLiteral("velmo.ret2"), {SymbolFile(), "TOLVIKS"});
}

QString DemoSession::Settings() const {
    return QString::fromUtf8(folder_.Read(QStringLiteral("session\\config\\Kestova2019\\Velmo2.ini")));
}

void DemoSession::ReplaceSetting(const QString& from, const QString& to) const {
    QString settings = Settings();
    folder_.Write(QStringLiteral("session\\config\\Kestova2019\\Velmo2.ini"),
                  settings.replace(from, to).toUtf8());
}

void FakeRunner::Start(const QString& /*workingFolder*/, const QString& /*configFolder*/) {
    ++starts;
    Q_EMIT Finished(program());
}

} // namespace velmo
