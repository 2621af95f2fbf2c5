// SPDX-License-Identifier: GPL-3.0-or-later
#include "SessionConversion.h"

#include "Compound.h"
#include "Config.h"
#include "ExitStatus.h"
#include "FileWriter.h"
#include "FormatText.h"
#include "ObjectFiles.h"
#include "OpenedSession.h"
#include "WritableObject.h"

#include <QFile>

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <system_error>
#include <utility>
#include <vector>

namespace TAMBO::app {

namespace {

namespace fs = std::filesystem;

std::string shownName(const fs::path &path)
{
    // One that ends in a slash has none behind it.
    return formats::cleanText(
        (path.has_filename() ? path : path.parent_path()).filename().string());
}

class SessionConversion
{
public:
    SessionConversion(const ConvertOrder &order, const ObjectSpace &space)
        : m_Order(order), m_Output(order.output), m_Files(filesFor(order, space))
    { }

    [[nodiscard]] Result<void> run()
    {
        if (m_Order.object) {
            std::erase_if(m_Files, [&](const ObjectFile &file) {
                return file.objects.size() != 1 || file.objects.front()->Name() != *m_Order.object;
            });
        }
        return isFolder() ? writeFolder() : writeFile();
    }
    // What is lost by it, and what there is to say besides.
    [[nodiscard]] const std::vector<std::string> &remarks() const noexcept { return m_Remarks; }

private:
    [[nodiscard]] static std::vector<ObjectFile> filesFor(const ConvertOrder &order,
                                                          const ObjectSpace &space)
    {
        ObjectFileOptions options;
        if (order.hasEnding || order.isFormatNamed)
            (isStructureFormat(order.options.format) ? options.structures : options.alignments) =
                order.options;
        std::vector<ObjectFile> files = objectFilesOf(space, options);
        // One of many that nobody shows is wanted for itself.
        if (order.object && !files.empty() && files.back().objects.size() > 1) {
            const ObjectFile sequences = std::move(files.back());
            files.pop_back();
            for (const Compound *const sequence : sequences.objects)
                files.push_back({sequences.name, {sequence}, options.alignments});
        }
        return files;
    }

    [[nodiscard]] Failure refusal(const std::string &cause) const
    {
        return {FailureKind::Refused, cause, {shownName(m_Order.input)}};
    }
    [[nodiscard]] std::string called() const
    {
        return m_Order.object ? " called " + formats::cleanText(*m_Order.object) : std::string();
    }

    // Those that go into a file of the format. Sequences do where there is no alignment.
    [[nodiscard]] std::vector<const ObjectFile *> candidates() const
    {
        const bool isOfStructures = isStructureFormat(m_Order.options.format);
        std::vector<const ObjectFile *> alignments;
        std::vector<const ObjectFile *> others;
        for (const ObjectFile &file : m_Files) {
            const CompoundKind kind = file.objects.front()->Kind();
            if ((kind == CompoundKind::Structure) != isOfStructures)
                continue;
            (isOfStructures || kind == CompoundKind::Alignment ? alignments : others)
                .push_back(&file);
        }
        return alignments.empty() ? others : alignments;
    }

    [[nodiscard]] bool isFolder() const
    {
        std::error_code error;
        if (!m_Output.has_filename() || fs::is_directory(m_Output, error))
            return true;
        if (m_Order.hasEnding)
            return false;
        return !m_Order.isFormatNamed || (!m_Order.object && candidates().size() > 1);
    }

    [[nodiscard]] Result<void> writeFile()
    {
        const FileFormat format = m_Order.options.format;
        const bool isOfStructures = isStructureFormat(format);
        const std::vector<const ObjectFile *> found = candidates();
        if (found.empty())
            return refusal(std::string("holds no ") + (isOfStructures ? "structure" : "alignment") +
                           called() + ", which is what " + fileOf(format) + " is for");
        if (found.size() > 1)
            return refusal("holds " + std::to_string(found.size()) +
                           (isOfStructures ? " structures" : " alignments") + called() + "; " +
                           (m_Order.object ? "" : "say which one with --object NAME, or ") +
                           "name a folder for all of them");
        if (const std::string remark = endingRemark(m_Order); !remark.empty())
            m_Remarks.push_back(remark);
        return write(*found.front(), m_Output, m_Order.options);
    }

