// SPDX-License-Identifier: GPL-3.0-or-later
// A plug-in that opens nothing, and counts how often it is called.
#include <QCoreApplication>
#include <QVariant>

extern "C" {

Q_DECL_EXPORT void Execute0()
{
    constexpr const char *kCalls = "NoWindowPluginCalls";
    qApp->setProperty(kCalls, qApp->property(kCalls).toInt() + 1);
}

Q_DECL_EXPORT bool IsDone()
{
    return true;
}

Q_DECL_EXPORT void Cleanup() { }

} // extern "C"
