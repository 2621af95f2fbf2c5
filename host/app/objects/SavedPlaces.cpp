// SPDX-License-Identifier: GPL-3.0-or-later
#include "SavedPlaces.h"

#include "Alignment.h"
#include "FileName.h"
#include "FreedObjects.h"
#include "History.h"
#include "KeptState.h"
#include "LossKinds.h"
#include "ObjectFacts.h"
#include "ObjectSources.h"
#include "StoredObject.h"
#include "Structure.h"
#include "WritableObject.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace TAMBO::app {

namespace {

// What the edits of an object come to, in the order in which it is told.
QString text(EditPart part)
{
    switch (part) {
    case EditPart::Members:
        return SavedPlaces::tr("chains or groups");
    case EditPart::Cells:
        return SavedPlaces::tr("rows, columns or gaps");
    case EditPart::Name:
        return SavedPlaces::tr("name");
    case EditPart::RowNames:
        return SavedPlaces::tr("names of rows");
    case EditPart::Numbers:
        return SavedPlaces::tr("residue numbers");
    case EditPart::HeaderNumbers:
        return SavedPlaces::tr("residue numbers in headers");
    case EditPart::Elements:
        return SavedPlaces::tr("secondary structure");
    case EditPart::Places:
        return SavedPlaces::tr("coordinates");
    case EditPart::Whole:
    case EditPart::Arrival:
    case EditPart::Display:
        break;
    }
    return {};
}

// One spelling a file, also of one that is not there yet.
QString spelledFile(const QString &file)
{
    const QFileInfo info(file);
    const QString found = info.canonicalFilePath();
    if (!found.isEmpty())
        return found;
    const QString folder = QFileInfo(info.absolutePath()).canonicalFilePath();
    return folder.isEmpty() ? info.absoluteFilePath() : folder + u'/' + info.fileName();
}

bool isModel(const Compound &object)
{
    const auto *const structure = dynamic_cast<const Structure *>(&object);
    return structure != nullptr && structure->isModel();
}

} // namespace

SavedPlaces::SavedPlaces(History &history, const ObjectSources &sources)
    : m_History(history), m_Sources(sources)
{
    // Another object may come to stand at the address, which is in no file.
    m_History.setFreeCallback([this](const FreedObjects &freed) {
        const auto isFreed = [&freed](const auto &entry) { return freed.contains(entry.first); };
        std::erase_if(m_Places, isFreed);
        std::erase_if(m_Accepted, isFreed);
        std::erase_if(m_Written, isFreed);
        std::erase_if(m_LastFiles, isFreed);
        ++m_Revision;
    });
}

SavedPlaces::~SavedPlaces()
{
    m_History.setFreeCallback({});
}

// ---- What is in no file

// Only PIR files name residue numbers of structures, so that those of others are not out of date.
EditParts SavedPlaces::partsOf(const Compound &object, EditParts parts) const
{
    const auto place = m_Places.find(&object);
    if (place != m_Places.end() && place->second.place.options.format != FileFormat::Pir)
        parts.remove(EditPart::HeaderNumbers);
    return parts;
}

std::vector<SavedPlaces::Unsaved> SavedPlaces::unsaved() const
{
    std::vector<Unsaved> result;
    for (const UnsavedObject &found : m_History.unsavedObjects()) {
        const EditParts parts = partsOf(*found.object, found.parts);
        if (parts.empty())
            continue;
        Unsaved thing{found.object, describe(*found.object, parts), {}, {}};
        const std::optional<Place> place = placeOf(*found.object, parts);
        if (place)
            thing.file = place->file;
        const auto *const alignment = dynamic_cast<const Alignment *>(found.object);
        const bool isPir = !place || place->options.format == FileFormat::Pir;
        if (alignment != nullptr && isPir) {
            const auto structures = m_History.renumberedStructures(*alignment);
            thing.numbersFrom.assign(structures.begin(), structures.end());
        }
        result.push_back(std::move(thing));
    }
    return result;
}

std::vector<Compound *> SavedPlaces::unsavedObjects() const
{
    std::vector<Compound *> objects;
    for (const UnsavedObject &found : m_History.unsavedObjects()) {
        if (!partsOf(*found.object, found.parts).empty())
            objects.push_back(found.object);
    }
    return objects;
}

