// SPDX-License-Identifier: GPL-3.0-or-later
#include "DataFile.h"

#include <QFile>

namespace TAMBO::services {

namespace {

// As some editors begin a text.
std::string_view withoutMark(std::string_view text)
{
    constexpr std::string_view kMark = "\xef\xbb\xbf";
    return text.starts_with(kMark) ? text.substr(kMark.size()) : text;
}

} // namespace

Result<std::string> readDataFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Failure{FailureKind::System, file.errorString().toStdString(), {path.toStdString()}};
    return file.readAll().toStdString();
}

DataLines::DataLines(std::string_view text) : m_Lines(std::string(withoutMark(text))) { }

bool DataLines::next()
{
    while (std::getline(m_Lines, m_Line)) {
        ++m_Number;
        m_Line.erase(std::min(m_Line.find('#'), m_Line.size()));
        m_Line = std::string(trimmed(m_Line));
        if (!m_Line.empty())
            return true;
    }
    return false;
}

} // namespace TAMBO::services
