// SPDX-License-Identifier: GPL-3.0-or-later
// The log as a list, and its filter.
#include "LogModel.h"

#include "AppFixture.h"
#include "LogFilter.h"
#include "LogPanel.h"
#include "support/ShownText.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStyle>
#include <QTest>
#include <QToolButton>

namespace LogModelTest {

using TAMBO::app::LogFilter;
using TAMBO::app::LogModel;
using TAMBO::app::LogPanel;
using TAMBO::services::LogBook;
using Severity = Logger::Severity;

class LogModelTest : public AppFixture
{
protected:
    static QStringList texts(const QAbstractItemModel &model)
    {
        QStringList result;
        for (int row = 0; row < model.rowCount(); ++row)
            result << model.index(row, 0).data(LogModel::TextRole).toString();
        return result;
    }
    void writeThree()
    {
        m_Book.write("read 1abc.pdb", Severity::Info);
        m_Book.write("1abc.pdb has no title", Severity::Warning);
        m_Book.write("2abc.pdb cannot be opened", Severity::Error);
        QCoreApplication::processEvents();
    }

    LogBook m_Book{QString()};
};

TEST_F(LogModelTest, WhatWasWrittenBeforeIsThere)
{
    m_Book.write("early", Severity::Info);
    const LogModel model(m_Book);
    EXPECT_EQ(texts(model), QStringList{"early"});
}

TEST_F(LogModelTest, LinesShowTheIconOfTheirSeverity)
{
    const LogModel model(m_Book);
    writeThree();
    const auto image = [&](int row) {
        return model.index(row, 0).data(Qt::DecorationRole).value<QIcon>().pixmap(16, 16).toImage();
    };
    const auto standard = [](QStyle::StandardPixmap which) {
        return QApplication::style()->standardIcon(which).pixmap(16, 16).toImage();
    };
    EXPECT_EQ(image(0).pixelColor(8, 8).alpha(), 0);
    EXPECT_EQ(image(1), standard(QStyle::SP_MessageBoxWarning));
    EXPECT_EQ(image(2), standard(QStyle::SP_MessageBoxCritical));
}

TEST_F(LogModelTest, TheFilterGetsItsClearButtonWithItsFirstText)
{
    LogModel model(m_Book);
    LogPanel panel(model);
    auto *text = panel.findChild<QLineEdit *>("LogText");
    EXPECT_TRUE(text->findChildren<QToolButton *>().isEmpty());
    text->setText("a");
    ASSERT_EQ(text->findChildren<QToolButton *>().size(), 1);
    QTest::mouseClick(text->findChild<QToolButton *>(), Qt::LeftButton);
    EXPECT_EQ(text->text(), "");
}

TEST_F(LogModelTest, ManyLinesAreTakenUpAtOnce)
{
    LogModel model(m_Book);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Warning);
    const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    for (int i = 0; i < 100; ++i)
        m_Book.write(QString::number(i), Severity::Info);
    EXPECT_EQ(model.rowCount(), 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(model.rowCount(), 100);
    EXPECT_EQ(inserted.count(), 1);
    EXPECT_EQ(model.index(99, 0).data(LogModel::TextRole).toString(), "99");
}

TEST_F(LogModelTest, TheOldestLinesGoWhenThereAreTooMany)
{
    LogModel model(m_Book);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Warning);
    const int most = int(LogBook::kEntries);
    m_Book.write("first", Severity::Info);
    QCoreApplication::processEvents();
    for (int i = 0; i < most; ++i)
        m_Book.write(QString::number(i), Severity::Info);
    QCoreApplication::processEvents();
    EXPECT_EQ(model.rowCount(), most);
    EXPECT_EQ(model.index(0, 0).data(LogModel::TextRole).toString(), "0");
}

TEST_F(LogModelTest, OfMoreLinesAtOnceThanAreKeptTheLatestAreTakenUp)
{
    LogModel model(m_Book);
    const int most = int(LogBook::kEntries);
    for (int i = 0; i < most + 3; ++i)
        m_Book.write(QString::number(i), Severity::Info);
    QCoreApplication::processEvents();
    EXPECT_EQ(model.rowCount(), most);
    EXPECT_EQ(model.index(0, 0).data(LogModel::TextRole).toString(), "3");
}

TEST_F(LogModelTest, ClearingEmptiesTheList)
{
    LogModel model(m_Book);
    writeThree();
    model.clear();
    EXPECT_EQ(model.rowCount(), 0);
    m_Book.write("later", Severity::Info);
    QCoreApplication::processEvents();
    EXPECT_EQ(texts(model), QStringList{"later"});
}

