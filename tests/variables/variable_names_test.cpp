#include "support/failing_disk.h"
#include "support/failure.h"
#include "symbol_sample.h"
#include "variables/variable_names.h"

#include <QDir>

namespace velmo {
namespace {

// NowTable names variable 1 幅, 2 Hh and 4 an empty text.
class VariableNamesTest : public testing::Test {
protected:
    VariableNamesTest() {
        symbol.Define({QStringLiteral("V1=PRO(\"幅\",1)"), "V2=PRO(\"Hh\",2)", "V4=PRO(\"\",3)"});
        symbol.Load();
    }

    void Write() {
        WriteVariableNames(symbol.work, path, [this](const QString& text) { told << text; });
    }
    // What becomes of a file.
    QByteArray Written(const QByteArray& bytes) {
        symbol.folder.Write("P.TXT", bytes);
        Write();
        EXPECT_EQ(told, QStringList());
        EXPECT_FALSE(symbol.folder.Exists("P.TXT2"));
        return symbol.folder.Read("P.TXT");
    }
    RuntimeError ErrorOn(const QByteArray& bytes) {
        symbol.folder.Write("P.TXT", bytes);
        RuntimeError error = ErrorOf([this] { Write(); });
        EXPECT_EQ(symbol.folder.Read("P.TXT"), bytes);
        EXPECT_FALSE(symbol.folder.Exists("P.TXT2"));
        return error;
    }
    void Rename(const QString& name) const {
        Database database = symbol.work.Open(Database::Access::Write);
        RecordSet variables = SelectVariables(database);
        FindVariableRow(variables, 1);
        variables.Edit();
        variables.Set(u"ValName", name);
        variables.Update();
    }

