// SPDX-License-Identifier: GPL-3.0-or-later
// Tells when the program is to end by a signal: the terminal's interrupt key, a terminal that
// closes, a plain kill. Unless somebody listens they would end it on the spot, and take unsaved
// work with it.
#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <array>

namespace TAMBO::app {

// One at a time.
class EndSignals : public QObject
{
    Q_OBJECT

public:
    // From here on, none of them ends the program by itself.
    EndSignals();
    ~EndSignals() override;
    EndSignals(const EndSignals &) = delete;
    EndSignals &operator=(const EndSignals &) = delete;

signals:
    // From the event loop; once for several that came together.
    void asked();

private:
    void take();

    std::array<int, 2> m_Ends;
    QSocketNotifier m_Notifier;
};

} // namespace TAMBO::app
