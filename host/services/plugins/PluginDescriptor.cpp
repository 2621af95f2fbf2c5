// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginDescriptor.h"

#include "Directories.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <string_view>

namespace TAMBO::services {

namespace {

constexpr const char *kPluginSection = "Plugin";
// A key for each sub-command: its line in the help of the program.
constexpr const char *kCommandSection = "Commands";
constexpr std::array<std::string_view, 7> kKnownKeys = {"Kit",  "Name", "Title",   "Role",
                                                        "Icon", "Help", "Commands"};

// Reads one descriptor; the first thing that is wrong is kept.
class DescriptorReader
{
public:
    DescriptorReader(const QString &file, IniFile ini) : m_File(file), m_Ini(std::move(ini)) { }

    Result<PluginDescriptor> read(const KitNumber &kit)
    {
        PluginDescriptor made;
        made.name = PluginDescriptor::nameOf(QFileInfo(m_File).completeBaseName());
        readKit(made.kit);
        if (m_Failure)
            return *m_Failure;
        checkKeys();
        if (const QString name = text("Name"); !name.isEmpty())
            made.name = name;
        made.title = text("Title").simplified();
        readRole(made.role);
        made.icon = iconFile(text("Icon"), made.remarks);
        made.help = helpFile(text("Help"), made.remarks);
        made.helpName = made.help.isEmpty() ? QString() : text("Help");
        readCommands(made.commands);
        takeSettings(made.settings);
        // A kit of another version may have other rules.
        if (m_Failure && kit.takes(made.kit))
            return *m_Failure;
        return made;
    }

private:
    [[nodiscard]] Failure failure(unsigned long line, const QString &cause) const
    {
        return {FailureKind::BadInput, cause.toStdString(), {m_File.toStdString(), line}};
    }
    void fail(unsigned long line, const QString &cause)
    {
        if (!m_Failure)
            m_Failure = failure(line, cause);
    }
    void fail(const char *key, const QString &cause)
    {
        fail(m_Ini.lineOf(kPluginSection, key), cause);
    }

    [[nodiscard]] QString text(const char *key) const
    {
        return QString::fromStdString(m_Ini.value(kPluginSection, key).value_or(std::string()));
    }

    void readKit(KitNumber &kit)
    {
        static const QRegularExpression form(QStringLiteral("^(\\d{1,6})\\.(\\d{1,6})$"));
        const QRegularExpressionMatch match = form.match(text("Kit"));
        if (!match.hasMatch())
            return fail("Kit", QStringLiteral("expected Kit = %1 in section [%2], the version of "
                                              "the kit that the plug-in was built against")
                                   .arg(KitNumber().text(), QLatin1String(kPluginSection)));
        kit.majorPart = match.captured(1).toInt();
        kit.minorPart = match.captured(2).toInt();
    }

    // A key that is misspelled would be without effect, and nobody would know.
    void checkKeys()
    {
        for (const std::string &key : m_Ini.keys(kPluginSection))
            if (std::ranges::find(kKnownKeys, key) == kKnownKeys.end())
                fail(m_Ini.lineOf(kPluginSection, key),
                     QStringLiteral("[%1] has no key %2")
                         .arg(QLatin1String(kPluginSection), QString::fromStdString(key)));
    }

    void readRole(PluginRole &role)
    {
        const QString word = text("Role");
        if (word == QStringLiteral("alignments"))
            role = PluginRole::Alignments;
        else if (word == QStringLiteral("background"))
            role = PluginRole::Background;
        else if (!word.isEmpty() && word != QStringLiteral("tool"))
            fail("Role",
                 QStringLiteral("expected Role = tool, Role = alignments or Role = background"));
    }

    [[nodiscard]] QString beside(const QString &name) const
    {
        return QFileInfo(m_File).absolutePath() + u'/' + name;
    }

