// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewsPart.h"

#include "StructureWindow.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <stdexcept>
#include <vector>

namespace structures {

namespace {

constexpr int kViewsVersion = 1;
constexpr qsizetype kMostViews = 50;
constexpr const char *kWrong = "what was kept are no structure views";

std::vector<ViewState> viewsOf(const QJsonValue &views)
{
    std::vector<ViewState> states;
    if (!views.isArray() || views.toArray().size() > kMostViews)
        throw std::runtime_error(kWrong);
    for (const QJsonValue view : views.toArray()) {
        std::optional<ViewState> state = ViewState::of(view.toObject());
        if (!view.isObject() || !state)
            throw std::runtime_error(kWrong);
        states.push_back(*std::move(state));
    }
    return states;
}

} // namespace

ViewsPart::ViewsPart() : SessionPart("structure-view")
{
    StructureWindow::setListener([this] { hasChanged(); });
}

ViewsPart::~ViewsPart()
{
    StructureWindow::setListener({});
}

std::string ViewsPart::store() const
{
    QJsonArray views;
    for (const StructureWindow *const window : StructureWindow::opened())
        views.append(window->state().json());
    if (views.isEmpty())
        return {};
    QJsonObject state(m_Others);
    state["version"] = kViewsVersion;
    state["views"] = views;
    return QJsonDocument(state).toJson(QJsonDocument::Compact).toStdString();
}

void ViewsPart::restore(const std::string &state)
{
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(state));
    QJsonObject json = document.object();
    if (!document.isObject() || json.take("version").toInt() < kViewsVersion)
        throw std::runtime_error(kWrong);
    const std::vector<ViewState> states = viewsOf(json.take("views"));
    m_Others = json;
    for (std::size_t i = 0; i < states.size(); ++i) {
        const bool isOpen = qsizetype(i) < StructureWindow::opened().size();
        StructureWindow &window =
            isOpen ? *StructureWindow::opened()[qsizetype(i)] : StructureWindow::open();
        window.restore(states[i]);
    }
}

void ViewsPart::clear()
{
    m_Others = {};
}

} // namespace structures
