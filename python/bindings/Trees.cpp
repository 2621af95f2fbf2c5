// SPDX-License-Identifier: GPL-3.0-or-later
#include "Trees.h"

#include "AlignmentTable.h"
#include "Declarations.h"
#include "LeafNames.h"
#include "Newick.h"
#include "ReplacementFile.h"

#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <span>
#include <string>
#include <system_error>
#include <variant>

namespace TAMBO::script {

using companion::kNoNode;
using companion::LeafNames;
using companion::TreeNode;

TreeValue::TreeValue(companion::Tree tree, std::optional<AlignmentReference> alignment,
                     RowsOfLeaves rows)
    : m_Tree(std::move(tree)),
      m_Leaves(companion::leafOrder(m_Tree)),
      m_LeavesOf(m_Tree.nodes.size()),
      m_Alignment(alignment),
      m_Rows(std::move(rows))
{
    const std::vector<std::size_t> order = companion::fromTheRoot(m_Tree);
    std::size_t next = 0;
    for (const std::size_t node : order) {
        m_LeavesOf[node] = {next, next};
        next += m_Tree.nodes[node].isLeaf() ? 1 : 0;
    }
    for (auto node = order.rbegin(); node != order.rend(); ++node) {
        const TreeNode &each = m_Tree.nodes[*node];
        std::size_t &end = m_LeavesOf[*node].second;
        end = each.isLeaf() ? end + 1 : m_LeavesOf[each.children.back()].second;
    }
}

std::optional<RowReference> TreeValue::rowOf(std::size_t node) const
{
    const auto found = m_Rows.find(node);
    return found == m_Rows.end() ? std::nullopt : std::optional(found->second);
}

std::shared_ptr<TreeValue> treeOfRows(companion::Tree tree, const AlignmentReference &alignment)
{
    TreeValue::RowsOfLeaves rows;
    for (std::size_t row = 0; row < (*alignment).table().rowCount(); ++row)
        rows.emplace(row, RowReference(alignment, row));
    return std::make_shared<TreeValue>(std::move(tree), alignment, std::move(rows));
}

namespace {

using TreePointer = std::shared_ptr<TreeValue>;

std::string quotedName(const std::string &name)
{
    return name.empty() ? "one without a name" : '\'' + name + '\'';
}

// "'a', 'b' and 7 more"
template <typename Entry, typename TextOf>
std::string someOf(const std::vector<Entry> &entries, const TextOf &textOf)
{
    constexpr std::size_t most = 3;
    std::string text;
    for (std::size_t i = 0; i < std::min(entries.size(), most); ++i)
        text += (i == 0 ? "" : ", ") + textOf(entries[i]);
    return entries.size() <= most
               ? text
               : text + " and " + std::to_string(entries.size() - most) + " more";
}

std::string whyNot(const LeafNames &match, const companion::Tree &tree,
                   std::span<const std::string> names)
{
    const auto nameOf = [&](std::size_t leaf) { return quotedName(tree.nodes[leaf].name); };
    std::string causes;
    const auto add = [&causes](const char *what, const std::string &which) {
        causes += (causes.empty() ? "" : "; ") + std::string(what) + ": " + which;
    };
    if (!match.unknown.empty())
        add("leaves that are no row", someOf(match.unknown, nameOf));
    if (!match.doubled.empty())
        add("leaves that are there already", someOf(match.doubled, nameOf));
    if (!match.ambiguous.empty())
        add("names that several rows have",
            someOf(match.ambiguous,
                   [&](const LeafNames::Ambiguous &name) { return nameOf(name.leaf); }));
    if (!match.missing.empty())
        add("rows that are no leaf",
            someOf(match.missing, [&](std::size_t row) { return quotedName(names[row]); }));
    return "the tree is not one of these rows: " + causes;
}

std::vector<std::string> namesOf(const Alignment &alignment)
{
    std::vector<std::string> names;
    for (std::size_t row = 0; row < alignment.table().rowCount(); ++row)
        names.push_back(alignment.table().row(row).name());
    return names;
}

// ---- Text and files

// Where a place in a text is, which counts from 1.
std::uint64_t lineOf(std::string_view text, std::size_t place)
{
    return 1 + std::uint64_t(std::ranges::count(text.substr(0, place), '\n'));
}

// A leaf that is to be shown to the user.
std::size_t firstCulprit(const LeafNames &match)
{
    std::size_t leaf = kNoNode;
    for (const std::vector<std::size_t> *const some : {&match.unknown, &match.doubled})
        leaf = some->empty() ? leaf : std::min(leaf, some->front());
    return match.ambiguous.empty() ? leaf : std::min(leaf, match.ambiguous.front().leaf);
}

// Without a file the text is one of Python.
TreePointer readTree(const std::string &text, const std::string &file,
                     const std::optional<AlignmentReference> &alignment)
{
    std::vector<std::size_t> places;
    std::variant<companion::Tree, companion::NewickError> read =
        companion::readNewick(text, &places);
    if (const auto *const error = std::get_if<companion::NewickError>(&read)) {
        const std::string column = "column " + std::to_string(error->column) + ": " + error->cause;
        throw FileError{
            {FailureKind::BadInput, file.empty() ? error->text() : column, {file, error->line}}};
    }
    auto &tree = std::get<companion::Tree>(read);
    if (!alignment)
        return std::make_shared<TreeValue>(std::move(tree));
    const std::vector<std::string> names = namesOf(**alignment);
    const LeafNames match = companion::findLeafRows(tree, names);
    if (!match.isComplete()) {
        const std::size_t leaf = firstCulprit(match);
        throw FileError{{FailureKind::BadInput,
                         whyNot(match, tree, names),
                         {file, leaf == kNoNode ? 0 : lineOf(text, places[leaf])}}};
    }
    TreeValue::RowsOfLeaves rows;
    const std::vector<std::size_t> leaves = companion::leafOrder(tree);
    for (std::size_t i = 0; i < leaves.size(); ++i)
        rows.emplace(leaves[i], RowReference(*alignment, match.rows[i]));
    return std::make_shared<TreeValue>(std::move(tree), alignment, std::move(rows));
}

// Names are texts in Python.
void checkText(const std::string &text, const std::string &name)
{
    std::size_t begin = 0;
    for (std::uint64_t line = 1; begin < text.size(); ++line) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        if (PyObject *const decoded =
                PyUnicode_DecodeUTF8(text.data() + begin, py::ssize_t(end - begin), "strict")) {
            Py_DECREF(decoded);
        } else {
            PyErr_Clear();
            throw FileError{{FailureKind::BadInput, "found bytes that are no UTF-8", {name, line}}};
        }
        begin = end + 1;
    }
}

TreePointer readTreeFile(const std::filesystem::path &file,
                         const std::optional<AlignmentReference> &alignment)
{
    ProcessModel::get();
    const std::string name = file.filename().string();
    if (std::error_code error; !std::filesystem::exists(file, error))
        throw FileError{{FailureKind::NotFound, "No such file or directory", {file.string()}}};
    // Of a tree of as many nodes as are read.
    constexpr std::uintmax_t most = std::uintmax_t(256) << 20;
    std::error_code error;
    if (const std::uintmax_t bytes = std::filesystem::file_size(file, error);
        !error && bytes > most)
        throw FileError{{FailureKind::BadInput, "the file has more than 256 MB", {name}}};
    if (error && std::filesystem::is_directory(file))
        throw FileError{{FailureKind::System, error.message(), {name}}};
    errno = 0;
    std::ifstream in(file, std::ios::binary);
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (!in.is_open() || in.bad())
        throw FileError{{FailureKind::System, std::strerror(errno), {name}}};
    checkText(text, name);
    return readTree(text, name, alignment);
}

std::string newick(const TreeValue &self)
{
    return companion::writeNewick(self.tree());
}

void save(const TreeValue &self, const std::filesystem::path &file)
{
    formats::ReplacementFile out(file);
    out.write(newick(self) + '\n');
    Result<void> written = out.complete();
    if (written)
        written = out.putInPlace();
    if (!written)
        throw FileError{written.error()};
}

// ---- Trees made of a tree

template <typename Change> TreePointer changedTree(const TreeValue &self, const Change &change)
{
    companion::Tree tree = self.tree();
    change(tree);
    return std::make_shared<TreeValue>(std::move(tree), self.alignment(), self.rows());
}

// ---- Clades

// A node with all that is below it. It keeps its tree.
struct Clade
{
    TreePointer tree;
    std::size_t node;

