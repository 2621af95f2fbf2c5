// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewState.h"

#include <array>
#include <cmath>
#include <limits>

namespace structures {

namespace {

// Beyond them nothing can be seen, or is a window.
constexpr double kFarthest = 1e7;
constexpr double kHighest = 2e7;
constexpr double kMostScreenPixels = 1 << 20;
constexpr double kMostModels = 1e9;
constexpr qsizetype kMostStructures = 100000;
constexpr double kMostNumber = std::numeric_limits<std::uint32_t>::max();

constexpr std::array kColoringNames = {"alignment", "chain", "fold", "bfactor"};

// Reads values that may be anything; what is not there leaves all as it is.
class Reader
{
public:
    explicit Reader(const QJsonObject &json) : m_Json(json) { }

    [[nodiscard]] bool isGood() const noexcept { return m_IsGood; }
    [[nodiscard]] const QJsonObject &rest() const noexcept { return m_Json; }

    [[nodiscard]] QJsonValue take(const char *key) { return m_Json.take(QLatin1String(key)); }
    void check(bool isRight) noexcept { m_IsGood = m_IsGood && isRight; }

    void read(const char *key, bool &value)
    {
        const QJsonValue json = take(key);
        check(json.isUndefined() || json.isBool());
        value = json.toBool(value);
    }
    template <typename Number> void read(const char *key, double least, double most, Number &value)
    {
        const QJsonValue json = take(key);
        if (!json.isUndefined())
            value = Number(number(json, least, most));
    }
    // All of them, or none.
    template <std::size_t kCount>
    void read(const char *key, double least, double most, std::array<double, kCount> &values)
    {
        const QJsonValue json = take(key);
        if (json.isUndefined())
            return;
        const QJsonArray array = json.toArray();
        check(json.isArray() && array.size() == qsizetype(kCount));
        for (std::size_t i = 0; m_IsGood && i < kCount; ++i)
            values[i] = number(array[qsizetype(i)], least, most);
    }
    [[nodiscard]] QJsonObject object(const char *key)
    {
        const QJsonValue json = take(key);
        check(json.isUndefined() || json.isObject());
        return json.toObject();
    }
    // A whole part was as it should be.
    void include(const Reader &part) noexcept { check(part.isGood()); }

private:
    double number(const QJsonValue &json, double least, double most)
    {
        const double value = json.toDouble(std::numeric_limits<double>::quiet_NaN());
        const bool isRight = value >= least && value <= most;
        check(isRight);
        return isRight ? value : least;
    }

    QJsonObject m_Json;
    bool m_IsGood = true;
};

QJsonObject jsonOf(const Camera &camera)
{
    const std::array<float, 4> turn = camera.rotation.numbers();
    QJsonObject json{
        {"turn", QJsonArray{double(turn[0]), double(turn[1]), double(turn[2]), double(turn[3])}},
        {"target",
         QJsonArray{double(camera.target.x), double(camera.target.y), double(camera.target.z)}},
        {"height", double(camera.height)},
        {"perspective", camera.isPerspective}};
    if (std::isfinite(camera.slabFront) && std::isfinite(camera.slabBack))
        json["slab"] = QJsonArray{double(camera.slabFront), double(camera.slabBack)};
    return json;
}

Camera readCamera(Reader &in)
{
    Camera camera;
    std::array<double, 4> turn{1, 0, 0, 0};
    in.read("turn", -1e6, 1e6, turn);
    camera.rotation =
        Rotation::ofNumbers({float(turn[0]), float(turn[1]), float(turn[2]), float(turn[3])});
    std::array<double, 3> target{};
    in.read("target", -kFarthest, kFarthest, target);
    camera.target = {float(target[0]), float(target[1]), float(target[2])};
    in.read("height", 1e-3, kHighest, camera.height);
    in.read("perspective", camera.isPerspective);
    constexpr double kNone = std::numeric_limits<double>::infinity();
    std::array<double, 2> slab{kNone, kNone};
    in.read("slab", 0, kFarthest, slab);
    camera.slabFront = float(slab[0]);
    camera.slabBack = float(slab[1]);
    return camera;
}

QJsonObject jsonOf(const Look &look)
{
    return {{"ground", double(look.background)},
            {"depth", look.hasDepthCue},
            {"outlines", look.hasOutlines},
            {"shadows", look.hasShadows}};
}

Look readLook(Reader &in)
{
    Look look;
    in.read("ground", 0, 0xffffff, look.background);
    in.read("depth", look.hasDepthCue);
    in.read("outlines", look.hasOutlines);
    in.read("shadows", look.hasShadows);
    return look;
}

QJsonObject jsonOf(const ViewState::Shown &shown)
{
    QJsonObject json{{"object", double(shown.object)}, {"visible", shown.isVisible}};
    if (!shown.hidden.isEmpty())
        json["hidden"] = shown.hidden;
    if (!shown.styles.isEmpty())
        json["styles"] = shown.styles;
    return json;
}

std::optional<ViewState::Shown> readShown(const QJsonValue &value)
{
    ViewState::Shown shown;
    Reader in(value.toObject());
    in.check(value.isObject());
    in.read("object", 1, kMostNumber, shown.object);
    in.read("visible", shown.isVisible);
    shown.hidden = in.take("hidden").toArray();
    shown.styles = in.take("styles").toArray();
    if (!in.isGood())
        return std::nullopt;
    return shown;
}

} // namespace

QJsonObject ViewState::json() const
{
    QJsonObject json(others);
    json["place"] = QJsonArray{place.x(), place.y(), place.width(), place.height()};
    json["maximized"] = isMaximized;
    json["camera"] = jsonOf(camera);
    json["look"] = jsonOf(look);
    json["color"] = kColoringNames[std::size_t(coloring)];
    json["waters"] = hasWaters;
    json["models"] = QJsonObject{{"all", models.all}, {"index", double(models.index)}};
    json["rows"] = double(rowsOf);
    QJsonArray shown;
    for (const Shown &structure : structures)
        shown.append(jsonOf(structure));
    json["structures"] = shown;
    return json;
}

std::optional<ViewState> ViewState::of(const QJsonObject &json)
{
    ViewState state;
    Reader in(json);
    std::array<double, 4> place{};
    in.read("place", -kMostScreenPixels, kMostScreenPixels, place);
    state.place = QRect(int(place[0]), int(place[1]), int(place[2]), int(place[3]));
    in.read("maximized", state.isMaximized);
    Reader camera(in.object("camera"));
    state.camera = readCamera(camera);
    Reader look(in.object("look"));
    state.look = readLook(look);
    Reader models(in.object("models"));
    models.read("all", state.models.all);
    models.read("index", 0, kMostModels, state.models.index);
    in.include(camera);
    in.include(look);
    in.include(models);
    const QString color = in.take("color").toString(kColoringNames[0]);
    for (std::size_t i = 0; i < kColoringNames.size(); ++i)
        if (color == QLatin1String(kColoringNames[i]))
            state.coloring = Coloring(i);
    in.read("waters", state.hasWaters);
    in.read("rows", 0, kMostNumber, state.rowsOf);
    const QJsonValue structures = in.take("structures");
    in.check((structures.isUndefined() || structures.isArray()) &&
             structures.toArray().size() <= kMostStructures);
    for (const QJsonValue structure : structures.toArray()) {
        if (!in.isGood())
            break;
        std::optional<Shown> shown = readShown(structure);
        in.check(shown.has_value());
        if (shown)
            state.structures.push_back(*std::move(shown));
    }
    state.others = in.rest();
    if (!in.isGood())
        return std::nullopt;
    return state;
}

} // namespace structures
