// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppFixture.h"

#include "Logger.h"
#include "Space.h"

#include <QFile>

#include <chrono>
#include <filesystem>

using namespace TAMBO;

namespace {

// Before anything asks for a directory.
struct OwnDirectories
{
    OwnDirectories()
    {
        qputenv("TAMBO_USER_DIR", folder.path().toUtf8());
        qputenv("TAMBO_SHARE_DIR", SOURCE_DIR "/share");
    }
    QTemporaryDir folder;
};

const OwnDirectories s_Directories;

} // namespace

AppFixture::AppFixture()
{
    modelHooks().refused = [this](const Compound &locked) { m_Refused.push_back(locked.Name()); };
}

AppFixture::~AppFixture()
{
    setEditRecorder(nullptr);
    space().reset();
    modelHooks() = {};
}

void AppFixture::logTheModel()
{
    modelHooks().log = [](const std::string &message, LogSeverity) {
        Logger::Write(QString::fromStdString(message));
    };
}

Structure &AppFixture::structure(const std::string &name, const std::string &chain,
                                 const std::string &letters)
{
    StructureRecord record;
    record.name = name;
    ChainRecord &made = record.chains.emplace_back();
    made.name = chain;
    int number = 1;
    for (const char letter : letters) {
        ResidueRecord &residue = made.residues.emplace_back();
        residue.typeName = "ALA";
        residue.letter = letter;
        residue.number = SequenceNumber(number);
        residue.atoms.push_back({"CA", "C", Vertex(float(number), 0, 0)});
        ++number;
    }
    const DataAdder<Space> guard(nullptr, Space::instance());
    return *ObjectFactory::adopt(std::move(record));
}

Peptide &AppFixture::sequence(const std::string &name, const std::string &letters)
{
    const DataAdder<Space> guard(nullptr, Space::instance());
    return static_cast<Peptide &>(space().add(std::make_unique<Peptide>(name, letters)));
}

Alignment &AppFixture::alignment(const std::string &name, const std::vector<std::string> &rows)
{
    AlignmentRecord record;
    record.name = name;
    for (const std::string &row : rows) {
        RowRecord &made = record.rows.emplace_back();
        made.name = name + std::to_string(record.rows.size());
        made.sequence.append(row);
    }
    const DataAdder<Space> guard(nullptr, Space::instance());
    return *ObjectFactory::adopt(std::move(record));
}

std::vector<std::string> AppFixture::rowsOf(const Alignment &alignment)
{
    std::vector<std::string> rows;
    for (unsigned long row = 0; row < alignment.height(); ++row)
        rows.push_back(alignment.GetSequence(row, false));
    return rows;
}

std::vector<std::string> AppFixture::topLevelNames()
{
    std::vector<std::string> names;
    for (const Compound *object : space())
        names.push_back(object->Name());
    return names;
}

QString AppFixture::write(const QString &name, const QByteArray &text)
{
    QFile file(m_Folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(text), text.size());
    return file.fileName();
}

QByteArray AppFixture::bytesOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

void AppFixture::changeBehind(const QString &name, const QByteArray &text)
{
    write(name, text);
    touch(name);
}

void AppFixture::touch(const QString &name) const
{
    const std::filesystem::path file = path(name).toStdString();
    std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) +
                                               std::chrono::seconds(10));
}

RecordedFixture::RecordedFixture()
{
    setEditRecorder(&m_History);
}

RecordedFixture::~RecordedFixture()
{
    m_History.clear();
    setEditRecorder(nullptr);
}
