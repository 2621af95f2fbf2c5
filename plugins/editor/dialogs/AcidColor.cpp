// SPDX-License-Identifier: GPL-3.0-or-later
#include "AcidColor.h"

#include "Check.h"
#include "Colormap.h"
#include "Config.h"
#include "JLabel.h"
#include "ResidueTypes.h"
#include "WidgetFactory.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QGridLayout>

#include <optional>

namespace {

constexpr int kRows = 5;
constexpr int kColumns = 4;
constexpr int kUnknown = static_cast<int>(ZEP::kResidueLetters.size()) - 1;

// The bounds of a scale's values. Kept: a value becomes the minimum only once a greater one came
// before it, so the smallest value may lie below the minimum.
class ValueRange
{
public:
    void add(float value)
    {
        if (!m_Any || value > m_Maximum)
            m_Maximum = value;
        m_Any = true;
        if (m_Minimum ? value < *m_Minimum : m_Maximum > value)
            m_Minimum = value;
    }
    [[nodiscard]] float minimum() const { return m_Minimum.value_or(m_Maximum - 1.0F); }
    [[nodiscard]] float maximum() const { return m_Maximum; }

private:
    bool m_Any = false;
    float m_Maximum = 0.0F;
    std::optional<float> m_Minimum;
};

} // namespace

namespace ZEP {

AcidColor::AcidColor(QWidget *parent)
    : BaseDialog("Color Residues", QSize(200, 150), 7, 3, "No help", false, false, parent, nullptr)
{
    QBoxLayout *topLevel = GetTopLevelLayout();
    m_Method = WidgetFactory::CreateComboBox(this, false);
    TAMBO_CHECK_PTR(m_Method, "AcidColor", 58);
    populate();
    topLevel->addWidget(m_Method, 3);

    auto *grid = new QGridLayout;
    TAMBO_CHECK_PTR(grid, "AcidColor", 63);
    topLevel->addLayout(grid);
    for (int row = 0; row < kRows; ++row) {
        for (int column = 0; column < kColumns; ++column) {
            const int index = kColumns * row + column;
            const QChar letter = QLatin1Char(kResidueLetters[static_cast<std::size_t>(index)]);
            grid->addWidget(createSwatch(index, letter), row, column);
        }
    }
    topLevel->addWidget(createSwatch(kUnknown, "Unknown"));

    StartWidget();
    CreateTooltips();
    connect(m_Method, &QComboBox::activated, this, &AcidColor::MethodSelected);
}

AcidColor::~AcidColor()
{
    m_Method->clear();
}

JLabel *AcidColor::createSwatch(int index, const QString &text)
{
    auto *swatch = new JLabel(text, index, this);
    TAMBO_CHECK_PTR(swatch, "AcidColor", 84);
    swatch->setBackground(m_Colors[static_cast<std::size_t>(index)]);
    m_Swatches[static_cast<std::size_t>(index)] = swatch;
    connect(swatch, &JLabel::switched, this, &AcidColor::RefreshAcid);
    return swatch;
}

void AcidColor::populate()
{
    m_Colors.fill(Qt::white);
    m_Tables.push_back(std::make_unique<Table>(m_Colors));
    TAMBO_CHECK_PTR(m_Tables.back().get(), "AcidColor", 97);
    m_Method->addItem("White");
    m_Method->setCurrentIndex(0);

    std::vector<std::string> properties;
    ResidueTypes::Properties(properties);
    for (const std::string &property : properties) {
        m_Tables.push_back(propertyTable(property));
        m_Method->addItem(QString::fromStdString(property));
    }
}

std::unique_ptr<AcidColor::Table> AcidColor::propertyTable(const std::string &property) const
{
    std::array<std::optional<float>, kResidueLetters.size()> values;
    ValueRange range;
    for (std::size_t i = 0; i < values.size(); ++i) {
        float value = 0.0F;
        if (!ResidueTypes::GetValue(property, kResidueLetters[i], value))
            continue;
        values[i] = value;
        range.add(value);
    }

    const std::string file = Config::GetSetting("KM2_Colormaps", "KM2_" + property).ToString();
    Colormap map(file, 100, "No name");
    map.setMinMax(range.minimum(), range.maximum());

    auto table = std::make_unique<Table>();
    TAMBO_CHECK_PTR(table.get(), "AcidColor", 124);
    for (std::size_t i = 0; i < values.size(); ++i)
        (*table)[i] = values[i] ? map.lookupValue(*values[i]).toQColor() : QColor(Qt::white);
    return table;
}

void AcidColor::MethodSelected(int method)
{
    if (method < 0 || static_cast<std::size_t>(method) >= m_Tables.size())
        return;
    m_CurrentMethod = method;
    for (int i = 0; i <= kUnknown; ++i)
        RefreshAcid(i);
}

void AcidColor::RefreshAcid(int index)
{
    const auto i = static_cast<std::size_t>(index);
    const Table &table = *m_Tables[static_cast<std::size_t>(m_CurrentMethod)];
    m_Colors[i] = m_Swatches[i]->isOn() ? table[i] : QColor(Qt::white);
    m_Swatches[i]->setBackground(m_Colors[i]);
}

void AcidColor::CreateTooltips()
{
    if (ShowToolTips())
        m_Method->setToolTip("Select color method");
}

void AcidColor::Apply()
{
    emit colorize(m_Colors.data());
}

} // namespace ZEP

#include "moc_AcidColor.cpp"
