// SPDX-License-Identifier: GPL-3.0-or-later
// A named pipe: whoever writes it stands still until somebody reads it.
#pragma once

#include <QString>

#include <fstream>
#include <iterator>
#include <string>
#include <sys/stat.h>
#include <thread>

class PipeFile
{
public:
    explicit PipeFile(const QString &path) : m_Path(path.toStdString())
    {
        m_IsThere = mkfifo(m_Path.c_str(), 0600) == 0;
    }
    ~PipeFile()
    {
        if (m_Reader.joinable())
            m_Reader.join();
    }
    PipeFile(const PipeFile &) = delete;
    PipeFile &operator=(const PipeFile &) = delete;

    [[nodiscard]] bool isThere() const noexcept { return m_IsThere; }
    [[nodiscard]] QString path() const { return QString::fromStdString(m_Path); }
    // To the end of one writing, beside the test.
    void read()
    {
        m_Reader = std::thread([this] {
            std::ifstream stream(m_Path);
            m_Text.assign(std::istreambuf_iterator<char>(stream), {});
        });
    }
    // What was read.
    [[nodiscard]] const std::string &text()
    {
        if (m_Reader.joinable())
            m_Reader.join();
        return m_Text;
    }

private:
    std::string m_Path;
    bool m_IsThere = false;
    std::thread m_Reader;
    std::string m_Text;
};