bool SavedPlaces::isUnsaved(const Compound &object) const
{
    return !partsOf(object, m_History.unsavedParts(object)).empty();
}

QString SavedPlaces::describe(const Compound &object, EditParts parts) const
{
    if (parts.has(EditPart::Whole))
        return isModel(object) ? tr("all of the model") : tr("all of it");
    QStringList words;
    for (const EditPart part :
         {EditPart::Members, EditPart::Cells, EditPart::Name, EditPart::RowNames, EditPart::Numbers,
          EditPart::HeaderNumbers, EditPart::Elements, EditPart::Places}) {
        if (parts.has(part))
            words << text(part);
    }
    return words.join(QStringLiteral(", "));
}

// ---- Saving

// A file whose name the object does not have any more, or that would lose something, is none that
// may be replaced without a question. Nor is one that a structure was opened from: it holds more
// than is kept of it here.
std::optional<SavedPlaces::Place> SavedPlaces::placeOf(const Compound &object,
                                                       EditParts parts) const
{
    const auto found = m_Places.find(&object);
    if (found == m_Places.end() || parts.has(EditPart::Name))
        return std::nullopt;
    const Place &place = found->second.place;
    if (!place.isWhole || place.holdsMore)
        return std::nullopt;
    const WritableObject content(object);
    if (!content.checkWritable(place.options))
        return std::nullopt;
    const QStringList losses = content.ownLosses(place.options);
    return losses.isEmpty() || isAccepted(object, place.file, losses) ? std::optional(place)
                                                                      : std::nullopt;
}

std::optional<SavedPlaces::Place> SavedPlaces::placeOf(const Compound &object) const
{
    return placeOf(object, partsOf(object, m_History.unsavedParts(object)));
}

std::optional<SavedPlaces::Place> SavedPlaces::ownFileOf(const Compound &object) const
{
    const auto found = m_Places.find(&object);
    if (found == m_Places.end() || !found->second.place.isWhole)
        return std::nullopt;
    return found->second.place;
}

QStringList SavedPlaces::lossesIn(const Place &place, const Compound &object,
                                  const WritableObject &content) const
{
    QStringList sentences = content.ownLosses(place.options);
    if (place.holdsMore)
        sentences << tr("What the file holds beside the coordinates, chains, helices and strands "
                        "of its first model is not written, and would be gone: further models, "
                        "waters, temperature factors, most of the header.");
    const QString name = QString::fromStdString(fileNameOf(object.Name()));
    if (m_History.unsavedParts(object).has(EditPart::Name) &&
        !QFileInfo(place.file).fileName().startsWith(name + u'.'))
        sentences
            << tr("It is called %1 now, and the file would keep its name.").arg(nameText(object));
    return sentences;
}

std::optional<SavedPlaces::Place> SavedPlaces::lastPlaceOf(const Compound &object) const
{
    for (const Compound *at = &object; at != nullptr; at = at->Parent()) {
        const auto found = m_Places.find(at);
        if (found != m_Places.end())
            return found->second.place;
    }
    return std::nullopt;
}

// Beside the file that the object came from, in its format. A model came out of a scratch folder.
SavedPlaces::Place SavedPlaces::suggestionFor(const Compound &object) const
{
    const auto known = m_Places.find(&object);
    if (known != m_Places.end())
        return known->second.place;
    const std::filesystem::path file =
        isModel(object) ? std::filesystem::path() : m_Sources.fileOf(object);
    return {QFile::decodeName(QByteArray::fromStdString(file.string())),
            writeOptionsFor(file).value_or(WriteOptions())};
}

QString SavedPlaces::lastFileOf(const Compound &object) const
{
    const auto last = m_LastFiles.find(&object);
    return last != m_LastFiles.end() ? last->second : suggestionFor(object).file;
}

std::unique_ptr<KeptState> SavedPlaces::keepState(const Compound &object) const
{
    return std::make_unique<KeptState>(m_History, object);
}