TEST_F(LogModelTest, SeveritiesHaveColorsOfTheirOwn)
{
    LogModel model(m_Book);
    writeThree();
    const auto color = [&](int row) { return model.index(row, 0).data(Qt::ForegroundRole); };
    EXPECT_FALSE(color(0).isValid());
    EXPECT_TRUE(color(1).isValid());
    EXPECT_TRUE(color(2).isValid());
    EXPECT_NE(color(1).value<QColor>(), color(2).value<QColor>());
}

TEST_F(LogModelTest, ALineShowsTimeAndTextWithoutBreaks)
{
    LogModel model(m_Book);
    m_Book.write("one\ntwo", Severity::Info);
    QCoreApplication::processEvents();
    const QString line = model.index(0, 0).data().toString();
    EXPECT_TRUE(line.endsWith("  one two")) << line.toStdString();
    EXPECT_EQ(line.indexOf(u':'), 2);
}

TEST_F(LogModelTest, OfALongTextTheListShowsTheBeginning)
{
    LogModel model(m_Book);
    const QString text = "begin\n" + QString(900'000, 'x') + "end";
    m_Book.write(text, Severity::Info);
    QCoreApplication::processEvents();
    const QModelIndex index = model.index(0, 0);
    EXPECT_LT(index.data().toString().size(), 1000);
    EXPECT_TRUE(index.data().toString().contains("  begin x"));
    EXPECT_TRUE(index.data().toString().endsWith(u'…'));
    EXPECT_LT(index.data(Qt::ToolTipRole).toString().size(), 5000);
    EXPECT_EQ(index.data(LogModel::TextRole).toString(), text);
}

TEST_F(LogModelTest, AnEntryOpensInFull)
{
    LogModel model(m_Book);
    LogPanel panel(model);
    const QString text = "Traceback:\n" + QString("  line\n").repeated(300) + "end";
    m_Book.write(text, Severity::Info);
    QCoreApplication::processEvents();
    auto *list = panel.findChild<QListView *>("LogList");
    emit list->activated(list->model()->index(0, 0));
    const auto *dialog = panel.findChild<QDialog *>("LogEntry");
    ASSERT_NE(dialog, nullptr);
    EXPECT_FALSE(dialog->isModal());
    EXPECT_EQ(dialog->findChild<QPlainTextEdit *>()->toPlainText(), text);
    EXPECT_TRUE(dialog->findChild<QPlainTextEdit *>()->isReadOnly());
}

TEST_F(LogModelTest, TheToolTipOfALineWithMarkupIsTheTextAsItIs)
{
    LogModel model(m_Book);
    m_Book.write("a<b>x</b>\n<i>y", Severity::Info);
    QCoreApplication::processEvents();
    EXPECT_EQ(shownText(model.index(0, 0).data(Qt::ToolTipRole).toString()), "a<b>x</b>\n<i>y");
}

TEST_F(LogModelTest, TheFilterLetsThroughSeveritiesAndTexts)
{
    LogModel model(m_Book);
    LogFilter filter;
    filter.setSourceModel(&model);
    writeThree();
    EXPECT_EQ(filter.rowCount(), 3);
    filter.setLowestSeverity(Severity::Warning);
    EXPECT_EQ(texts(filter), QStringList({"1abc.pdb has no title", "2abc.pdb cannot be opened"}));
    filter.setText("1ABC");
    EXPECT_EQ(texts(filter), QStringList{"1abc.pdb has no title"});
    filter.setLowestSeverity(Severity::Info);
    EXPECT_EQ(texts(filter), QStringList({"read 1abc.pdb", "1abc.pdb has no title"}));
}

TEST_F(LogModelTest, ThePanelFiltersWithItsControls)
{
    LogModel model(m_Book);
    const LogPanel panel(model);
    writeThree();
    const auto *list = panel.findChild<QListView *>("LogList");
    panel.findChild<QComboBox *>("LogSeverity")->setCurrentIndex(2);
    EXPECT_EQ(texts(*list->model()), QStringList{"2abc.pdb cannot be opened"});
    panel.findChild<QLineEdit *>("LogText")->setText("nowhere");
    EXPECT_TRUE(texts(*list->model()).isEmpty());
}

TEST_F(LogModelTest, ThePanelFollowsTheEndUnlessTheUserReads)
{
    LogModel model(m_Book);
    LogPanel panel(model);
    panel.resize(300, 200);
    panel.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&panel));
    const QScrollBar *bar = panel.findChild<QListView *>("LogList")->verticalScrollBar();
    const auto fill = [&] {
        for (int i = 0; i < 100; ++i)
            m_Book.write(QString::number(i), Severity::Info);
        QCoreApplication::processEvents();
        panel.findChild<QListView *>("LogList")->grab();
    };
    fill();
    ASSERT_GT(bar->maximum(), 0);
    EXPECT_EQ(bar->value(), bar->maximum());
    panel.findChild<QListView *>("LogList")->verticalScrollBar()->setValue(3);
    fill();
    EXPECT_EQ(bar->value(), 3);
}

} // namespace LogModelTest
