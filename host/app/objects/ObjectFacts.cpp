// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectFacts.h"

#include "Alignment.h"
#include "Element.h"
#include "ObjectTwins.h"
#include "Peptide.h"
#include "Space.h"
#include "Structure.h"

#include <QCoreApplication>
#include <QLocale>

namespace TAMBO::app {

namespace {

QString tr(const char *text, int n = -1)
{
    return QCoreApplication::translate("ObjectFacts", text, nullptr, n);
}

QString number(std::size_t value)
{
    return QLocale().toString(qulonglong(value));
}

// "1 residue", "223 residues".
QString counted(std::size_t count, const char *one, const char *many)
{
    return QStringLiteral("%1 %2").arg(number(count), tr(count == 1 ? one : many));
}

QString residuesText(const Peptide &peptide)
{
    return counted(peptide.residueCount(), "residue", "residues");
}

QString tableText(const Alignment &alignment)
{
    return QStringLiteral("%1 × %2").arg(number(alignment.height()), number(alignment.width()));
}

ObjectKind elementKind(const Compound &element)
{
    switch (element.TypeCode()) {
    case 'H':
    case 'h':
        return ObjectKind::Helix;
    case 'E':
    case 'e':
        return ObjectKind::Strand;
    default:
        return ObjectKind::Turn;
    }
}

void addPeptideFacts(const Peptide &peptide, std::vector<Fact> &facts)
{
    const std::size_t residues = peptide.residueCount();
    facts.emplace_back(tr("Residues"), number(residues));
    if (residues > 0) {
        facts.emplace_back(
            tr("Numbers"),
            tr("%1 to %2")
                .arg(QString::fromStdString(peptide.number(0).getValue()),
                     QString::fromStdString(peptide.number(residues - 1).getValue())));
    }
    std::size_t groups = 0;
    std::size_t elements = 0;
    for (std::size_t i = 0; i < peptide.objectCount(); ++i) {
        if (dynamic_cast<const Group *>(peptide.object(i)) != nullptr)
            ++groups;
        else
            ++elements;
    }
    if (groups > 0)
        facts.emplace_back(tr("Other groups"), number(groups));
    if (elements > 0)
        facts.emplace_back(tr("Helices, strands, turns"), number(elements));
}

void addPositionFacts(const Compound &object, std::vector<Fact> &facts)
{
    const Vertex position = object.Position();
    if (position.isDefined()) {
        facts.emplace_back(tr("Position"), QStringLiteral("%1  %2  %3 Å")
                                               .arg(double(position.x()), 0, 'f', 3)
                                               .arg(double(position.y()), 0, 'f', 3)
                                               .arg(double(position.z()), 0, 'f', 3));
    }
}

} // namespace

ObjectKind kindOf(const Compound &object)
{
    switch (object.Kind()) {
    case CompoundKind::Structure:
        return ObjectKind::Structure;
    case CompoundKind::Chain:
        return ObjectKind::Chain;
    case CompoundKind::Sequence:
        return ObjectKind::Sequence;
    case CompoundKind::Residue:
        return ObjectKind::Residue;
    case CompoundKind::Group:
        return ObjectKind::Group;
    case CompoundKind::Atom:
        return ObjectKind::Atom;
    case CompoundKind::Element:
        return elementKind(object);
    case CompoundKind::Alignment:
        return ObjectKind::Alignment;
    case CompoundKind::Space:
    case CompoundKind::Other:
        break;
    }
    return ObjectKind::Other;
}

QString kindText(ObjectKind kind)
{
    switch (kind) {
    case ObjectKind::Structure:
        return tr("structure");
    case ObjectKind::Chain:
        return tr("chain");
    case ObjectKind::Sequence:
        return tr("sequence");
    case ObjectKind::Alignment:
        return tr("alignment");
    case ObjectKind::Residue:
        return tr("residue");
    case ObjectKind::Group:
        return tr("group");
    case ObjectKind::Atom:
        return tr("atom");
    case ObjectKind::Helix:
        return tr("helix");
    case ObjectKind::Strand:
        return tr("strand");
    case ObjectKind::Turn:
        return tr("turn");
    case ObjectKind::Other:
        return tr("object");
    }
    return {};
}

QString sizeText(const Compound &object)
{
    switch (kindOf(object)) {
    case ObjectKind::Alignment:
        return tableText(dynamic_cast<const Alignment &>(object));
    case ObjectKind::Chain:
    case ObjectKind::Sequence:
        return residuesText(dynamic_cast<const Peptide &>(object));
    case ObjectKind::Structure:
        return counted(object.ChildCount(), "chain", "chains");
    case ObjectKind::Helix:
    case ObjectKind::Strand:
    case ObjectKind::Turn:
        return counted(dynamic_cast<const Element &>(object).residueCount(), "residue", "residues");
    case ObjectKind::Residue:
    case ObjectKind::Group: {
        const std::size_t atoms = object.ChildCount();
        return atoms == 0 ? QString() : counted(atoms, "atom", "atoms");
    }
    case ObjectKind::Atom:
    case ObjectKind::Other:
        break;
    }
    return {};
}

QString nameText(const Compound &object)
{
    const QString name = QString::fromStdString(object.Name());
    return name.isEmpty() ? tr("(no name)") : name;
}

std::vector<QString> listTexts(const std::vector<const Compound *> &objects)
{
    const std::vector<QString> differences = services::ObjectTwins::differences(
        objects, [](const Compound &object) { return object.Name(); });
    std::vector<QString> texts;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        // Among those of one name, the size is told where it makes a difference.
        const QString more = differences[i].isEmpty() ? sizeText(*objects[i]) : differences[i];
        texts.push_back(services::ObjectTwins::label(nameText(*objects[i]), more));
    }
    return texts;
}

