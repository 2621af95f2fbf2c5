// SPDX-License-Identifier: GPL-3.0-or-later
// The residue property scales, read from text files.
#pragma once

#include "Result.h"

#include <QString>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO::services {

struct ResidueScale
{
    std::string name;
    // By one-letter code; letters without a value are left out.
    std::map<char, float> values;
};

class ResidueScales
{
public:
    explicit ResidueScales(std::vector<ResidueScale> scales);
    // All "*.scale" files of the directories, in the order of the directories and, in each, of the
    // file names. A scale of a later directory takes the place of an earlier one of its name. A bad
    // file is left out with a line in the log.
    explicit ResidueScales(const std::vector<QString> &directories);

    // The scales behind ResidueTypes: the installed ones, then the user's.
    static const ResidueScales &instance();
    // Exchanges them; null goes back to reading the files when next asked.
    static void setInstance(std::unique_ptr<ResidueScales> scales);

    // "#" starts a comment, "name" stands before the name, every other line is "letter value".
    static Result<ResidueScale> parse(std::string_view text, const std::string &fileName);

    [[nodiscard]] const std::vector<ResidueScale> &scales() const noexcept { return m_Scales; }
    // Null when there is none of this name.
    [[nodiscard]] const ResidueScale *find(std::string_view name) const;

private:
    void add(ResidueScale scale);

    std::vector<ResidueScale> m_Scales;
};

} // namespace TAMBO::services
