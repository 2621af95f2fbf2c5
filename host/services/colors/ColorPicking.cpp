// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColorPicking.h"

#include "ConfigStore.h"

#include <QColorDialog>
#include <QStringList>

#include <algorithm>
#include <string>

namespace TAMBO::services {

namespace {

constexpr const char *kColorSection = "General";
constexpr const char *kLastKey = "LastColor";
constexpr const char *kOwnKey = "OwnColors";

QString valueOf(const char *key)
{
    return QString::fromStdString(
        ConfigStore::instance().value(kColorSection, key).value_or(std::string()));
}

QString ownColors()
{
    QStringList names;
    for (int i = 0; i < QColorDialog::customCount(); ++i)
        names << QColorDialog::customColor(i).name(QColor::HexArgb);
    return names.join(u' ');
}

// Whether it was another one.
bool keep(const char *key, const QString &value)
{
    if (valueOf(key) == value)
        return false;
    ConfigStore::instance().setValue(kColorSection, key, value.toStdString());
    return true;
}

} // namespace

QColor pickColor(const QColor &otherwise, QWidget *parent, const QString &title)
{
    const QColor last(valueOf(kLastKey));
    return QColorDialog::getColor(last.isValid() ? last : otherwise, parent, title);
}

void restoreOwnColors()
{
    const QStringList names = valueOf(kOwnKey).split(u' ', Qt::SkipEmptyParts);
    for (int i = 0; i < std::min(int(names.size()), QColorDialog::customCount()); ++i) {
        const QColor color(names[i]);
        if (color.isValid())
            QColorDialog::setCustomColor(i, color);
    }
}

void keepColorsOf(const QColorDialog &dialog)
{
    bool isNews = false;
    // Transparency is for the dialogs that ask for it.
    if (dialog.selectedColor().isValid())
        isNews = keep(kLastKey, dialog.selectedColor().name(QColor::HexRgb));
    isNews = keep(kOwnKey, ownColors()) || isNews;
    if (isNews)
        ConfigStore::instance().saveOrLog();
}

} // namespace TAMBO::services