void SavedPlaces::takeFile(const Compound &object, const QString &file)
{
    const QString taken = QFileInfo(file).canonicalFilePath();
    for (auto &[other, known] : m_Places) {
        if (other != &object && !taken.isEmpty() && known.target == taken)
            known.place.isWhole = false;
    }
    ++m_Revision;
}

void SavedPlaces::setPlace(const Compound &object, const Place &place)
{
    m_Places[&object] = {place, QFileInfo(place.file).canonicalFilePath(), identityOf(object)};
    ++m_Revision;
}

SavedPlaces::Place SavedPlaces::withState(Place place)
{
    if (!place.state)
        place.state = lookAt(QFile::encodeName(place.file).toStdString());
    return place;
}

void SavedPlaces::noteOpened(const Compound &object, const Place &place)
{
    if (place.isWhole)
        takeFile(object, place.file);
    setPlace(object, place);
    m_History.markSaved(object);
}

void SavedPlaces::noteSaved(const Compound &object, const Place &place)
{
    takeFile(object, place.file);
    setPlace(object, withState(place));
    m_History.markSaved(object);
    wrote(object, place.file);
}

void SavedPlaces::noteSaved(const Compound &object, const Place &place, const KeptState &state)
{
    takeFile(object, place.file);
    setPlace(object, withState(place));
    m_History.markSaved(state);
    wrote(object, place.file);
}

void SavedPlaces::wrote(const Compound &object, const QString &file)
{
    m_LastFiles[&object] = file;
    if (m_Saved)
        m_Saved(file);
}

// ---- On behalf of others

QStringList SavedPlaces::strangeNumbers(const Compound &object, const WriteOptions &options) const
{
    const auto *const alignment = dynamic_cast<const Alignment *>(&object);
    if (alignment == nullptr || options.format != FileFormat::Pir)
        return {};
    QStringList sentences;
    for (const Structure *structure : m_History.renumberedStructures(*alignment))
        sentences << tr("It names residue numbers of %1 that are in no structure file until %1 is "
                        "saved, too.")
                         .arg(nameText(*structure));
    return sentences;
}

void SavedPlaces::noteWritten(const Compound &object, const Place &place, const QStringList &losses,
                              const KeptState *state)
{
    takeFile(object, place.file);
    m_Written[&object] = {withState(place), losses};
    if (state != nullptr)
        m_History.markWritten(*state);
    else
        m_History.markWritten(object);
    if (losses.isEmpty() || isAccepted(object, place.file, losses))
        acceptWritten(object);
    wrote(object, place.file);
}

void SavedPlaces::acceptWritten(const Compound &object)
{
    const auto found = m_Written.find(&object);
    if (found == m_Written.end())
        return;
    accept(object, found->second.place.file, found->second.losses);
    setPlace(object, found->second.place);
    m_Written.erase(found);
    m_History.acceptWritten(object);
}

QStringList SavedPlaces::acceptedIn(const Compound &object, const QString &file) const
{
    const auto found = m_Accepted.find(&object);
    if (found == m_Accepted.end())
        return {};
    const auto losses = found->second.find(spelledFile(file));
    return losses == found->second.end() ? QStringList() : losses->second;
}

bool SavedPlaces::isAccepted(const Compound &object, const QString &file,
                             const QStringList &losses) const
{
    return areKindsKnown(losses, acceptedIn(object, file));
}

void SavedPlaces::accept(const Compound &object, const QString &file, const QStringList &losses)
{
    if (losses.isEmpty())
        return;
    QStringList &known = m_Accepted[&object][spelledFile(file)];
    for (const QString &loss : losses) {
        if (!areKindsKnown({loss}, known))
            known << loss;
    }
    ++m_Revision;
}

// ---- What is kept with a session

void SavedPlaces::forEachPlace(const PlaceVisitor &visit) const
{
    for (const auto &[object, known] : m_Places)
        visit(known.identity, known.place, acceptedIn(*object, known.place.file));
}

void SavedPlaces::restore(const Compound &object, const Place &place, const QStringList &accepted)
{
    setPlace(object, place);
    accept(object, place.file, accepted);
}

void SavedPlaces::clear()
{
    m_Places.clear();
    m_Accepted.clear();
    m_Written.clear();
    m_LastFiles.clear();
    ++m_Revision;
}

} // namespace TAMBO::app
