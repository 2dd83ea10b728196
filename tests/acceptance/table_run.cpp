#include "table_run.h"

#include "platform/code_page.h"

namespace velmo {

void TableRunTest::SetUp() {
    AcceptanceTest::SetUp();
    session_.Set("VlmMode", "3");
    session_.Set("VlmNxt", "1");
}

void TableRunTest::OpenTable(const QString& symbol) {
    session_.WriteExchangeLines("velmo.ret2", {Symbol(symbol + ".TXT"), "VELMO"});
    StartWith("VLM_VEDT");
}

void TableRunTest::WriteColumn(const QStringList& values) {
    QStringList lines{"", "1", "1", "ｺﾒﾝﾄ", "10", "0", "呼び", QString::number(values.size())};
    session_.WriteHomeLines(tableFile_, lines + values);
}

QStringList TableRunTest::TableFile() {
    QStringList lines = CodePageDecoder().Decode(session_.ReadHome(tableFile_)).split("\r\n");
    EXPECT_EQ(lines.takeLast(), QString());
    return lines;
}

TableRunTest::Place TableRunTest::Current() {
    const QJsonArray current = Run().View("Vedt_FlexGrid")["current"].toArray();
    return current.isEmpty() ? Place(0, 0) : Place(current[0].toInt() + 1, current[1].toInt() + 1);
}

QStringList TableRunTest::Headers() {
    QStringList texts;
    const QJsonArray headers = Run().View("Vedt_FlexGrid")["columnHeaders"].toArray();
    for (const QJsonValue header : headers)
        texts.append(header.toString());
    return texts;
}

QString TableRunTest::Selected() {
    const QJsonArray cells = Run().View("Vedt_FlexGrid")["selection"].toArray();
    const auto place = [](const QJsonValue& cell) {
        return QString("%1,%2").arg(cell[0].toInt() + 1).arg(cell[1].toInt() + 1);
    };
    return cells.isEmpty() ? QString() : place(cells.first()) + " - " + place(cells.last());
}

void TableRunTest::ExpectEditing(Place place, const QString& text) {
    ASSERT_TRUE(IsEditing());
    EXPECT_EQ(Run().Text("CurEdit"), text);
    EXPECT_EQ(Run().Focus(), QString("CurEdit"));
    const bool header = place.first == 0;
    const Item cell = header ? Item::Cell(0, place.second - 1) : CellOf(place);
    const QJsonArray below = Run().Describe("Vedt_FlexGrid", cell)["rect"].toArray();
    const QJsonArray over = Run().Property("CurEdit", "geometry").toArray();
    // Below the header a line of the grid belongs to no cell.
    EXPECT_EQ(over[2].toInt(), below[2].toInt() + (header ? 1 : 0));
    EXPECT_EQ(over[0], below[0]);
    EXPECT_EQ(over[1], header ? QJsonValue(0) : below[1]);
    if (!header) {
        EXPECT_EQ(over[3], below[3]);
        EXPECT_EQ(Current(), place);
    }
}

void TableRunTest::ExpectCurrent(Place place) {
    EXPECT_EQ(Current(), place);
    EXPECT_FALSE(IsEditing());
    EXPECT_EQ(Run().Focus(), QString("Vedt_FlexGrid"));
}

void TableRunTest::SelectBlock(Place first, Place last) {
    Click(first);
    Run().ShiftClick("Vedt_FlexGrid", CellOf(last));
}

void TableRunTest::Enter(Place place, const QString& text) {
    Click(place);
    Run().Type(text);
    Run().Press("Return");
}

void TableRunTest::OpenColumnPopUp(int column) {
    Run().RightClickColumnHeader("Vedt_FlexGrid", column - 1);
    Run().WaitForWindow("VedtHdrPop");
}

void TableRunTest::OpenRowPopUp(int row) {
    Run().RightClickRowHeader("Vedt_FlexGrid", row - 1);
    Run().WaitForWindow("VedtHdrPop");
}

QStringList TableRunTest::PopUpEntries() {
    QStringList entries;
    for (const char* name : {"Add", "Ins", "Cpy", "Del", "Aft", "Bef", "Ren"}) {
        const QJsonObject entry = Run().Action(QString("VedtHdrPop") + name);
        const QString text = entry["text"].toString();
        if (entry["shown"].toBool())
            entries.append(entry["enabled"].toBool() ? text : '(' + text + ')');
    }
    return entries;
}

void TableRunTest::ChooseOnColumn(int column, const QString& entry) {
    OpenColumnPopUp(column);
    Run().ClickAction(entry);
}

void TableRunTest::ChooseOnRow(int row, const QString& entry) {
    OpenRowPopUp(row);
    Run().ClickAction(entry);
}

QStringList TableRunTest::ColumnsOfVariables() {
    QStringList columns;
    const QList<QStringList> rows =
        session_.QueryExchange("VELMONOW.mdb", "SELECT ValDis FROM NowTable ORDER BY ValNum");
    for (const QStringList& row : rows)
        columns.append(row);
    return columns;
}

bool TableRunTest::IsChanged() {
    const QString panel = Run().Text("VedtChangedPanel");
    EXPECT_TRUE(panel == "変更あり" || panel == "変更なし") << panel.toStdString();
    return panel == "変更あり";
}

void TableRunTest::Confirm() {
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
}

} // namespace velmo
