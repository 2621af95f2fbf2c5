// SPDX-License-Identifier: GPL-3.0-or-later
#include "PictureCommand.h"

#include "PictureFile.h"
#include "StructureScene.h"

#include "PluginAnswer.h"
#include "ProgramCommand.h"

#include <QCommandLineParser>
#include <QHash>
#include <QRegularExpression>

#include <numbers>
#include <optional>

namespace structures {

namespace {

constexpr int kWrongCall = 2;
constexpr int kBadFile = 1;
constexpr int kMostPixels = 20000;
constexpr QSize kSize(1600, 1200);
// Enough for the largest picture with smooth edges.
constexpr std::size_t kMostBytes = std::size_t(128) << 20;

const QHash<QString, Style> kStyles{{"cartoon", Style::Cartoon},
                                    {"trace", Style::Trace},
                                    {"sticks", Style::Sticks},
                                    {"balls", Style::BallsAndSticks},
                                    {"spheres", Style::Spheres}};
const QHash<QString, Coloring> kColorings{{"alignment", Coloring::Workbench},
                                          {"chain", Coloring::Chain},
                                          {"fold", Coloring::SecondaryStructure},
                                          {"bfactor", Coloring::BFactor}};

// From where, as a turn of what is seen.
QHash<QString, Rotation> views()
{
    constexpr float kQuarter = std::numbers::pi_v<float> / 2;
    const Vec3 up{0, 1, 0};
    const Vec3 right{1, 0, 0};
    return {{"front", Rotation()},
            {"back", Rotation::about(up, 2 * kQuarter)},
            {"left", Rotation::about(up, kQuarter)},
            {"right", Rotation::about(up, -kQuarter)},
            {"top", Rotation::about(right, kQuarter)},
            {"bottom", Rotation::about(right, -kQuarter)}};
}

const QHash<QString, std::uint32_t> kGrounds{
    {"white", kWhiteGround}, {"dark", kDarkGround}, {"none", 0}};

template <typename Value>
QString wordsOf(const QHash<QString, Value> &words, const QString &between)
{
    QStringList known = words.keys();
    known.sort();
    return known.join(between);
}

QString usageText()
{
    return QString("Usage: tambo picture FILE... --output PICTURE.png [--size WIDTHxHEIGHT]\n"
                   "             [--style %1]\n"
                   "             [--color %2]\n"
                   "             [--view %3]\n"
                   "             [--ground %4] [--transparent] [--perspective]\n"
                   "             [--structures NUMBERS]\n"
                   "The structures of the files, or those of a session, without a screen; with "
                   "--structures\n"
                   "1,3 the first and the third one. Without options: 1600x1200, a style\n"
                   "for each by what it is, color alignment, view front, ground white.\n")
        .arg(wordsOf(kStyles, "|"), wordsOf(kColorings, "|"), wordsOf(views(), "|"),
             wordsOf(kGrounds, "|"));
}

struct Wishes
{
    QStringList files;
    QString output;
    // Those that are drawn, from 1; empty for all.
    QList<qsizetype> structures;
    QSize size = kSize;
    std::optional<Style> style;
    Coloring coloring = Coloring::Workbench;
    Camera camera;
    Look look;
};

// One of the words of an option; the call is wrong when it is another one.
template <typename Value>
std::optional<Value> chosen(const QCommandLineParser &parser, const QString &option,
                            const QHash<QString, Value> &words, QString &error)
{
    const QString word = parser.value(option);
    const auto found = words.find(word);
    if (found != words.end())
        return found.value();
    error = QString("--%1 is one of %2, not %3").arg(option, wordsOf(words, ", "), word);
    return std::nullopt;
}

std::optional<QSize> sizeOf(const QString &text)
{
    static const QRegularExpression form("^([0-9]{1,5})x([0-9]{1,5})$");
    const QRegularExpressionMatch match = form.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    if (!match.hasMatch() || size.isEmpty() || size.width() > kMostPixels ||
        size.height() > kMostPixels)
        return std::nullopt;
    return size;
}

std::optional<QList<qsizetype>> numbersIn(const QString &text)
{
    QList<qsizetype> numbers;
    for (const QString &word : text.split(u',')) {
        bool isNumber = false;
        numbers.append(word.toInt(&isNumber));
        if (!isNumber || numbers.back() < 1)
            return std::nullopt;
    }
    return numbers;
}

std::optional<Wishes> wishesOf(const QStringList &arguments, QString &error)
{
    QCommandLineParser parser;
    parser.addOptions({{"output", "", "file"},
                       {"size", "", "size", "1600x1200"},
                       {"style", "", "style"},
                       {"color", "", "color", "alignment"},
                       {"view", "", "view", "front"},
                       {"ground", "", "ground", "white"},
                       {"transparent", ""},
                       {"perspective", ""},
                       {"structures", "", "numbers"}});
    if (!parser.parse(QStringList("picture") + arguments)) {
        error = parser.errorText();
        return std::nullopt;
    }
    Wishes wishes;
    wishes.files = parser.positionalArguments();
    wishes.output = parser.value("output");
    if (wishes.files.isEmpty() || wishes.output.isEmpty()) {
        error = "picture needs a file and --output PICTURE.png";
        return std::nullopt;
    }
    const auto size = sizeOf(parser.value("size"));
    if (!size) {
        error = QString("--size is WIDTHxHEIGHT, of up to %1 pixels each, not %2")
                    .arg(kMostPixels)
                    .arg(parser.value("size"));
        return std::nullopt;
    }
    wishes.size = *size;
    if (parser.isSet("structures")) {
        const auto numbers = numbersIn(parser.value("structures"));
        if (!numbers) {
            error = QString("--structures needs numbers that count from 1, as in 1,3, not %1")
                        .arg(parser.value("structures"));
            return std::nullopt;
        }
        wishes.structures = *numbers;
    }
    if (parser.isSet("style")) {
        wishes.style = chosen(parser, "style", kStyles, error);
        if (!wishes.style)
            return std::nullopt;
    }
    const auto coloring = chosen(parser, "color", kColorings, error);
    const auto view = coloring ? chosen(parser, "view", views(), error) : std::nullopt;
    const auto ground = view ? chosen(parser, "ground", kGrounds, error) : std::nullopt;
    if (!ground)
        return std::nullopt;
    wishes.coloring = *coloring;
    wishes.camera.rotation = *view;
    wishes.camera.isPerspective = parser.isSet("perspective");
    wishes.look.background = *ground;
    wishes.look.isTransparent = parser.isSet("transparent") || parser.value("ground") == "none";
    return wishes;
}

} // namespace

void makePicture(ProgramCommand &call)
{
    const auto fail = [&call](const QString &cause, int status) {
        call.errors->write(QString("tambo: %1\n").arg(cause).toUtf8());
        call.exitStatus = status;
    };
    const qsizetype options = call.arguments.indexOf("--");
    if (call.arguments.first(options < 0 ? call.arguments.size() : options).contains("--help")) {
        call.output->write(usageText().toUtf8());
        return;
    }
    QString error;
    const std::optional<Wishes> wishes = wishesOf(call.arguments, error);
    if (!wishes)
        return fail(error, kWrongCall);
    for (const QString &file : wishes->files)
        if (!call.openFile(file)) {
            call.exitStatus = kBadFile;
            return;
        }
    StructureScene scene([] {});
    const auto count = qsizetype(scene.structures().size());
    for (const qsizetype number : wishes->structures)
        if (number > count)
            return fail(QString("%1: there are %2 structures, and no number %3")
                            .arg(wishes->files.join(", "))
                            .arg(count)
                            .arg(number),
                        kBadFile);
    for (qsizetype i = 0; i < count; ++i) {
        ViewedStructure &structure = *scene.structures()[std::size_t(i)];
        structure.setVisible(wishes->structures.isEmpty() || wishes->structures.contains(i + 1));
        if (wishes->style)
            structure.setStyle(*wishes->style);
    }
    const std::shared_ptr<const PictureScene> shown = scene.picture();
    if (shown->parts.empty())
        return fail(QString("%1: has no structure to be drawn").arg(wishes->files.join(", ")),
                    kBadFile);
    PictureRequest request;
    request.parts = shown->parts;
    request.bounds = shown->bounds;
    request.size = wishes->size;
    request.camera = cameraOnAll(wishes->camera, shown->bounds, request.size);
    request.look = wishes->look;
    request.perAxis = 2;
    Renderer renderer(kMostBytes);
    if (!renderer.draw(request, scene.palette(wishes->coloring)))
        return fail("there is not enough memory for the picture", kBadFile);
    const QString cause = writePictureFile(renderer.image(), wishes->output);
    if (!cause.isEmpty())
        fail(QString("%1: %2").arg(wishes->output, cause), kBadFile);
}

} // namespace structures

namespace {

bool answerPicture(const PluginCall &data)
{
    structures::makePicture(*static_cast<ProgramCommand *>(data.data));
    return true;
}

const PluginAnswer s_Picture(ProgramCommand::kGroup, ProgramCommand::kService, "picture",
                             answerPicture);

} // namespace
