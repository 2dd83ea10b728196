#include "platform/guarded.h"
#include "platform/message_boxes.h"
#include "support/message_queue.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace velmo {
namespace {

struct Seen {
    QString title;
    QString text;
    QMessageBox::StandardButtons buttons;
    QMessageBox::StandardButton usual;
};

// Presses a button of the box that opens next and tells what it was; a box that is never shown fails the
// test.
class Presser {
public:
    explicit Presser(QMessageBox::StandardButton button) {
        QObject::connect(&timer_, &QTimer::timeout, [this, button] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box)
                return;
            timer_.stop();
            seen_ = Seen{box->windowTitle(), box->text(), box->standardButtons(),
                         box->standardButton(box->defaultButton())};
            box->button(button)->click();
        });
        timer_.start(0);
    }
    ~Presser() { EXPECT_FALSE(timer_.isActive()) << "no message was shown"; }

    const Seen& Box() const { return seen_; }

private:
    QTimer timer_;
    Seen seen_;
};

TEST(MessageBoxes, InformsWithAnOkButtonOnly) {
    MessageBoxes messages;
    const Presser presser(QMessageBox::Ok);
    messages.Inform(nullptr, "text <b>as it is</b>");
    EXPECT_EQ(presser.Box().title, "VELMO2");
    EXPECT_EQ(presser.Box().text, "text <b>as it is</b>");
    EXPECT_EQ(presser.Box().buttons, QMessageBox::Ok);
}

TEST(MessageBoxes, AQuestionGoesOnOnlyOnYes) {
    MessageBoxes messages;
    for (const auto button : {QMessageBox::Yes, QMessageBox::No}) {
        const Presser presser(button);
        EXPECT_EQ(messages.Ask(nullptr, "go on?", "title"), button == QMessageBox::Yes);
        EXPECT_EQ(presser.Box().title, "title");
        EXPECT_EQ(presser.Box().buttons, QMessageBox::Yes | QMessageBox::No);
        EXPECT_EQ(presser.Box().usual, QMessageBox::No) << "Enter loses nothing";
    }
}

TEST(MessageBoxes, AnErrorIsShownWithEverythingThatIsKnown) {
    MessageBoxes messages;
    const Presser presser(QMessageBox::Ok);
    RunGuarded(messages, nullptr, [] {
        throw RuntimeError(ErrorNumber::TypeMismatch, "詳しく")
            .InFile("D:\\lib\\s.txt")
            .AtLine(12)
            .InField("V1");
    });
    EXPECT_EQ(presser.Box().text, "実行時エラー '13':\n型が一致しません。\n詳しく\n\n"
                                  "ファイル: D:\\lib\\s.txt\n行: 12\n項目: V1");
    EXPECT_EQ(messages.ExitStatus(), 0);
}

TEST(MessageBoxes, AFatalErrorMakesTheExitStatusOne) {
    MessageBoxes messages;
    const Presser presser(QMessageBox::Ok);
    RunGuarded(messages, nullptr, [] { throw RuntimeError(ErrorNumber::FileNotFound).EndsProgram(); });
    EXPECT_EQ(messages.ExitStatus(), 1);
}

TEST(MessageBoxes, WhateverElseIsThrownIsToldAndEndsTheProgram) {
    const auto expectTold = [](const QString& text, const std::function<void()>& action) {
        MessageQueue messages;
        messages.Expect(text);
        RunGuarded(messages, nullptr, action);
        EXPECT_EQ(messages.ExitStatus(), 1);
    };
    expectTold("実行時エラー '51':\n内部エラーが発生しました。\nwhy", [] { throw std::logic_error("why"); });
    expectTold("実行時エラー '7':\nメモリが不足しています。", [] { throw std::bad_alloc(); });
    expectTold("実行時エラー '51':\n内部エラーが発生しました。", [] { throw 1; });
}

TEST(RuntimeErrors, WhatIsNotKnownIsLeftOut) {
    EXPECT_EQ(ErrorText(RuntimeError(ErrorNumber::Overflow)), "実行時エラー '6':\nオーバーフローしました。");
}

TEST(RuntimeErrors, TheInnermostPlaceWins) {
    RuntimeError error(ErrorNumber::Overflow);
    error.InFile("inner").InFile("outer").AtLine(1).AtLine(2);
    EXPECT_EQ(error.File(), "inner");
    EXPECT_EQ(error.Line(), 1);
}

} // namespace
} // namespace velmo
