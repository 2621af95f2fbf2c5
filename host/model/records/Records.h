// SPDX-License-Identifier: GPL-3.0-or-later
// What file readers produce: plain values without any tie to loaded objects. Objects are made from
// them in one go, so a file that turns out to be bad leaves nothing behind.
#pragma once

#include "GappedSequence.h"
#include "Rare.h"
#include "SequenceNumber.h"
#include "Vertex.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace TAMBO {

struct AtomRecord
{
    std::string name;
    std::string element;
    Vertex position;
};

struct ResidueRecord
{
    std::string typeName;
    // One letter; a modified residue has its parent's, an unknown one 'X'.
    char letter = 'X';
    SequenceNumber number;
    std::vector<AtomRecord> atoms;
    // An amino acid of the chain; otherwise a ligand, a nucleotide or another group. Waters are
    // left out by the readers.
    bool isAminoAcid = true;
};

struct ChainRecord
{
    // Empty for a blank chain identifier.
    std::string name;
    std::vector<ResidueRecord> residues;
};

struct ElementRecord
{
    std::string name;
    // 'H' or 'E', of a loaded one also 'T'.
    char type = 'H';
    std::string chain;
    SequenceNumber first;
    SequenceNumber last;
    // Of a loaded one: its type was given as a small letter.
    bool hasSmallType = false;
};

// The first model of a structure file.
struct StructureRecord
{
    std::string name;
    unsigned long models = 1;
    // Built by a modelling program, not measured.
    bool isModel = false;
    std::vector<ChainRecord> chains;
    std::vector<ElementRecord> elements;
    // Of a loaded one: elements in several pieces, each of which is one of those above.
    unsigned long brokenElements = 0;
    // Of a loaded one: something in it has another colour than that of its kind.
    bool hasOwnColors = false;
    // Things worth a line in the log that did not prevent reading.
    std::vector<std::string> remarks;
};

// What an alignment file says about the structure of a row.
struct StructureLink
{
    // As written: a file name or a code; empty when the row names no structure.
    std::string structure;
    // Empty when the file does not say.
    std::string chain;
    std::string first;
    std::string last;
    // Of a row that runs over several chains; otherwise the same chain, or empty.
    std::string lastChain;

    friend bool operator==(const StructureLink &, const StructureLink &) = default;
};

// A remark with its kind, as Stockholm files have them. The kind is one word ("ID", "SS"); the text
// has no line end.
struct Annotation
{
    std::string tag;
    std::string text;

    friend bool operator==(const Annotation &, const Annotation &) = default;
};

// Between two chains of one row.
struct ChainBreak
{
    // The number of letters before it.
    std::uint64_t letters = 0;
    // The gap on which it stands; nothing when there is none between its letters.
    std::optional<std::uint64_t> column;

    friend bool operator==(const ChainBreak &, const ChainBreak &) = default;
};

struct RowRecord
{
    std::string name;
    std::string description;
    GappedSequence sequence;
    Rare<StructureLink> link;
    // In order.
    std::vector<ChainBreak> chainBreaks;
    // What is said of the sequence ("#=GS"), in order.
    std::vector<Annotation> annotations;
    // What is said of the residues ("#=GR"): one character a column, '.' at a gap.
    std::vector<Annotation> residueAnnotations;
    // Of a loaded row that shows no chain itself: its residues do not count from 1.
    bool hasOwnNumbers = false;
    // But as the header of a PIR file says.
    bool areNumbersInHeader = false;
    // Of a loaded row, what no file of an alignment says: helices, strands or turns of residues
    // that are in no structure file, and coordinates of a model.
    bool hasElements = false;
    bool hasModel = false;
    // Residues have other colours than those of their types.
    bool hasOwnColors = false;
};

struct AlignmentRecord
{
    std::string name;
    std::vector<RowRecord> rows;
    // Rows of one length. Otherwise these are sequences, and no alignment is made of them.
    bool isAligned = true;
    std::vector<std::string> remarks;
    // What is said of the alignment ("#=GF"), in order; a tag may come again.
    std::vector<Annotation> annotations;
    // What is said of the columns ("#=GC"): one character a column.
    std::vector<Annotation> columnAnnotations;
};

} // namespace TAMBO
