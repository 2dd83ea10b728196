#include "platform/guarded_application.h"
#include "support/message_queue.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace velmo {
namespace {

class Throws : public QObject {
protected:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::User)
            throw RuntimeError(ErrorNumber::FileNotFound);
        if (event->type() == QEvent::User + 1)
            throw std::logic_error("why");
        return QObject::event(event);
    }
};

} // namespace

TEST(GuardedApplication, WhatAnEventHandlerThrowsIsTold) {
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    MessageQueue messages;
    GuardedApplication application(argc, argv, messages);
    Throws receiver;
    messages.Expect("実行時エラー '53':\nファイルが見つかりません。");
    QCoreApplication::postEvent(&receiver, new QEvent(QEvent::User));
    QCoreApplication::processEvents();
    EXPECT_EQ(messages.ExitStatus(), 0);
    messages.Expect("実行時エラー '51':\n内部エラーが発生しました。\nwhy");
    QCoreApplication::postEvent(&receiver, new QEvent(QEvent::Type(QEvent::User + 1)));
    EXPECT_EQ(QApplication::exec(), 1);
    EXPECT_EQ(messages.ExitStatus(), 1);
}

} // namespace velmo

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return RUN_ALL_TESTS();
}
