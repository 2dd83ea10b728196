#pragma once

#include "library_run.h"

namespace velmo {

// Runs with the tool that moves entries, their files and subcategories. The library has one more category,
// 部品 (5), with the entries ポンプ (5) and 弁 (6), whose files lie in the folder OLD; the folders NEW and
// NEW\DEEP are there to move them to.
class MoveRunTest : public LibraryRunTest {
protected:
    // Makes the library and starts the browser.
    void SetUp() override;

    void OpenTool(const QStringList& category);
    void Select(const QString& row) { Run().Click("SelList", Item::Named(row)); }
    QStringList SelectedRows();
    // A button of the tool, then a folder or category of the picker that it opens. What follows is not
    // waited for.
    void MoveTo(const QString& button, const QStringList& target);
    void MoveFilesTo(const QStringList& folder) { MoveTo("FilMovBtn", folder); }
    void MoveTheirCategoryTo(const QStringList& category) { MoveTo("FolDerMovBtn", category); }
    void AwaitToolClosed() { Run().WaitUntilClosed("Vlm_Tool"); }

    // The rows that were added to those of the small library.
    QStringList PartEntries() { return Entries().mid(4); }
    QString HomeFile(const QString& name) { return QString::fromUtf8(session_.ReadHome(name)); }
    // A path below the home folder as the folder picker spells folders.
    QString Spelled(const QString& folder, const QString& file) const {
        return session_.HomeDir().toUpper() + folder + file;
    }

    const QStringList parts_ = {"トルヴィク", "部品"};
    const QStringList newFolder_ = {"トルヴィク", "NEW"};
    const QStringList firstParts_ = {R"(5|5|ポンプ|OLD\PUMP.PDF|OLD\PUMP.SLD)",
                                     R"(6|5|弁|OLD\VALVE.PDF|OLD\VALVE.SLD)"};
};

} // namespace velmo
