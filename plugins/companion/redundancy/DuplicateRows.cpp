// SPDX-License-Identifier: GPL-3.0-or-later
#include "DuplicateRows.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "AminoAcidOrder.h"
#include "RowPass.h"
#include "Texts.h"
#include "ThreadWork.h"

#include <QCryptographicHash>
#include <QMainWindow>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>

namespace companion {

namespace {

// One thread sorts them, while the rows that they are of may change.
class DuplicateSearch
{
public:
    explicit DuplicateSearch(TAMBO::AlignmentWindow &window)
        : m_Pass(
              window, [this](const TAMBO::Alignment &alignment) { begin(alignment.height()); },
              [this](const TAMBO::Alignment &alignment, unsigned long row) {
                  look(alignment, row);
                  return true;
              })
    { }

    bool goOn(std::chrono::microseconds most)
    {
        if (m_Sorting == nullptr) {
            if (m_Pass.goOn(most))
                return true;
            if (!m_Pass.isDone())
                return false;
            m_Sorting = std::make_unique<ThreadWork>([this](const ThreadWork::Stop &) {
                m_Found = {duplicatesOf(m_Names), duplicatesOf(m_Sequences)};
            });
        }
        return !m_Sorting->isDone(most);
    }
    [[nodiscard]] int percent() const noexcept { return m_Pass.percent(); }
    [[nodiscard]] bool isDone() const { return m_Pass.isDone(); }
    // Of the end.
    [[nodiscard]] DuplicateRows &found() noexcept { return m_Found; }

private:
    void begin(unsigned long rows)
    {
        m_Names.clear();
        m_Names.reserve(rows);
        m_Sequences.clear();
        m_Sequences.reserve(rows);
    }
    void look(const TAMBO::Alignment &alignment, unsigned long row)
    {
        m_Names.emplace_back(digestOf(alignment.GetSeqName(row)));
        std::string letters = alignment.GetSequence(row, true);
        std::ranges::transform(letters, letters.begin(), capital);
        if (letters.empty())
            m_Sequences.emplace_back();
        else
            m_Sequences.emplace_back(digestOf(letters));
    }

    RowPass m_Pass;
    std::vector<std::optional<TextDigest>> m_Names;
    std::vector<std::optional<TextDigest>> m_Sequences;
    DuplicateRows m_Found;
    // Ends before what it works on.
    std::unique_ptr<ThreadWork> m_Sorting;
};

} // namespace

TextDigest digestOf(std::string_view text)
{
    const QByteArray bytes = QCryptographicHash::hash(
        QByteArray::fromRawData(text.data(), qsizetype(text.size())), QCryptographicHash::Md5);
    TextDigest digest{};
    std::memcpy(digest.data(), bytes.constData(), sizeof digest);
    return digest;
}

std::size_t groupCount(const DuplicateGroups &groups)
{
    return std::size_t(std::ranges::count_if(
        groups, [](const DuplicateRow &each) { return each.row == each.first; }));
}

DuplicateGroups duplicatesOf(const std::vector<std::optional<TextDigest>> &digests)
{
    struct Known
    {
        TextDigest digest;
        std::uint32_t row;
    };
    std::vector<Known> known;
    known.reserve(digests.size());
    for (std::uint32_t row = 0; row < digests.size(); ++row)
        if (digests[row])
            known.push_back({*digests[row], row});
    std::ranges::sort(known, [](const Known &a, const Known &b) {
        return a.digest != b.digest ? a.digest < b.digest : a.row < b.row;
    });
    DuplicateGroups groups;
    for (std::size_t begin = 0, end = 0; begin < known.size(); begin = end) {
        while (end < known.size() && known[end].digest == known[begin].digest)
            ++end;
        if (end - begin < 2)
            continue;
        for (std::size_t i = begin; i < end; ++i)
            groups.push_back({known[i].row, known[begin].row});
    }
    std::ranges::sort(groups, [](const DuplicateRow &a, const DuplicateRow &b) {
        return a.first != b.first ? a.first < b.first : a.row < b.row;
    });
    return groups;
}

std::optional<DuplicateRows> findDuplicates(TAMBO::AlignmentWindow &window)
{
    DuplicateSearch search(window);
    if (!finish({[&search](auto most) { return search.goOn(most); },
                 [&search] { return search.percent(); }},
                tr("Looking for duplicates…"), window.mainWindow()) ||
        !search.isDone())
        return std::nullopt;
    return std::move(search.found());
}

} // namespace companion
