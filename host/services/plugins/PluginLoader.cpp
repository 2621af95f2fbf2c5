// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginLoader.h"

#include "Logger.h"
#include "MissingSymbol.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <dlfcn.h>
#include <exception>
#include <iterator>

namespace TAMBO::services {

namespace {

// dlopen() is declared not to throw, which a constructor in the library does all the same; a call
// that the compiler cannot see through keeps the handlers around it. The system stays usable for
// this thread then, but its list of libraries stays locked for others.
void *(*volatile s_Open)(const char *, int) = ::dlopen;

QString lastError()
{
    const char *text = ::dlerror();
    return QString::fromLocal8Bit(text != nullptr ? text : "unknown error");
}

// What is being handled, in words.
QString currentException()
{
    try {
        throw;
    } catch (const std::exception &exception) {
        return QString::fromLocal8Bit(exception.what());
    } catch (...) {
        return QStringLiteral("an unknown exception");
    }
}

template <typename Function>
bool resolve(void *library, const char *name, Function &function, PluginRecord &record)
{
    function = reinterpret_cast<Function>(::dlsym(library, name));
    if (function != nullptr)
        return true;
    const QString text = QString::fromLatin1(name);
    record.state = PluginState::LacksFunction;
    record.reason = missingFunction(record.name, text,
                                    ::dlsym(library, qPrintable(mangledName(text))) != nullptr);
    return false;
}

void tellRefusal(const PluginRecord &record)
{
    Logger::Write(QStringLiteral("The plug-in cannot be used: %1").arg(record.reason),
                  Logger::Severity::Error);
}

// It stands beside the library, or beside the link by which that was found.
QString descriptorOf(const PluginRecord &record, const QString &asFound)
{
    const QString file = PluginDescriptor::fileOf(QFileInfo(asFound).absoluteFilePath());
    return QFileInfo::exists(file) ? file : PluginDescriptor::fileOf(record.file);
}

QString wrongVersion(const QString &plugin, const KitNumber &its, const KitNumber &ours)
{
    const bool isOlder = its.majorPart < ours.majorPart;
    return QStringLiteral("%1 was built against version %2 of the plug-in kit, and this workbench "
                          "has %3: %4")
        .arg(plugin, its.text(), ours.text(),
             isOlder ? QStringLiteral("build it anew against the kit of this workbench")
                     : QStringLiteral("use a newer workbench, or build it against the kit of this "
                                      "one"));
}

} // namespace

PluginRecord &PluginLoader::recordOf(const QString &file)
{
    const QFileInfo info(file);
    const QString path = info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
    const auto known = std::ranges::find(m_Records, path, &PluginRecord::file);
    if (known != m_Records.end())
        return *known;
    m_Records.push_back({path, QFileInfo(path).fileName(), PluginState::MissingFile, {}});
    m_Functions.emplace_back();
    return m_Records.back();
}

const PluginRecord &PluginLoader::add(const QString &file)
{
    PluginRecord &record = recordOf(file);
    if (record.state != PluginState::MissingFile)
        return record;
    record.descriptor.name = PluginDescriptor::nameOf(record.file);
    record.reason.clear();
    if (QFileInfo(record.file).isFile()) {
        describe(record, file);
    } else {
        record.reason = QStringLiteral("%1: there is no such file").arg(record.file);
    }
    if (!record.isPromising())
        tellRefusal(record);
    return record;
}

const PluginRecord &PluginLoader::addOverruled(const QString &file, const QString &counts)
{
    PluginRecord &record = recordOf(file);
    record.state = PluginState::Overruled;
    record.descriptor.name = PluginDescriptor::nameOf(record.file);
    // What is missed without it.
    if (const auto read = PluginDescriptor::read(descriptorOf(record, file), m_Kit))
        record.descriptor = read.value();
    record.reason = QStringLiteral("%1 is not used, since %2 has its name and was found before it")
                        .arg(record.file, counts);
    Logger::Write(record.reason, Logger::Severity::Info);
    return record;
}

void PluginLoader::describe(PluginRecord &record, const QString &asFound) const
{
    record.state = PluginState::Found;
    const QString file = descriptorOf(record, asFound);
    if (!QFileInfo::exists(file))
        return;
    Result<PluginDescriptor> read = PluginDescriptor::read(file, m_Kit);
    if (!read) {
        record.state = PluginState::BrokenDescriptor;
        record.reason = QString::fromStdString(read.error().message());
        return;
    }
    record.descriptor = std::move(read).value();
    if (!m_Kit.takes(record.descriptor.kit)) {
        record.state = PluginState::WrongVersion;
        record.reason = wrongVersion(record.name, record.descriptor.kit, m_Kit);
        return;
    }
    for (const Failure &remark : record.descriptor.remarks)
        Logger::Write(QString::fromStdString(remark.message()), Logger::Severity::Warning);
}

const PluginRecord &PluginLoader::open(const PluginRecord &plugin)
{
    const std::size_t index = indexOf(plugin);
    if (index >= m_Records.size() || plugin.state != PluginState::Found)
        return plugin;
    PluginRecord &record = m_Records[index];
    open(record, m_Functions[index]);
    if (!record.isUsable())
        tellRefusal(record);
    return record;
}

void PluginLoader::open(PluginRecord &record, Functions &functions)
{
    void *library = nullptr;
    try {
        library = s_Open(QFile::encodeName(record.file).constData(),
                         RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    } catch (...) {
        record.state = PluginState::ThrewOnLoad;
        record.reason = QStringLiteral("%1 failed while it was loaded: %2")
                            .arg(record.name, currentException());
        return;
    }
    if (library == nullptr) {
        // The system tells by text alone. Nothing else looks into one.
        const QString error = lastError();
        const bool isUnresolved = error.contains(QStringLiteral("undefined symbol"));
        record.state = isUnresolved ? PluginState::UnresolvedSymbol : PluginState::Broken;
        record.reason = isUnresolved ? missingSymbol(record.name, error) : error;
        return;
    }
    if (!resolve(library, "Execute0", functions.execute, record) ||
        !resolve(library, "IsDone", functions.isDone, record) ||
        !resolve(library, "Cleanup", functions.cleanup, record))
        return;
    record.state = PluginState::Loaded;
}

const PluginRecord *PluginLoader::find(const QString &name) const
{
    const auto found = std::ranges::find(m_Records, name, &PluginRecord::name);
    return found == m_Records.end() ? nullptr : &*found;
}

std::size_t PluginLoader::indexOf(const PluginRecord &plugin) const
{
    const auto found = std::ranges::find_if(
        m_Records, [&](const PluginRecord &record) { return &record == &plugin; });
    return std::size_t(std::distance(m_Records.begin(), found));
}

template <typename Function>
bool PluginLoader::call(std::size_t index, const char *name, Function function)
{
    if (index >= m_Records.size() || !m_Records[index].isUsable())
        return false;
    try {
        function(m_Functions[index]);
        return true;
    } catch (...) {
        PluginRecord &record = m_Records[index];
        record.state = PluginState::ThrewInCall;
        record.reason = QStringLiteral("%1 failed in %2: %3")
                            .arg(record.name, QString::fromLatin1(name), currentException());
        Logger::Write(QStringLiteral("The plug-in is not used any more: %1").arg(record.reason),
                      Logger::Severity::Error);
        return false;
    }
}

bool PluginLoader::execute(const PluginRecord &plugin)
{
    return call(indexOf(plugin), "Execute0", [](const Functions &f) { f.execute(); });
}

std::optional<bool> PluginLoader::isDone(const PluginRecord &plugin)
{
    bool done = false;
    if (!call(indexOf(plugin), "IsDone", [&](const Functions &f) { done = f.isDone(); }))
        return {};
    return done;
}

bool PluginLoader::shutDown()
{
    bool allDone = true;
    for (std::size_t index = m_Records.size(); index-- > 0;) {
        const PluginRecord &record = m_Records[index];
        if (isDone(record).value_or(true))
            continue;
        call(index, "Cleanup", [](const Functions &f) { f.cleanup(); });
        if (isDone(record).value_or(true))
            continue;
        allDone = false;
        Logger::Write(QStringLiteral("%1 has not finished").arg(record.name),
                      Logger::Severity::Warning);
    }
    return allDone;
}

} // namespace TAMBO::services