    [[nodiscard]] const TreeNode &get() const { return tree->tree().nodes[node]; }
    [[nodiscard]] Clade at(std::size_t other) const { return {tree, other}; }

    friend bool operator==(const Clade &a, const Clade &b)
    {
        return a.tree == b.tree && a.node == b.node;
    }
};

std::vector<Clade> leavesOf(const Clade &clade)
{
    const auto [begin, end] = clade.tree->leavesOf(clade.node);
    std::vector<Clade> leaves;
    for (std::size_t i = begin; i < end; ++i)
        leaves.push_back(clade.at(clade.tree->leaves()[i]));
    return leaves;
}

std::optional<Clade> parentOf(const Clade &clade)
{
    const std::size_t parent = clade.get().parent;
    return parent == kNoNode ? std::nullopt : std::optional(clade.at(parent));
}

std::vector<Clade> childrenOf(const Clade &clade)
{
    std::vector<Clade> children;
    for (const std::size_t child : clade.get().children)
        children.push_back(clade.at(child));
    return children;
}

double depthOf(const Clade &clade)
{
    const companion::Tree &tree = clade.tree->tree();
    double depth = 0;
    for (std::size_t node = clade.node; node != tree.root; node = tree.nodes[node].parent)
        depth += tree.nodes[node].length.value_or(0);
    return depth;
}

std::vector<RowReference> rowsOf(const Clade &clade)
{
    std::vector<RowReference> rows;
    for (const Clade &leaf : leavesOf(clade)) {
        if (const std::optional<RowReference> row = clade.tree->rowOf(leaf.node))
            rows.push_back(*row);
    }
    return rows;
}

// The clade itself, and all below it, each before its children.
py::iterator cladesOf(const Clade &clade)
{
    py::list clades;
    std::vector<std::size_t> waiting = {clade.node};
    while (!waiting.empty()) {
        const std::size_t node = waiting.back();
        waiting.pop_back();
        clades.append(clade.at(node));
        const std::vector<std::size_t> &children = clade.tree->tree().nodes[node].children;
        waiting.insert(waiting.end(), children.rbegin(), children.rend());
    }
    return py::iter(clades);
}

std::string shownClade(const Clade &clade)
{
    const std::string name =
        clade.get().name.empty() ? "" : ' ' + std::string(py::repr(py::str(clade.get().name)));
    const auto [begin, end] = clade.tree->leavesOf(clade.node);
    return "<tambo.Clade" + name + (clade.get().isLeaf() ? ", a leaf>" : ", ") +
           (clade.get().isLeaf() ? "" : std::to_string(end - begin) + " leaves>");
}

Clade rootOf(const TreePointer &tree)
{
    return {tree, tree->tree().root};
}

Clade cladeNamed(const TreePointer &tree, const std::string &name)
{
    for (const std::size_t node : companion::fromTheRoot(tree->tree())) {
        if (tree->tree().nodes[node].name == name)
            return {tree, node};
    }
    throw py::key_error("no clade is called " + name);
}

std::vector<std::string> leafNames(const TreeValue &tree)
{
    std::vector<std::string> names;
    for (const std::size_t leaf : tree.leaves())
        names.push_back(tree.tree().nodes[leaf].name);
    return names;
}

void declareClades(py::module_ &module)
{
    py::class_<Clade>(module, "Clade",
                      "A node of a tree with all that is below it; a leaf is one, too.")
        .def_readonly("tree", &Clade::tree, "The tree that it is a part of.")
        .def_property_readonly("parent", &parentOf, "The clade above it; None of the root.")
        .def_property_readonly("children", &childrenOf,
                               "The clades right below it, from top to bottom; none of a leaf.")
        .def_property_readonly(
            "is_leaf", [](const Clade &clade) { return clade.get().isLeaf(); },
            "Whether nothing is below it.")
        .def_property_readonly(
            "name", [](const Clade &clade) { return clade.get().name; },
            "Of a leaf that of its row as it was then; of other clades what the file says, which "
            "is often a support, or ''.")
        .def_property_readonly(
            "length", [](const Clade &clade) { return clade.get().length; },
            "Of the branch to its parent, in the unit of the distances that the tree was made of: "
            "for neighbor_tree() the share of pairs that differ. None where nothing is said.")
        .def_property_readonly("depth", &depthOf,
                               "The sum of the lengths from the root; branches without one count "
                               "as 0.")
        .def_property_readonly("leaves", &leavesOf,
                               "Those below it, or itself, from top to bottom.")
        .def_property_readonly(
            "row", [](const Clade &clade) { return clade.tree->rowOf(clade.node); },
            "Of a leaf the Row that it is; None in a tree that belongs to no alignment, and of "
            "other clades. The Row raises GoneError when it has left the alignment.")
        .def_property_readonly("rows", &rowsOf,
                               "The rows of its leaves, from top to bottom; none in a tree that "
                               "belongs to no alignment.")
        .def(
            "__len__",
            [](const Clade &clade) {
                const auto [begin, end] = clade.tree->leavesOf(clade.node);
                return end - begin;
            },
            "How many leaves it has.")
        .def("__iter__", &cladesOf, "Itself and all clades below it, each before its children.")
        .def(
            "__eq__", [](const Clade &clade, const Clade &other) { return clade == other; },
            py::is_operator())
        .def("__hash__",
             [](const Clade &clade) {
                 return std::hash<const void *>()(clade.tree.get()) ^
                        std::hash<std::size_t>()(clade.node);
             })
        .def("__repr__", &shownClade);
}

} // namespace