    [[nodiscard]] Result<void> writeFolder()
    {
        if (m_Files.empty())
            return refusal(m_Order.object ? "holds nothing" + called()
                                          : "holds nothing that a file could be made of");
        for (const ObjectFile &file : m_Files) {
            if (const Result<void> fits = file.content().checkWritable(file.options); !fits)
                return Failure(fits.error().kind, fits.error().cause,
                               {formats::cleanText(file.name)});
        }
        bool isNew = false;
        if (const Result<void> made = makeFolder(isNew); !made)
            return made;
        std::vector<fs::path> written;
        for (const ObjectFile &file : m_Files) {
            const fs::path path = m_Output / file.name;
            std::error_code error;
            const bool isThere = fs::exists(fs::symlink_status(path, error));
            if (Result<void> done = write(file, path, file.options); !done) {
                takeBack(written, isNew);
                return done;
            }
            if (!isThere)
                written.push_back(path);
        }
        return {};
    }

    [[nodiscard]] Result<void> makeFolder(bool &isNew) const
    {
        const auto failed = [&](FailureKind kind, const std::string &cause) {
            return Failure(kind, cause, {shownName(m_Output)});
        };
        const fs::path folder = m_Output.has_filename() ? m_Output : m_Output.parent_path();
        std::error_code error;
        if (fs::exists(folder, error) && !fs::is_directory(folder, error))
            return failed(FailureKind::Refused, "is a file, where a folder is needed");
        isNew = fs::create_directory(folder, error);
        if (error)
            return failed(FailureKind::System, "cannot be made: " + error.message());
        const bool isEmpty = fs::is_empty(m_Output, error);
        if (error)
            return failed(FailureKind::System, "cannot be read: " + error.message());
        if (!isEmpty && !m_Order.isForced)
            return failed(FailureKind::Refused,
                          "the folder is not empty; with --force files are written into it");
        return {};
    }

    void takeBack(const std::vector<fs::path> &written, bool isNew) const
    {
        std::error_code ignored;
        for (const fs::path &path : written)
            fs::remove(path, ignored);
        if (isNew)
            fs::remove(m_Output.has_filename() ? m_Output : m_Output.parent_path(), ignored);
    }

    [[nodiscard]] Result<void> write(const ObjectFile &file, const fs::path &path,
                                     const WriteOptions &options)
    {
        const WritableObject content = file.content();
        WriteAids aids{Config::GetPersonalTmpDir, {}};
        const QString name = QFile::decodeName(path.c_str());
        if (Result<void> written = content.write(name, options, aids); !written)
            return written;
        m_Remarks.insert(m_Remarks.end(), aids.remarks.begin(), aids.remarks.end());
        for (const QString &loss : content.losses(options))
            m_Remarks.push_back(shownName(path) + ": " + loss.toStdString());
        return {};
    }

    const ConvertOrder &m_Order;
    fs::path m_Output;
    std::vector<ObjectFile> m_Files;
    std::vector<std::string> m_Remarks;
};

} // namespace

int convertSession(const ConvertOrder &order, std::ostream &err)
{
    const auto session = OpenedSession::open(order.input);
    if (!session)
        return complain(err, session.error(), kBadInput);
    SessionConversion conversion(order, session.value()->space());
    if (const Result<void> done = conversion.run(); !done)
        return complain(err, done.error(), kBadInput);
    for (const std::string &remark : conversion.remarks())
        err << remark << '\n';
    return 0;
}

} // namespace TAMBO::app
