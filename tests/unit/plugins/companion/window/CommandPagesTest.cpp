// SPDX-License-Identifier: GPL-3.0-or-later
// What menus and keys offer stands in the help that comes with it, and in the documentation.
#include "Commands.h"

#include <QFile>
#include <QRegularExpression>
#include <QTextDocumentFragment>

#include <gtest/gtest.h>

namespace CommandPagesTest {

using companion::Command;

// As it is read: without markup, and with one way to write keys.
QString textOf(const QStringList &files)
{
    QString all;
    int found = 0;
    for (const QString &name : files) {
        QFile file(QStringLiteral(SOURCE_DIR "/") + name);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        ++found;
        const QString text = QString::fromUtf8(file.readAll());
        all += name.endsWith(".html") ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
        all += u'\n';
    }
    EXPECT_GT(found, 0);
    static const QRegularExpression marks(QStringLiteral("[*`|]"));
    return all.replace(marks, QStringLiteral(" ")).simplified().replace(" + ", "+");
}

QString textOf(const Command &command)
{
    return command.text.section(u'\t', 0, 0).remove(u'&');
}

// Those of the cell cursor stand behind the text alone.
QString shownKey(const Command &command)
{
    return command.text.section(u'\t', 1);
}

QString textOf(const QKeySequence &keys)
{
    static const QList<std::pair<QString, QString>> kNames = {
        {"Ctrl++", "Ctrl+plus"}, {"Ctrl+-", "Ctrl+minus"}, {"PgUp", "Page Up"},
        {"PgDown", "Page Down"}, {"Del", "Delete"},        {"Return", "Enter"},
    };
    QString text = keys.toString(QKeySequence::PortableText);
    for (const auto &[portable, read] : kNames) {
        if (text.endsWith(portable))
            text = text.chopped(portable.size()) + read;
    }
    return text;
}

// As a whole: "F3" does not stand in "Shift+F3", nor "All" in "Align All Rows".
bool has(const QString &page, const QString &text)
{
    const QRegularExpression whole("(?<![\\w+])" + QRegularExpression::escape(text) + "(?!\\w)");
    return page.contains(whole);
}

struct Pages
{
    const char *name;
    QStringList files;
};

class AllPages : public testing::TestWithParam<Pages>
{
};

TEST_P(AllPages, HaveEveryCommandAndEveryKey)
{
    const QString page = textOf(GetParam().files);
    for (const Command &command : companion::commands()) {
        EXPECT_TRUE(has(page, textOf(command))) << textOf(command).toStdString();
        EXPECT_TRUE(shownKey(command).isEmpty() || has(page, shownKey(command)))
            << shownKey(command).toStdString();
        for (const QKeySequence &keys : command.keys) {
            EXPECT_TRUE(has(page, textOf(keys)))
                << textOf(keys).toStdString() << " for " << textOf(command).toStdString();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Of, AllPages,
                         testing::Values(Pages{"Help",
                                               {"plugins/companion/help/reading.html",
                                                "plugins/companion/help/editing.html",
                                                "plugins/companion/help/accessibility.html"}},
                                         Pages{"Documentation",
                                               {"docs/reading.md", "docs/editing.md",
                                                "docs/accessibility.md"}}),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace CommandPagesTest
