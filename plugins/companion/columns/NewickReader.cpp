// SPDX-License-Identifier: GPL-3.0-or-later
#include "Newick.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace companion {

namespace {

constexpr std::string_view kNewickSigns = "()[]':;,";

bool isNewickBlank(char letter) noexcept
{
    return letter == ' ' || (letter >= '\t' && letter <= '\r');
}

// Control characters are part of no name that stands without quotes.
bool endsPlainName(char letter) noexcept
{
    return static_cast<unsigned char>(letter) <= ' ' || letter == '\x7f' ||
           kNewickSigns.find(letter) != std::string_view::npos;
}

// Reads from the left to the right and never calls itself, so that no nesting is too deep.
class NewickReader
{
public:
    explicit NewickReader(std::string_view text) : m_Text(text) { }

    std::variant<Tree, NewickError> read(std::vector<std::size_t> *places)
    {
        m_Places = places;
        if (m_Places != nullptr)
            m_Places->assign(1, 0);
        m_Tree.nodes.emplace_back();
        m_Tree.root = 0;
        if (!readNodes())
            return m_Error;
        if (!skipBlanks())
            return m_Error;
        if (m_Place < m_Text.size() && !fail("found " + found() + " behind the tree's ';'"))
            return m_Error;
        return std::move(m_Tree);
    }

private:
    // Up to the ';'.
    bool readNodes()
    {
        if (!skipBlanks())
            return false;
        if (m_Place == m_Text.size())
            return fail("there is no tree");
        if (m_Text[m_Place] == ';')
            return fail("there is no tree before ';'");
        while (true) {
            if (!openNodes() || !readNameAndLength())
                return false;
            bool isOpen = false;
            while (!isOpen) {
                if (!skipBlanks())
                    return false;
                const char sign = m_Place < m_Text.size() ? m_Text[m_Place] : '\0';
                if (sign == ';' && m_Node == m_Tree.root) {
                    ++m_Place;
                    return true;
                }
                if (sign == ',' && m_Node != m_Tree.root) {
                    ++m_Place;
                    m_Node = m_Tree.nodes[m_Node].parent;
                    if (!addNode())
                        return false;
                    isOpen = true;
                } else if (sign == ')' && m_Node != m_Tree.root) {
                    ++m_Place;
                    m_Node = m_Tree.nodes[m_Node].parent;
                    if (!readNameAndLength())
                        return false;
                } else
                    return failAfterNode();
            }
        }
    }

    // Down to a first leaf.
    bool openNodes()
    {
        while (skipBlanks()) {
            if (m_Place == m_Text.size() || m_Text[m_Place] != '(')
                return true;
            ++m_Place;
            if (!addNode())
                return false;
        }
        return false;
    }

    bool addNode()
    {
        if (m_Tree.nodes.size() == kMostTreeNodes)
            return fail("the tree has more than " + std::to_string(kMostTreeNodes) + " nodes");
        m_Node = m_Tree.addChild(m_Node);
        if (m_Places != nullptr)
            m_Places->push_back(0);
        return true;
    }

    bool readNameAndLength()
    {
        if (!skipBlanks())
            return false;
        if (m_Places != nullptr)
            (*m_Places)[m_Node] = m_Place;
        if (!readName() || !skipBlanks())
            return false;
        if (m_Place == m_Text.size() || m_Text[m_Place] != ':')
            return true;
        ++m_Place;
        return skipBlanks() && readLength();
    }

    bool readName()
    {
        std::string &name = m_Tree.nodes[m_Node].name;
        if (m_Place == m_Text.size() || m_Text[m_Place] != '\'') {
            name = plainText();
            return true;
        }
        const std::size_t quote = m_Place++;
        while (true) {
            const std::size_t end = m_Text.find('\'', m_Place);
            if (end == std::string_view::npos)
                return fail("the quoted name does not end", quote);
            name += m_Text.substr(m_Place, end - m_Place);
            m_Place = end + 1;
            // Two quotes stand for one.
            if (m_Place == m_Text.size() || m_Text[m_Place] != '\'')
                return true;
            name += '\'';
            ++m_Place;
        }
    }

