#include "cad_side/answer_panel.h"

#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>

namespace velmo {
namespace {

// The part of a symbol's path that tells the user something.
QString BelowHome(const QString& symbolFile) {
    const qsizetype start = symbolFile.lastIndexOf(QStringLiteral("\\SMB\\"), -1, Qt::CaseInsensitive);
    return start < 0 ? symbolFile : symbolFile.mid(start + 1);
}

QString LibraryText(const CadAnswer& answer) {
    if (answer.kind != AnswerKind::Symbol)
        return QStringLiteral("-");
    const bool isUser = answer.libraryWord == u"VELMO";
    return QStringLiteral("%1 (%2)").arg(isUser ? QStringLiteral("ユーザーライブラリ")
                                                : QStringLiteral("システムライブラリ"),
                                         answer.libraryWord);
}

} // namespace

AnswerPanel::AnswerPanel(QWidget* parent)
    : QGroupBox(QStringLiteral("VELMO2 からの回答"), parent),
      symbol_(new QLabel(QStringLiteral("-"), this)),
      library_(new QLabel(QStringLiteral("-"), this)),
      variables_(new QTableWidget(0, 2, this)) {
    symbol_->setObjectName(QStringLiteral("answerSymbol"));
    symbol_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    library_->setObjectName(QStringLiteral("answerLibrary"));
    variables_->setObjectName(QStringLiteral("answerVariables"));
    variables_->setHorizontalHeaderLabels({QStringLiteral("変数"), QStringLiteral("値")});
    variables_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    variables_->verticalHeader()->hide();
    variables_->verticalHeader()->setDefaultSectionSize(24);
    variables_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    variables_->setSelectionMode(QAbstractItemView::NoSelection);
    variables_->setFocusPolicy(Qt::NoFocus);

    auto* labels = new QFormLayout;
    labels->addRow(QStringLiteral("シンボル"), symbol_);
    labels->addRow(QStringLiteral("ライブラリ"), library_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(labels);
    layout->addWidget(variables_);
}

void AnswerPanel::ShowAnswer(const CadAnswer& answer) {
    symbol_->setText(answer.kind == AnswerKind::NoSelection ? QStringLiteral("選択なし (NO SELECT)")
                                                            : BelowHome(answer.symbolFile));
    symbol_->setToolTip(answer.symbolFile);
    library_->setText(LibraryText(answer));
    variables_->setRowCount(static_cast<int>(answer.variables.size()));
    for (int row = 0; row < variables_->rowCount(); ++row) {
        const CadVariable& variable = answer.variables[static_cast<std::size_t>(row)];
        variables_->setItem(row, 0, new QTableWidgetItem(variable.label));
        variables_->setItem(row, 1, new QTableWidgetItem(variable.value));
    }
}

} // namespace velmo