std::vector<unsigned long> rowOrder(const TreeValue &tree, const AlignmentReference &reference)
{
    const AlignmentTable &table = (*reference).table();
    std::vector<unsigned long> order;
    if (tree.alignment() != reference) {
        const std::vector<std::string> names = namesOf(*reference);
        const LeafNames match = companion::findLeafRows(tree.tree(), names);
        if (!match.isComplete())
            throw py::value_error(whyNot(match, tree.tree(), names));
        order.assign(match.rows.begin(), match.rows.end());
        return order;
    }
    // A sequence may stand in several rows, from the last one to the first.
    std::unordered_map<std::uint32_t, std::vector<std::size_t>> rows;
    for (std::size_t row = table.rowCount(); row-- > 0;)
        rows[ChainReference(table.row(row).sequence()).number().identity].push_back(row);
    for (const std::size_t leaf : tree.leaves()) {
        std::vector<std::size_t> &there = rows[tree.rowOf(leaf)->chain().number().identity];
        if (there.empty())
            throw py::value_error("the tree is not one of these rows any more: " +
                                  quotedName(tree.tree().nodes[leaf].name) + " is none");
        order.push_back(there.back());
        there.pop_back();
    }
    if (order.size() != table.rowCount())
        throw py::value_error("the tree is not one of these rows any more: it has " +
                              std::to_string(order.size()) + " leaves, and these are " +
                              std::to_string(table.rowCount()) + " rows");
    return order;
}

