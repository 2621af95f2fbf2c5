// SPDX-License-Identifier: GPL-3.0-or-later
// The files that objects came from and are saved in, as a value of a session, so that Save goes to
// the same file when the session is there again.
#pragma once

#include "KeptValue.h"
#include "ObjectSources.h"
#include "SavedPlaces.h"

#include <QCoreApplication>

#include <utility>
#include <vector>

namespace TAMBO {
class ValueReader;
class ValueWriter;
} // namespace TAMBO

namespace TAMBO::app {

class KeptFiles final : public sessions::KeptValue
{
    Q_DECLARE_TR_FUNCTIONS(TAMBO::app::KeptFiles)

public:
    // Both outlive this.
    KeptFiles(ObjectSources &sources, SavedPlaces &places)
        : m_Sources(sources), m_Places(places) { }

    [[nodiscard]] std::string name() const override { return "files"; }
    [[nodiscard]] std::string store() const override;
    // A file that is not what it was is told in the log.
    [[nodiscard]] Result<void> load(std::string_view content, const ObjectIndex &objects) override;
    [[nodiscard]] std::optional<std::uint64_t> revision() const override;
    void clear() override;

private:
    struct Kept
    {
        std::uint32_t identity = 0;
        SavedPlaces::Place place;
        QStringList accepted;
    };
    struct Content
    {
        ObjectSources::Files sources;
        std::vector<Kept> places;
    };

    static void write(const SavedPlaces::Place &place, ValueWriter &out);
    [[nodiscard]] static SavedPlaces::Place readPlace(ValueReader &in);
    [[nodiscard]] static Content read(ValueReader &in);
    void tellChanges(const Content &content) const;

    ObjectSources &m_Sources;
    SavedPlaces &m_Places;
};

} // namespace TAMBO::app
