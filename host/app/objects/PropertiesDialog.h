// SPDX-License-Identifier: GPL-3.0-or-later
// The facts about one object, to read and to copy.
#pragma once

#include "ObjectFacts.h"

#include <QDialog>

class QVBoxLayout;

namespace TAMBO::app {

class PropertiesDialog : public QDialog
{
    Q_OBJECT

public:
    PropertiesDialog(const QString &name, const std::vector<Fact> &facts, QWidget *parent);
    ~PropertiesDialog() override;

    // Below those that are there.
    void add(const QString &heading, const std::vector<Fact> &facts);

private:
    void addForm(const std::vector<Fact> &facts);

    QVBoxLayout *m_Facts = nullptr;
};

} // namespace TAMBO::app
