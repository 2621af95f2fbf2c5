// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ExpectMessage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

namespace {

std::vector<ExpectMessage *> s_Expected;
std::vector<MessageRecorder *> s_Recorders;

} // namespace

ExpectMessage::ExpectMessage(QtMsgType type, QString text) : m_Type(type), m_Text(std::move(text))
{
    s_Expected.push_back(this);
}

ExpectMessage::~ExpectMessage()
{
    std::erase(s_Expected, this);
    EXPECT_TRUE(m_Come) << "the message did not come: " << m_Text.toStdString();
}

MessageRecorder::MessageRecorder()
{
    s_Recorders.push_back(this);
}

MessageRecorder::~MessageRecorder()
{
    std::erase(s_Recorders, this);
}

bool takeExpected(QtMsgType type, const QString &text)
{
    const auto found = std::ranges::find_if(s_Expected, [&](const ExpectMessage *expected) {
        return !expected->m_Come && expected->m_Type == type && expected->m_Text == text;
    });
    const bool expected = found != s_Expected.end();
    if (expected)
        (*found)->m_Come = true;
    for (MessageRecorder *recorder : s_Recorders)
        recorder->m_Messages.append(text);
    return expected || !s_Recorders.empty();
}

void installTestMessageHandler()
{
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        // What the offscreen platform says of sizes and of raising windows.
        if (text.startsWith(QStringLiteral("This plugin does not support ")))
            return;
        if (takeExpected(type, text))
            return;
        std::fprintf(stderr, "%s\n", qPrintable(text));
        if (type != QtDebugMsg && type != QtInfoMsg)
            ADD_FAILURE() << "unexpected message: " << text.toStdString();
    });
}
