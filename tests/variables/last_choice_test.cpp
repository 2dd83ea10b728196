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

TEST_F(LastChoiceTest, ARowThatIsNoNumberIsAnErrorNamingTheKey) {
    Remember();
    settings.Save(keys::TBLLast, "abc");
    const RuntimeError error = ErrorOf([this] { Restore(); });
    EXPECT_EQ(error.Number(), ErrorNumber::TypeMismatch);
    EXPECT_EQ(error.Field(), keys::TBLLast);
    settings.Save(keys::TBLLast, "40000");
    EXPECT_EQ(ErrorOf([this] { Restore(); }).Number(), ErrorNumber::Overflow);
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
