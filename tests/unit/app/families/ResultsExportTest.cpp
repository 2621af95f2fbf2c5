// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResultsExport.h"

#include "support/Outcome.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace ResultsExportTest {

using namespace TAMBO::app;

const QList<QStringList> kLines = {
    {"target", "last_line"}, {"a", "row \"a\", column 5: 'D'"}, {"β", "two\nlines"}};

TEST(ResultsExport, WithTabsAsTheTableInTheFolder)
{
    EXPECT_EQ(tableBytes({{"target", "state"}, {"β", "not run"}}, TableFormat::Tsv),
              "target\tstate\nβ\tnot run\n");
}

TEST(ResultsExport, WithCommasFieldsAreQuotedWhereTheyMustBe)
{
    EXPECT_EQ(tableBytes(kLines, TableFormat::Csv),
              "target,last_line\r\na,\"row \"\"a\"\", column 5: 'D'\"\r\nβ,\"two\nlines\"\r\n");
}

TEST(ResultsExport, TheEndingOfTheNameDecides)
{
    EXPECT_EQ(tableFormatOf("there/x.csv"), TableFormat::Csv);
    EXPECT_EQ(tableFormatOf("there/x.CSV"), TableFormat::Csv);
    EXPECT_EQ(tableFormatOf("there/x.tsv"), TableFormat::Tsv);
    EXPECT_EQ(tableFormatOf("there/x"), TableFormat::Tsv);
}

TEST(ResultsExport, AFileThatCannotBeWrittenIsNamedAndStays)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("table.tsv");
    ASSERT_EQ(complaintOf(writeTable(file, kLines)), "");
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll(), tableBytes(kLines, TableFormat::Tsv));
    const auto failed = writeTable(folder.filePath("none/table.tsv"), kLines);
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().place.file, folder.filePath("none/table.tsv").toStdString());
}

} // namespace ResultsExportTest
