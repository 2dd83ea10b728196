#pragma once

#include "variables/table_search.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QToolButton;

namespace velmo {

// The slim bar in which a text is looked for in the table. It only asks; its owner searches and tells what
// came of it. Hidden until it is opened.
class FindBar : public QWidget {
    Q_OBJECT

public:
    enum class Outcome { Found, FoundBeyondEnd, NotFound };

    explicit FindBar(QWidget* parent = nullptr);

    // Shows the bar, ready for another text.
    void Open();
    // Asks for the next or previous place of the text; without a text the bar opens instead.
    void Repeat(SearchDirection direction);
    // What came of the last search.
    void ShowOutcome(Outcome outcome);

Q_SIGNALS:
    // The text is as typed and never empty.
    void SearchWanted(const QString& text, SearchDirection direction, SearchStart start);
    // The bar has gone; its owner says where the focus goes.
    void Closed();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QToolButton* MakeButton(const char* name, const char* icon, const QString& accessibleName,
                            const QString& toolTip);
    void Ask(SearchDirection direction, SearchStart start);
    void TakeTypedText();
    void Close();

    QLineEdit* text_;
    QToolButton* previous_;
    QToolButton* next_;
    QLabel* outcome_;
    // The way of the last search.
    SearchDirection direction_ = SearchDirection::Forward;
};

} // namespace velmo
