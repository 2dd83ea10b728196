#include "platform/text_folding.h"

#include <QStringList>
#include <gtest/gtest.h>

#include <tuple>

namespace velmo {
namespace {

constexpr int LastUnit = 0xFFFF;

TEST(TextFolding, CaseWidthAndKanaTypeDoNotMatter) {
    const QList<QStringList> alike{
        {"ﾎﾞﾙﾄ", "ボルト", "ぼると", "ホ゛ルト", "ﾎ゛ﾙﾄ", "ほ\u3099ると", "ホ\u3099ルト"},
        {"M10", "m10", "Ｍ１０", "ｍ10"},
        {"ﾊﾟｲﾌﾟ", "パイプ", "ぱいぷ", "ハ゜イフ゜"},
        {"ヴ", "ｳﾞ", "ゔ", "ウ゛"},
        {"ヷヸヹヺ", "わ゛ゐ゛ゑ゛を゛", "ﾜﾞヰ゛ヱ゛ｦﾞ"},
        {"ヽヾ", "ゝゞ", "ヽヽ゛"},
        {"ヵヶ", "ゕゖ"},
        {"ｷｰ", "キー", "きー"},
        {"ｧｨｩｪｫｬｭｮｯ", "ァィゥェォャュョッ", "ぁぃぅぇぉゃゅょっ"},
        {"六角　ﾅｯﾄ", "六角 ナット"},
        {"（Ａ－１）", "(a-1)", "（Ａ\u22121）"},
        {"1～2", "1~2", "1\u301C2"},
        {"Φ10", "φ10", "φ１０"},
        {"①㎜", "1MM"},
        {"ｱ･ｲ｡｢ｳ｣､", "ア・イ。「ウ」、"},
        {"ﾞ", "゛"},
        {"ÉCROU", "E\u0301crou", "écrou"},
    };
    for (const QStringList& texts : alike) {
        for (const QString& text : texts)
            EXPECT_EQ(FoldedForSearch(text), FoldedForSearch(texts.front())) << text.toStdString();
    }
}

TEST(TextFolding, IsLowerCaseNarrowAndHiragana) {
    EXPECT_EQ(FoldedForSearch(u"Ｍ１０－ﾎﾞﾙﾄ　ナット・キー 六角"), "m10-ぼると なっと・きー 六角");
}

TEST(TextFolding, OtherDifferencesStay) {
    const QStringList different{"ボルト", "ホルト", "ポルト", "ボルト ", "ボルド", "m10", "m1O", "m-10",
                                "キー",   "キイ",   "つ",     "っ",      "ー",     "-",   "×",   "x"};
    for (qsizetype i = 0; i < different.size(); ++i) {
        for (qsizetype other = 0; other < i; ++other)
            EXPECT_NE(FoldedForSearch(different[i]), FoldedForSearch(different[other]))
                << different[i].toStdString() << " and " << different[other].toStdString();
    }
}

TEST(TextFolding, NoCharacterVanishes) {
    EXPECT_TRUE(FoldedForSearch({}).isEmpty());
    for (int unit = 0; unit <= LastUnit; ++unit)
        ASSERT_FALSE(FoldedForSearch(QString(QChar(unit))).isEmpty()) << unit;
    EXPECT_EQ(FoldedForSearch(u"𠮷"), "𠮷");
}

TEST(TextFolding, AFoldedTextStaysAsItIs) {
    for (int unit = 0; unit <= LastUnit; ++unit) {
        const QString folded = FoldedForSearch(QString(QChar(unit)));
        ASSERT_EQ(FoldedForSearch(folded), folded) << unit;
    }
}

// A character beside one that takes Unicode's full rules is folded as it is beside none.
TEST(TextFolding, NeighboursDoNotMatter) {
    for (int unit = 0; unit <= LastUnit; ++unit) {
        const QString alone = FoldedForSearch(QString(QChar(unit)));
        ASSERT_EQ(FoldedForSearch(QStringLiteral("\u00E9") + QChar(u' ') + QChar(unit)).right(alone.size()),
                  alone)
            << unit;
    }
}

TEST(TextFolding, FindsWhatIsFolded) {
    using Case = std::tuple<QString, QString, bool>;
    const QString longText = QString(1000, u'Ａ') + QStringLiteral("ﾎﾞﾙﾄ");
    for (const auto& [text, needle, found] :
         {Case("六角ﾎﾞﾙﾄ M10", "ボルト", true), Case("六角ボルト", "ホ", false), Case("六角ﾎﾞﾙﾄ", "ﾎ", false),
          Case("M10", "ｍ1", true), Case("M10", "m100", false), Case("M10", "六", false),
          Case("㎜", "M", true), Case("1㎜", "mmm", false), Case("", "a", false), Case("", "", true),
          Case("a", "", true), Case("\u00E9", "", true), Case(longText, "ぼると", true),
          Case(longText, "ぼるとa", false), Case("ae\u0301", "e", false)})
        EXPECT_EQ(ContainsFolded(text, FoldedForSearch(needle)), found)
            << text.toStdString() << " has " << needle.toStdString();
}

TEST(TextFolding, FindsEveryCharacterInItself) {
    for (int unit = 0; unit <= LastUnit; ++unit) {
        const QString text{QChar(unit)};
        ASSERT_TRUE(ContainsFolded(QStringLiteral("12") + text, FoldedForSearch(text)) ||
                    QChar(unit).combiningClass() != 0)
            << unit;
    }
}

} // namespace
} // namespace velmo
