#include "startup/settings_keys.h"
#include "symbol_sample.h"
#include "variables/last_choice.h"

namespace velmo {
namespace {

namespace keys = settings_keys;

class LastChoiceTest : public testing::Test {
protected:
    LastChoiceTest() : settings(symbol.folder.Path(QStringLiteral("Velmo2.ini")).replace(u'\\', u'/')) {
        symbol.Define({QStringLiteral("V1=PRO(\"A\",1)"), QStringLiteral("V2=PRO(\"B\",2)"),
                       QStringLiteral("V3=PRO(\"C\",3)")});
        symbol.Load();
    }
    LastChoice Restore() { return RestoreLastChoice(symbol.state, settings, symbol.variables); }
    void Remember() {
        settings.Save(keys::LastPDF, symbol.state.SymbolFile);
        settings.Save(keys::TBLLast, 4);
        settings.Save("SmbTbl1", "10");
        settings.Save("SmbTbl3", "30");
    }

    SymbolSample symbol;
    SettingsStore settings;
    QString other_ = QStringLiteral("other");
};

TEST_F(LastChoiceTest, TheSameSymbolGetsItsValuesBack) {
    Remember();
    EXPECT_EQ(Restore().tableRow, 4);
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"10", "2", "30"})) << "an empty value is none";
}

TEST_F(LastChoiceTest, AnotherSymbolKeepsItsOwn) {
    Remember();
    settings.Save(keys::LastPDF, symbol.state.SymbolFile + u'x');
    EXPECT_EQ(Restore().tableRow, 1);
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"1", "2", "3"}));
}

TEST_F(LastChoiceTest, NothingWasConfirmedYet) {
    EXPECT_EQ(Restore().tableRow, 1);
    symbol.state.SymbolFile = keys::NoPath + u'x';
    EXPECT_EQ(Restore().tableRow, 1);
}

TEST_F(LastChoiceTest, EachLibraryHasItsOwn) {
    Remember();
    symbol.state.UserLibrary = true;
    EXPECT_EQ(Restore().tableRow, 1);
    settings.Save(keys::UsrLastPDF, symbol.state.SymbolFile);
    settings.Save("VlmTbl2", "5");
    EXPECT_EQ(Restore().tableRow, 1) << "the default row";
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"1", "5", "3"}));
    settings.Save(keys::UsrTBLLast, 2);
    EXPECT_EQ(Restore().tableRow, 2);
}

TEST_F(LastChoiceTest, WhenTheTableIsEditedOnlyTheRowComesBack) {
    Remember();
    symbol.state.RunMode = run_mode::UserLibrary;
    EXPECT_EQ(Restore().tableRow, 4);
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"1", "2", "3"}));
}

TEST_F(LastChoiceTest, AMeasuredDistanceGoesToItsRow) {
    Remember();
    symbol.state.RunMode = run_mode::ReturnFromMeasure;
    settings.Save(keys::DistNo, 3);
    settings.Save(keys::VlmDist, "12.5");
    EXPECT_EQ(Restore().variableRow, 3);
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"10", "2", "12.5"}));
}

TEST_F(LastChoiceTest, ADistanceThatIsNoneLeavesTheValue) {
    Remember();
    symbol.state.RunMode = run_mode::ReturnFromMeasure;
    settings.Save(keys::DistNo, 3);
    for (const QString& distance :
         {QStringLiteral("0"), QStringLiteral("-3"), QStringLiteral("abc"), QString()}) {
        settings.Save(keys::VlmDist, distance);
        EXPECT_EQ(Restore().variableRow, 3);
        EXPECT_EQ(symbol.CurrentValues(), (QStringList{"10", "2", "30"}));
    }
}

TEST_F(LastChoiceTest, ADistanceForARowThatIsNotThereIsPassedOver) {
    Remember();
    symbol.state.RunMode = run_mode::ReturnFromMeasure;
    settings.Save(keys::VlmDist, "12.5");
    for (const int row : {0, -1, 4, 500}) {
        settings.Save(keys::DistNo, row);
        EXPECT_EQ(Restore().variableRow, 1);
        EXPECT_EQ(symbol.CurrentValues(), (QStringList{"10", "2", "30"}));
    }
}

TEST_F(LastChoiceTest, OnlyAReturnFromMeasuringTakesTheDistance) {
    Remember();
    settings.Save(keys::DistNo, 3);
    settings.Save(keys::VlmDist, "12.5");
    EXPECT_EQ(Restore().variableRow, 1);
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"10", "2", "30"}));
}

