// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that select residues by what they are.
#include "Config.h"
#include "DataPoint.h"
#include "KALMO2.h"
#include "Space.h"
#include "SubSequenceSearch.h"

#include <QInputDialog>
#include <QPointer>

#include <optional>
#include <vector>

namespace {

// The letter to be selected in each column, '\0' where there is none. Kept: two rows have to agree,
// whatever the number is. Unlike for colouring, a column whose most frequent letters are equally
// frequent has none.
std::vector<char> conservedLetters(const TAMBO::Alignment &alignment, unsigned long number)
{
    std::vector<char> letters;
    letters.reserve(alignment.width());
    const bool isPair = alignment.height() == 2;
    for (const TAMBO::AlignmentMajority &majority : alignment.majorities()) {
        const bool isConserved =
            isPair ? majority.count == 2 : majority.isAlone && number <= majority.count;
        letters.push_back(isConserved && majority.count > 0 ? majority.letter : '\0');
    }
    return letters;
}

} // namespace

namespace ZEP {

void KALMO2::selectConservedN()
{
    if (m_Data == nullptr || m_Data->height() < 2)
        return;
    const int rows = static_cast<int>(m_Data->height());
    const QPointer<KALMO2> alive(this);
    bool ok = false;
    const int number =
        QInputDialog::getInt(this, "Number of conserved", "Must be:", rows, 0, rows, 1, &ok);
    // The dialog runs an event loop, in which the window may have been closed, or the alignment
    // deleted.
    if (!alive || !ok || m_Data == nullptr)
        return;
    const DataPoint<TAMBO::Space> guard(this, TAMBO::Space::instance());
    if (guard.m_good)
        m_Data->selectLetters(conservedLetters(*m_Data, static_cast<unsigned long>(number)));
    setAllChanged();
    Update();
}

void KALMO2::selectSubSequence()
{
    if (m_Data == nullptr)
        return;
    const QPointer<KALMO2> alive(this);
    bool ok = false;
    const QString pattern = QInputDialog::getText(
        this, "Select", "Enter searched subsequence:", QLineEdit::Normal, QString(), &ok);
    if (!alive || !ok || pattern.isEmpty() || m_Data == nullptr)
        return;
    using Language = RowSearch::Language;
    const Language language = Config::GetSetting("KALMO2", "SimpleRegExp").ToBool()
                                  ? Language::Cells
                                  : Language::Expression;
    std::optional<RowSearch::Found> found;
    // Nothing is searched for in vain; a guard that is refused says why.
    if (!m_Data->IsLocked() && !TAMBO::Space::instance()->IsLocked()) {
        const TAMBO::Alignment *searched = m_Data;
        found = RowSearch::Run(this, *m_Data, pattern, language);
        if (!alive || m_Data != searched || !found)
            return;
    }
    const DataPoint<TAMBO::Alignment> guard(this, m_Data);
    if (guard.m_good && found) {
        if (language == Language::Cells)
            selectCells(*guard, *found);
        else
            selectMatches(*guard, pattern, *found);
    }
    setAllChanged();
    Update();
}

} // namespace ZEP
