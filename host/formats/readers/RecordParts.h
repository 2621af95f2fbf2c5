// SPDX-License-Identifier: GPL-3.0-or-later
// Large files of records that stand one after the other are parsed in parts, several at a time.
#pragma once

#include "TextReader.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <map>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace TAMBO::formats {

// A Parser is made of a TextReader, parse()s what that has, merge()s the parser of the part that
// follows it, and is isFine() until something is wrong. Whole gets the parts in the order of the
// file, so what it says is what one parser would say that had gone through all of it.
template <typename Parser> class RecordParts
{
public:
    RecordParts(TextReader &text, char mark, Parser &whole)
        : m_Text(text), m_Mark(mark), m_Whole(whole)
    { }

    void run()
    {
        constexpr std::uint64_t worthAThread = 4 << 20;
        constexpr unsigned most = 4;
        const unsigned processors = std::min(most, std::thread::hardware_concurrency());
        std::vector<std::thread> others;
        try {
            for (unsigned i = 1; i < processors && m_Text.fileSize() >= worthAThread; ++i)
                others.emplace_back([this] { work(); });
        } catch (const std::system_error &) {
            // Then there are fewer.
        }
        work();
        for (std::thread &other : others)
            other.join();
        if (m_Exception != nullptr)
            std::rethrow_exception(m_Exception);
    }

private:
    struct Part
    {
        explicit Part(std::unique_ptr<TextReader> reader) : text(std::move(reader)), parser(*text)
        { }
        std::unique_ptr<TextReader> text;
        Parser parser;
    };

    void work() noexcept
    {
        std::unique_lock lock(m_Mutex);
        try {
            while (m_Whole.isFine() && m_Exception == nullptr) {
                std::unique_ptr<TextReader> text = m_Text.takeRecords(m_Mark);
                if (text == nullptr)
                    return;
                const std::size_t index = m_Taken++;
                lock.unlock();
                auto part = std::make_unique<Part>(std::move(text));
                part->parser.parse();
                // What was found is no view of it, and may have to wait for the parts before it.
                part->text.reset();
                lock.lock();
                m_Parsed.emplace(index, std::move(part));
                mergeParsed();
            }
        } catch (...) {
            if (!lock.owns_lock())
                lock.lock();
            m_Exception = std::current_exception();
        }
    }
    void mergeParsed()
    {
        for (auto next = m_Parsed.find(m_Merged); next != m_Parsed.end();
             next = m_Parsed.find(m_Merged)) {
            // What comes behind the first defect follows from it.
            if (m_Whole.isFine())
                m_Whole.merge(next->second->parser);
            m_Parsed.erase(next);
            ++m_Merged;
        }
    }

    TextReader &m_Text;
    const char m_Mark;
    Parser &m_Whole;
    std::mutex m_Mutex;
    std::size_t m_Taken = 0;
    std::size_t m_Merged = 0;
    // Those behind one that is being parsed.
    std::map<std::size_t, std::unique_ptr<Part>> m_Parsed;
    std::exception_ptr m_Exception;
};

} // namespace TAMBO::formats
