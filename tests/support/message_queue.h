#pragma once

#include "platform/message_boxes.h"

#include <QList>
#include <gtest/gtest.h>

namespace velmo {

// Answers messages in the user's place: each expected one in its turn. A message that nobody expects, and one
// that was expected but did not come, fail the test.
class MessageQueue : public MessageBoxes {
public:
    ~MessageQueue() override {
        for (const Expected& message : expected_)
            ADD_FAILURE() << "this message did not come: " << message.text.toStdString();
    }

    // The next message has exactly this text and title.
    void Expect(const QString& text, bool answer = true, const QString& title = MessageTitle) {
        expected_ << Expected{text, title, answer, false};
    }
    // The next message holds this text.
    void ExpectContaining(const QString& part) { expected_ << Expected{part, MessageTitle, true, true}; }

    void Inform(QWidget*, const QString& text, const QString& title) override { Take(text, title); }
    bool Ask(QWidget*, const QString& text, const QString& title) override { return Take(text, title); }

private:
    struct Expected {
        QString text;
        QString title;
        bool answer;
        bool part;
    };

    bool Take(const QString& text, const QString& title) {
        if (expected_.isEmpty()) {
            ADD_FAILURE() << "nobody expects this message: " << text.toStdString();
            return false;
        }
        const Expected next = expected_.takeFirst();
        EXPECT_EQ(title.toStdString(), next.title.toStdString());
        if (next.part)
            EXPECT_TRUE(text.contains(next.text))
                << text.toStdString() << "\nlacks " << next.text.toStdString();
        else
            EXPECT_EQ(text.toStdString(), next.text.toStdString());
        return next.answer;
    }

    QList<Expected> expected_;
};

} // namespace velmo
