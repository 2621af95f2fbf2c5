// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeptFiles.h"

#include "FileCheck.h"
#include "FileStateBytes.h"
#include "Logger.h"
#include "ObjectIndex.h"
#include "ValueBytes.h"

#include <QFile>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <set>
#include <system_error>

namespace TAMBO::app {

namespace {

constexpr std::uint64_t kFilesVersion = 1;
constexpr std::uint64_t kMostIdentity = std::numeric_limits<std::uint32_t>::max();

// Of a place.
constexpr unsigned kHasLongNames = 1;
constexpr unsigned kIsSequential = 2;
constexpr unsigned kIsWhole = 4;
constexpr unsigned kHoldsMore = 8;
constexpr unsigned kHasState = 16;
constexpr unsigned kHasHash = 32;
constexpr unsigned kAllOfPlace = 2 * kHasHash - 1;

// What a session says that somebody else has made must not put anything into just any file: it is
// one of alignments or structures, or the very one that it was.
bool mayReplace(const SavedPlaces::Place &place)
{
    const std::filesystem::path file = QFile::encodeName(place.file).toStdString();
    if (!place.isWhole || !place.state)
        return false;
    if (writeOptionsFor(file))
        return true;
    const FileCheck check = checkFile(file, *place.state);
    return check.now && check.now->looksLike(*place.state);
}

QString shown(const std::filesystem::path &file)
{
    return QFile::decodeName(QByteArray::fromStdString(file.string()));
}

} // namespace

std::string KeptFiles::store() const
{
    ValueWriter out;
    ValueWriter places;
    std::size_t count = 0;
    m_Places.forEachPlace(
        [&](std::uint32_t identity, const SavedPlaces::Place &place, const QStringList &accepted) {
            ++count;
            places.number(identity);
            write(place, places);
            places.number(std::size_t(accepted.size()));
            for (const QString &loss : accepted)
                places.text(loss.toStdString());
        });
    if (count == 0 && m_Sources.files().empty())
        return {};
    out.number(kFilesVersion);
    out.number(m_Sources.files().size());
    for (const auto &[identity, file] : m_Sources.files()) {
        out.number(identity);
        out.text(file.string());
    }
    out.number(count);
    out.raw(places.bytes());
    return out.take();
}

void KeptFiles::write(const SavedPlaces::Place &place, ValueWriter &out)
{
    out.text(QFile::encodeName(place.file).toStdString());
    out.text(formatName(place.options.format));
    out.number(place.options.lineLength);
    out.number((place.options.hasLongNames ? kHasLongNames : 0U) |
               (place.options.isSequential ? kIsSequential : 0U) | (place.isWhole ? kIsWhole : 0U) |
               (place.holdsMore ? kHoldsMore : 0U) | (place.state ? kHasState : 0U) |
               (place.state && place.state->hash ? kHasHash : 0U));
    if (place.state)
        writeFileState(*place.state, out);
}

SavedPlaces::Place KeptFiles::readPlace(ValueReader &in)
{
    SavedPlaces::Place place;
    const std::string_view file = in.fileName();
    place.file = QFile::decodeName(QByteArray(file.data(), qsizetype(file.size())));
    const std::optional<WriteOptions> options = writeOptionsNamed(in.text());
    if (!options)
        in.fail("a file is of an unknown format");
    place.options = options.value_or(WriteOptions());
    place.options.lineLength = in.number(std::numeric_limits<std::uint32_t>::max());
    const std::uint64_t flags = in.number(kAllOfPlace);
    place.options.hasLongNames = (flags & kHasLongNames) != 0;
    place.options.isSequential = (flags & kIsSequential) != 0;
    place.isWhole = (flags & kIsWhole) != 0;
    place.holdsMore = (flags & kHoldsMore) != 0;
    if ((flags & kHasState) != 0)
        place.state = readFileState(in, (flags & kHasHash) != 0);
    return place;
}

KeptFiles::Content KeptFiles::read(ValueReader &in)
{
    constexpr std::size_t kLeastBytes = 2;
    Content content;
    if (in.number() != kFilesVersion)
        in.fail("it was written by a newer version of the program");
    for (std::size_t i = in.count(kLeastBytes); i > 0 && !in.failed(); --i) {
        const auto identity = static_cast<std::uint32_t>(in.number(kMostIdentity));
        content.sources[identity] = in.fileName();
    }
    for (std::size_t i = in.count(kLeastBytes); i > 0 && !in.failed(); --i) {
        Kept kept;
        kept.identity = static_cast<std::uint32_t>(in.number(kMostIdentity));
        kept.place = readPlace(in);
        for (std::size_t losses = in.count(); losses > 0 && !in.failed(); --losses) {
            const std::string_view loss = in.text();
            kept.accepted << QString::fromUtf8(loss.data(), qsizetype(loss.size()));
        }
        content.places.push_back(std::move(kept));
    }
    if (!in.atEnd())
        in.fail("there is something behind the files");
    return content;
}

Result<void> KeptFiles::load(std::string_view content, const ObjectIndex &objects)
{
    ValueReader in(content);
    Content kept = read(in);
    if (in.failed())
        return Failure(FailureKind::BadInput, in.cause());
    std::erase_if(kept.sources,
                  [&](const auto &entry) { return objects.find(entry.first) == nullptr; });
    std::erase_if(kept.places,
                  [&](const Kept &one) { return objects.find(one.identity) == nullptr; });
    std::ranges::sort(kept.places, {}, &Kept::identity);
    for (Kept &one : kept.places) {
        one.place.isWhole = mayReplace(one.place);
        m_Places.restore(*objects.find(one.identity), one.place, one.accepted);
    }
    tellChanges(kept);
    m_Sources.setFiles(std::move(kept.sources));
    return {};
}

// Once a file, however many objects are of it.
void KeptFiles::tellChanges(const Content &content) const
{
    std::set<QString> told;
    const auto tell = [&](const QString &file, FileChange change) {
        if (change == FileChange::None || !told.insert(file).second)
            return;
        Logger::Write(change == FileChange::Gone
                          ? tr("%1 is missing.").arg(file)
                          : tr("%1 has changed since it was opened or saved here.").arg(file),
                      Logger::Severity::Warning);
    };
    for (const Kept &one : content.places) {
        if (one.place.state)
            tell(one.place.file,
                 checkFile(QFile::encodeName(one.place.file).toStdString(), *one.place.state)
                     .change);
    }
    for (const auto &[identity, file] : content.sources) {
        std::error_code error;
        const auto type = std::filesystem::status(file, error).type();
        if (type == std::filesystem::file_type::not_found)
            tell(shown(file), FileChange::Gone);
    }
}

std::optional<std::uint64_t> KeptFiles::revision() const
{
    return m_Sources.revision() + m_Places.revision();
}

void KeptFiles::clear()
{
    m_Sources.setFiles({});
    m_Places.clear();
}

} // namespace TAMBO::app
