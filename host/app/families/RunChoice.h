// SPDX-License-Identifier: GPL-3.0-or-later
// Where the models of a family are built, and how many at once.
#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace TAMBO::app {

struct RunOrder
{
    enum class Where { Here, SnakemakeHere, Profile };

    Where where = Where::Here;
    int atOnce = 1;
    // Of Snakemake: a name that it knows, or a folder.
    QString profile;

    // Of "tambo models --continue FOLDER".
    [[nodiscard]] QStringList words() const;
};

class RunChoice : public QWidget
{
    Q_OBJECT

public:
    explicit RunChoice(QWidget *parent = nullptr);
    ~RunChoice() override;

    [[nodiscard]] RunOrder order() const;
    // Why that cannot be run; empty when it can.
    [[nodiscard]] QString objection() const;

signals:
    void changed();

private:
    void follow();

    bool m_HasSnakemake;
    QComboBox *m_Where = nullptr;
    QLabel *m_ProfileLabel = nullptr;
    QLineEdit *m_Profile = nullptr;
    QSpinBox *m_AtOnce = nullptr;
};

} // namespace TAMBO::app
