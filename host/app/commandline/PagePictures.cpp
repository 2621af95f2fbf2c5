// SPDX-License-Identifier: GPL-3.0-or-later
#include "PagePictures.h"

#include "Directories.h"

#include <QLibrary>

namespace TAMBO::app {

Result<void> writePagePictures(const QString &pdf, const QString &target, PagePicture kind)
{
    QLibrary library(services::Directories::libraries() + u'/' + QLatin1String(kPagePainter));
    const auto paintPages = reinterpret_cast<PaintPages>(library.resolve(kPaintPages));
    if (paintPages == nullptr)
        return Failure{FailureKind::System, QStringLiteral("%1 was not written: %2")
                                                .arg(target, library.errorString())
                                                .toStdString()};
    Result<void> outcome;
    paintPages(pdf, target, kind, outcome);
    return outcome;
}

} // namespace TAMBO::app