QString fullNameText(const Compound &object)
{
    QStringList parts;
    const Compound *const root = Space::instance();
    for (const Compound *at = &object; at != nullptr && at != root; at = at->Parent())
        parts << (at == &object || at->Parent() != root
                      ? QStringLiteral("%1 %2").arg(kindText(kindOf(*at)), nameText(*at))
                      : nameText(*at));
    return parts.join(tr(" of "));
}

bool isRenamable(const Compound &object)
{
    switch (kindOf(object)) {
    case ObjectKind::Residue:
    case ObjectKind::Group:
    case ObjectKind::Atom:
        return false;
    default:
        return true;
    }
}

std::vector<Fact> factsOf(const Compound &object)
{
    const ObjectKind kind = kindOf(object);
    std::vector<Fact> facts;
    facts.emplace_back(tr("Kind"), kindText(kind));
    facts.emplace_back(tr("Name"), nameText(object));
    facts.emplace_back(tr("Full name"), QString::fromStdString(object.GetFQName()));
    if (kind == ObjectKind::Alignment) {
        const auto &alignment = dynamic_cast<const Alignment &>(object);
        facts.emplace_back(tr("Rows × columns"), tableText(alignment));
    } else if (kind == ObjectKind::Structure) {
        const auto &structure = dynamic_cast<const Structure &>(object);
        if (structure.code() != structure.Name())
            facts.emplace_back(tr("Name in files"), QString::fromStdString(structure.code()));
        facts.emplace_back(tr("Chains"), number(structure.ChildCount()));
        facts.emplace_back(tr("Models in the file"), number(structure.modelCount()));
    } else if (kind == ObjectKind::Chain || kind == ObjectKind::Sequence) {
        addPeptideFacts(dynamic_cast<const Peptide &>(object), facts);
    } else if (kind == ObjectKind::Residue || kind == ObjectKind::Group) {
        const auto &group = dynamic_cast<const Group &>(object);
        facts.emplace_back(tr("Type"), QString::fromStdString(object.TypeName()));
        facts.emplace_back(tr("Number"), QString::fromStdString(group.GetSeqId().getValue()));
        facts.emplace_back(tr("Atoms"), number(object.ChildCount()));
    } else if (kind == ObjectKind::Atom) {
        facts.emplace_back(tr("Element"), QString::fromStdString(object.TypeName()));
    } else {
        facts.emplace_back(tr("Size"), sizeText(object));
    }
    addPositionFacts(object, facts);
    facts.emplace_back(tr("Locked"), object.IsLocked() ? tr("yes") : tr("no"));
    return facts;
}

} // namespace TAMBO::app