    bool readLength()
    {
        const std::size_t start = m_Place;
        const std::string_view text = plainText();
        const std::string_view digits = text.starts_with('+') ? text.substr(1) : text;
        double length = 0;
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), length);
        if (text.empty())
            return fail("expected a number behind ':', found " + found());
        if (error != std::errc() || end != digits.data() + digits.size() ||
            !std::isfinite(length) || digits.starts_with("-") != text.starts_with("-"))
            return fail("expected a number behind ':', found \"" + shortened(text) + "\"", start);
        m_Tree.nodes[m_Node].length = length;
        return true;
    }

    std::string_view plainText() noexcept
    {
        const std::size_t start = m_Place;
        while (m_Place < m_Text.size() && !endsPlainName(m_Text[m_Place]))
            ++m_Place;
        return m_Text.substr(start, m_Place - start);
    }

    // And comments.
    bool skipBlanks()
    {
        std::size_t open = 0;
        std::size_t first = 0;
        for (; m_Place < m_Text.size(); ++m_Place) {
            const char letter = m_Text[m_Place];
            if (letter == '[') {
                if (open++ == 0)
                    first = m_Place;
            } else if (open > 0)
                open -= letter == ']' ? 1 : 0;
            else if (!isNewickBlank(letter))
                return true;
        }
        return open == 0 || fail("the comment does not end", first);
    }

    bool failAfterNode()
    {
        if (m_Node != m_Tree.root && (m_Place == m_Text.size() || m_Text[m_Place] == ';'))
            return fail("a ')' is missing: found " + found() + ", expected ',' or ')'");
        if (m_Node == m_Tree.root && m_Place < m_Text.size() && m_Text[m_Place] == ')')
            return fail("found ')' without its '('");
        return fail("found " + found() + ", expected " +
                    (m_Node == m_Tree.root ? "';'" : "',' or ')'"));
    }

    [[nodiscard]] std::string found() const
    {
        if (m_Place == m_Text.size())
            return "the end of the text";
        const std::string_view rest = m_Text.substr(m_Place);
        const auto byte = static_cast<unsigned char>(rest.front());
        if (byte < ' ' || byte == 0x7f)
            return "a control character";
        if (kNewickSigns.find(rest.front()) != std::string_view::npos)
            return std::string("'") + rest.front() + "'";
        const auto end = std::ranges::find_if(rest, endsPlainName);
        return "\"" + shortened(rest.substr(0, std::size_t(end - rest.begin()))) + "\"";
    }

    static std::string shortened(std::string_view text)
    {
        constexpr std::size_t kMostShown = 40;
        if (text.size() <= kMostShown)
            return std::string(text);
        // Not in the middle of a letter of several bytes.
        std::size_t end = kMostShown;
        while (end > 0 && isInsideLetter(text[end]))
            --end;
        return std::string(text.substr(0, end)) + "...";
    }

    static bool isInsideLetter(char byte) noexcept
    {
        return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80U;
    }

    bool fail(std::string cause) { return fail(std::move(cause), m_Place); }

    bool fail(std::string cause, std::size_t place)
    {
        m_Error.cause = std::move(cause);
        const std::string_view before = m_Text.substr(0, place);
        m_Error.line = 1 + std::size_t(std::ranges::count(before, '\n'));
        const std::size_t lineEnd = before.rfind('\n');
        const std::string_view line =
            lineEnd == std::string_view::npos ? before : before.substr(lineEnd + 1);
        m_Error.column = 1 + line.size() - std::size_t(std::ranges::count_if(line, isInsideLetter));
        return false;
    }

    std::string_view m_Text;
    std::size_t m_Place = 0;
    Tree m_Tree;
    // Whose name and length are read.
    std::size_t m_Node = 0;
    NewickError m_Error;
    std::vector<std::size_t> *m_Places = nullptr;
};

} // namespace

std::string NewickError::text() const
{
    return "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + cause;
}

std::variant<Tree, NewickError> readNewick(std::string_view text, std::vector<std::size_t> *places)
{
    return NewickReader(text).read(places);
}

} // namespace companion