TEST_F(LastChoiceTest, ARowThatIsNoNumberIsTheFirst) {
    Remember();
    symbol.state.RunMode = run_mode::ReturnFromMeasure;
    settings.Save(keys::VlmDist, "12.5");
    for (const QString& row : {QStringLiteral("abc"), QStringLiteral("40000"), QString()}) {
        settings.Save(keys::TBLLast, row);
        settings.Save(keys::DistNo, row);
        const LastChoice choice = Restore();
        EXPECT_EQ(choice.tableRow, 1);
        EXPECT_EQ(choice.variableRow, 1);
        EXPECT_EQ(symbol.CurrentValues(), (QStringList{"12.5", "2", "30"}));
    }
}

TEST_F(LastChoiceTest, ValuesOfAnotherSymbolDoNotComeBack) {
    Remember();
    settings.Save(keys::SmbTblOf, symbol.state.SymbolFile + u'x');
    EXPECT_EQ(Restore().tableRow, 4);
    EXPECT_FALSE(Restore().valuesRestored);
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"1", "2", "3"}));
    settings.Save(keys::SmbTblOf, QString());
    EXPECT_FALSE(Restore().valuesRestored) << "they were names";
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"1", "2", "3"}));
    settings.Save(keys::VlmTblOf, symbol.state.SymbolFile + u'x');
    settings.Save(keys::SmbTblOf, symbol.state.SymbolFile);
    EXPECT_TRUE(Restore().valuesRestored);
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"10", "2", "30"}));
}

TEST_F(LastChoiceTest, WithoutOneOfAnotherADistanceStillComes) {
    Remember();
    symbol.state.RunMode = run_mode::ReturnFromMeasure;
    settings.Save(keys::SmbTblOf, QString());
    settings.Save(keys::DistNo, 2);
    settings.Save(keys::VlmDist, "12.5");
    EXPECT_EQ(Restore().variableRow, 2);
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"1", "12.5", "3"}));
}

TEST_F(LastChoiceTest, WhatIsSavedComesBackToItsSymbolAlone) {
    for (const bool userLibrary : {false, true}) {
        symbol.state.UserLibrary = userLibrary;
        for (const std::int16_t mode :
             {run_mode::VariableInput, run_mode::ReturnFromMeasure, run_mode::UserLibrary}) {
            symbol.state.RunMode = mode;
            symbol.variables.SetText(2, 1, u"x");
            SaveCurrentValues(symbol.state, settings, symbol.variables);
            SaveLastChoice(symbol.state, settings);
            // Read by whoever opens the symbol next.
            settings.Flush();
            symbol.variables.SetText(2, 1, u"2");
            symbol.state.RunMode = run_mode::VariableInput;
            EXPECT_EQ(Restore().valuesRestored, mode != run_mode::UserLibrary);
            EXPECT_EQ(symbol.CurrentValues()[1],
                      mode == run_mode::UserLibrary ? QStringLiteral("2") : QStringLiteral("x"));
            // The browser writes the symbol that it opened, whatever became of it.
            settings.Save(keys::LastSymbol(userLibrary), QStringLiteral("other"));
            symbol.state.SymbolFile.swap(other_);
            symbol.variables.SetText(2, 1, u"2");
            EXPECT_FALSE(Restore().valuesRestored);
            EXPECT_EQ(symbol.CurrentValues()[1], QStringLiteral("2"));
            symbol.state.SymbolFile.swap(other_);
        }
    }
}

TEST_F(LastChoiceTest, IsSavedPerLibrary) {
    symbol.state.TableLast = 7;
    symbol.variables.SetText(2, 1, u"x");
    SaveCurrentValues(symbol.state, settings, symbol.variables);
    SaveLastChoice(symbol.state, settings);
    EXPECT_EQ(settings.Get("SmbTbl1"), QStringLiteral("1"));
    EXPECT_EQ(settings.Get("SmbTbl2"), QStringLiteral("x"));
    EXPECT_EQ(settings.Get("SmbTbl3"), QStringLiteral("3"));
    EXPECT_EQ(settings.Get("SmbTbl4", "none"), QStringLiteral("none"));
    EXPECT_EQ(settings.Get(keys::SmbTblOf), symbol.state.SymbolFile);
    EXPECT_EQ(settings.Get(keys::VlmTblOf, "none"), QStringLiteral("none"));
    EXPECT_EQ(settings.Get(keys::TBLLast), QStringLiteral("7"));
    EXPECT_EQ(settings.Get(keys::LastPDF), symbol.state.SymbolFile);
    EXPECT_EQ(settings.Get(keys::UsrLastPDF, "none"), QStringLiteral("none"));

    symbol.state.UserLibrary = true;
    SaveCurrentValues(symbol.state, settings, symbol.variables);
    SaveLastChoice(symbol.state, settings);
    EXPECT_EQ(settings.Get("VlmTbl2"), QStringLiteral("x"));
    EXPECT_EQ(settings.Get(keys::UsrTBLLast), QStringLiteral("7"));
    EXPECT_EQ(settings.Get(keys::UsrLastPDF), symbol.state.SymbolFile);
}

} // namespace
} // namespace velmo
