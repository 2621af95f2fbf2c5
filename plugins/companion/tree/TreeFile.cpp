// SPDX-License-Identifier: GPL-3.0-or-later
#include "TreeFile.h"

#include "Newick.h"
#include "Texts.h"

#include <QFile>
#include <QSaveFile>
#include <QStringList>

#include <algorithm>
#include <unordered_map>

namespace companion {

namespace {

// Of a tree of so many rows as can be drawn.
constexpr qint64 kMostBytes = qint64(256) << 20;
// Of names in a message.
constexpr std::size_t kMostNamed = 3;

std::string plainName(std::string_view name)
{
    constexpr std::string_view kSigns = "()[]':;,";
    std::string plain(name);
    for (char &letter : plain)
        if (static_cast<unsigned char>(letter) <= ' ' ||
            kSigns.find(letter) != std::string_view::npos)
            letter = '_';
    return plain;
}

QString quoted(const std::string &name)
{
    constexpr int kMostLetters = 40;
    QString text = QString::fromStdString(name);
    if (text.size() > kMostLetters)
        text = text.left(kMostLetters) + u'…';
    return u'“' + text + u'”';
}

// "“a”, “b” and 7 more"
class SomeNames
{
public:
    template <typename Text> void add(Text text)
    {
        if (m_Count++ < kMostNamed)
            m_Texts << text();
    }
    [[nodiscard]] std::size_t count() const noexcept { return m_Count; }
    [[nodiscard]] QString text() const
    {
        const QString all = m_Texts.join(QStringLiteral(", "));
        return m_Count <= kMostNamed ? all
                                     : tr("%1 and %L2 more").arg(all).arg(m_Count - kMostNamed);
    }

private:
    QStringList m_Texts;
    std::size_t m_Count = 0;
};

class LeafMatch
{
public:
    LeafMatch(std::string_view text, const std::vector<std::size_t> &places,
              std::span<const std::string> names)
        : m_Text(text), m_Places(places), m_Names(names)
    {
        for (std::size_t row = 0; row < names.size(); ++row) {
            m_Exact[names[row]].push_back(row);
            m_Plain[plainName(names[row])].push_back(row);
        }
    }

    std::variant<NamedTree, QString> match(Tree tree)
    {
        const std::vector<std::size_t> leaves = leafOrder(tree);
        std::vector<std::size_t> rows;
        std::vector<std::size_t> leafOfRow(m_Names.size(), kNoNode);
        for (const std::size_t leaf : leaves) {
            const std::string &name = tree.nodes[leaf].name;
            const std::vector<std::size_t> *const found = rowsOf(name);
            if (found == nullptr) {
                m_Unknown.add([&] { return atLine(name, leaf); });
            } else if (found->size() > 1) {
                m_Ambiguous.add(
                    [&] { return tr("%1 (%L2 rows)").arg(quoted(name)).arg(found->size()); });
            } else if (leafOfRow[found->front()] != kNoNode) {
                m_Doubled.add([&] { return atLine(name, leaf); });
            } else {
                leafOfRow[found->front()] = leaf;
                rows.push_back(found->front());
            }
        }
        if (m_Ambiguous.count() == 0)
            for (std::size_t row = 0; row < m_Names.size(); ++row)
                if (leafOfRow[row] == kNoNode)
                    m_Missing.add([&] { return quoted(m_Names[row]); });
        const QString cause = causes();
        if (!cause.isEmpty())
            return cause;
        return NamedTree{std::move(tree), std::move(rows)};
    }

private:
    [[nodiscard]] const std::vector<std::size_t> *rowsOf(const std::string &name) const
    {
        if (const auto found = m_Exact.find(name); found != m_Exact.end())
            return &found->second;
        const auto found = m_Plain.find(plainName(name));
        return found == m_Plain.end() ? nullptr : &found->second;
    }

    [[nodiscard]] QString atLine(const std::string &name, std::size_t leaf) const
    {
        const std::string_view before = m_Text.substr(0, m_Places[leaf]);
        const auto line = 1 + std::ranges::count(before, '\n');
        return name.empty() ? tr("one without a name (line %1)").arg(line)
                            : tr("%1 (line %2)").arg(quoted(name)).arg(line);
    }

    [[nodiscard]] QString causes() const
    {
        QStringList all;
        if (m_Unknown.count() > 0)
            all << tr("leaves that are no row: %1").arg(m_Unknown.text());
        if (m_Doubled.count() > 0)
            all << tr("leaves that are there already: %1").arg(m_Doubled.text());
        if (m_Ambiguous.count() > 0)
            all << tr("names that several rows have: %1").arg(m_Ambiguous.text());
        if (m_Missing.count() > 0)
            all << tr("rows that are no leaf: %1").arg(m_Missing.text());
        return all.isEmpty() ? QString()
                             : tr("The tree is not one of these rows. It has %1.")
                                   .arg(all.join(QStringLiteral("; ")));
    }

    std::string_view m_Text;
    const std::vector<std::size_t> &m_Places;
    std::span<const std::string> m_Names;
    std::unordered_map<std::string, std::vector<std::size_t>> m_Exact;
    std::unordered_map<std::string, std::vector<std::size_t>> m_Plain;
    SomeNames m_Unknown;
    SomeNames m_Doubled;
    SomeNames m_Ambiguous;
    SomeNames m_Missing;
};

} // namespace

std::variant<NamedTree, QString> readNamedTree(std::string_view newick,
                                               std::span<const std::string> names)
{
    std::vector<std::size_t> places;
    std::variant<Tree, NewickError> read = readNewick(newick, &places);
    if (const auto *const error = std::get_if<NewickError>(&read))
        return QString::fromStdString(error->text());
    return LeafMatch(newick, places, names).match(std::move(std::get<Tree>(read)));
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
