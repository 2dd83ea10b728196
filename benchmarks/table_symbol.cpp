#include "benchmarks/table_symbol.h"

namespace velmo::bench {

namespace {

QByteArray Definition(int variables) {
    QByteArray file = "$VAR\r\n";
    for (int i = 1; i <= variables; ++i)
        file += QStringLiteral("V%1=PRO(\"name%1\",%1.5)\r\n").arg(i).toLatin1();
    return file + "$GEO\r\n";
}

QByteArray TableFile(int columns, int rows, Nominals nominals) {
    QByteArray file = "\r\n" + QByteArray::number(columns) + "\r\n";
    for (int i = 1; i <= columns; ++i)
        file += QStringLiteral("%1\r\nV%2\r\n%3\r\n0\r\nname%1\r\n")
                    .arg(i)
                    .arg(i, 4, 10, QChar(u'0'))
                    .arg(Width)
                    .toLatin1();
    file += QByteArray::number(rows) + "\r\n";
    for (int row = 0; row < rows; ++row) {
        const int nominal = nominals == Nominals::Different ? row : nominals == Nominals::Alike ? 0 : row % 2;
        file += QByteArray::number(nominal).rightJustified(Width);
        for (int column = 1; column < columns; ++column)
            file += QByteArray::number(row * 37 + column * 1'000'003).rightJustified(Width);
        file += "\r\n";
    }
    return file;
}

} // namespace

Symbol::Symbol(int variables, int columns, int rows, Nominals nominals) {
    scratch_.Write("S.txt", Definition(variables));
    const QByteArray table = TableFile(columns, rows, nominals);
    tableBytes_ = table.size();
    scratch_.Write("S.PMN", table);
    scratch_.Write("velmo.ret2", scratch_.Path("S.txt").toUtf8() + "\r\nTOLVIKS\r\n");
    scratch_.Write("config/Kestova2019/Velmo2.ini",
                   "[Settings]\nVlmNxt=1\nVlmMode=2\nVlmHome=" + scratch_.Path().toUtf8() +
                       "\nVlmTemp=" + scratch_.Path().toUtf8() + "\n");
}

GlobalState Symbol::State(std::int16_t mode) const {
    GlobalState state;
    state.TempDir = scratch_.Path();
    state.SymbolFile = scratch_.Path("S.txt");
    state.RunMode = mode;
    return state;
}

} // namespace velmo::bench
