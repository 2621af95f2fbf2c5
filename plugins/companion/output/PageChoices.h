// SPDX-License-Identifier: GPL-3.0-or-later
// What a user chooses for pages, as a dialog shows it and as it is kept for the next time.
#pragma once

#include "PageOrder.h"

#include "CellPlaces.h"

#include <QPageSize>

#include <vector>

namespace companion {

enum class PageRows { All, Selected, InSight };
enum class PageColumns { All, Range, InSight };

struct PageChoices
{
    // Of one alignment, and not kept.
    PageRows rows = PageRows::All;
    PageColumns columns = PageColumns::All;
    // Half-open.
    unsigned long colBegin = 0;
    unsigned long colEnd = 0;
    bool hasTracks = false;

    QPageSize::PageSizeId paper = QPageSize::A4;
    bool isLandscape = false;
    bool hasBreaks = true;
    double fontSize = 8;
    unsigned long mostColumns = 0;
    bool hasNames = true;
    bool hasRuler = true;
    bool hasNumbers = true;
    bool hasColors = true;
    // Of PNG, in dots an inch.
    int resolution = 150;

    // What was kept, where it makes sense.
    [[nodiscard]] static PageChoices kept();
    void keep() const;
};

// That are on.
struct PageTracks
{
    std::vector<Track> tracks;
    std::vector<LineTrack> lines;

    [[nodiscard]] bool isEmpty() const noexcept { return tracks.empty() && lines.empty(); }
};

[[nodiscard]] const std::vector<QPageSize::PageSizeId> &offeredPapers();

// inSight: of the window. An alignment with a million rows takes a tenth of a
// second when those that are selected are wanted.
[[nodiscard]] PageOrder orderOf(const PageChoices &choices, const TAMBO::Alignment &alignment,
                                const TAMBO::CellBlock &inSight, const PageTracks &tracks);

} // namespace companion
