// SPDX-License-Identifier: GPL-3.0-or-later
// Announces one message of the toolkit's output. A case fails on a warning or worse that nobody
// announced, and on an announced message that does not come.
#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

class ExpectMessage
{
public:
    ExpectMessage(QtMsgType type, QString text);
    ~ExpectMessage();
    ExpectMessage(const ExpectMessage &) = delete;
    ExpectMessage &operator=(const ExpectMessage &) = delete;

    [[nodiscard]] bool hasCome() const noexcept { return m_Come; }

private:
    friend bool takeExpected(QtMsgType type, const QString &text);

    QtMsgType m_Type;
    QString m_Text;
    bool m_Come = false;
};

// Collects all messages while it lives; they count as announced.
class MessageRecorder
{
public:
    MessageRecorder();
    ~MessageRecorder();
    MessageRecorder(const MessageRecorder &) = delete;
    MessageRecorder &operator=(const MessageRecorder &) = delete;

    [[nodiscard]] const QStringList &messages() const noexcept { return m_Messages; }
    [[nodiscard]] int count(const QString &text) const { return int(m_Messages.count(text)); }
    void clear() { m_Messages.clear(); }

private:
    friend bool takeExpected(QtMsgType type, const QString &text);

    QStringList m_Messages;
};

// The message handler of the test programs.
void installTestMessageHandler();
