#include "acceptance_test.h"

namespace velmo {
namespace {

// A key that two commands listen to works for neither.
class ShortcutsTest : public AcceptanceTest {
protected:
    void ExpectNoKeyTwice(const QString& window) {
        const QJsonArray shortcuts = Run().Shortcuts(window);
        EXPECT_FALSE(shortcuts.isEmpty()) << window.toStdString();
        for (qsizetype i = 0; i < shortcuts.size(); ++i) {
            for (qsizetype other = 0; other < i; ++other)
                EXPECT_FALSE(Clash(shortcuts[i], shortcuts[other]))
                    << window.toStdString() << ": " << Text(shortcuts[i]) << " and "
                    << Text(shortcuts[other]);
        }
    }

private:
    static bool Clash(const QJsonValue& a, const QJsonValue& b) {
        const QString scopeOfA = a["scope"].toString();
        const QString scopeOfB = b["scope"].toString();
        return a["key"] == b["key"] && (scopeOfA == scopeOfB || scopeOfA.isEmpty() || scopeOfB.isEmpty());
    }
    static std::string Text(const QJsonValue& shortcut) {
        return (shortcut["key"].toString() + " (" + shortcut["name"].toString() + ")").toStdString();
    }
};

TEST_F(ShortcutsTest, TheBrowser) {
    StartWith("VLM_MAIN");
    ExpectNoKeyTwice("VLM_MAIN");
}

TEST_F(ShortcutsTest, TheVariableWindow) {
    StartWith("VLM_MAIN");
    OpenEntry({"トルヴィク", "ボルト"}, "六角ボルト");
    ExpectNoKeyTwice("VLM_VEDT");
}

TEST_F(ShortcutsTest, TheTableEditor) {
    session_.Set("VlmMode", "3");
    session_.Set("VlmNxt", "1");
    session_.WriteExchangeLines("velmo.ret2", {session_.HomeDir() + "SMB\\BOLT\\HEX.TXT", "VELMO"});
    StartWith("VLM_VEDT");
    ExpectNoKeyTwice("VLM_VEDT");
}

} // namespace
} // namespace velmo