    [[nodiscard]] QString iconFile(const QString &name, std::vector<Failure> &remarks) const
    {
        if (name.isEmpty())
            return {};
        const QString installed = Directories::shared() + QStringLiteral("/icons/") + name;
        for (const QString &file : {beside(name), installed, installed + QStringLiteral(".svg")})
            if (QFileInfo(file).isFile())
                return file;
        remarks.push_back(failure(m_Ini.lineOf(kPluginSection, "Icon"),
                                  QStringLiteral("there is no icon %1, neither beside this file "
                                                 "nor among those of the workbench")
                                      .arg(name)));
        return {};
    }

    [[nodiscard]] QString helpFile(const QString &name, std::vector<Failure> &remarks) const
    {
        if (name.isEmpty())
            return {};
        const QFileInfo file(beside(name));
        if (file.isFile())
            return file.absoluteFilePath();
        remarks.push_back(
            failure(m_Ini.lineOf(kPluginSection, "Help"),
                    QStringLiteral("there is no help page %1 beside this file").arg(name)));
        return {};
    }

    void readCommands(std::vector<PluginCommand> &commands)
    {
        const QString list = text("Commands");
        for (const QString &part : list.split(u',', Qt::SkipEmptyParts)) {
            const QString word = part.trimmed();
            if (!PluginDescriptor::isCommandWord(word)) {
                fail("Commands", QStringLiteral("\"%1\" cannot be a command: expected letters, "
                                                "digits, \"-\" and \"_\" behind a letter")
                                     .arg(word));
                continue;
            }
            const auto summary = m_Ini.value(kCommandSection, word.toStdString());
            commands.push_back(
                {word, QString::fromStdString(summary.value_or(std::string())).simplified()});
        }
        for (const std::string &key : m_Ini.keys(kCommandSection))
            if (std::ranges::find(commands, QString::fromStdString(key), &PluginCommand::word) ==
                commands.end())
                fail(m_Ini.lineOf(kCommandSection, key),
                     QStringLiteral("%1 is not among the Commands of section [%2]")
                         .arg(QString::fromStdString(key), QLatin1String(kPluginSection)));
    }

    void takeSettings(IniFile &settings) const
    {
        for (const std::string &section : m_Ini.sections()) {
            if (section == kPluginSection || section == kCommandSection)
                continue;
            for (const std::string &key : m_Ini.keys(section))
                settings.setValue(section, key, m_Ini.value(section, key).value_or(std::string()));
        }
    }

    QString m_File;
    IniFile m_Ini;
    std::optional<Failure> m_Failure;
};

} // namespace

QString PluginDescriptor::stemOf(const QString &library)
{
    static const QRegularExpression ending(QStringLiteral("\\.so(\\.[^/]*)?$"));
    return QFileInfo(library).fileName().remove(ending);
}

QString PluginDescriptor::nameOf(const QString &library)
{
    QString name = stemOf(library);
    if (name.startsWith(QStringLiteral("lib")) && name.size() > 3)
        name.remove(0, 3);
    return name;
}

QString PluginDescriptor::fileOf(const QString &library)
{
    return QFileInfo(library).path() + u'/' + stemOf(library) + QStringLiteral(".plugin");
}

bool PluginDescriptor::isCommandWord(const QString &word)
{
    static const QRegularExpression form(QStringLiteral("^[A-Za-z][A-Za-z0-9_-]*$"));
    return form.match(word).hasMatch();
}

Result<PluginDescriptor> PluginDescriptor::read(const QString &file, const KitNumber &kit)
{
    QFile text(file);
    if (!text.open(QIODevice::ReadOnly))
        return Failure{FailureKind::System, text.errorString().toStdString(), {file.toStdString()}};
    const QByteArray bytes = text.readAll();
    Result<IniFile> ini =
        IniFile::parse({bytes.constData(), std::size_t(bytes.size())}, file.toStdString());
    if (!ini)
        return ini.error();
    return DescriptorReader(file, std::move(ini).value()).read(kit);
}

} // namespace TAMBO::services
