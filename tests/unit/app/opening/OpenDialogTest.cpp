// SPDX-License-Identifier: GPL-3.0-or-later
// Which files the dialog for opening offers.
#include "OpenDialog.h"

#include "WriteOptions.h"

#include <QDir>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace OpenDialogTest {

using namespace TAMBO;

// "Structures (*.pdb *.ent)": what stands between the brackets.
QStringList patternsOf(const QString &filter)
{
    return filter.section(u'(', 1).chopped(1).split(u' ');
}

TEST(OpenDialog, OffersEachEndingThatIsWrittenAlsoCompressed)
{
    const QStringList filters = app::openFilters();
    ASSERT_EQ(filters.size(), 5);
    for (const std::string_view name : writeFormatNames()) {
        const FileFormat format = writeOptionsNamed(name)->format;
        for (const std::string_view ending : fileEndings(format)) {
            const QString file = "x" + QString::fromStdString(std::string(ending));
            for (const QString &offered : {file, file + ".gz", file.toUpper()}) {
                EXPECT_TRUE(QDir::match(patternsOf(filters[0]), offered)) << offered.toStdString();
                EXPECT_EQ(QDir::match(patternsOf(filters[1]), offered), isStructureFormat(format))
                    << offered.toStdString();
                EXPECT_EQ(QDir::match(patternsOf(filters[2]), offered), !isStructureFormat(format))
                    << offered.toStdString();
                EXPECT_TRUE(QDir::match(patternsOf(filters[4]), offered));
            }
        }
    }
    EXPECT_FALSE(QDir::match(patternsOf(filters[0]), QStringLiteral("notes.txt")));
}

TEST(OpenDialog, OffersSessionsAmongTheFilesAndByThemselves)
{
    const QStringList filters = app::openFilters();
    for (int i = 0; i < filters.size(); ++i)
        EXPECT_EQ(QDir::match(patternsOf(filters[i]), QStringLiteral("work.tambo")),
                  i == 0 || i >= 3)
            << filters[i].toStdString();
}

} // namespace OpenDialogTest
