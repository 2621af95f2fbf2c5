// SPDX-License-Identifier: GPL-3.0-or-later
// Tells that a file lacks something of the object that was saved into it, and asks whether the
// object counts as saved nevertheless.
#pragma once

#include <QMessageBox>

#include <memory>

namespace TAMBO {
class Compound;
}

namespace TAMBO::app {

class ObjectReferences;
class SavedPlaces;

class LossBox : public QMessageBox
{
    Q_OBJECT

public:
    // losses: sentences, of what the file lacks. remarks: of what it holds and others do not.
    // Whoever has saved goes on meanwhile. The places outlive the box.
    static void showOver(QWidget *window, SavedPlaces &places, Compound &object,
                         const QString &file, const QStringList &losses,
                         const QStringList &remarks);
    ~LossBox() override;

private:
    LossBox(QWidget *window, SavedPlaces &places, Compound &object);
    void askAboutLosses();

    SavedPlaces &m_Places;
    std::unique_ptr<ObjectReferences> m_Object;
};

} // namespace TAMBO::app
