// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectTwins.h"

#include "Alignment.h"
#include "Compound.h"
#include "ObjectOrigins.h"
#include "Peptide.h"
#include "PlainText.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace TAMBO::services {

namespace {

QString trTwins(const char *text)
{
    return QCoreApplication::translate("ObjectTwins", text);
}

QString withFolder(const QString &file)
{
    const QFileInfo info(file);
    return info.dir().dirName() + u'/' + info.fileName();
}

// What two of the files have in common.
template <typename TextOf>
QSet<QString> sharedTexts(const std::vector<QString> &files, TextOf textOf)
{
    QHash<QString, QString> firsts;
    QSet<QString> shared;
    for (const QString &file : files) {
        const QString text = textOf(file);
        const auto known = firsts.constFind(text);
        if (known == firsts.cend())
            firsts.insert(text, file);
        else if (*known != file)
            shared.insert(text);
    }
    return shared;
}

// The names of the files, with as many of their folders as tell them apart.
QStringList fileTexts(const std::vector<QString> &files)
{
    const auto nameOf = [](const QString &file) { return QFileInfo(file).fileName(); };
    const QSet<QString> sharedNames = sharedTexts(files, nameOf);
    const QSet<QString> sharedPlaces = sharedTexts(files, withFolder);
    QStringList texts;
    for (const QString &file : files) {
        const QString place = withFolder(file);
        if (file.isEmpty())
            texts.append(trTwins("of no file"));
        else if (!sharedNames.contains(nameOf(file)))
            texts.append(nameOf(file));
        else
            texts.append(sharedPlaces.contains(place) ? file : place);
    }
    return texts;
}

bool areEqual(const QStringList &texts)
{
    return std::ranges::all_of(texts, [&](const QString &text) { return text == texts.front(); });
}

// Objects of one name.
QStringList differencesOfTwins(const ObjectTwins::Objects &twins, const std::vector<QString> &files)
{
    QStringList names;
    QStringList sizes;
    for (const Compound *const twin : twins) {
        names.append(QString::fromStdString(twin->GetFQName()));
        sizes.append(ObjectTwins::sizeText(*twin));
    }
    QStringList texts(qsizetype(twins.size()));
    for (const QStringList &part : {fileTexts(files), names, sizes}) {
        if (areEqual(part))
            continue;
        for (qsizetype i = 0; i < texts.size(); ++i)
            texts[i] += (texts[i].isEmpty() ? QString() : QStringLiteral(", ")) + part[i];
        if (QSet<QString>(texts.cbegin(), texts.cend()).size() == texts.size())
            return texts;
    }
    QHash<QString, int> counts;
    for (const QString &text : std::as_const(texts))
        ++counts[text];
    QHash<QString, int> met;
    for (QString &text : texts) {
        if (counts[text] == 1)
            continue;
        const QString order = trTwins("no. %1").arg(++met[text]);
        text += (text.isEmpty() ? QString() : QStringLiteral(", ")) + order;
    }
    return texts;
}

} // namespace

std::vector<QString> ObjectTwins::differences(const Objects &objects, const NameOf &nameOf)
{
    std::vector<QString> texts(objects.size());
    if (objects.size() < 2 || objects.size() > kMost)
        return texts;
    // Most names are those of one object, and a number is enough to see that.
    std::vector<std::pair<std::size_t, std::size_t>> places;
    places.reserve(objects.size());
    for (std::size_t i = 0; i < objects.size(); ++i)
        places.emplace_back(std::hash<std::string>()(nameOf(*objects[i])), i);
    std::ranges::sort(places);
    const auto groupEnd = [&places](std::size_t begin) {
        std::size_t end = begin + 1;
        while (end < places.size() && places[end].first == places[begin].first)
            ++end;
        return end;
    };
    std::vector<std::size_t> twins;
    std::vector<std::size_t> counts;
    for (std::size_t begin = 0; begin < places.size();) {
        const std::size_t end = groupEnd(begin);
        if (end - begin > 1) {
            counts.push_back(end - begin);
            for (std::size_t i = begin; i < end; ++i)
                twins.push_back(places[i].second);
        }
        begin = end;
    }
    Objects all;
    for (const std::size_t place : twins)
        all.push_back(objects[place]);
    const std::vector<QString> files = ObjectOrigins::filesOf(all);
    std::ptrdiff_t begin = 0;
    for (const std::size_t count : counts) {
        const std::ptrdiff_t end = begin + std::ptrdiff_t(count);
        const QStringList found = differencesOfTwins({all.begin() + begin, all.begin() + end},
                                                     {files.begin() + begin, files.begin() + end});
        for (std::ptrdiff_t i = begin; i < end; ++i)
            texts[twins[std::size_t(i)]] = found[i - begin];
        begin = end;
    }
    return texts;
}

QString ObjectTwins::label(const QString &name, const QString &difference)
{
    return difference.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, difference);
}

QString ObjectTwins::toolTip(const Compound &object, const QString &remark)
{
    QString text = label(QString::fromStdString(object.GetFQName()), remark);
    const QString file = ObjectOrigins::fileOf(object);
    if (!file.isEmpty())
        text += u'\n' + QDir::toNativeSeparators(file);
    return plainToolTip(text);
}

QString ObjectTwins::sizeText(const Compound &object)
{
    if (object.Kind() == CompoundKind::Alignment) {
        const auto &alignment = dynamic_cast<const Alignment &>(object);
        return QStringLiteral("%1 × %2").arg(alignment.height()).arg(alignment.width());
    }
    if (object.Kind() == CompoundKind::Chain || object.Kind() == CompoundKind::Sequence) {
        const std::size_t count = dynamic_cast<const Peptide &>(object).residueCount();
        return count == 1 ? trTwins("1 residue") : trTwins("%1 residues").arg(count);
    }
    const std::size_t count = object.ChildCount();
    if (object.Kind() == CompoundKind::Structure)
        return count == 1 ? trTwins("1 chain") : trTwins("%1 chains").arg(count);
    return QString::number(count);
}

} // namespace TAMBO::services
