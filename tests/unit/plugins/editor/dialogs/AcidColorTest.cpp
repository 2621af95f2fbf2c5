// SPDX-License-Identifier: GPL-3.0-or-later
#include "AcidColor.h"

#include "Colormap.h"
#include "JLabel.h"
#include "MakingOrder.h"
#include "ResidueScales.h"
#include "WindowFixture.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QMetaMethod>
#include <QSignalSpy>

#include <map>
#include <optional>

namespace AcidColorTest {

using TAMBO::services::ResidueScale;
using TAMBO::services::ResidueScales;

const std::string kLetters = "ARNDCQEGHILKMFPSTWYVX";
constexpr int kUnknown = 20;

class AcidColor : public WindowFixture
{
protected:
    AcidColor()
    {
        setSettings("[KM2_Colormaps]\nKM2_P = BlueRed.cm\nKM2_Q = Ember.cm\n");
        setScales({});
    }
    ~AcidColor() override { ResidueScales::setInstance(nullptr); }

    using NamedValues = std::pair<std::string, std::map<char, float>>;
    static void setScales(const std::vector<NamedValues> &values)
    {
        std::vector<ResidueScale> scales;
        for (const auto &[name, ofLetters] : values)
            scales.push_back({name, "", "", ofLetters});
        ResidueScales::setInstance(std::make_unique<ResidueScales>(std::move(scales)));
    }
    static QComboBox &box(const ZEP::AcidColor &dialog) { return *dialog.findChild<QComboBox *>(); }
    static ZEP::JLabel &swatch(const ZEP::AcidColor &dialog, int index)
    {
        const QString text = index == kUnknown
                                 ? QStringLiteral("Unknown")
                                 : QString(QLatin1Char(kLetters[static_cast<std::size_t>(index)]));
        for (ZEP::JLabel *label : dialog.findChildren<ZEP::JLabel *>())
            if (label->text() == text)
                return *label;
        throw std::out_of_range("no swatch");
    }
    static Color colorOf(const ZEP::AcidColor &dialog, int index)
    {
        const ZEP::JLabel &label = swatch(dialog, index);
        return Color(label.palette().color(label.backgroundRole()));
    }
    static std::vector<Color> colorsOf(const ZEP::AcidColor &dialog)
    {
        std::vector<Color> colors;
        for (int i = 0; i <= kUnknown; ++i)
            colors.push_back(colorOf(dialog, i));
        return colors;
    }
    static std::vector<Color> applied(ZEP::AcidColor &dialog)
    {
        std::vector<Color> colors;
        const auto connection =
            QObject::connect(&dialog, &ZEP::AcidColor::colorize, [&](const QColor *table) {
                for (int i = 0; i <= kUnknown; ++i)
                    colors.emplace_back(table[i]);
            });
        dialog.Apply();
        QObject::disconnect(connection);
        return colors;
    }
    // The colours of the first property when its map runs from minimum to maximum.
    static std::vector<Color> mapped(const std::map<char, float> &values, float minimum,
                                     float maximum)
    {
        Colormap map("BlueRed.cm", 100, "");
        map.setMinMax(minimum, maximum);
        std::vector<Color> colors(kLetters.size(), Color(0xffffff));
        for (const auto &[letter, value] : values)
            colors[kLetters.find(letter)] = map.lookupValue(value);
        return colors;
    }
    static void press(ZEP::JLabel &label, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(&label, button);
        // Let go elsewhere, so that later presses do not come with this button still held.
        QWidget elsewhere;
        QTest::mouseRelease(&elsewhere, button);
    }
    static void expectRange(const std::map<char, float> &values, float minimum, float maximum)
    {
        setScales({{"P", values}});
        ZEP::AcidColor dialog(nullptr);
        dialog.MethodSelected(1);
        EXPECT_EQ(colorsOf(dialog), mapped(values, minimum, maximum));
    }
};

const std::vector<Color> kAllWhite(21, Color(0xffffff));
const std::map<char, float> kValues = {{'A', 1}, {'R', 5}, {'N', 3}, {'X', 4}};

TEST_F(AcidColor, HasOneSignalAndOneSlotOfItsOwn)
{
    const QMetaObject &meta = ZEP::AcidColor::staticMetaObject;
    EXPECT_STREQ(meta.className(), "ZEP::AcidColor");
    EXPECT_STREQ(meta.superClass()->className(), "BaseDialog");
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods.append(meta.method(i).methodSignature());
    EXPECT_EQ(methods, (QStringList{"colorize(QColor*)", "MethodSelected(int)"}));
    EXPECT_EQ(meta.method(meta.methodOffset()).methodType(), QMetaMethod::Signal);
    EXPECT_EQ(meta.method(meta.methodOffset() + 1).methodType(), QMetaMethod::Slot);
}

TEST_F(AcidColor, OffersOkCancelAndApplyBelowAPlainBox)
{
    const ZEP::AcidColor dialog(nullptr);
    EXPECT_EQ(dialog.windowTitle(), "Color Residues");
    EXPECT_EQ(dialog.whatsThis(), "No help");
    EXPECT_EQ(dialog.objectName(), "");
    EXPECT_EQ(dialog.GetTopLevelLayout()->spacing(), 3);
    const auto *buttons = dialog.findChild<QDialogButtonBox *>();
    ASSERT_NE(buttons, nullptr);
    EXPECT_EQ(buttons->orientation(), Qt::Horizontal);
    EXPECT_EQ(buttons->standardButtons(),
              QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply);
    EXPECT_EQ(box(dialog).parentWidget(), &dialog);
    EXPECT_FALSE(box(dialog).isEditable());
}

TEST_F(AcidColor, IsMadeInItsFixedOrder)
{
    MakingOrder order;
    const ZEP::AcidColor dialog(nullptr);
    QStringList expected{"QComboBox"};
    for (int i = 0; i <= kUnknown; ++i)
        expected.append("ZEP::JLabel");
    expected += {"QDialogButtonBox", "tool tip of QComboBox"};
    EXPECT_EQ(order.of(dialog), expected);
}

TEST_F(AcidColor, ChangesNothingOfItsBaseButApply)
{
    expectOnlyApplyIsOverridden<ZEP::AcidColor>();
}

TEST_F(AcidColor, OpensBesideItsWindowWithoutBlockingIt)
{
    ZEP::KALMO2 &window = open();
    ZEP::AcidColor &dialog = *WindowParts(window).colors;
    dialog.show();
    EXPECT_EQ(dialog.windowTitle(), "Color Residues");
    EXPECT_FALSE(dialog.isModal());
    EXPECT_EQ(dialog.parentWidget(), &window);
}

TEST_F(AcidColor, ShowsTheLettersInFiveRowsAndTheUnknownBelow)
{
    const ZEP::AcidColor dialog(nullptr);
    EXPECT_EQ(dialog.findChildren<ZEP::JLabel *>().size(), 21);
    QBoxLayout &top = *dialog.GetTopLevelLayout();
    ASSERT_EQ(top.count(), 3);
    EXPECT_EQ(top.itemAt(0)->widget(), &box(dialog));
    EXPECT_EQ(top.stretch(0), 3);
    const auto *grid = qobject_cast<QGridLayout *>(top.itemAt(1)->layout());
    ASSERT_NE(grid, nullptr);
    EXPECT_EQ(grid->rowCount(), 5);
    EXPECT_EQ(grid->columnCount(), 4);
    QString letters;
    for (int i = 0; i < kUnknown; ++i)
        letters += qobject_cast<QLabel *>(grid->itemAtPosition(i / 4, i % 4)->widget())->text();
    EXPECT_EQ(letters, "ARNDCQEGHILKMFPSTWYV");
    EXPECT_EQ(top.itemAt(2)->widget(), &swatch(dialog, kUnknown));
    for (const ZEP::JLabel *label : dialog.findChildren<ZEP::JLabel *>())
        EXPECT_EQ(label->parentWidget(), &dialog) << label->text().toStdString();
}

TEST_F(AcidColor, StartsWhite)
{
    setScales({{"P", kValues}});
    ZEP::AcidColor dialog(nullptr);
    EXPECT_EQ(box(dialog).currentIndex(), 0);
    EXPECT_EQ(box(dialog).currentText(), "White");
    EXPECT_EQ(colorsOf(dialog), kAllWhite);
    EXPECT_EQ(applied(dialog), kAllWhite);
}

TEST_F(AcidColor, ListsThePropertiesInTheOrderOfTheWorkbench)
{
    setScales({{"b", {}}, {"a", {}}, {"c", {}}});
    const ZEP::AcidColor dialog(nullptr);
    QStringList items;
    for (int i = 0; i < box(dialog).count(); ++i)
        items.append(box(dialog).itemText(i));
    EXPECT_EQ(items, (QStringList{"White", "b", "a", "c"}));
}

TEST_F(AcidColor, WithoutPropertiesThereIsWhiteAlone)
{
    EXPECT_EQ(box(ZEP::AcidColor(nullptr)).count(), 1);
}

TEST_F(AcidColor, AMethodColoursEveryLetterThatHasAValue)
{
    setScales({{"P", kValues}});
    ZEP::AcidColor dialog(nullptr);
    dialog.MethodSelected(1);
    EXPECT_EQ(colorsOf(dialog), mapped(kValues, 3, 5));
    EXPECT_EQ(applied(dialog), mapped(kValues, 3, 5));
    dialog.MethodSelected(0);
    EXPECT_EQ(colorsOf(dialog), kAllWhite);
}

TEST_F(AcidColor, TheSmallestValueMayLieBelowTheMinimum)
{
    expectRange({{'A', 1}, {'R', 5}, {'N', 3}}, 3, 5);
    expectRange({{'A', 2}, {'R', 5}, {'N', 4}, {'D', 3}}, 3, 5);
}

TEST_F(AcidColor, ASmallerValueTakesOverOnceThereIsAMinimum)
{
    expectRange({{'A', 1}, {'R', 5}, {'N', 3}, {'D', 0}}, 0, 5);
}

TEST_F(AcidColor, TheFirstValueIsTheMaximumWhateverItsSign)
{
    expectRange({{'A', -3}, {'R', -5}}, -5, -3);
}

TEST_F(AcidColor, ValuesThatNeverFallGetAMinimumOneBelow)
{
    expectRange({{'A', 1}, {'R', 2}, {'N', 3}}, 2, 3);
    expectRange({{'A', 2}, {'R', 2}, {'V', 2}}, 1, 2);
    expectRange({{'W', 7}}, 6, 7);
}

TEST_F(AcidColor, APropertyWithoutValuesIsWhite)
{
    expectRange({}, -1, 0);
    setScales({{"P", {}}});
    ZEP::AcidColor dialog(nullptr);
    dialog.MethodSelected(1);
    EXPECT_EQ(colorsOf(dialog), kAllWhite);
}

TEST_F(AcidColor, MapsHaveAHundredSteps)
{
    const std::map<char, float> values = {{'A', 0}, {'R', 1}, {'N', 0.337F}, {'D', 0}};
    expectRange(values, 0, 1);
    for (const int steps : {99, 101, 255}) {
        const Colormap other("BlueRed.cm", steps, "");
        EXPECT_NE(other.lookupValue(0.337F), mapped(values, 0, 1)[2]) << steps;
    }
}

TEST_F(AcidColor, EachPropertyHasItsOwnMap)
{
    setScales({{"P", kValues}, {"Q", kValues}});
    ZEP::AcidColor dialog(nullptr);
    dialog.MethodSelected(2);
    Colormap map("Ember.cm", 100, "");
    map.setMinMax(3, 5);
    EXPECT_EQ(colorOf(dialog, 1), map.lookupValue(5));
    EXPECT_NE(colorOf(dialog, 1), mapped(kValues, 3, 5)[1]);
}

TEST_F(AcidColor, WithoutAMapOfItsOwnAPropertyGetsTheWorkbenchsFallback)
{
    setScales({{"Unmapped", kValues}});
    ZEP::AcidColor dialog(nullptr);
    dialog.MethodSelected(1);
    Colormap map("", 100, "");
    map.setMinMax(3, 5);
    EXPECT_EQ(colorOf(dialog, 1), map.lookupValue(5));
}

TEST_F(AcidColor, ReadsItsTablesOnce)
{
    setScales({{"P", kValues}});
    ZEP::AcidColor dialog(nullptr);
    setScales({{"Other", {}}});
    setSettings("[KM2_Colormaps]\nKM2_P = Ember.cm\n");
    dialog.MethodSelected(1);
    EXPECT_EQ(colorsOf(dialog), mapped(kValues, 3, 5));

    setScales({{"P", kValues}});
    ZEP::AcidColor later(nullptr);
    later.MethodSelected(1);
    Colormap map("Ember.cm", 100, "");
    map.setMinMax(3, 5);
    EXPECT_EQ(colorOf(later, 1), map.lookupValue(5));
}

TEST_F(AcidColor, TheUserChoosesAMethodInTheBox)
{
    setScales({{"P", kValues}});
    ZEP::AcidColor dialog(nullptr);
    dialog.show();
    box(dialog).setFocus();
    QTest::keyClick(&box(dialog), Qt::Key_Down);
    EXPECT_EQ(box(dialog).currentIndex(), 1);
    EXPECT_EQ(colorsOf(dialog), mapped(kValues, 3, 5));
}

TEST_F(AcidColor, AMethodThatIsNotThereIsIgnored)
{
    setScales({{"P", kValues}});
    ZEP::AcidColor dialog(nullptr);
    dialog.MethodSelected(1);
    for (const int method : {-1, 2, 1000})
        dialog.MethodSelected(method);
    EXPECT_EQ(colorsOf(dialog), mapped(kValues, 3, 5));
}

TEST_F(AcidColor, AnyPressTogglesASwatchAndNothingElse)
{
    setScales({{"P", kValues}});
    ZEP::AcidColor dialog(nullptr);
    dialog.MethodSelected(1);
    int emitted = 0;
    QObject::connect(&dialog, &ZEP::AcidColor::colorize, [&] { ++emitted; });
    std::vector<Color> expected = mapped(kValues, 3, 5);
    const Color method = std::exchange(expected[1], Color(0xffffff));
    press(swatch(dialog, 1));
    EXPECT_EQ(colorsOf(dialog), expected);
    expected[1] = method;
    press(swatch(dialog, 1), Qt::RightButton);
    EXPECT_EQ(colorsOf(dialog), expected);
    EXPECT_EQ(emitted, 0);
}

TEST_F(AcidColor, APressGoesOnToTheDialogOnceTheSwatchIsSet)
{
    struct Watch : QObject
    {
        bool eventFilter(QObject *, QEvent *event) override
        {
            if (event->type() == QEvent::MouseButtonPress)
                seen.push_back(colorOf(*dialog, 1));
            return false;
        }
        const ZEP::AcidColor *dialog = nullptr;
        std::vector<Color> seen;
    };
    setScales({{"P", kValues}});
    ZEP::AcidColor dialog(nullptr);
    dialog.MethodSelected(1);
    Watch watch;
    watch.dialog = &dialog;
    dialog.installEventFilter(&watch);
    press(swatch(dialog, 1));
    EXPECT_EQ(watch.seen, std::vector{Color(0xffffff)});
}

TEST_F(AcidColor, ALetterThatIsOffStaysWhiteUnderEveryMethod)
{
    setScales({{"P", kValues}, {"Q", kValues}});
    ZEP::AcidColor dialog(nullptr);
    press(swatch(dialog, 1));
    for (const int method : {1, 2, 0, 1}) {
        dialog.MethodSelected(method);
        EXPECT_EQ(colorOf(dialog, 1), Color(0xffffff));
    }
    EXPECT_EQ(colorOf(dialog, 2), mapped(kValues, 3, 5)[2]);
    dialog.show();
    dialog.hide();
    dialog.show();
    EXPECT_EQ(applied(dialog)[1], Color(0xffffff));
    press(swatch(dialog, 1));
    EXPECT_EQ(colorOf(dialog, 1), mapped(kValues, 3, 5)[1]);
}

TEST_F(AcidColor, TheUnknownSwatchIsTheLastEntry)
{
    setScales({{"P", kValues}});
    ZEP::AcidColor dialog(nullptr);
    dialog.MethodSelected(1);
    EXPECT_EQ(applied(dialog)[kUnknown], mapped(kValues, 3, 5)[kUnknown]);
    press(swatch(dialog, kUnknown));
    EXPECT_EQ(applied(dialog)[kUnknown], Color(0xffffff));
}

TEST_F(AcidColor, TheLetterOnASwatchStaysReadable)
{
    setScales({{"P", {{'A', 5}, {'R', 0}}}});
    ZEP::AcidColor dialog(nullptr);
    const auto textColor = [&](int index) {
        const ZEP::JLabel &label = swatch(dialog, index);
        return label.palette().color(label.foregroundRole());
    };
    EXPECT_EQ(textColor(1), QColor(Qt::black));
    dialog.MethodSelected(1);
    ASSERT_EQ(colorOf(dialog, 1), Color(0x0000ff));
    EXPECT_EQ(textColor(1), QColor(Qt::white));
}

TEST_F(AcidColor, SwatchesAreLargeEnoughToBeHit)
{
    ZEP::AcidColor dialog(nullptr);
    dialog.show();
    for (const ZEP::JLabel *label : dialog.findChildren<ZEP::JLabel *>()) {
        EXPECT_GE(label->height(), 24) << label->text().toStdString();
        EXPECT_GE(label->width(), 40) << label->text().toStdString();
    }
}

TEST_F(AcidColor, ApplyingWhiteMakesEveryResidueWhite)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    const WindowParts parts(open(shown));
    shown.getItem(0, 0)->SetColor(Color(0xff0000));
    parts.colors->Apply();
    for (const unsigned long col : {0UL, 1UL, 3UL})
        EXPECT_EQ(shown.getItem(0, col)->OwnColor(), Color(0xffffff));
}

TEST_F(AcidColor, ApplyingOverAnEmptyWindowIsNoMatter)
{
    const MessageRecorder messages;
    WindowParts(open()).colors->Apply();
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(AcidColor, ApplyEmitsTheDialogsOwnTableOnce)
{
    ZEP::AcidColor dialog(nullptr);
    std::vector<const QColor *> tables;
    QObject::connect(&dialog, &ZEP::AcidColor::colorize,
                     [&](const QColor *table) { tables.push_back(table); });
    dialog.Apply();
    dialog.Apply();
    ASSERT_EQ(tables.size(), 2U);
    EXPECT_EQ(tables[0], tables[1]);
}

TEST_F(AcidColor, TheToolTipFollowsTheSettings)
{
    EXPECT_EQ(box(ZEP::AcidColor(nullptr)).toolTip(), "Select color method");
    setSettings("[General]\nShowToolTips = false\n");
    EXPECT_EQ(box(ZEP::AcidColor(nullptr)).toolTip(), "");
}

} // namespace AcidColorTest
