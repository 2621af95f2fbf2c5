// SPDX-License-Identifier: GPL-3.0-or-later
// The program is killed while a file arrives, and another workbench recovers what it has left.
#include "AppFixture.h"
#include "Directories.h"
#include "RecoveryDialog.h"
#include "SessionFolder.h"
#include "UndoCommands.h"
#include "Workbench.h"
#include "support/Answering.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QPushButton>

#include <optional>

namespace KilledWorkTest {

using namespace TAMBO;
using app::RecoveryDialog;
using app::SessionFolder;
using app::Workbench;

constexpr int kRows = 20'000;
const QByteArray kRow = "ACDEFGHIKLMNPQRSTVWY----ACDEFGHIKLMNPQRSTVWYACDEFGHIKLMNPQRSTVWYACDE\n";

// So many bytes are on the disk when it happens.
class KilledWork : public AppFixture, public testing::WithParamInterface<qint64>
{
protected:
    ~KilledWork() override
    {
        if (m_Workbench != nullptr)
            m_Workbench->undo().history().clear();
        m_Workbench.reset();
        space().reset();
        QDir(folder()).removeRecursively();
    }

    static QString folder() { return services::Directories::state() + "/sessions"; }
    QString writeFamily()
    {
        QByteArray text;
        for (int row = 0; row < kRows; ++row)
            text += ">row" + QByteArray::number(row) + '\n' + kRow;
        return write("family.fasta", text);
    }
    void start(const QString &file)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        environment.insert("TAMBO_SYSTEM_PLUGIN_DIRS", QString());
        m_Program.setProcessEnvironment(environment);
        m_Program.start(QStringLiteral(BUILD_DIR "/bin/tambo"), {file});
        ASSERT_TRUE(m_Program.waitForStarted(kPatienceMilliseconds));
    }
    // Whether what is on the disk at this moment would be asked about, and how much it is.
    [[nodiscard]] std::optional<qint64> bytesLeft() const
    {
        const QString copy = m_Folder.filePath("left");
        QDir(copy).removeRecursively();
        QDir().mkpath(copy);
        qint64 bytes = 0;
        for (const QFileInfo &file : QDir(folder()).entryInfoList(QDir::Files)) {
            bytes += file.size();
            if (!QFile::copy(file.filePath(), copy + u'/' + file.fileName()))
                return std::nullopt;
        }
        return SessionFolder(copy).leftBehind().empty() ? std::nullopt : std::optional(bytes);
    }

    QProcess m_Program;
    std::unique_ptr<Workbench> m_Workbench;
};

TEST_P(KilledWork, IsThereAgainWithTheFileThatWasArriving)
{
    ASSERT_NO_FATAL_FAILURE(start(writeFamily()));
    waitUntil(
        [this] { return bytesLeft() >= GetParam() || m_Program.state() == QProcess::NotRunning; });
    m_Program.kill();
    ASSERT_TRUE(m_Program.waitForFinished(kPatienceMilliseconds));
    EXPECT_EQ(m_Program.exitStatus(), QProcess::CrashExit);

    m_Workbench = std::make_unique<Workbench>(Workbench::Attendance::User, withoutPlugins());
    answering<RecoveryDialog>(
        [](RecoveryDialog &dialog) { dialog.findChild<QPushButton *>("Recover")->click(); });
    m_Workbench->keepWork();
    waitUntil([this] { return !m_Workbench->loader().isBusy(); });
    // Once, whether it was kept or is opened again.
    ASSERT_EQ(space().objectCount(), std::size_t(kRows) + 1);
    auto *const family = dynamic_cast<Alignment *>(space().object(kRows));
    ASSERT_NE(family, nullptr);
    EXPECT_EQ(family->Name(), "family");
    ASSERT_EQ(family->height(), unsigned(kRows));
    for (const unsigned long row : {0UL, kRows / 2UL, kRows - 1UL})
        EXPECT_EQ(family->GetSequence(row, false) + '\n', kRow.toStdString()) << row;
}

INSTANTIATE_TEST_SUITE_P(Bytes, KilledWork, testing::Values(0, 200'000, 1'000'000),
                         testing::PrintToStringParamName());

} // namespace KilledWorkTest
