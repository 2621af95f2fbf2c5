// SPDX-License-Identifier: GPL-3.0-or-later
// What is installed with the workbench fits together.
#include "Colormap.h"
#include "ColormapFile.h"
#include "ConfigStore.h"
#include "Directories.h"
#include "ResidueScales.h"
#include "ToolbarButtons.h"
#include "support/LogLines.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFont>
#include <QFontInfo>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QRegularExpression>

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <ranges>

using namespace TAMBO::services;

namespace SharedFilesTest {

class SharedFilesTest : public ::testing::Test
{
protected:
    [[nodiscard]] QString setting(const char *section, const std::string &key) const
    {
        return QString::fromStdString(m_Defaults.value(section, key).value_or("(missing)"));
    }
    [[nodiscard]] static QString icon(const QString &name)
    {
        return Directories::shared() + "/icons/" + name;
    }
    static QByteArray contents(const QString &path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    }

    LogLines m_Log;
    ConfigStore m_Defaults{Directories::shared() + "/defaults.ini", QString()};
};

// Some pixels are covered, and some are not.
void expectPicture(const QPixmap &pixmap, const QSize &size, const QString &name)
{
    EXPECT_EQ(pixmap.size(), size) << name.toStdString();
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    int covered = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            covered += qAlpha(image.pixel(x, y)) > 128 ? 1 : 0;
    EXPECT_GT(covered, image.width() * image.height() / 20) << name.toStdString();
    EXPECT_LT(covered, image.width() * image.height()) << name.toStdString();
}

TEST_F(SharedFilesTest, TheDefaultSettingsCanBeRead)
{
    EXPECT_EQ(m_Log.count(), 0);
    EXPECT_EQ(setting("General", "ShowToolTips"), "true");
}

TEST_F(SharedFilesTest, TheEditorsToolBarHasAllItsButtonsWithIconsAndTips)
{
    EXPECT_FALSE(setting("KALMO2", "ToolbarName1").isEmpty());
    EXPECT_EQ(setting("KALMO2", "ToolbarLocation1"), "Top");
    std::vector<QString> problems;
    const auto buttons = parseToolbarButtons(setting("KALMO2", "Tools1"), problems);
    EXPECT_TRUE(problems.empty());
    std::vector<int> numbers;
    for (const ToolbarButton &button : buttons) {
        if (button.isSeparator)
            continue;
        numbers.push_back(button.number);
        EXPECT_TRUE(QFileInfo(icon(button.icon)).isFile()) << button.icon.toStdString();
        EXPECT_NE(button.toolTip, button.text);
    }
    EXPECT_THAT(numbers, ::testing::ElementsAre(2, 3, 4, 6, 7, 8, 9, 11));
    EXPECT_EQ(setting("KALMO2", "ToolbarName2"), "(missing)");
}

TEST_F(SharedFilesTest, TheEditorsIconAndHelpPageAreThere)
{
    expectPicture(QPixmap(icon(setting("KALMO2", "Icon"))), QSize(256, 256), "editor icon");
    EXPECT_TRUE(QFileInfo(Directories::shared() + "/help/" + setting("KALMO2", "Help")).isFile());
}

TEST_F(SharedFilesTest, EveryIconIsSharpOnDenseScreens)
{
    const QStringList files = QDir(icon("")).entryList({"*.svg"}, QDir::Files);
    EXPECT_GE(files.size(), 25);
    for (const QString &file : files) {
        const QIcon picture(icon(file));
        expectPicture(picture.pixmap(QSize(24, 24), 1.0), QSize(24, 24), file);
        expectPicture(picture.pixmap(QSize(24, 24), 2.0), QSize(48, 48), file);
    }
}

TEST_F(SharedFilesTest, EveryScaleHasAColourMapThatCanBeRead)
{
    const ResidueScales scales({Directories::shared() + "/scales"});
    for (const ResidueScale &scale : scales.scales()) {
        const auto map = m_Defaults.value("KM2_Colormaps", "KM2_" + scale.name);
        ASSERT_TRUE(map.has_value()) << scale.name;
        const auto stops = ColormapFile::read(*map);
        EXPECT_TRUE(stops.has_value()) << scale.name << (stops ? "" : stops.error().message());
    }
}

TEST_F(SharedFilesTest, EveryColourMapCanBeRead)
{
    EXPECT_GE(ColormapFile::names().size(), 15U);
    for (const std::string &name : ColormapFile::names()) {
        const auto stops = ColormapFile::read(name);
        EXPECT_TRUE(stops.has_value()) << (stops ? "" : stops.error().message());
    }
}

// With its unit, and the map that shows it.
TEST_F(SharedFilesTest, TheDocumentationListsEveryScaleAsItIs)
{
    const QString page =
        QString::fromUtf8(contents(QString::fromUtf8(SOURCE_DIR "/docs/colors-and-scales.md")));
    const QString help =
        QString::fromUtf8(contents(Directories::shared() + "/help/scales.html")).simplified();
    const ResidueScales scales({Directories::shared() + "/scales"});
    for (const ResidueScale &scale : scales.scales()) {
        const QString name = QString::fromStdString(scale.name);
        const QString unit = QString::fromStdString(scale.unit);
        const QString map = setting("KM2_Colormaps", "KM2_" + scale.name);
        const QRegularExpression line(
            QString("\n\\| %1 \\| [^|\n]+ \\| %2 \\| `%3` \\|\n").arg(name, unit, map));
        EXPECT_TRUE(page.contains(line)) << scale.name;
        EXPECT_TRUE(page.contains(
            QString("\n| %1 | %2 |\n").arg(name, QString::fromStdString(scale.source))))
            << scale.name;
        const QRegularExpression row(
            QString("<tr><td>%1</td> ?<td>[^<]+</td> ?<td>%2</td> ?<td>[^<]+</td> ?"
                    "<td><code>%3</code></td></tr>")
                .arg(name, unit, map));
        EXPECT_TRUE(help.contains(row)) << scale.name;
    }
}

// Documentation and help have the same picture of each scale, made with the map that shows it now.
// docs/pictures/remake-colors makes them anew.
TEST_F(SharedFilesTest, TheDocumentationShowsEveryScaleInItsMap)
{
    const QByteArray page = contents(QString::fromUtf8(SOURCE_DIR "/docs/colors-and-scales.md"));
    const QByteArray help = contents(Directories::shared() + "/help/scales.html");
    const std::string letters = "IVGGYECRKNSASYQASLQSG---";
    const QSize cell(14, 18);
    const ResidueScales scales({Directories::shared() + "/scales"});
    for (const ResidueScale &scale : scales.scales()) {
        const QString name = QString::fromStdString(scale.name).toLower().replace(' ', '-');
        const QString file = "pictures/scale-" + name + ".png";
        EXPECT_TRUE(page.contains("](" + file.toUtf8() + ")")) << scale.name;
        EXPECT_TRUE(help.contains("\"" + file.toUtf8() + "\"")) << scale.name;
        const QByteArray bytes = contents(QString::fromUtf8(SOURCE_DIR "/docs/") + file);
        EXPECT_EQ(bytes, contents(Directories::shared() + "/help/" + file)) << scale.name;
        const QImage picture = QImage::fromData(bytes);
        ASSERT_EQ(picture.size(), QSize(int(letters.size()) * cell.width(), 6 * cell.height()));

        Colormap map(setting("KM2_Colormaps", "KM2_" + scale.name).toStdString(), 100, "");
        const auto [lowest, highest] = std::ranges::minmax(std::views::values(scale.values));
        map.setMinMax(lowest, highest);
        for (std::size_t i = 0; i < letters.size(); ++i) {
            const auto value = scale.values.find(letters[i]);
            const QColor color = value == scale.values.end()
                                     ? QColor(Qt::white)
                                     : map.lookupValue(value->second).toQColor();
            // At the corner, where no letter is. The colors of the picture are few.
            const QColor shown = picture.pixelColor(int(i) * cell.width() + 1, 1);
            for (const int difference : {shown.red() - color.red(), shown.green() - color.green(),
                                         shown.blue() - color.blue()})
                EXPECT_LE(std::abs(difference), 5)
                    << scale.name << " " << letters[i] << ": " << shown.name().toStdString()
                    << " for " << color.name().toStdString();
        }
    }
}

TEST_F(SharedFilesTest, TheDocumentationListsEveryColourMap)
{
    const QByteArray page = contents(QString::fromUtf8(SOURCE_DIR "/docs/colors-and-scales.md"));
    const QByteArray help = contents(Directories::shared() + "/help/scales.html");
    const QDir maps(Directories::shared() + "/colormaps");
    for (const QString &map : maps.entryList({"*.cm"}, QDir::Files)) {
        EXPECT_TRUE(page.contains("`" + map.toUtf8() + "`")) << map.toStdString();
        EXPECT_TRUE(help.contains("<code>" + map.toUtf8() + "</code>")) << map.toStdString();
    }
}

TEST_F(SharedFilesTest, EveryLinkAndPictureOfTheHelpIsThere)
{
    const QDir help(Directories::shared() + "/help");
    const QStringList pages = help.entryList({"*.html"}, QDir::Files);
    EXPECT_TRUE(pages.contains("index.html"));
    QStringList linked{"index.html"};
    const QRegularExpression link("(?:href|src)=\"([^\"#]*)(#([^\"]*))?\"");
    for (const QString &page : pages) {
        const QString text = QString::fromUtf8(contents(help.filePath(page)));
        EXPECT_TRUE(text.contains("<title>")) << page.toStdString();
        for (auto hits = link.globalMatch(text); hits.hasNext();) {
            const auto hit = hits.next();
            const QString target = hit.captured(1).isEmpty() ? page : hit.captured(1);
            EXPECT_TRUE(QFileInfo(help.filePath(target)).isFile()) << target.toStdString();
            linked.append(target);
            if (!hit.captured(3).isEmpty()) {
                EXPECT_TRUE(contents(help.filePath(target))
                                .contains("<a name=\"" + hit.captured(3).toUtf8() + "\">"))
                    << hit.captured(0).toStdString();
            }
        }
    }
    for (const QString &page : pages)
        EXPECT_TRUE(linked.contains(page)) << page.toStdString() << " cannot be reached";
}

} // namespace SharedFilesTest
