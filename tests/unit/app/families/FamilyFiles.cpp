// SPDX-License-Identifier: GPL-3.0-or-later
#include "FamilyFiles.h"

#include "AlignmentTable.h"
#include "DataAdder.h"
#include "FileReader.h"

#include <QFile>

#include <array>
#include <ctime>
#include <filesystem>
#include <fstream>

using namespace TAMBO;

namespace {

namespace fs = std::filesystem;

const std::array<const char *, 7> kTypesOfLetters = {"ALA", "CYS", "ASP", "GLU",
                                                     "PHE", "GLY", "HIS"};

void put(const fs::path &file, const QByteArray &text)
{
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text.toStdString();
}

const families::FamilyTarget &targetIn(const families::FamilyFolder &folder,
                                       const std::string &name)
{
    for (const families::FamilyTarget &target : folder.targets()) {
        if (target.name == name)
            return target;
    }
    throw std::logic_error("there is no target " + name);
}

} // namespace

Vertex FamilyFiles::place(int index)
{
    return {float(4 * index), float((index * index) % 7), float((index % 3) * 2)};
}

Vertex FamilyFiles::shifted(const Vertex &point)
{
    return {point.x() + 10, point.y() - 20, point.z() + 5};
}

QByteArray FamilyFiles::pdb()
{
    QByteArray text;
    int serial = 0;
    for (int i = 0; i < int(kTypesOfLetters.size()); ++i) {
        const Vertex at = place(i);
        float beside = -1;
        for (const char *const atom : {"N", "CA", "C"}) {
            text += QString::asprintf("ATOM  %5d  %-3s %s A%4d    %8.3f%8.3f%8.3f\n", ++serial,
                                      atom, kTypesOfLetters[std::size_t(i)], i + 1,
                                      double(at.x() + beside), double(at.y()), double(at.z()))
                        .toLatin1();
            beside += 1;
        }
    }
    return text;
}

families::FamilyFolder FamilyFiles::makeFolder(const std::vector<std::string> &names)
{
    families::FamilyFolder folder(path("models").toStdString(), "globins", {});
    std::vector<families::FamilyTarget> targets;
    for (const std::string &name : names)
        targets.push_back({name, name, "known", "known", 7, 7, 7});
    folder.setTargets(targets);
    for (const char *const part : {"inputs", "templates", "models", "runs"})
        fs::create_directories(folder.path() / part);
    EXPECT_TRUE(folder.save());
    for (const families::FamilyTarget &target : folder.targets())
        put(folder.inputOf(target), ">P1;known\nstructureX:::::::::\nACDEFGH*\n>P1;" +
                                        QByteArray::fromStdString(target.name) +
                                        "\nsequence:::::::::\nACDEFGH*\n");
    put(folder.path() / "templates/known.pdb", pdb());
    return folder;
}

void FamilyFiles::record(const families::FamilyFolder &folder, const std::string &target,
                         const kestram::JobRecord &record)
{
    EXPECT_TRUE(kestram::writeJobRecord(folder.recordOf(targetIn(folder, target)), record));
}

void FamilyFiles::build(const families::FamilyFolder &folder, const std::string &target,
                        double seconds)
{
    kestram::JobRecord job;
    job.state = kestram::JobState::Ok;
    job.target = target;
    job.host = "here";
    job.started = double(std::time(nullptr));
    job.seconds = seconds;
    job.modelled = 7;
    job.backboneScore = -1.25;
    job.exitStatus = 0;
    record(folder, target, job);
    put(folder.modelOf(targetIn(folder, target)), pdb());
}

void FamilyFiles::fail(const families::FamilyFolder &folder, const std::string &target,
                       const std::string &message)
{
    kestram::JobRecord job;
    job.state = kestram::JobState::Failed;
    job.host = "here";
    job.started = double(std::time(nullptr));
    job.seconds = 2;
    job.exitStatus = 4;
    job.message = message;
    record(folder, target, job);
}

Structure &FamilyFiles::known()
{
    put(path("known.pdb").toStdString(), pdb());
    Result<FileContents> contents = readFile(path("known.pdb").toStdString());
    EXPECT_TRUE(contents);
    const DataAdder<Space> guard(nullptr, Space::instance());
    return *ObjectFactory::adopt(std::move(contents->structures.front()));
}

Alignment &FamilyFiles::family(const std::vector<std::string> &rows)
{
    AlignmentRecord record;
    record.name = "globins";
    for (const std::string &name : rows) {
        RowRecord &made = record.rows.emplace_back();
        made.name = name;
        made.sequence.append(kLetters);
        if (name == "known")
            made.link.change().structure = name;
    }
    const DataAdder<Space> guard(nullptr, Space::instance());
    return *ObjectFactory::adopt(std::move(record));
}

Vertex FamilyFiles::placeIn(const Alignment &shown, std::size_t row, std::size_t letter)
{
    return shown.table().row(row).sequence().position(letter);
}

void FamilyFiles::expectNear(const Vertex &found, const Vertex &wanted)
{
    EXPECT_NEAR(found.x(), wanted.x(), 0.01);
    EXPECT_NEAR(found.y(), wanted.y(), 0.01);
    EXPECT_NEAR(found.z(), wanted.z(), 0.01);
}
