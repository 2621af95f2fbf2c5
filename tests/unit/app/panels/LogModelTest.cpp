// SPDX-License-Identifier: GPL-3.0-or-later
// The log as a list, and its filter.
#include "LogModel.h"

#include "AppFixture.h"
#include "LogFilter.h"
#include "LogPanel.h"
#include "support/Contrast.h"
#include "support/ShownText.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStyle>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

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
    static QStringList shownLines(const QAbstractItemModel &model, const QModelIndex &fold)
    {
        QStringList result;
        for (int row = 0; row < model.rowCount(fold); ++row)
            result << model.index(row, 0, fold).data().toString().mid(10);
        return result;
    }
    // Of a command each.
    void writeApart(int count)
    {
        for (int i = 0; i < count; ++i) {
            m_Book.write(QString::number(i), Severity::Info);
            QCoreApplication::sendPostedEvents(&m_Book);
        }
    }
    void writeOfOneCommand(std::size_t count)
    {
        m_Book.write(count, [](std::size_t line) {
            return Logger::Line{QStringLiteral("line %1").arg(line), Severity::Info};
        });
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
    writeApart(100);
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
    writeApart(most);
    QCoreApplication::processEvents();
    EXPECT_EQ(model.rowCount(), most);
    EXPECT_EQ(model.index(0, 0).data(LogModel::TextRole).toString(), "0");
}

TEST_F(LogModelTest, OfMoreLinesAtOnceThanAreKeptTheLatestAreTakenUp)
{
    LogModel model(m_Book);
    const int most = int(LogBook::kEntries);
    writeApart(most + 3);
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

TEST_F(LogModelTest, SeveritiesCanBeReadOnLightAndDarkGround)
{
    LogModel model(m_Book);
    writeThree();
    for (const QColor &ground : {QColor(Qt::white), QColor(0xf7, 0xf7, 0xf7),
                                 QColor(0x2b, 0x2b, 0x2b), QColor(Qt::black)}) {
        QPalette palette;
        palette.setColor(QPalette::Base, ground);
        QApplication::setPalette(palette);
        for (const int row : {1, 2})
            EXPECT_GE(
                contrastOf(model.index(row, 0).data(Qt::ForegroundRole).value<QColor>(), ground),
                kReadableContrast)
                << ground.name().toStdString();
    }
    QApplication::setPalette(QPalette());
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
    auto *list = panel.findChild<QTreeView *>("LogList");
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
    const auto *list = panel.findChild<QTreeView *>("LogList");
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
    const QScrollBar *bar = panel.findChild<QTreeView *>("LogList")->verticalScrollBar();
    const auto fill = [&] {
        writeApart(100);
        QCoreApplication::processEvents();
        panel.findChild<QTreeView *>("LogList")->grab();
    };
    fill();
    ASSERT_GT(bar->maximum(), 0);
    EXPECT_EQ(bar->value(), bar->maximum());
    panel.findChild<QTreeView *>("LogList")->verticalScrollBar()->setValue(3);
    fill();
    EXPECT_EQ(bar->value(), 3);
}

TEST_F(LogModelTest, ManyLinesOfOneCommandAreOneFold)
{
    LogModel model(m_Book);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Warning);
    m_Book.write("before", Severity::Info);
    QCoreApplication::processEvents();
    writeOfOneCommand(1163);
    QCoreApplication::processEvents();
    m_Book.write("behind", Severity::Info);
    QCoreApplication::processEvents();
    ASSERT_EQ(model.rowCount(), 3);
    const QModelIndex fold = model.index(1, 0);
    EXPECT_EQ(fold.data().toString().mid(10), "1,163 lines: line 0");
    ASSERT_EQ(model.rowCount(fold), 1163);
    const QModelIndex last = model.index(1162, 0, fold);
    EXPECT_EQ(last.data(LogModel::TextRole).toString(), "line 1162");
    EXPECT_EQ(last.parent(), fold);
    EXPECT_EQ(model.rowCount(last), 0);
}

TEST_F(LogModelTest, AFewLinesOfACommandStandBesideOthers)
{
    LogModel model(m_Book);
    writeOfOneCommand(LogModel::kUnfolded);
    QCoreApplication::processEvents();
    EXPECT_EQ(texts(model), QStringList({"line 0", "line 1", "line 2"}));
    EXPECT_FALSE(model.hasChildren(model.index(0, 0)));
}

TEST_F(LogModelTest, AFoldShowsWhatMattersMostInIt)
{
    LogModel model(m_Book);
    writeOfOneCommand(4);
    m_Book.write("row x could not be searched", Severity::Warning);
    m_Book.write("nor row y", Severity::Warning);
    QCoreApplication::processEvents();
    ASSERT_EQ(model.rowCount(), 1);
    const QModelIndex fold = model.index(0, 0);
    EXPECT_EQ(fold.data().toString().mid(10), "6 lines: row x could not be searched");
    EXPECT_EQ(fold.data(LogModel::SeverityRole).toInt(), int(Severity::Warning));
}

