// SPDX-License-Identifier: GPL-3.0-or-later
#include "LossBox.h"

#include "ObjectFacts.h"
#include "ObjectReferences.h"
#include "SavedPlaces.h"

#include <QFileInfo>
#include <QPushButton>

namespace TAMBO::app {

LossBox::LossBox(QWidget *window, SavedPlaces &places, Compound &object)
    : QMessageBox(QMessageBox::Information, tr("Save"), QString(), QMessageBox::NoButton, window),
      m_Places(places),
      m_Object(std::make_unique<ObjectReferences>(std::vector<Compound *>{&object}))
{
    setObjectName(QStringLiteral("LossBox"));
    // Names of files and objects are no markup.
    setTextFormat(Qt::PlainText);
    setAttribute(Qt::WA_DeleteOnClose);
}

LossBox::~LossBox() = default;

void LossBox::showOver(QWidget *window, SavedPlaces &places, Compound &object, const QString &file,
                       const QStringList &losses, const QStringList &remarks)
{
    auto *box = new LossBox(window, places, object);
    const QString name = QFileInfo(file).fileName();
    box->setText(losses.isEmpty() ? tr("%1 is saved in %2.").arg(nameText(object), name)
                                  : tr("%2 does not hold all of %1.").arg(nameText(object), name));
    box->setInformativeText((losses + remarks).join(u'\n'));
    if (losses.isEmpty())
        box->addButton(QMessageBox::Ok);
    else
        box->askAboutLosses();
    box->open();
}

void LossBox::askAboutLosses()
{
    setInformativeText(informativeText() +
                       tr("\n\nMay this be lost? If not, you are asked again at the end."));
    const QPushButton *const counts = addButton(tr("Count as &Saved"), QMessageBox::AcceptRole);
    QPushButton *const stays = addButton(tr("Keep as &Unsaved"), QMessageBox::RejectRole);
    setDefaultButton(stays);
    setEscapeButton(stays);
    connect(counts, &QPushButton::clicked, this, [this] {
        for (const Compound *object : m_Object->objects())
            m_Places.acceptWritten(*object);
    });
}

} // namespace TAMBO::app

#include "moc_LossBox.cpp"
