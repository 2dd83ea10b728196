#include "cad_side/cad_window.h"

#include "cad_side/answer_panel.h"
#include "cad_side/drawing_view.h"
#include "cad_side/measure_panel.h"
#include "cad_side/symbol_drawing.h"
#include "platform/runtime_error.h"

#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace velmo {

CadWindow::CadWindow(CadConversation& conversation, QWidget* parent)
    : QWidget(parent),
      conversation_(conversation),
      view_(new DrawingView(this)),
      status_(new QLabel(this)),
      measure_(new MeasurePanel(this)),
      answer_(new AnswerPanel(this)),
      record_(new QPlainTextEdit(this)) {
    setWindowTitle(QStringLiteral("CAD側の見本"));
    resize(1180, 760);
    view_->setObjectName(QStringLiteral("drawing"));
    view_->SetHint(QStringLiteral("「シンボルを選ぶ」を押すと VELMO2 が開きます。\n"
                                  "選んだシンボルが、決めた寸法でここに描かれます。\n\n"
                                  "要求を設定に書く → VELMO2 を起動 → 回答ファイルを読む → 作図"));
    status_->setObjectName(QStringLiteral("status"));
    status_->setTextFormat(Qt::PlainText);
    status_->setContentsMargins(10, 6, 10, 6);
    QFont bold = status_->font();
    bold.setBold(true);
    status_->setFont(bold);

    auto* drawing = new QVBoxLayout;
    drawing->setSpacing(0);
    drawing->addWidget(view_, 1);
    drawing->addWidget(status_);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 8, 0);
    layout->addLayout(drawing, 1);
    layout->addWidget(BuildSidePanel());
    Connect();
    ShowState();
    SetStatus(QStringLiteral("シンボルを選んでください。"));
}

QPushButton* CadWindow::AddCommand(QLayout& layout, const QString& text, const QString& explanation,
                                   const CadRequest& request) {
    auto* button = new QPushButton(text);
    button->setToolTip(explanation);
    connect(button, &QPushButton::clicked, this, [this, request] { conversation_.Ask(request); });
    layout.addWidget(button);
    auto* small = new QLabel(explanation);
    small->setForegroundRole(QPalette::PlaceholderText);
    small->setIndent(4);
    layout.addWidget(small);
    return button;
}

QWidget* CadWindow::BuildCommands() {
    auto* commands = new QGroupBox(QStringLiteral("VELMO2 を呼び出す"));
    auto* layout = new QVBoxLayout(commands);
    layout->setSpacing(3);
    auto* choose = AddCommand(*layout, QStringLiteral("シンボルを選ぶ"),
                              QStringLiteral("ライブラリから選ぶ (VlmMode=2, VlmNxt=0)"),
                              {CadRunMode::Choose, false, std::nullopt});
    choose->setObjectName(QStringLiteral("chooseSymbol"));
    choose->setDefault(true);
    reopen_ = AddCommand(*layout, QStringLiteral("もう一度開く"),
                         QStringLiteral("前のシンボルの寸法を変える (VlmNxt=1)"),
                         {CadRunMode::Choose, true, std::nullopt});
    reopen_->setObjectName(QStringLiteral("reopenSymbol"));
    auto* edit = AddCommand(*layout, QStringLiteral("テーブルを編集"),
                            QStringLiteral("寸法テーブルを直す (VlmMode=3)"),
                            {CadRunMode::EditTables, false, std::nullopt});
    edit->setObjectName(QStringLiteral("editTables"));
    return commands;
}

QWidget* CadWindow::BuildSidePanel() {
    auto* panel = new QWidget;
    panel->setFixedWidth(340);
    commands_ = BuildCommands();
    record_->setObjectName(QStringLiteral("record"));
    record_->setReadOnly(true);
    QFont font = record_->font();
    font.setPointSizeF(font.pointSizeF() * 0.9);
    record_->setFont(font);
    auto* recordBox = new QGroupBox(QStringLiteral("受け渡しの記録 (設定とファイル)"));
    (new QVBoxLayout(recordBox))->addWidget(record_);

    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(8, 8, 0, 8);
    layout->addWidget(commands_);
    layout->addWidget(measure_);
    layout->addWidget(answer_, 3);
    layout->addWidget(recordBox, 2);
    return panel;
}

void CadWindow::Connect() {
    connect(&conversation_, &CadConversation::StateChanged, this, &CadWindow::ShowState);
    connect(&conversation_, &CadConversation::Answered, this, &CadWindow::ShowAnswer);
    connect(&conversation_, &CadConversation::ClosedUnanswered, this,
            [this] { SetStatus(QStringLiteral("VELMO2 は閉じられました。新しい回答はありません。")); });
    connect(&conversation_, &CadConversation::Failed, this, &CadWindow::SetStatus);
    connect(&conversation_, &CadConversation::Logged, record_, &QPlainTextEdit::appendPlainText);
    connect(view_, &DrawingView::Measured, this, [this](double distance) {
        measure_->SetDistance(distance);
        SetStatus(QStringLiteral("%1 mm です。「この距離で続ける」で VELMO2 に戻ります。").arg(distance));
    });
    connect(measure_, &MeasurePanel::DistanceGiven, &conversation_, &CadConversation::ReturnDistance);
}

void CadWindow::ShowState() {
    const auto state = conversation_.CurrentState();
    const bool isMeasuring = state == CadConversation::State::Measuring;
    commands_->setEnabled(state != CadConversation::State::Running);
    reopen_->setEnabled(conversation_.CanReopen());
    measure_->setVisible(isMeasuring);
    if (isMeasuring) {
        measure_->Begin(conversation_.MeasuredLabel());
        view_->StartMeasuring();
    } else {
        view_->StopMeasuring();
    }
    if (state == CadConversation::State::Running)
        SetStatus(QStringLiteral("VELMO2 が開いています。終わるのを待っています..."));
}

void CadWindow::ShowAnswer(const CadAnswer& answer) {
    reopen_->setEnabled(conversation_.CanReopen());
    answer_->ShowAnswer(answer);
    if (answer.kind == AnswerKind::NoSelection) {
        SetStatus(QStringLiteral("シンボルは選ばれませんでした。図面はそのままです。"));
        return;
    }
    // Table editing answers with the variables' names.
    const bool hasValues = std::ranges::any_of(answer.variables, &CadVariable::HasValue);
    SetStatus(conversation_.CurrentState() == CadConversation::State::Measuring
                  ? QStringLiteral("図面の 2 点をクリックしてください。")
              : hasValues ? QStringLiteral("回答の寸法で描きました。")
                          : QStringLiteral("回答に寸法はありません。定義の初期値で描きました。"));
    ShowSymbol(answer);
}

void CadWindow::ShowSymbol(const CadAnswer& answer) {
    try {
        const Drawing drawing = DrawAnswer(answer);
        if (drawing.primitives.empty())
            view_->SetHint(QStringLiteral("このシンボルには図形がありません。"));
        view_->ShowDrawing(drawing);
    } catch (const RuntimeError& error) {
        view_->SetHint(ErrorText(error));
        view_->ShowDrawing({});
        SetStatus(QStringLiteral("この値では描けません。"));
    }
}

void CadWindow::SetStatus(const QString& text) {
    status_->setText(text);
}

void CadWindow::closeEvent(QCloseEvent* event) {
    // The program would lose the CAD side that waits for it.
    if (conversation_.CurrentState() == CadConversation::State::Running) {
        SetStatus(QStringLiteral("先に VELMO2 の窓を閉じてください。"));
        event->ignore();
        return;
    }
    event->accept();
}

} // namespace velmo
