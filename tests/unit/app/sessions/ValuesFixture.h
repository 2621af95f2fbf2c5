// SPDX-License-Identifier: GPL-3.0-or-later
// Values of a session that come out of a store, as after recovery.
#pragma once

#include "AppFixture.h"
#include "KeptValues.h"
#include "ObjectIndex.h"
#include "StoreFile.h"
#include "StoreReader.h"

#include <QFile>

#include <string>
#include <string_view>
#include <vector>

class ValuesFixture : public AppFixture
{
protected:
    // What could not be taken. All objects of the moment are those of the session.
    std::vector<std::string> load(const std::vector<TAMBO::sessions::NamedValue> &values)
    {
        namespace sessions = TAMBO::sessions;
        const std::string file = m_Folder.filePath("stored.session").toStdString();
        QFile::remove(QString::fromStdString(file));
        const std::vector<sessions::StoreEntry> entries(values.begin(), values.end());
        EXPECT_TRUE(sessions::StoreFile::open(file, sessions::StoreFile::Kind::Whole)
                        .value()
                        ->write(entries));
        const auto reader = sessions::StoreReader::open(file, sessions::StoreReader::Kind::Whole);
        TAMBO::ObjectIndex objects;
        objects.addTree(space());
        std::vector<std::string> causes;
        for (const TAMBO::Failure &failure : m_Values.load(*reader.value(), objects))
            causes.push_back(failure.cause);
        return causes;
    }
    // Empty when nothing is kept under the name.
    [[nodiscard]] std::string stored(std::string_view name) const
    {
        for (const TAMBO::sessions::NamedValue &value : m_Values.store()) {
            if (value.name == name)
                return value.content;
        }
        return {};
    }

    TAMBO::sessions::KeptValues m_Values;
};
