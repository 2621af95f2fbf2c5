// SPDX-License-Identifier: GPL-3.0-or-later
#include "MissingSymbol.h"

#include "PluginDescriptor.h"

#include <QRegularExpression>

#include <cstdlib>
#include <cxxabi.h>
#include <memory>

namespace TAMBO::services {

namespace {

QString demangled(const QString &symbol)
{
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> text(
        abi::__cxa_demangle(symbol.toLatin1().constData(), nullptr, nullptr, &status), &std::free);
    return status == 0 && text != nullptr ? QString::fromUtf8(text.get()) : symbol;
}

// The class that lacks what moc writes, or empty when that is not what is missing.
QString classWithoutMoc(const QString &symbol)
{
    static const QRegularExpression madeByMoc(QStringLiteral(
        "^(?:vtable for (.+)|(.+)::(?:staticMetaObject|metaObject\\(\\) const|qt_metacast\\(.*|"
        "qt_metacall\\(.*))$"));
    const QRegularExpressionMatch match = madeByMoc.match(symbol);
    return match.captured(1) + match.captured(2);
}

} // namespace

QString missingSymbol(const QString &plugin, const QString &loaderError)
{
    static const QRegularExpression form(QStringLiteral("undefined symbol: ([^\\s,]+)"));
    const QString name = form.match(loaderError).captured(1);
    if (name.isEmpty())
        return loaderError;
    const QString symbol = demangled(name);
    const QString finding =
        QStringLiteral("%1 needs %2, which is nowhere defined").arg(plugin, symbol);
    const QString newerKit =
        QStringLiteral("built against a newer kit than %1, which this workbench has")
            .arg(KitNumber().text());
    const QString owner = classWithoutMoc(symbol);
    if (symbol.startsWith(QStringLiteral("TAMBO::")) || owner.startsWith(QStringLiteral("TAMBO::")))
        return QStringLiteral("%1; it was probably %2").arg(finding, newerKit);
    if (!owner.isEmpty())
        return QStringLiteral("%1; if %2 has Q_OBJECT, moc did not run on it: build it with "
                              "tambo_plugin(), or set AUTOMOC; otherwise a virtual function of it "
                              "has no definition")
            .arg(finding, owner);
    const QString cause = QStringLiteral("%1; it was probably %2").arg(finding, newerKit);
    if (symbol.contains(QStringLiteral("::")))
        return QStringLiteral("%1; if it is a signal of the plug-in's own, moc did not run on its "
                              "class: set AUTOMOC")
            .arg(cause);
    return cause + QStringLiteral("; if it is the plug-in's own, a source file is missing in its "
                                  "build");
}

QString mangledName(const QString &function)
{
    return QStringLiteral("_Z%1%2v").arg(function.size()).arg(function);
}

QString missingFunction(const QString &plugin, const QString &function, bool isMangled)
{
    const QString finding = QStringLiteral("%1 has no function %2").arg(plugin, function);
    if (isMangled)
        return QStringLiteral("%1 that can be found by this name, but one of C++, %2: it has to be "
                              "declared extern \"C\"")
            .arg(finding, mangledName(function));
    return finding + QStringLiteral("; a plug-in exports Execute0, IsDone and Cleanup, declared "
                                    "extern \"C\" and TAMBO_API");
}

} // namespace TAMBO::services
