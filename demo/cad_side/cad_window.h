#pragma once

#include "cad_side/cad_conversation.h"

#include <QWidget>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace velmo {

class AnswerPanel;
class DrawingView;
class MeasurePanel;

// The stand-in for a CAD program: a drawing, the commands that start VELMO2, and what comes back from it.
class CadWindow : public QWidget {
    Q_OBJECT

public:
    explicit CadWindow(CadConversation& conversation, QWidget* parent = nullptr);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QPushButton* AddCommand(QLayout& layout, const QString& text, const QString& explanation,
                            const CadRequest& request);
    QWidget* BuildCommands();
    QWidget* BuildSidePanel();
    void Connect();
    void ShowState();
    void ShowAnswer(const CadAnswer& answer);
    void ShowSymbol(const CadAnswer& answer);
    void SetStatus(const QString& text);

    CadConversation& conversation_;
    DrawingView* view_;
    QLabel* status_;
    QWidget* commands_ = nullptr;
    QPushButton* reopen_ = nullptr;
    MeasurePanel* measure_;
    AnswerPanel* answer_;
    QPlainTextEdit* record_;
};

} // namespace velmo
