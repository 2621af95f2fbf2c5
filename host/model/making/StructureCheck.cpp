// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureCheck.h"

#include "AminoAcids.h"
#include "Text.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>
#include <utility>

namespace TAMBO {

namespace {

constexpr std::size_t kLongestCode = 4;

Failure badValue(std::string cause)
{
    return {FailureKind::BadInput, std::move(cause)};
}

// A word of a structure file.
bool isCode(std::string_view text, std::size_t longest)
{
    return text.size() <= longest && std::ranges::all_of(text, [](char character) {
               return !isControl(character) && !isBlank(character) && character != '\0' &&
                      static_cast<unsigned char>(character) < 0x80;
           });
}

// '\0' when it is that of no amino acid.
char letterOfName(std::string_view name)
{
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        if (aminoAcidName(letter) == name)
            return letter;
    }
    return '\0';
}

// Those of one chain or sequence.
class NumberSet
{
public:
    // False when it is there already.
    bool add(const SequenceNumber &number)
    {
        return m_Numbers.emplace(number.number(), number.insertionCode()).second;
    }

private:
    std::set<std::pair<int, char>> m_Numbers;
};

Result<AtomRecord> atomRecord(const AtomValues &values, const std::string &where)
{
    if (values.name.empty() || !isCode(values.name, kLongestCode))
        return badValue(where + ": \"" + values.name + "\" is no name of an atom");
    const std::string atom = where + ", atom " + values.name;
    const bool isElement = !values.element.empty() && values.element.size() <= 2 &&
                           std::ranges::all_of(values.element, isLetter);
    if (!isElement)
        return badValue(atom + ": \"" + values.element + "\" is no element");
    const Vertex &place = values.position;
    if (!place.isDefined() || !std::isfinite(place.x()) || !std::isfinite(place.y()) ||
        !std::isfinite(place.z()))
        return badValue(atom + " has no finite position");
    if (!std::isfinite(values.bFactor) || !std::isfinite(values.occupancy))
        return badValue(atom + " has a B factor or an occupancy that is not finite");
    return AtomRecord{values.name, values.element, place, values.bFactor, values.occupancy};
}

Result<ResidueRecord> residueRecord(const ResidueValues &values, const std::string &chain)
{
    if (values.name.empty() || !isCode(values.name, kLongestCode + 1))
        return badValue(chain + ": \"" + values.name + "\" is no name of a residue");
    if (!values.number.isValid())
        return badValue(chain + ": \"" + values.number.getValue() + "\" is no number of a residue");
    const std::string where = chain + ", residue " + values.name + ' ' + values.number.getValue();
    if (values.letter != '\0' && !isLetter(values.letter))
        return badValue(where + ": its letter is that of no residue");
    if (values.atoms.empty())
        return badValue(where + " has no atoms");
    ResidueRecord record;
    record.typeName = values.name;
    record.number = values.number;
    const char letter =
        values.letter != '\0' ? capitalLetter(values.letter) : letterOfName(values.name);
    record.isAminoAcid = letter != '\0';
    record.letter = letter != '\0' ? letter : 'X';
    std::set<std::string_view> names;
    for (const AtomValues &atom : values.atoms) {
        Result<AtomRecord> made = atomRecord(atom, where);
        if (!made)
            return made.error();
        if (!names.insert(atom.name).second)
            return badValue(where + " has two atoms " + atom.name);
        record.atoms.push_back(std::move(made).value());
    }
    return record;
}

Result<ChainRecord> chainRecord(const ChainValues &values)
{
    if (!isCode(values.name, kLongestCode))
        return badValue('"' + values.name + "\" is no name of a chain");
    const std::string where = "chain \"" + values.name + '"';
    if (values.residues.empty())
        return badValue(where + " has no residues");
    ChainRecord record;
    record.name = values.name;
    record.residues.reserve(values.residues.size());
    NumberSet numbers;
    for (const ResidueValues &residue : values.residues) {
        Result<ResidueRecord> made = residueRecord(residue, where);
        if (!made)
            return made.error();
        if (!numbers.add(residue.number))
            return badValue(where + " has number " + residue.number.getValue() + " more than once");
        record.residues.push_back(std::move(made).value());
    }
    return record;
}

} // namespace

Result<void> checkName(std::string_view name)
{
    if (name.empty())
        return badValue("the name is empty");
    if (std::ranges::any_of(name, isControl) || !isUtf8(name))
        return badValue("the name has characters that cannot be shown");
    return {};
}

Result<std::string> checkedLetters(std::string_view letters,
                                   const std::vector<SequenceNumber> &numbers)
{
    if (letters.empty())
        return badValue("there are no letters");
    const auto *const bad = std::ranges::find_if_not(letters, isLetter);
    if (bad != letters.end()) {
        const std::string shown = isControl(*bad) || static_cast<unsigned char>(*bad) >= 0x80
                                      ? "a character"
                                      : std::string("\"") + *bad + '"';
        return badValue(shown + " at place " + std::to_string(bad - letters.begin() + 1) +
                        " stands for no residue");
    }
    if (!numbers.empty() && numbers.size() != letters.size())
        return badValue("there are " + counted(letters.size(), "letter") + " and " +
                        counted(numbers.size(), "number"));
    NumberSet known;
    for (const SequenceNumber &number : numbers) {
        if (!number.isValid())
            return badValue('"' + number.getValue() + "\" is no number of a residue");
        if (!known.add(number))
            return badValue("number " + number.getValue() + " comes more than once");
    }
    return upperCase(letters);
}

Result<StructureRecord> recordOfValues(const std::string &name, const StructureValues &values)
{
    if (Result<void> good = checkName(name); !good)
        return good.error();
    if (values.chains.empty())
        return badValue("there are no chains");
    StructureRecord record;
    record.name = name;
    record.isModel = values.isModel;
    std::set<std::string_view> names;
    for (const ChainValues &chain : values.chains) {
        Result<ChainRecord> made = chainRecord(chain);
        if (!made)
            return made.error();
        if (!names.insert(chain.name).second)
            return badValue("there are two chains \"" + chain.name + '"');
        record.chains.push_back(std::move(made).value());
    }
    return record;
}

} // namespace TAMBO
