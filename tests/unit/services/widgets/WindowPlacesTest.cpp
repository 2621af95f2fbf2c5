// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowPlaces.h"

#include "Directories.h"
#include "support/LogLines.h"

#include <QDir>
#include <QFile>
#include <QWidget>

#include <gtest/gtest.h>

using namespace TAMBO::services;

namespace WindowPlacesTest {

TEST(WindowPlaces, AWindowThatAsksForLittleGetsAComfortableSize)
{
    EXPECT_EQ(WindowPlaces::comfortable({500, 150}, {1920, 1080}), QSize(1152, 648));
    EXPECT_EQ(WindowPlaces::comfortable({500, 150}, {3840, 2160}), QSize(1200, 700));
    EXPECT_EQ(WindowPlaces::comfortable({500, 150}, {800, 800}), QSize(500, 480));
}

TEST(WindowPlaces, AWindowThatKnowsWhatItWantsGetsIt)
{
    EXPECT_EQ(WindowPlaces::comfortable({900, 600}, {1920, 1080}), QSize(900, 600));
    EXPECT_EQ(WindowPlaces::comfortable({1600, 900}, {1920, 1080}), QSize(1600, 900));
}

TEST(WindowPlaces, NoWindowIsLargerThanTheScreen)
{
    EXPECT_EQ(WindowPlaces::comfortable({3000, 3000}, {1024, 768}), QSize(1024, 768));
    EXPECT_EQ(WindowPlaces::comfortable({300, 3000}, {1024, 768}), QSize(614, 768));
}

TEST(WindowPlaces, AnyCaptionCanBeAKey)
{
    QWidget window;
    window.setGeometry(31, 47, 321, 234);
    for (const QString key : {"[a] = \"b\" # c", "  blank ", "Größe", "#1"}) {
        WindowPlaces::remember(window, key);
        QWidget other;
        EXPECT_TRUE(WindowPlaces::restore(other, key)) << key.toStdString();
        EXPECT_EQ(other.geometry(), window.geometry());
    }
}

TEST(WindowPlaces, WhatMakesNoSenseIsNotUsed)
{
    QWidget window;
    const QRect before = window.geometry();
    EXPECT_FALSE(WindowPlaces::restore(window, "never seen"));
    ASSERT_TRUE(QDir().mkpath(Directories::data()));
    QFile file(Directories::data() + "/windows.ini");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Windows]\nOdd = nonsense\n");
    file.close();
    EXPECT_FALSE(WindowPlaces::restore(window, "Odd"));
    EXPECT_EQ(window.geometry(), before);
    file.remove();
}

} // namespace WindowPlacesTest