    SymbolSample symbol;
    const QString path = symbol.folder.Path("P.TXT");
    QStringList told;
};

TEST_F(VariableNamesTest, EachLineGetsTheNameOfTheVariableOfItsNumber) {
    EXPECT_EQ(Written("$VAR\r\nV1 = 5+PRO(\"old\",100) * x\r\nV7=PRO(\"\",\"q\")\r\n$GEO\r\nL 1 2\r\n"),
              "$VAR\r\nV1 = 5+PRO(\"\x95\x9D\",100) * x\r\nV7=PRO(\"Hh\",\"q\")\r\n$GEO\r\nL 1 2\r\n");
}

TEST_F(VariableNamesTest, ALineWithoutAVariableOfItsNumberIsLeftOut) {
    EXPECT_EQ(
        Written("$VAR\nV1=PRO(\"a\",1)\nV2=PRO(\"b\",2)\nV3=PRO(\"c\",3)\nV4=PRO(\"d\",4)\n* no name\n"),
        "$VAR\r\nV1=PRO(\"\x95\x9D\",1)\r\nV2=PRO(\"Hh\",2)\r\nV4=PRO(\"\",4)\r\n$GEO\r\n");
}

TEST_F(VariableNamesTest, TheSectionEndsWithGeometryEvenWhereTheFileDoesNot) {
    EXPECT_EQ(Written("$VAR\r\nV1=PRO(\"a\",1)"), "$VAR\r\nV1=PRO(\"\x95\x9D\",1)\r\n$GEO\r\n");
    EXPECT_EQ(Written("$VAR"), "$VAR\r\n$GEO\r\n");
    EXPECT_EQ(Written("$VAR\r\n$GEO\r\n"), "$VAR\r\n$GEO\r\n");
}

TEST_F(VariableNamesTest, AFirstLineThatOpensNoSectionIsDroppedAndNothingElse) {
    EXPECT_EQ(Written("* M10\r\n$VAR\r\nV1=PRO(\"a\",1)\r\n"), "$VAR\r\nV1=PRO(\"a\",1)\r\n");
    EXPECT_EQ(Written("$VAR \r\nx"), "x\r\n");
    EXPECT_EQ(Written("$var\r\n"), "");
}

TEST_F(VariableNamesTest, WhatFollowsTheSectionIsCopied) {
    const QByteArray geometry = "V1=PRO(\"a\",1)\r\n$VAR\r\n$GEO\r\n\r\n\x83\xFD\xA0 \x87\x9A\r\n";
    EXPECT_EQ(Written("$VAR\r\n$GEO\r\n" + geometry), "$VAR\r\n$GEO\r\n" + geometry);
}

TEST_F(VariableNamesTest, TheRestOfALineKeepsItsBytes) {
    EXPECT_EQ(Written("$VAR\r\n\"\x87\x9A\" \xA0 \x83\"PRO(\"\x83\xFD\",\xFD)\"\r\n"),
              "$VAR\r\n\"\x87\x9A\" \xA0 \x83\"PRO(\"\x95\x9D\",\xFD)\"\r\n$GEO\r\n");
}

TEST_F(VariableNamesTest, LettersInsideTwoByteCharactersAreNoCall) {
    // The second byte of the character is the P of what looks like a call.
    EXPECT_EQ(Written("$VAR\r\n\x83PRO(\"no\") PRO(\"yes\")\r\n"),
              "$VAR\r\n\x83PRO(\"no\") PRO(\"\x95\x9D\")\r\n$GEO\r\n");
}

TEST_F(VariableNamesTest, ALineWithoutANameInQuotesIsAnError) {
    for (const char* line : {"V2=PRO(\"b,2)", "V2=PRO(b,\"2\")", "* \"comment\"", "", "V2=pro(\"b\")"}) {
        const RuntimeError error = ErrorOn(QByteArray("$VAR\r\nV1=PRO(\"a\",1)\r\n") + line + "\r\n$GEO\r\n");
        EXPECT_EQ(error.Number(), ErrorNumber::InvalidArgument);
        EXPECT_EQ(error.File(), path);
        EXPECT_EQ(error.Line(), 3);
    }
}

TEST_F(VariableNamesTest, ANameThatTheFileCannotHoldIsAnError) {
    for (const QString& name : {QStringLiteral("é"), QStringLiteral("a\"b"), QStringLiteral("a\nb")}) {
        Rename(name);
        const RuntimeError error = ErrorOn("$VAR\r\nV1=PRO(\"a\",1)\r\n");
        EXPECT_EQ(error.Number(), ErrorNumber::InvalidArgument);
        EXPECT_EQ(error.File(), path);
        EXPECT_EQ(error.Line(), 2);
        EXPECT_FALSE(error.Detail().isEmpty());
    }
}

TEST_F(VariableNamesTest, AnEmptyFileIsAnError) {
    const RuntimeError error = ErrorOn("");
    EXPECT_EQ(error.Number(), ErrorNumber::InputPastEnd);
    EXPECT_EQ(error.File(), path);
}

TEST_F(VariableNamesTest, AMissingFileIsTold) {
    Write();
    EXPECT_EQ(told, QStringList{path + QStringLiteral("なし")});
    EXPECT_FALSE(symbol.folder.Exists("P.TXT"));
    EXPECT_FALSE(symbol.folder.Exists("P.TXT2"));
}

TEST_F(VariableNamesTest, WhatAKilledRunLeftIsOverwritten) {
    symbol.folder.Write("P.TXT2", "half of a much longer file");
    EXPECT_EQ(Written("$VAR\r\n$GEO\r\n"), "$VAR\r\n$GEO\r\n");
}

TEST_F(VariableNamesTest, AWorkFileThatCannotBeMadeIsAnErrorThatNamesIt) {
    symbol.folder.Write("P.TXT", "$VAR\r\n$GEO\r\n");
    symbol.folder.Write("P.TXT2\\x", "");
    const RuntimeError error = ErrorOf([this] { Write(); });
    EXPECT_EQ(error.Number(), ErrorNumber::PathFileAccess);
    EXPECT_EQ(error.File(), path + u'2');
    EXPECT_EQ(symbol.folder.Read("P.TXT"), "$VAR\r\n$GEO\r\n");
}

TEST_F(VariableNamesTest, AFullDiskLeavesTheFileAsItWas) {
    const QByteArray bytes = "$VAR\r\n$GEO\r\n" + QByteArray(100'000, 'x');
    const FailingDisk disk(200'000);
    EXPECT_TRUE(Written(bytes).endsWith("x\r\n"));
    const FailingDisk full(4096);
    symbol.state.TempDir = symbol.folder.Path();
    const QByteArray old = symbol.folder.Read("P.TXT");
    EXPECT_EQ(Failure([this] { Write(); }), ErrorNumber::DiskFull);
    EXPECT_EQ(symbol.folder.Read("P.TXT"), old);
    EXPECT_FALSE(symbol.folder.Exists("P.TXT2"));
}

} // namespace
} // namespace velmo
