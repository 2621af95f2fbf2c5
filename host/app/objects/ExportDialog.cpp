// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExportDialog.h"

#include "FileName.h"
#include "KeptState.h"
#include "KindIcons.h"
#include "ObjectFacts.h"
#include "ObjectReferences.h"
#include "ObjectTwins.h"
#include "SavedPlaces.h"
#include "WritableObject.h"
#include "WriteJob.h"

#include <QComboBox>
#include <QLabel>
#include <QSpinBox>

#include <utility>

namespace TAMBO::app {

namespace {

bool hasLineLength(const WriteOptions &options)
{
    return entryOf(options.format).lines == Lines::Asked && !options.isSequential;
}

} // namespace

ExportDialog::ExportDialog(const std::vector<Compound *> &objects, const Compound *chosen,
                           QWidget *parent)
    : WriteDialog(parent)
{
    setObjectName(QStringLiteral("ExportDialog"));
    setWindowTitle(tr("Export"));
    setAcceptText(tr("&Export"));
    makeControls();
    fillObjects(objects, chosen);
}

ExportDialog::~ExportDialog() = default;

void ExportDialog::makeControls()
{
    m_Objects = new QComboBox;
    m_Objects->setObjectName(QStringLiteral("Object"));
    m_LineLength = new QSpinBox;
    m_LineLength->setObjectName(QStringLiteral("LineLength"));
    m_LineLength->setRange(0, 100000);
    m_LineLength->setSingleStep(10);
    m_LineLength->setSpecialValueText(tr("as usual"));
    m_Names = new QComboBox;
    m_Names->setObjectName(QStringLiteral("Names"));
    m_Names->addItems({tr("10 characters"), tr("any length, without blanks")});
    m_Layout = new QComboBox;
    m_Layout->setObjectName(QStringLiteral("Layout"));
    m_Layout->addItems({tr("blocks of all rows"), tr("one row after the other")});
    m_LineLengthLabel = new QLabel(tr("Columns a l&ine:"));
    m_LineLengthLabel->setBuddy(m_LineLength);
    m_NamesLabel = new QLabel(tr("Na&mes:"));
    m_NamesLabel->setBuddy(m_Names);
    m_LayoutLabel = new QLabel(tr("La&yout:"));
    m_LayoutLabel->setBuddy(m_Layout);
    m_ObjectsLabel = new QLabel(tr("&Object:"));
    addRow(m_ObjectsLabel, m_Objects);
    for (QWidget *const widget : std::initializer_list<QWidget *>{
             m_LineLengthLabel, m_LineLength, m_NamesLabel, m_Names, m_LayoutLabel, m_Layout})
        addOption(widget);
    connect(m_Objects, &QComboBox::currentIndexChanged, this, &ExportDialog::choose);
    connect(m_LineLength, &QSpinBox::valueChanged, this, &ExportDialog::follow);
    connect(m_Names, &QComboBox::currentIndexChanged, this, &ExportDialog::follow);
    connect(m_Layout, &QComboBox::currentIndexChanged, this, &ExportDialog::follow);
}

void ExportDialog::fillObjects(const std::vector<Compound *> &objects, const Compound *chosen)
{
    const QSignalBlocker silence(m_Objects);
    KindIcons icons;
    int current = 0;
    const std::vector<QString> texts = listTexts({objects.begin(), objects.end()});
    for (Compound *object : objects) {
        if (object == chosen)
            current = m_Objects->count();
        m_References.push_back(std::make_unique<ObjectReferences>(std::vector<Compound *>{object}));
        m_Objects->addItem(icons.icon(kindOf(*object), false),
                           texts[std::size_t(m_Objects->count())], nameText(*object));
        m_Objects->setItemData(m_Objects->count() - 1, services::ObjectTwins::toolTip(*object),
                               Qt::ToolTipRole);
    }
    m_Objects->setCurrentIndex(current);
    choose(current);
}

void ExportDialog::choose(int index)
{
    m_Object.reset();
    const std::vector<Compound *> &objects = m_References[std::size_t(index)]->objects();
    if (!objects.empty())
        m_Object = WritableObject::asked(*objects.front());
    m_IsGivenUp = !objects.empty() && m_Object == nullptr;
    keepState();
    setFormats(m_Object == nullptr ? std::vector<FileFormat>() : m_Object->formats());
    if (m_Object != nullptr)
        offer(QString::fromStdString(fileNameOf(nameOfObject().toStdString())));
    follow();
}

void ExportDialog::keepState()
{
    m_State = places() == nullptr || object() == nullptr ? nullptr : places()->keepState(*object());
}

void ExportDialog::setPlaces(const SavedPlaces &places)
{
    WriteDialog::setPlaces(places);
    keepState();
}

void ExportDialog::saveInstead(const QString &folder, FileFormat format)
{
    setSaving(folder);
    setAcceptText(tr("&Save"));
    setWindowTitle(tr("Save %1").arg(nameOfObject()));
    m_ObjectsLabel->hide();
    m_Objects->hide();
    chooseFormat(format);
    follow();
}

QString ExportDialog::nameOfObject() const
{
    return m_Objects->currentData().toString();
}

Compound *ExportDialog::object() const
{
    const std::vector<Compound *> &objects =
        m_References[std::size_t(m_Objects->currentIndex())]->objects();
    return objects.empty() ? nullptr : objects.front();
}

// ---- What is chosen

WriteOptions ExportDialog::options() const
{
    WriteOptions options = WriteDialog::options();
    if (options.format == FileFormat::Phylip) {
        options.hasLongNames = m_Names->currentIndex() == 1;
        options.isSequential = m_Layout->currentIndex() == 1;
    }
    if (hasLineLength(options))
        options.lineLength = std::size_t(m_LineLength->value());
    return options;
}

void ExportDialog::formatChosen()
{
    const WriteOptions chosen = options();
    const bool isPhylip = chosen.format == FileFormat::Phylip;
    const bool hasLines = m_Object != nullptr && hasLineLength(chosen);
    for (QWidget *const widget :
         std::initializer_list<QWidget *>{m_Names, m_NamesLabel, m_Layout, m_LayoutLabel})
        widget->setVisible(isPhylip);
    m_LineLength->setVisible(hasLines);
    m_LineLengthLabel->setVisible(hasLines);
}

QStringList ExportDialog::ownLosses(const WriteOptions &chosen) const
{
    return m_Object == nullptr ? QStringList() : m_Object->ownLosses(chosen);
}

WriteDialog::Verdict ExportDialog::verdict(const WriteOptions &chosen) const
{
    if (m_Object == nullptr)
        return {m_IsGivenUp ? tr("It is not copied: that was cancelled.")
                            : tr("It is not loaded any more.")};
    if (const Result<void> fits = m_Object->checkWritable(chosen); !fits)
        return {QString::fromStdString(fits.error().message())};
    Verdict verdict{{}, m_Object->losses(chosen) + m_Object->lostLooks()};
    const Compound *const asked = object();
    if (places() != nullptr && asked != nullptr) {
        verdict.losses += places()->strangeNumbers(*asked, chosen);
        verdict.canCount = !ownLosses(chosen).isEmpty() && places()->isUnsaved(*asked);
    }
    if (isSaving())
        verdict.acceptText = ownLosses(chosen).isEmpty() ? tr("&Save") : tr("&Save with Losses");
    return verdict;
}

std::vector<ExportRuns::Order> ExportDialog::orders(const QString &target)
{
    ExportRuns::Order order;
    order.options = options();
    order.job = std::make_unique<WriteJob>(m_Object, target, order.options);
    order.name = nameOfObject();
    ExportRuns::Part part;
    if (object() != nullptr)
        part.object = std::make_unique<ObjectReferences>(std::vector<Compound *>{object()});
    part.state = m_State;
    part.losses = ownLosses(order.options);
    part.countsAsSaved = isAccepted(part.losses);
    order.parts.push_back(std::move(part));
    std::vector<ExportRuns::Order> one;
    one.push_back(std::move(order));
    return one;
}

} // namespace TAMBO::app

#include "moc_ExportDialog.cpp"
