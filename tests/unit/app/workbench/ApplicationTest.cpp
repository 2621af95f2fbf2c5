// SPDX-License-Identifier: GPL-3.0-or-later
#include "Application.h"

#include "support/LogLines.h"
#include "support/ScopedSettings.h"

#include <QColorDialog>
#include <QEvent>
#include <QTimer>

#include <gtest/gtest.h>

#include <stdexcept>

namespace ApplicationTest {

class ApplicationTest : public ::testing::Test
{
protected:
    int m_Count = 1;
    char m_Name[6] = "tambo";
    char *m_Words[2] = {m_Name, nullptr};
    TAMBO::app::Application m_Application{m_Count, m_Words};
    LogLines m_Log;
};

TEST_F(ApplicationTest, ASlotThatThrowsIsLoggedAndTheProgramGoesOn)
{
    bool isReached = false;
    QTimer::singleShot(0, [] { throw std::runtime_error("the scale is missing"); });
    QTimer::singleShot(0, [&] {
        isReached = true;
        QCoreApplication::quit();
    });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_TRUE(isReached);
    ASSERT_EQ(m_Log.count(), 1);
    EXPECT_TRUE(m_Log.texts().front().contains("the scale is missing"));
}

TEST_F(ApplicationTest, WhatIsThrownMayBeAnything)
{
    QTimer::singleShot(0, [] { throw 7; });
    QTimer::singleShot(0, [] { QCoreApplication::quit(); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    ASSERT_EQ(m_Log.count(), 1);
    EXPECT_TRUE(m_Log.texts().front().contains("an unknown exception"));
}

class Thrower : public QObject
{
public:
    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::User)
            throw std::runtime_error("no place");
        return QObject::event(event);
    }
};

TEST_F(ApplicationTest, TheSameFailureAgainAndAgainIsOneLine)
{
    Thrower thrower;
    for (int i = 0; i < 5; ++i) {
        QEvent event(QEvent::User);
        EXPECT_FALSE(QCoreApplication::sendEvent(&thrower, &event));
    }
    EXPECT_EQ(m_Log.count(), 1);
}

class Leaver : public QObject
{
public:
    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::User) {
            delete this;
            throw std::runtime_error("gone");
        }
        return QObject::event(event);
    }
};

TEST_F(ApplicationTest, AReceiverThatDeletesItselfBeforeItThrowsIsNotAsked)
{
    QEvent event(QEvent::User);
    EXPECT_FALSE(QCoreApplication::sendEvent(new Leaver, &event));
    ASSERT_EQ(m_Log.count(), 1);
    EXPECT_TRUE(m_Log.texts().front().contains("gone"));
}

// The editor's are such: it asks the toolkit alone.
TEST_F(ApplicationTest, WhatAnyDialogForAColorGivesIsKept)
{
    const ScopedSettings settings("");
    QTimer::singleShot(0, [] {
        auto *dialog = qobject_cast<QColorDialog *>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        dialog->setCurrentColor(Qt::magenta);
        dialog->accept();
    });
    EXPECT_TRUE(QColorDialog::getColor(Qt::black).isValid());
    EXPECT_EQ(TAMBO::services::ConfigStore::instance().value("General", "LastColor"), "#ff00ff");
}

} // namespace ApplicationTest
