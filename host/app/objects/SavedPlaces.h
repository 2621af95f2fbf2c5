// SPDX-License-Identifier: GPL-3.0-or-later
// Knows in which files objects are saved, and which of them have changes that are in no file. Owned
// by the workbench.
#pragma once

#include "FileCheck.h"
#include "WriteOptions.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace TAMBO {
class Alignment;
class Compound;
class EditParts;
class History;
class KeptState;
} // namespace TAMBO

namespace TAMBO::app {

class ObjectSources;
class WritableObject;

class SavedPlaces
{
    Q_DECLARE_TR_FUNCTIONS(SavedPlaces)

public:
    // What would be lost.
    struct Unsaved
    {
        Compound *object = nullptr;
        // "residue numbers, secondary structure".
        QString what;
        // Where it is saved without a question; empty: the user is asked.
        QString file;
        // Structures whose new numbers the file names, and which no file has until they are saved
        // themselves.
        std::vector<const Compound *> numbersFrom;
    };
    struct Place
    {
        QString file;
        WriteOptions options;
        // Nothing else is in the file.
        bool isWhole = true;
        // The file says more of the object than was opened of it.
        bool holdsMore = false;
        // The file as it was read or written; nothing when nobody knows.
        std::optional<FileState> state = {};
    };

    // Both outlive the saver.
    SavedPlaces(History &history, const ObjectSources &sources);
    ~SavedPlaces();
    SavedPlaces(const SavedPlaces &) = delete;
    SavedPlaces &operator=(const SavedPlaces &) = delete;

    // Told of each file that is written for the user, as soon as it is complete.
    void setSaved(std::function<void(const QString &file)> saved) { m_Saved = std::move(saved); }

    [[nodiscard]] std::vector<Unsaved> unsaved() const;
    [[nodiscard]] bool isUnsaved(const Compound &object) const;
    [[nodiscard]] std::vector<Compound *> unsavedObjects() const;

    // The file that may be replaced by the object as it is now without a question: it holds all of
    // the object and nothing else.
    [[nodiscard]] std::optional<Place> placeOf(const Compound &object) const;
    // The file that the object came from or was saved to, if nothing else is in it.
    [[nodiscard]] std::optional<Place> ownFileOf(const Compound &object) const;
    // What would be lost there, one sentence each. content: the object's.
    [[nodiscard]] QStringList lossesIn(const Place &place, const Compound &object,
                                       const WritableObject &content) const;
    // Where the object, or what it is a part of, came from or was saved to, whatever else is there.
    [[nodiscard]] std::optional<Place> lastPlaceOf(const Compound &object) const;
    // That was written last for the user, by whatever command, else what it came from; may be
    // empty.
    [[nodiscard]] QString lastFileOf(const Compound &object) const;
    // What to suggest for an object without such a file; an empty file name suggests no folder.
    [[nodiscard]] Place suggestionFor(const Compound &object) const;

    // ---- What others have done

    // The object, without changes, is what the file holds.
    void noteOpened(const Compound &object, const Place &place);
    // The file is this object's from now on: no other one that came from there replaces it without
    // a question.
    void takeFile(const Compound &object, const QString &file);
    // It was written, without losses or with such as the user accepts. A file whose state the place
    // does not tell is looked at.
    void noteSaved(const Compound &object, const Place &place);
    // In that state.
    void noteSaved(const Compound &object, const Place &place, const KeptState &state);
    // The state of an object that is going to be written, as it is now.
    [[nodiscard]] std::unique_ptr<KeptState> keepState(const Compound &object) const;

    // ---- Saving on behalf of others, who have the file's name

    // Sentences about residue numbers in the file that are in no structure file.
    [[nodiscard]] QStringList strangeNumbers(const Compound &object,
                                             const WriteOptions &options) const;
    // A file without all of the object was written. The object counts as saved in that state, or in
    // the one it is in, when the user has accepted that, or has done so before.
    void noteWritten(const Compound &object, const Place &place, const QStringList &losses,
                     const KeptState *state = nullptr);
    void acceptWritten(const Compound &object);
    // Whether the user has accepted losses of all these kinds of the object in the file before.
    [[nodiscard]] bool isAccepted(const Compound &object, const QString &file,
                                  const QStringList &losses) const;
    void accept(const Compound &object, const QString &file, const QStringList &losses);

    // ---- For what is kept with a session

    // By the objects' numbers. accepted: the losses there that the user has accepted.
    using PlaceVisitor = std::function<void(std::uint32_t identity, const Place &place,
                                            const QStringList &accepted)>;
    void forEachPlace(const PlaceVisitor &visit) const;
    // Whether the object counts as saved is the history's business.
    void restore(const Compound &object, const Place &place, const QStringList &accepted);
    // No object is in any file.
    void clear();
    // Another number when forEachPlace() tells something else.
    [[nodiscard]] std::uint64_t revision() const noexcept { return m_Revision; }

private:
    [[nodiscard]] EditParts partsOf(const Compound &object, EditParts parts) const;
    [[nodiscard]] std::optional<Place> placeOf(const Compound &object, EditParts parts) const;
    [[nodiscard]] QString describe(const Compound &object, EditParts parts) const;

    History &m_History;
    const ObjectSources &m_Sources;
    struct Known
    {
        Place place;
        // One spelling a file; empty when it was not there.
        QString target;
        std::uint32_t identity = 0;
    };
    void setPlace(const Compound &object, const Place &place);
    void wrote(const Compound &object, const QString &file);
    [[nodiscard]] static Place withState(Place place);
    // Nothing when none has been.
    [[nodiscard]] QStringList acceptedIn(const Compound &object, const QString &file) const;

    std::function<void(const QString &file)> m_Saved;
    std::map<const Compound *, Known> m_Places;
    // By the files, each in one spelling.
    std::map<const Compound *, std::map<QString, QStringList>> m_Accepted;
    std::map<const Compound *, QString> m_LastFiles;
    // Not accepted yet.
    struct Written
    {
        Place place;
        QStringList losses;
    };
    std::map<const Compound *, Written> m_Written;
    std::uint64_t m_Revision = 0;
};

} // namespace TAMBO::app
