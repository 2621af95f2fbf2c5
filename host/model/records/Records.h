// SPDX-License-Identifier: GPL-3.0-or-later
// What file readers produce: plain values without any tie to loaded objects. Objects are made from
// them in one go, so a file that turns out to be bad leaves nothing behind.
#pragma once

#include "BondRecord.h"
#include "GappedSequence.h"
#include "PackedRows.h"
#include "Rare.h"
#include "RowFacts.h"
#include "SequenceNumber.h"
#include "Vertex.h"
#include "Waters.h"

#include <cstdint>
#include <string>
#include <vector>

namespace TAMBO {

struct AtomRecord
{
    std::string name;
    std::string element;
    Vertex position;
    // In square Angstrom; 0 when nothing is said of it.
    float bFactor = 0;
    float occupancy = 1;
};

struct ResidueRecord
{
    std::string typeName;
    // One letter; a modified residue has its parent's, an unknown one 'X'.
    char letter = 'X';
    SequenceNumber number;
    std::vector<AtomRecord> atoms;
    // An amino acid of the chain; otherwise a ligand, a nucleotide or another group, and no water.
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
    // Those that a file has.
    Waters waters;
    std::vector<BondRecord> bonds;
    // Where its atoms are in each of them, residue by residue; not a number where one lacks an
    // atom.
    std::vector<std::vector<Vector<float, 3>>> furtherModels;
    // Of a loaded one: elements in several pieces, each of which is one of those above.
    unsigned long brokenElements = 0;
    // Of a loaded one: something in it has another colour than that of its kind.
    bool hasOwnColors = false;
    // Things worth a line in the log that did not prevent reading.
    std::vector<std::string> remarks;
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
    // The same as readers leave them, for who makes objects of them; there are rows of one kind
    // only.
    PackedRows packed;
    // Rows of one length. Otherwise these are sequences, and no alignment is made of them.
    bool isAligned = true;
    std::vector<std::string> remarks;
    // What is said of the alignment ("#=GF"), in order; a tag may come again.
    std::vector<Annotation> annotations;
    // What is said of the columns ("#=GC"): one character a column.
    std::vector<Annotation> columnAnnotations;
};

} // namespace TAMBO
