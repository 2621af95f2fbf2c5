// SPDX-License-Identifier: GPL-3.0-or-later
// Large files are parsed in parts, several at a time.
#pragma once

#include "OrderedWork.h"
#include "TextReader.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace TAMBO::formats {

// A Part is made of a TextReader and parse()s what that has. The whole merge()s the parts in the
// order of the file, until it no longer isFine(), so what it says is what it would say of a file in
// one part. Parts end with a line, or before one that begins a record; see TextReader. What a Part
// finds stands in its room(), which a later one goes on to use.
template <typename Part, typename Whole>
void readInParts(TextReader &text, std::optional<char> mark, Whole &whole)
{
    constexpr bool hasRoom = requires(Part part)
    {
        part.room();
    };
    struct Piece
    {
        explicit Piece(std::unique_ptr<TextReader> reader)
            : text(std::move(reader)), part(*text) { }
        void work()
        {
            part.parse();
            // What was found is no view of it, and may have to wait for the parts before it.
            text.reset();
        }
        std::unique_ptr<TextReader> text;
        Part part;
    };
    // Parts whose finds are merged.
    std::vector<std::unique_ptr<Piece>> merged;
    const auto take = [&]() -> std::unique_ptr<Piece> {
        // What comes behind the first defect follows from it.
        std::unique_ptr<TextReader> next = whole.isFine() ? text.takePart(mark) : nullptr;
        if (next == nullptr)
            return nullptr;
        auto piece = std::make_unique<Piece>(std::move(next));
        if constexpr (hasRoom) {
            if (!merged.empty()) {
                piece->part.room() = std::move(merged.back()->part.room());
                merged.pop_back();
            }
        }
        return piece;
    };
    const auto put = [&](std::unique_ptr<Piece> piece) {
        if (whole.isFine())
            whole.merge(piece->part);
        if constexpr (hasRoom) {
            piece->part.room().clear();
            merged.push_back(std::move(piece));
        }
    };
    workInOrder<Piece>(text.isWorthThreads(), take, put);
}

} // namespace TAMBO::formats
