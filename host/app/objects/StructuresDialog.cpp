// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructuresDialog.h"

#include "KeptState.h"
#include "ObjectFacts.h"
#include "ObjectReferences.h"
#include "SavedPlaces.h"
#include "Structure.h"
#include "WriteJob.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include <utility>

namespace TAMBO::app {

Compound *StructuresDialog::Copied::object() const
{
    return structure->objects().empty() ? nullptr : structure->objects().front();
}

StructuresDialog::StructuresDialog(const std::vector<Structure *> &structures, QWidget *parent)
    : WriteDialog(parent), m_Structures({structures.begin(), structures.end()})
{
    for (Structure *const structure : structures)
        m_Copied.push_back({std::make_unique<ObjectReferences>(std::vector<Compound *>{structure}),
                            nameText(*structure)});
    setObjectName(QStringLiteral("StructuresDialog"));
    setWindowTitle(tr("Export %1 Structures").arg(m_Structures.count()));
    setAcceptText(tr("&Export"));
    m_Kind = new QComboBox;
    m_Kind->setObjectName(QStringLiteral("Kind"));
    m_Kind->addItem(tr("one file, a model for each"), int(MergedFiles::Kind::Models));
    m_Kind->addItem(tr("one file, with the chains of all"), int(MergedFiles::Kind::Chains));
    m_Kind->addItem(tr("a file for each"), int(MergedFiles::Kind::Files));
    addRow(new QLabel(tr("&As:")), m_Kind);
    connect(m_Kind, &QComboBox::currentIndexChanged, this, &StructuresDialog::followKind);
    std::vector<FileFormat> formats;
    for (const FormatEntry &entry : kFormats)
        if (isStructureFormat(entry.format))
            formats.push_back(entry.format);
    setFormats(formats);
    offer(QStringLiteral("structures"));
    follow();
}

StructuresDialog::~StructuresDialog() = default;

void StructuresDialog::setPlaces(const SavedPlaces &places)
{
    for (Copied &each : m_Copied)
        if (each.object() != nullptr)
            each.state = places.keepState(*each.object());
    WriteDialog::setPlaces(places);
}

MergedFiles::Kind StructuresDialog::kind() const
{
    return MergedFiles::Kind(m_Kind->currentData().toInt());
}

void StructuresDialog::followKind()
{
    setNamesFolder(kind() == MergedFiles::Kind::Files);
    follow();
}

WriteDialog::Verdict StructuresDialog::verdict(const WriteOptions &chosen) const
{
    if (const Result<void> fits = m_Structures.check(chosen); !fits)
        return {QString::fromStdString(fits.error().message())};
    Verdict verdict{{},
                    m_Structures.notes(kind(), chosen),
                    tr("The atoms are written where they are now. This is lost or changed:")};
    for (std::size_t i = 0; i < m_Copied.size() && places() != nullptr; ++i) {
        const Compound *const object = m_Copied[i].object();
        verdict.canCount =
            verdict.canCount || (object != nullptr && places()->isUnsaved(*object) &&
                                 !m_Structures.ownLosses(kind(), i, chosen).isEmpty());
    }
    return verdict;
}

ExportRuns::Part StructuresDialog::part(std::size_t structure) const
{
    const Copied &copied = m_Copied[structure];
    ExportRuns::Part part;
    if (copied.object() != nullptr)
        part.object = std::make_unique<ObjectReferences>(std::vector<Compound *>{copied.object()});
    part.state = copied.state;
    part.losses = m_Structures.ownLosses(kind(), structure, options());
    part.countsAsSaved = isAccepted(part.losses);
    return part;
}

// Of one structure when each has a file.
ExportRuns::Order StructuresDialog::order(const QString &file, std::size_t structure) const
{
    ExportRuns::Order order;
    order.options = options();
    order.job = std::make_unique<WriteJob>(
        [structures = m_Structures, kind = kind(), structure,
         options = order.options](const QString &path, WriteAids &aids) {
            return structures.write(path, kind, structure, options, aids);
        },
        file);
    if (kind() == MergedFiles::Kind::Files) {
        order.name = m_Copied[structure].name;
        order.parts.push_back(part(structure));
        return order;
    }
    order.name = tr("%1 structures").arg(m_Structures.count());
    for (std::size_t i = 0; i < m_Copied.size(); ++i)
        order.parts.push_back(part(i));
    return order;
}

bool StructuresDialog::mayReplaceAll(const QStringList &files)
{
    constexpr qsizetype kMostNamed = 10;
    QStringList present;
    for (const QString &file : files)
        if (QFileInfo::exists(file))
            present << QFileInfo(file).fileName();
    if (present.isEmpty())
        return true;
    QString named = present.mid(0, kMostNamed).join(QStringLiteral(", "));
    if (present.size() > kMostNamed)
        named = tr("%1 and %L2 more").arg(named).arg(present.size() - kMostNamed);
    QMessageBox box(QMessageBox::Warning, tr("Tambo"),
                    tr("These files are there already: %1").arg(named), QMessageBox::Cancel, this);
    box.setObjectName(QStringLiteral("ReplaceFiles"));
    box.setTextFormat(Qt::PlainText);
    const QPushButton *const replace = box.addButton(tr("&Replace"), QMessageBox::AcceptRole);
    box.exec();
    return box.clickedButton() == replace;
}

std::vector<ExportRuns::Order> StructuresDialog::orders(const QString &target)
{
    QStringList files;
    if (kind() != MergedFiles::Kind::Files) {
        files << target;
    } else {
        for (const QString &name : m_Structures.names())
            files << QDir(target).filePath(name + ending());
        if (!mayReplaceAll(files))
            return {};
    }
    std::vector<ExportRuns::Order> orders;
    for (const QString &file : files)
        orders.push_back(order(file, orders.size()));
    return orders;
}

} // namespace TAMBO::app

#include "moc_StructuresDialog.cpp"
