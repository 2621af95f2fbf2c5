// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog that colours residues by their letter: a method gives 21 colours, single letters can
// be switched to white, Apply sends the table to the editor window.
#pragma once

#include "BaseDialog.h"
#include "ResidueLetters.h"

#include <QColor>

#include <array>
#include <memory>
#include <string>
#include <vector>

class QComboBox;

namespace ZEP {

class JLabel;

class AcidColor : public BaseDialog
{
    Q_OBJECT

public:
    explicit AcidColor(QWidget *parent);
    ~AcidColor() override;

    void Apply() override;
    // Recomputes one current colour and repaints its swatch.
    void RefreshAcid(int index);

public slots:
    void MethodSelected(int method);

signals:
    // The current colours in the order of kResidueLetters; receivers read them during the call.
    void colorize(QColor *colors);

private:
    using Table = std::array<QColor, kResidueLetters.size()>;

    void populate();
    [[nodiscard]] std::unique_ptr<Table> propertyTable(const std::string &property) const;
    [[nodiscard]] JLabel *createSwatch(int index, const QString &text);
    void CreateTooltips();

    QComboBox *m_Method = nullptr;
    std::array<JLabel *, kResidueLetters.size()> m_Swatches{};
    int m_CurrentMethod = 0;
    std::vector<std::unique_ptr<Table>> m_Tables;
    Table m_Colors;
};

} // namespace ZEP
