// SPDX-License-Identifier: GPL-3.0-or-later
#include "TreeFile.h"

#include "LeafNames.h"
#include "Newick.h"
#include "Texts.h"

#include <QFile>
#include <QSaveFile>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace companion {

namespace {

// Of a tree of so many rows as can be drawn.
constexpr qint64 kMostBytes = qint64(256) << 20;
// Of names in a message.
constexpr std::size_t kMostNamed = 3;

QString quoted(const std::string &name)
{
    constexpr int kMostLetters = 40;
    QString text = QString::fromStdString(name);
    if (text.size() > kMostLetters)
        text = text.left(kMostLetters) + u'…';
    return u'“' + text + u'”';
}

// "“a”, “b” and 7 more"
template <typename Entry, typename TextOf>
QString someOf(const std::vector<Entry> &entries, const TextOf &textOf)
{
    QStringList texts;
    for (std::size_t i = 0; i < std::min(entries.size(), kMostNamed); ++i)
        texts << textOf(entries[i]);
    const QString all = texts.join(QStringLiteral(", "));
    return entries.size() <= kMostNamed
               ? all
               : tr("%1 and %L2 more").arg(all).arg(entries.size() - kMostNamed);
}

// What keeps a tree from being one of the rows; empty when nothing does.
class LeafCauses
{
public:
    LeafCauses(std::string_view text, const std::vector<std::size_t> &places, const Tree &tree,
               std::span<const std::string> names)
        : m_Text(text), m_Places(places), m_Tree(tree), m_Names(names)
    { }

    [[nodiscard]] QString of(const LeafNames &match) const
    {
        QStringList all;
        const auto atPlace = [this](std::size_t leaf) { return atLine(leaf); };
        if (!match.unknown.empty())
            all << tr("leaves that are no row: %1").arg(someOf(match.unknown, atPlace));
        if (!match.doubled.empty())
            all << tr("leaves that are there already: %1").arg(someOf(match.doubled, atPlace));
        if (!match.ambiguous.empty())
            all << tr("names that several rows have: %1")
                       .arg(someOf(match.ambiguous, [this](const LeafNames::Ambiguous &name) {
                           return tr("%1 (%L2 rows)")
                               .arg(quoted(m_Tree.nodes[name.leaf].name))
                               .arg(name.rows);
                       }));
        if (!match.missing.empty())
            all << tr("rows that are no leaf: %1")
                       .arg(someOf(match.missing,
                                   [this](std::size_t row) { return quoted(m_Names[row]); }));
        return all.isEmpty() ? QString()
                             : tr("The tree is not one of these rows. It has %1.")
                                   .arg(all.join(QStringLiteral("; ")));
    }

private:
    [[nodiscard]] QString atLine(std::size_t leaf) const
    {
        const std::string &name = m_Tree.nodes[leaf].name;
        const std::string_view before = m_Text.substr(0, m_Places[leaf]);
        const auto line = 1 + std::ranges::count(before, '\n');
        return name.empty() ? tr("one without a name (line %1)").arg(line)
                            : tr("%1 (line %2)").arg(quoted(name)).arg(line);
    }

    std::string_view m_Text;
    const std::vector<std::size_t> &m_Places;
    const Tree &m_Tree;
    std::span<const std::string> m_Names;
};

} // namespace

std::variant<NamedTree, QString> readNamedTree(std::string_view newick,
                                               std::span<const std::string> names)
{
    std::vector<std::size_t> places;
    std::variant<Tree, NewickError> read = readNewick(newick, &places);
    if (const auto *const error = std::get_if<NewickError>(&read))
        return QString::fromStdString(error->text());
    Tree &tree = std::get<Tree>(read);
    LeafNames match = findLeafRows(tree, names);
    const QString cause = LeafCauses(newick, places, tree, names).of(match);
    if (!cause.isEmpty())
        return cause;
    return NamedTree{std::move(tree), std::move(match.rows)};
}

std::variant<NamedTree, QString> readTreeFile(const QString &file,
                                              std::span<const std::string> names)
{
    const auto failure = [&file](const QString &cause) { return tr("%1: %2").arg(file, cause); };
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly))
        return failure(in.errorString());
    if (in.size() > kMostBytes)
        return failure(tr("The file has more than %L1 MB.").arg(kMostBytes >> 20));
    const QByteArray text = in.readAll();
    if (in.error() != QFileDevice::NoError)
        return failure(in.errorString());
    std::variant<NamedTree, QString> read =
        readNamedTree({text.constData(), std::size_t(text.size())}, names);
    if (const QString *const cause = std::get_if<QString>(&read))
        return failure(*cause);
    return read;
}

QString writeTreeFile(const QString &file, const Tree &tree)
{
    QSaveFile out(file);
    const std::string text = writeNewick(tree) + '\n';
    const auto size = static_cast<qint64>(text.size());
    if (out.open(QIODevice::WriteOnly) && out.write(text.data(), size) == size && out.commit())
        return {};
    return tr("%1: %2").arg(file, out.errorString());
}

} // namespace companion
