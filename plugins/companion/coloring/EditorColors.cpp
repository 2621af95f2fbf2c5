// SPDX-License-Identifier: GPL-3.0-or-later
#include "EditorColors.h"

#include "DistanceColors.h"
#include "ResidueTypes.h"
#include "Texts.h"
#include "Toolbar.h"

#include <QAction>
#include <QChildEvent>
#include <QColorDialog>
#include <QComboBox>
#include <QInputDialog>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace companion {

namespace {

// Of the tool bars, as the settings number them.
constexpr int kSelectedTool = 6;
constexpr int kConservedTool = 8;

// Of the table of colors; the last one is for all others, too.
constexpr std::string_view kTableLetters = "ARNDCQEGHILKMFPSTWYVX";
constexpr const char *kColorized = "colorize(QColor*)";
constexpr std::size_t kMostScaleEntries = 5;

std::string valueText(double value)
{
    return QString::number(value, 'g', 3).toStdString();
}

struct ScaleLetter
{
    float value;
    char letter;
    QColor color;
};

std::vector<ScaleLetter> coloredLetters(const std::string &scale, const QColor *colors)
{
    std::vector<ScaleLetter> letters;
    for (std::size_t i = 0; i < kTableLetters.size(); ++i) {
        float value = 0;
        if (colors[i] != QColor(Qt::white) &&
            ResidueTypes::GetValue(scale, kTableLetters[i], value))
            letters.push_back({value, kTableLetters[i], colors[i]});
    }
    std::ranges::stable_sort(letters, {}, &ScaleLetter::value);
    return letters;
}

} // namespace

Legend legendOfScale(const std::string &scale, const QColor *colors)
{
    Legend legend{scale, {}, {}, {}};
    const std::vector<ScaleLetter> letters = coloredLetters(scale, colors);
    const std::size_t count = std::min(letters.size(), kMostScaleEntries);
    for (std::size_t i = 0; i < count; ++i) {
        // The first one and the last one among them.
        const ScaleLetter &each = letters[count == 1 ? 0 : i * (letters.size() - 1) / (count - 1)];
        legend.entries.push_back(
            {valueText(double(each.value)) + " (" + each.letter + ')', Color(each.color), {}});
    }
    if (!legend.entries.empty())
        legend.entries.push_back(
            {tr("no value, or left out").toStdString(), Color(QColor(Qt::white)), {}});
    return legend;
}

Legend legendOfDistances()
{
    constexpr int kSteps = 4;
    const Colormap map = TAMBO::distanceColors();
    const auto cutoff = [](const char *key, float otherwise) {
        bool isSet = false;
        const float value = Config::GetSetting("KALMO2", key).ToFloat(&isSet);
        return isSet ? value : otherwise;
    };
    const float low = cutoff("DistanceCutoffMin", 0.F);
    const float high = cutoff("DistanceCutoffMax", 6.F);
    Legend legend{tr("Mean distance in the column").toStdString(), {}, {}, {}};
    for (int i = 0; i <= kSteps; ++i) {
        const float value = low + (high - low) * float(i) / float(kSteps);
        QString label = tr("%1 Å").arg(QString::fromStdString(valueText(double(value))));
        if (i == kSteps)
            label = tr("%1 and more").arg(label);
        legend.entries.push_back({label.toStdString(), map.lookupValue(value), {}});
    }
    legend.entries.push_back(
        {tr("alone in the column").toStdString(), Color(QColor(Qt::white)), {}});
    return legend;
}

EditorColors::EditorColors(QMainWindow &window, Parts parts)
    : QObject(&window), m_Parts(std::move(parts))
{
    window.installEventFilter(this);
    followMenu(window);
    // Whoever was connected before, as the window itself, has done his work when this hears of it.
    for (const Toolbar *const bar : window.findChildren<Toolbar *>())
        connect(bar, &Toolbar::pressed, this, &EditorColors::pressed);
    for (QObject *const child : window.children())
        if (child->metaObject()->indexOfSignal(kColorized) >= 0)
            connect(child, SIGNAL(colorize(QColor *)), SLOT(colored(QColor *)));
}

EditorColors::~EditorColors() = default;

void EditorColors::followMenu(const QMainWindow &window)
{
    const auto follow = [this](const QAction &action, const auto &act) {
        connect(&action, &QAction::triggered, this, act);
    };
    for (const QAction *const menu : window.menuBar()->actions()) {
        // Desktops may add letters for keys.
        if (menu->menu() == nullptr || menu->text().remove(u'&') != QStringLiteral("Color"))
            continue;
        for (const QAction *const action : menu->menu()->actions()) {
            const QString text = action->text().remove(u'&');
            if (text == QStringLiteral("Selected"))
                follow(*action, [this] { showPicked(Kind::Selected); });
            else if (text == QStringLiteral("Conserved"))
                follow(*action, [this] { showPicked(Kind::Conserved); });
            else if (text == QStringLiteral("ConservedN"))
                follow(*action, [this] { showPicked(Kind::ConservedN); });
            else if (text == QStringLiteral("By Distance"))
                follow(*action, [this] {
                    if (m_Parts.hasPositions())
                        m_Parts.show(legendOfDistances());
                });
        }
    }
}

bool EditorColors::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ChildPolished) {
        QObject *const child = static_cast<const QChildEvent *>(event)->child();
        if (auto *const colors = qobject_cast<QColorDialog *>(child)) {
            m_Picked.reset();
            m_Number.reset();
            connect(colors, &QColorDialog::colorSelected, this,
                    [this](const QColor &color) { m_Picked = color; });
        } else if (auto *const number = qobject_cast<QInputDialog *>(child)) {
            m_Number.reset();
            connect(number, &QInputDialog::intValueSelected, this,
                    [this](int value) { m_Number = value; });
        }
    }
    return QObject::eventFilter(watched, event);
}

void EditorColors::showPicked(Kind kind)
{
    const std::optional<QColor> color = std::exchange(m_Picked, {});
    const std::optional<int> number = std::exchange(m_Number, {});
    if (!color || (kind == Kind::ConservedN && !number) ||
        (kind == Kind::Selected && !m_Parts.hasSelected()))
        return;
    Legend legend;
    QString label;
    switch (kind) {
    case Kind::Selected:
        legend.title = tr("Selected").toStdString();
        label = tr("selected when it was colored");
        break;
    case Kind::Conserved:
        legend.title = tr("Conserved").toStdString();
        label = tr("the same in all rows of its column, or in all but one of three and more");
        break;
    case Kind::ConservedN:
        legend.title = tr("Conserved").toStdString();
        label = tr("most frequent in its column, in %L1 rows or more").arg(*number);
        break;
    }
    legend.entries.push_back({label.toStdString(), Color(*color), {}});
    m_Parts.show(legend);
}

void EditorColors::pressed(int number, int, bool)
{
    if (number == kSelectedTool)
        showPicked(Kind::Selected);
    else if (number == kConservedTool)
        showPicked(Kind::Conserved);
}

void EditorColors::colored(QColor *colors)
{
    const auto *const method = sender()->findChild<QComboBox *>();
    if (method != nullptr)
        m_Parts.show(legendOfScale(method->currentText().toStdString(), colors));
}

} // namespace companion

#include "moc_EditorColors.cpp"