void declareTrees(py::module_ &module)
{
    py::class_<TreeValue, TreePointer> type(
        module, "Tree",
        "A tree of rows, which never changes. str() of it is its text in Newick form (G. Olsen, "
        "\"Newick's 8:45\" tree format standard, 1990). With an alignment its leaves are rows, "
        "which are found by their names: blanks and signs of the form may be underscores.\n\n"
        "Raises FormatError when the text is no tree, or its leaves and the rows are not the "
        "same.");
    declareClades(module);
    type.def(py::init([](const std::string &text, const std::optional<AlignmentReference> &rows) {
                 ProcessModel::get();
                 return readTree(text, {}, rows);
             }),
             py::arg("newick"), py::arg("alignment") = py::none())
        .def_property_readonly("root", &rootOf,
                               "The clade of all leaves. Of a tree of neighbor joining it says "
                               "nothing: it is the node at which the last three meet.")
        .def_property_readonly(
            "leaves", [](const TreePointer &tree) { return leavesOf(rootOf(tree)); },
            "From top to bottom.")
        .def_property_readonly("names", &leafNames, "Of the leaves, from top to bottom.")
        .def_property_readonly("alignment", &TreeValue::alignment,
                               "The alignment whose rows the leaves are, or None.")
        .def_property_readonly(
            "rows", [](const TreePointer &tree) { return rowsOf(rootOf(tree)); },
            "Of the leaves, from top to bottom; none in a tree that belongs to no alignment.")
        .def("__getitem__", &cladeNamed, py::arg("name"),
             "The first clade of that name; a KeyError when there is none.")
        .def(
            "__len__", [](const TreeValue &tree) { return tree.leaves().size(); },
            "How many leaves it has.")
        .def(
            "__iter__", [](const TreePointer &tree) { return cladesOf(rootOf(tree)); },
            "All clades, each before its children, the root first.")
        .def("__str__", &newick)
        .def("__repr__",
             [](const TreeValue &tree) {
                 return "<tambo.Tree of " + std::to_string(tree.leaves().size()) + " leaves>";
             })
        .def(
            "midpoint_rooted",
            [](const TreeValue &tree) { return changedTree(tree, companion::rootInTheMiddle); },
            "The same tree with its root in the middle of the longest way between two leaves "
            "(J. S. Farris, Am. Nat. 106, 645, 1972), as the workbench draws it. A tree of less "
            "than three leaves, with a negative length or without any other than 0 stays as it is.")
        .def(
            "ladderized",
            [](const TreeValue &tree) { return changedTree(tree, companion::ladderize); },
            "The same tree with clades of fewer leaves above those of more.")
        .def("save", &save, py::arg("path"),
             "Writes it as text in Newick form. Raises OSError when that cannot be; what was there "
             "stays then.");
    module.def("read_tree", &readTreeFile, py::arg("path"), py::arg("alignment") = py::none(),
               "The tree of a file in Newick form. Raises FormatError, with file and line, as Tree "
               "does.");
}

} // namespace TAMBO::script
