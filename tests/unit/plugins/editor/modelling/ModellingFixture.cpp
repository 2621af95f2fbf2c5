// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModellingFixture.h"

#include "JobList.h"
#include "WorkbenchCommands.h"

#include "support/WaitUntil.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using TAMBO::services::PluginRoutes;

ModellingFixture::ModellingFixture() : m_SystemPath(qgetenv("PATH"))
{
    qputenv("TAMBO_USER_DIR", m_Folder.filePath("user").toUtf8());
    qputenv("NOTES", m_Folder.path().toUtf8());
    qputenv("KESTRAM", "1");
    QDir(m_Folder.path()).mkdir("bin");
    EXPECT_EQ(mkfifo(m_Folder.filePath("go").toUtf8().constData(), 0600), 0);
    // For reading too, so that it can be opened before a program waits at its other end.
    m_Go = ::open(m_Folder.filePath("go").toUtf8().constData(), O_RDWR | O_CLOEXEC);

    PluginRoutes &routes = PluginRoutes::instance();
    routes.registerCommand("Parse", "PIR", "SaveALI", [this](const PluginCall &call) {
        const auto *request = static_cast<TAMBO::SaveRequest *>(call.data);
        m_Order.emplace_back("save");
        m_Saved.emplace_back(request->path, request->alignment);
        QFile file(request->path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        for (const std::string &row : rowsOf(*request->alignment))
            file.write(QByteArray::fromStdString(row) + '\n');
        return true;
    });
    routes.registerCommand("Parse", "PDB", "ReadPDB", [this](const PluginCall &call) {
        EXPECT_EQ(call.caller, "KALMO");
        EXPECT_EQ(call.text, "Read PDB stream");
        m_Order.emplace_back("read");
        m_Read.emplace_back(static_cast<const char *>(call.readOnlyData));
        if (m_OnRead)
            m_OnRead();
        return m_Model;
    });
}

ModellingFixture::~ModellingFixture()
{
    closeWindows();
    TAMBO::services::JobList::instance().forgetFailures();
    PluginRoutes::instance().removeCommand("Parse", "PIR", "SaveALI");
    PluginRoutes::instance().removeCommand("Parse", "PDB", "ReadPDB");
    ::close(m_Go);
    qputenv("PATH", m_SystemPath);
    for (const char *name : {"TAMBO_USER_DIR", "NOTES", "KESTRAM"})
        qunsetenv(name);
}

void ModellingFixture::install(const QByteArray &script)
{
    const QString path = m_Folder.filePath("bin/kestram");
    QFile::remove(path);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\nwait_for_go() { read -r _ < \"$NOTES/go\"; }\n" + script + '\n');
    file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    qputenv("PATH", m_Folder.filePath("bin").toUtf8() + ":/usr/bin:/bin");
}

void ModellingFixture::uninstall()
{
    QFile::remove(m_Folder.filePath("bin/kestram"));
}

void ModellingFixture::letGo()
{
    EXPECT_EQ(write(m_Go, "\n", 1), 1);
}

QString ModellingFixture::scratch(const QString &name)
{
    const QString folder = QString::fromStdString(Config::GetPersonalTmpDir());
    return name.isEmpty() ? folder : folder + '/' + name;
}

QByteArray ModellingFixture::contents(const QString &name)
{
    QFile file(scratch(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

QByteArray ModellingFixture::noted(const QString &name) const
{
    QFile file(note(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void ModellingFixture::waitFor(const std::function<bool()> &condition)
{
    waitUntil(condition);
}

void ModellingFixture::waitForIdle(ZEP::KALMO2 &window)
{
    waitFor(
        [&window] { return !isRunning(window) && QApplication::activeModalWidget() == nullptr; });
}

QProcess &ModellingFixture::processOf(ZEP::KALMO2 &window)
{
    return *window.findChildren<QProcess *>().at(0);
}

TAMBO::Structure &ModellingFixture::structure(const std::string &name, const std::string &letters)
{
    TAMBO::StructureRecord record;
    record.name = name;
    TAMBO::ChainRecord &chain = record.chains.emplace_back();
    chain.name = "A";
    int number = 29;
    for (const char letter : letters) {
        TAMBO::ResidueRecord &residue = chain.residues.emplace_back();
        residue.typeName = "ALA";
        residue.letter = letter;
        residue.number = TAMBO::SequenceNumber(number++);
        residue.atoms.push_back({"CA", "C", TAMBO::Vertex(float(number), 0, 0)});
    }
    const DataPointBase guard(nullptr, Publisher::Add);
    return *TAMBO::ObjectFactory::adopt(std::move(record));
}

TAMBO::Alignment &ModellingFixture::templateAndTarget(const Texts &more)
{
    structure("known", "ACD");
    Texts rows = {"AC-D", "A-CD"};
    rows.insert(rows.end(), more.begin(), more.end());
    TAMBO::Alignment &made = alignment(rows, "family", {"known", "wanted"});
    EXPECT_NE(made.GetSeq(0)->ChildCount(), 0U);
    return made;
}

void ModellingFixture::runJob(ZEP::KALMO2 &window)
{
    DialogDriver dialogs;
    const std::size_t before = m_Told.size();
    dialogs.expect(close());
    call(window, "kestram");
    waitFor([this, before] { return m_Told.size() > before; });
    waitForIdle(window);
    EXPECT_EQ(dialogs.titles().size(), 1);
}

DialogDriver::Handler ModellingFixture::close()
{
    return [this](QDialog &dialog) {
        const auto &box = dynamic_cast<QMessageBox &>(dialog);
        m_Order.emplace_back("told");
        m_Told.push_back(
            {box.windowTitle(), box.text(), box.icon(), box.parentWidget(), box.standardButtons()});
        dialog.accept();
    };
}
