// SPDX-License-Identifier: GPL-3.0-or-later
// Finished pages as PostScript in which programs find the text.
#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>

#include <functional>

namespace Pages {

// A page is done; they count from 1.
using Progress = std::function<void(int page, int count)>;

// Paints the pages of a PDF file, each with its size. The error is empty, or says what is wrong;
// the device knows best what it did not take.
[[nodiscard]] QString writePostScript(const QByteArray &pdf, const QString &title,
                                      const Progress &progress, QIODevice &target);

} // namespace Pages
