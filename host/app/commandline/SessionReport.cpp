// SPDX-License-Identifier: GPL-3.0-or-later
#include "SessionReport.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "OpenedSession.h"
#include "Peptide.h"
#include "Structure.h"

#include <nlohmann/json.hpp>

#include <QDateTime>

#include <utility>

namespace TAMBO::app {

namespace {

using ObjectJson = nlohmann::ordered_json;

ObjectJson describe(const Compound &object)
{
    ObjectJson json = {{"kind", object.TypeName()}, {"name", object.Name()}};
    if (const auto *const alignment = dynamic_cast<const Alignment *>(&object)) {
        json["rows"] = alignment->table().rowCount();
        json["columns"] = alignment->width();
    } else if (const auto *const structure = dynamic_cast<const Structure *>(&object)) {
        std::size_t residues = 0;
        for (std::size_t i = 0; i < structure->objectCount(); ++i)
            residues += structure->chain(i)->residueCount();
        json["chains"] = structure->objectCount();
        json["residues"] = residues;
    } else if (const auto *const sequence = dynamic_cast<const Peptide *>(&object)) {
        json["letters"] = sequence->residueCount();
    }
    return json;
}

// As other programs read it; null when nobody knows.
ObjectJson timeText(std::int64_t milliseconds)
{
    if (milliseconds == 0)
        return nullptr;
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC)
        .toString(Qt::ISODate)
        .toStdString();
}

} // namespace

Result<void> describeSession(const std::string &file, nlohmann::ordered_json &json)
{
    const auto session = OpenedSession::open(file);
    if (!session)
        return session.error();
    const OpenedSession &opened = *session.value();
    json["format"] = "session";
    json["program"] = opened.origin().program;
    json["saved"] = timeText(opened.origin().time);
    ObjectJson objects = ObjectJson::array();
    for (std::size_t i = 0; i < opened.space().objectCount(); ++i)
        objects.push_back(describe(*opened.space().object(i)));
    json["objects"] = std::move(objects);
    json["undo_steps"] = opened.history().position();
    json["redo_steps"] = opened.history().size() - opened.history().position();
    return {};
}

} // namespace TAMBO::app
