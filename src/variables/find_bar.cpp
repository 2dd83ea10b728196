#include "variables/find_bar.h"

#include "variables/variable_icons.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

#include <optional>

namespace velmo {

namespace {

// Pixels.
constexpr int TextWidth = 220;
constexpr int Gap = 2;
constexpr int OutcomeGap = 8;

enum class Action { Next, Previous, Close };

// What a key asks of the bar; with other modifiers it is the window's.
std::optional<Action> ActionFor(const QKeyEvent& key) {
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    const bool shift = modifiers == Qt::ShiftModifier;
    if (modifiers != Qt::NoModifier && !shift)
        return std::nullopt;
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F3:
        return shift ? Action::Previous : Action::Next;
    case Qt::Key_Escape:
        return shift ? std::nullopt : std::optional(Action::Close);
    default:
        return std::nullopt;
    }
}

bool IsEnter(const QKeyEvent& key) {
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

} // namespace

FindBar::FindBar(QWidget* parent) : QWidget(parent), text_(new QLineEdit(this)), outcome_(new QLabel(this)) {
    setObjectName(QStringLiteral("VedtFindBar"));
    text_->setObjectName(QStringLiteral("VedtFindText"));
    text_->setPlaceholderText(QStringLiteral("表を検索"));
    text_->setAccessibleName(QStringLiteral("表から検索する文字"));
    text_->setToolTip(QStringLiteral("大文字と小文字、全角と半角、ひらがなとカタカナは区別しません"));
    text_->setFixedWidth(TextWidth);
    previous_ = MakeButton("VedtFindPrevious", "find_previous", QStringLiteral("前を検索"),
                           QStringLiteral("前を検索 (Shift+F3)"));
    next_ =
        MakeButton("VedtFindNext", "find_next", QStringLiteral("次を検索"), QStringLiteral("次を検索 (F3)"));
    outcome_->setObjectName(QStringLiteral("VedtFindOutcome"));
    outcome_->setTextFormat(Qt::PlainText);
    outcome_->setIndent(OutcomeGap);
    // A narrow window cuts the words off rather than growing.
    outcome_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    QToolButton* close = MakeButton("VedtFindClose", "find_close", QStringLiteral("検索を閉じる"),
                                    QStringLiteral("検索を閉じます (Esc)"));

    auto* bar = new QHBoxLayout(this);
    bar->setContentsMargins(0, Gap, 0, Gap);
    bar->setSpacing(Gap);
    bar->addWidget(text_);
    bar->addWidget(previous_);
    bar->addWidget(next_);
    bar->addWidget(outcome_, 1);
    bar->addWidget(close);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFocusProxy(text_);

    connect(text_, &QLineEdit::textChanged, this, &FindBar::TakeTypedText);
    connect(previous_, &QToolButton::clicked, this,
            [this] { Ask(SearchDirection::Backward, SearchStart::BeyondCurrent); });
    connect(next_, &QToolButton::clicked, this,
            [this] { Ask(SearchDirection::Forward, SearchStart::BeyondCurrent); });
    connect(close, &QToolButton::clicked, this, &FindBar::Close);
    TakeTypedText();
    hide();
}

QToolButton* FindBar::MakeButton(const char* name, const char* icon, const QString& accessibleName,
                                 const QString& toolTip) {
    auto* button = new QToolButton(this);
    button->setObjectName(QLatin1String(name));
    button->setIcon(VariableIcon(icon));
    button->setAccessibleName(accessibleName);
    button->setToolTip(toolTip);
    button->setAutoRaise(true);
    // Reached by Tab; a click leaves the caret in the text.
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

void FindBar::Open() {
    outcome_->clear();
    show();
    text_->setFocus(Qt::ShortcutFocusReason);
    text_->selectAll();
}

void FindBar::Repeat(SearchDirection direction) {
    if (text_->text().isEmpty())
        Open();
    else
        Ask(direction, SearchStart::BeyondCurrent);
}

void FindBar::Ask(SearchDirection direction, SearchStart start) {
    const QString text = text_->text();
    if (text.isEmpty())
        return;
    direction_ = direction;
    Q_EMIT SearchWanted(text, direction, start);
}

void FindBar::TakeTypedText() {
    const bool hasText = !text_->text().isEmpty();
    previous_->setEnabled(hasText);
    next_->setEnabled(hasText);
    outcome_->clear();
    Ask(SearchDirection::Forward, SearchStart::AtCurrent);
}

void FindBar::ShowOutcome(Outcome outcome) {
    switch (outcome) {
    case Outcome::Found:
        outcome_->clear();
        break;
    case Outcome::FoundBeyondEnd:
        outcome_->setText(direction_ == SearchDirection::Forward ? QStringLiteral("先頭から検索しました")
                                                                 : QStringLiteral("末尾から検索しました"));
        break;
    case Outcome::NotFound:
        outcome_->setText(QStringLiteral("見つかりません"));
        break;
    }
}

void FindBar::Close() {
    QWidget* focus = window()->focusWidget();
    // A focused control that hides would hand the focus on to whatever comes next.
    if (focus && isAncestorOf(focus))
        focus->clearFocus();
    hide();
    Q_EMIT Closed();
}

bool FindBar::event(QEvent* event) {
    // While one types here these keys belong to no button or menu.
    if (event->type() == QEvent::ShortcutOverride && ActionFor(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

// The keys that its controls have no use for.
void FindBar::keyPressEvent(QKeyEvent* event) {
    const std::optional<Action> action = ActionFor(*event);
    if (!action) {
        QWidget::keyPressEvent(event);
        return;
    }
    auto* button = qobject_cast<QToolButton*>(window()->focusWidget());
    if (button && isAncestorOf(button) && IsEnter(*event))
        button->click();
    else if (*action == Action::Close)
        Close();
    else
        Repeat(*action == Action::Next ? SearchDirection::Forward : SearchDirection::Backward);
}

} // namespace velmo
