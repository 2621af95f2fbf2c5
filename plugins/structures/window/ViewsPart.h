// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SessionPart.h"

#include <QJsonObject>

namespace structures {

// The windows with what they show, as a part of the user's work.
class ViewsPart final : public SessionPart
{
public:
    ViewsPart();
    ~ViewsPart() override;

    [[nodiscard]] std::string store() const override;
    // Windows that are there already show the first views. Throws what is no state of views before
    // anything has changed.
    void restore(const std::string &state) override;
    void clear() override;

private:
    // What another version has written beside the views.
    QJsonObject m_Others;
};

} // namespace structures
