// SPDX-License-Identifier: GPL-3.0-or-later
#include "LastWords.h"

#include <gtest/gtest.h>

namespace LastWordsTest {

QString reason(const QString &errors)
{
    return ZEP::LastWords(errors).reason;
}

TEST(LastWords, TheLastLineIsTheReason)
{
    EXPECT_EQ(reason("begin\nout of paper\n\n"), "out of paper");
    EXPECT_EQ(reason("10 %\r50 %\rout of paper"), "out of paper");
    EXPECT_EQ(reason(" \n\n"), "");
    EXPECT_EQ(reason(QString()), "");
}

TEST(LastWords, OfTheAdaptersOwnComplaintItsNameIsLeftOut)
{
    EXPECT_EQ(reason("kestram: row \"x\", column 3: a remark\nkestram: none.ali: not found\n"),
              "none.ali: not found");
    EXPECT_EQ(reason("kestram: ended without a model.\n"), "ended without a model");
}

TEST(LastWords, WhatTheEngineSaidLastFollows)
{
    EXPECT_EQ(reason("kestram: a remark\nTraceback:\nRuntimeError: no loop fits\n"
                     "kestram: promod failed with status 1\n"),
              "promod failed with status 1: RuntimeError: no loop fits");
}

TEST(LastWords, TheLinesBeforeItAreKept)
{
    QString errors;
    for (int i = 0; i < 20; ++i)
        errors += QStringLiteral("line %1\n\n").arg(i);
    const ZEP::LastWords words(errors);
    EXPECT_EQ(words.lines.size(), 8);
    EXPECT_EQ(words.lines.front(), "line 12");
    EXPECT_EQ(words.lines.back(), "line 19");
}

TEST(LastWords, OfAFloodTheEndIsLookedAt)
{
    EXPECT_EQ(reason(QString(1'000'000, 'x') + "\nend"), "end");
    EXPECT_EQ(reason(QString(1'000'000, 'x')).size(), 300);
}

} // namespace LastWordsTest
