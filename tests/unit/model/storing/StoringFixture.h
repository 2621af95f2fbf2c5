// SPDX-License-Identifier: GPL-3.0-or-later
// A small Space that is written as bytes, emptied, and made again.
#pragma once

#include "unit/model/FullState.h"
#include "unit/model/ModelFixture.h"

#include "Alignment.h"
#include "ObjectIndex.h"
#include "ObjectLoader.h"
#include "ObjectStore.h"
#include "ObjectWriter.h"

#include <string>
#include <utility>
#include <vector>

class StoringFixture : public ModelFixture
{
protected:
    using Pieces = std::vector<std::string>;
    using Others = std::vector<const TAMBO::StoredObject *>;

    static constexpr std::size_t kAtOnce = ~std::size_t(0);

    static Pieces piecesOf(TAMBO::ObjectStore store, std::size_t bytes = kAtOnce)
    {
        Pieces pieces;
        TAMBO::ObjectWriter out;
        while (store.writeNext(out, bytes))
            pieces.push_back(out.take());
        return pieces;
    }
    static Pieces piecesOfSpace(std::size_t bytes = kAtOnce, Others others = {})
    {
        return piecesOf(TAMBO::ObjectStore(space(), std::move(others)), bytes);
    }
    static std::string bytesOfSpace()
    {
        std::string bytes;
        for (const std::string &piece : piecesOfSpace())
            bytes += piece;
        return bytes;
    }

    // Into Space, which is empty.
    static TAMBO::Result<void> load(const Pieces &pieces, TAMBO::ObjectIndex &index)
    {
        TAMBO::ObjectLoader loader(index);
        for (const std::string &piece : pieces) {
            if (TAMBO::Result<void> read = loader.read(piece); !read)
                return read;
        }
        if (TAMBO::Result<void> whole = loader.complete(); !whole)
            return whole;
        return loader.fill(space());
    }
    static TAMBO::Result<void> load(const Pieces &pieces)
    {
        TAMBO::ObjectIndex index;
        return load(pieces, index);
    }
    // Empty when it was loaded.
    static std::string problemOf(const Pieces &pieces)
    {
        const TAMBO::Result<void> loaded = load(pieces);
        return loaded ? std::string() : loaded.error().message();
    }

    // Space is the same afterwards, by its looks and by its bytes.
    static void expectItComesBack(std::size_t pieceBytes = kAtOnce)
    {
        const std::string before = FullState::of(space());
        const Pieces pieces = piecesOfSpace(pieceBytes);
        space().reset();
        const TAMBO::Result<void> loaded = load(pieces);
        ASSERT_TRUE(loaded) << loaded.error().message();
        EXPECT_EQ(FullState::of(space()), before);
        EXPECT_EQ(piecesOfSpace(pieceBytes), pieces);
    }

    static TAMBO::Alignment &
    alignment(const std::string &name,
              const std::vector<std::pair<TAMBO::Peptide *, std::string>> &rows)
    {
        TAMBO::AlignmentTable::Rows made;
        unsigned long width = 0;
        for (const auto &[sequence, text] : rows) {
            TAMBO::GappedSequence cells;
            cells.append(text);
            made.push_back(std::make_unique<TAMBO::AlignmentRow>(
                *sequence, TAMBO::OccupancyRow(cells.occupancy)));
            width = std::max<unsigned long>(width, text.size());
        }
        auto owned = TAMBO::AlignmentTable::make(name, std::move(made), width);
        return static_cast<TAMBO::Alignment &>(space().add(std::move(owned)));
    }
};
