#pragma once

#include "acceptance_test.h"

namespace velmo {

// Runs in which the user maintains the system library. Its categories (with their IDs) are トルヴィク (1),
// below it ボルト (2) and 座金 (3), below that 大形 (4); its entries 六角ボルト (1), アイボルト (2) and 記号
// (3) of ボルト and 平座金 (4) of 大形.
class LibraryRunTest : public AcceptanceTest {
protected:
    // Makes the library in a run of its own, and changes it as any other program could.
    void MakeLibrary(const QString& statements = {});
    // Statements on the library, once the program is done with what was last done in it.
    void Execute(const QString& statements);

    // All rows, once the program is done with what was last done in it: "4|3|大形|SMB\WASH\LARGE.SLD" (ID,
    // parent, name, slide) and "4|4|平座金|SMB\...TXT|SMB\...SLD" (ID, category, name, file, slide).
    QStringList Categories();
    QStringList Entries();

    // Opens the categories above the one that the path leads to.
    void Unfold(const QStringList& path, const QString& tree = "VlmTreeView");
    // Opens the pop-up over a category, an entry or the empty part of the list.
    void OpenPopUpOnCategory(const QStringList& path);
    void OpenPopUpOnEntry(const QString& entry);
    void OpenPopUpOnEmptyPart();
    // The same, and clicks one of its entries.
    void ChooseOnCategory(const QStringList& path, const QString& entry);
    void ChooseOnEntry(const QString& name, const QString& entry);
    void ChooseOnEmptyPart(const QString& entry);
    // The pop-up is closed without choosing anything.
    void LeavePopUp();

    // The texts on the way to the selected category, " > " between them; empty when none is selected.
    QString SelectedCategory();
    // The selected entry's text; empty when none is selected.
    QString SelectedEntry();
    QStringList ListedEntries() { return Run().Column("VlmPdfList", 0); }
    QString Panel(int panel) { return Run().Panels("VlmStatusBar").value(panel); }
    QString Title(const QString& window) { return Run().Window(window)["title"].toString(); }

    // Types a text over what a box holds; an empty one clears it.
    void Fill(const QString& box, const QString& text);
    // The editor for a new or an old row, opened from the pop-up.
    void AddCategoryBelow(const QStringList& path);
    void EditCategory(const QStringList& path);
    void AddEntry(const QStringList& category);
    void EditEntry(const QStringList& category, const QString& entry);
    // OK of the editor, after which it is closed.
    void ConfirmEditor();

    // A message with one button and the program's title, answered.
    void ExpectRefusal(const QString& text);
    // A question with Yes and No, which stays open.
    void ExpectQuestion(const QString& text, const QString& title);

    const QString library_ = "velmo2.mdb";
    const QStringList root_ = {"トルヴィク"};
    const QStringList bolts_ = {"トルヴィク", "ボルト"};
    const QStringList washers_ = {"トルヴィク", "座金"};
    const QStringList large_ = {"トルヴィク", "座金", "大形"};
    // What the library holds before anybody changes it.
    const QStringList firstCategories_ = {R"(1|0|トルヴィク|)", R"(2|1|ボルト|SMB\BOLT\BOLT.SLD)",
                                          R"(3|1|座金|SMB\WASH\WASH.SLD)", R"(4|3|大形|SMB\WASH\LARGE.SLD)"};
    const QStringList firstEntries_ = {R"(1|2|六角ボルト|SMB\BOLT\HEX.TXT|SMB\BOLT\HEX.SLD)",
                                       R"(2|2|アイボルト|SMB\BOLT\EYE.TXT|SMB\BOLT\EYE.SLD)",
                                       R"(3|2|記号|SMB\BOLT\MARK.TXT|SMB\BOLT\MARK.SLD)",
                                       R"(4|4|平座金|SMB\WASH\WASHER.TXT|SMB\WASH\WASHER.SLD)"};

private:
    void AwaitIdle();
    QStringList Rows(const QString& query);
};

} // namespace velmo