TEST_F(LogModelTest, TheOldestLinesOfAFoldGoOneByOne)
{
    LogModel model(m_Book);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Warning);
    writeOfOneCommand(10);
    QCoreApplication::processEvents();
    const QPersistentModelIndex eighth = model.index(7, 0, model.index(0, 0));
    writeApart(int(LogBook::kEntries) - 3);
    QCoreApplication::processEvents();
    EXPECT_EQ(shownLines(model, model.index(0, 0)), QStringList({"line 7", "line 8", "line 9"}));
    EXPECT_EQ(eighth.row(), 0);
    writeApart(4);
    QCoreApplication::processEvents();
    EXPECT_EQ(model.rowCount(), int(LogBook::kEntries));
    EXPECT_FALSE(eighth.isValid());
    writeOfOneCommand(5);
    QCoreApplication::processEvents();
    const QModelIndex fold = model.index(model.rowCount() - 1, 0);
    EXPECT_EQ(model.index(3, 0, fold).parent(), fold) << "folds before it have gone";
    EXPECT_EQ(model.index(3, 0, fold).data(LogModel::TextRole).toString(), "line 3");
}

TEST_F(LogModelTest, ChecksForDevelopersAreSeenWhenAskedForAndNeverWithOthersInAFold)
{
    LogModel model(m_Book);
    const LogPanel panel(model);
    m_Book.writeForDevelopers("0 < Count", Severity::Warning);
    for (int i = 0; i < 5; ++i)
        m_Book.writeForDevelopers("Drag point", Severity::Info);
    m_Book.write("Moved up: 2 rows.", Severity::Info);
    QCoreApplication::processEvents();
    const QAbstractItemModel &list = *panel.findChild<QTreeView *>("LogList")->model();
    auto *choice = panel.findChild<QComboBox *>("LogSeverity");
    EXPECT_EQ(texts(list), QStringList{"Moved up: 2 rows."});
    choice->setCurrentIndex(1);
    EXPECT_TRUE(texts(list).isEmpty());
    choice->setCurrentIndex(3);
    EXPECT_EQ(texts(list), QStringList({"0 < Count", "Moved up: 2 rows."}));
    EXPECT_EQ(list.rowCount(list.index(0, 0)), 6);
}

TEST_F(LogModelTest, WhatIsLookedForIsFoundInFoldsAndUnfolds)
{
    LogModel model(m_Book);
    LogPanel panel(model);
    writeOfOneCommand(100);
    QCoreApplication::processEvents();
    auto *list = panel.findChild<QTreeView *>("LogList");
    EXPECT_FALSE(list->isExpanded(list->model()->index(0, 0)));
    auto *text = panel.findChild<QLineEdit *>("LogText");
    text->setText("line 42");
    EXPECT_TRUE(list->isExpanded(list->model()->index(0, 0)));
    EXPECT_EQ(shownLines(*list->model(), list->model()->index(0, 0)), QStringList{"line 42"});
    text->setText("nowhere");
    EXPECT_EQ(list->model()->rowCount(), 0);
    text->clear();
    EXPECT_EQ(list->model()->rowCount(list->model()->index(0, 0)), 100);
    EXPECT_FALSE(list->isExpanded(list->model()->index(0, 0)));
}

TEST_F(LogModelTest, AFoldUnfoldsOnActivationAndItsLinesOpenAndAreCopiedTogether)
{
    LogModel model(m_Book);
    LogPanel panel(model);
    writeOfOneCommand(4);
    QCoreApplication::processEvents();
    auto *list = panel.findChild<QTreeView *>("LogList");
    const QModelIndex fold = list->model()->index(0, 0);
    emit list->activated(fold);
    EXPECT_TRUE(list->isExpanded(fold));
    emit list->activated(list->model()->index(2, 0, fold));
    auto *dialog = panel.findChild<QDialog *>("LogEntry");
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->findChild<QPlainTextEdit *>()->toPlainText(), "line 2");
    delete dialog;
    list->setCurrentIndex(fold);
    list->selectionModel()->select(list->model()->index(1, 0, fold), QItemSelectionModel::Select);
    const auto trigger = [list](const char *text) {
        for (QAction *action : list->actions())
            if (action->text() == text)
                action->trigger();
    };
    trigger("Open");
    dialog = panel.findChild<QDialog *>("LogEntry");
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->findChild<QPlainTextEdit *>()->toPlainText(),
              "line 0\nline 1\nline 2\nline 3");
    trigger("Copy");
    QStringList copied = QGuiApplication::clipboard()->text().split('\n');
    ASSERT_EQ(copied.size(), 4);
    EXPECT_EQ(copied.at(3).mid(10), "line 3");
    list->selectionModel()->select(fold, QItemSelectionModel::Deselect);
    trigger("Copy");
    EXPECT_EQ(QGuiApplication::clipboard()->text().mid(10), "line 1");
}

TEST_F(LogModelTest, WhoUnfoldsLinesSeesTheFirstOnesAndIsLeftThere)
{
    LogModel model(m_Book);
    LogPanel panel(model);
    panel.resize(300, 200);
    panel.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&panel));
    auto *list = panel.findChild<QTreeView *>("LogList");
    writeOfOneCommand(100);
    QCoreApplication::processEvents();
    emit list->activated(list->model()->index(0, 0));
    list->grab();
    ASSERT_GT(list->verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(list->verticalScrollBar()->value(), 0);
    emit list->activated(list->model()->index(0, 0));
    list->grab();
    writeApart(100);
    QCoreApplication::processEvents();
    list->grab();
    ASSERT_GT(list->verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(list->verticalScrollBar()->value(), list->verticalScrollBar()->maximum());
}

} // namespace LogModelTest
