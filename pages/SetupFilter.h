// SPDX-License-Identifier: GPL-3.0-or-later
// Lets a PostScript file pass on its way to another device, and names the glyphs of its fonts.
#pragma once

#include "GlyphNames.h"

#include <QByteArray>
#include <QIODevice>

namespace Pages {

// Keeps what comes before the first page until it is complete; what follows is handed on as it
// comes.
class SetupFilter : public QIODevice
{
public:
    SetupFilter(GlyphNames names, QIODevice &target);

    [[nodiscard]] bool isSequential() const override { return true; }
    // Hands on what is kept. False when the target did not take something.
    [[nodiscard]] bool finish();

protected:
    qint64 readData(char *data, qint64 size) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    void handOn(const QByteArray &bytes);

    GlyphNames m_Names;
    QIODevice &m_Target;
    QByteArray m_Setup;
    bool m_IsSetupOver = false;
    bool m_HasFailed = false;
};

} // namespace Pages
