// SPDX-License-Identifier: GPL-3.0-or-later
// The print commands from the menu to the finished file.
#include "PrintingFixture.h"

#include "Config.h"
#include "PrintoutDesk.h"
#include "support/PrintedFile.h"

#include <QAction>
#include <QDir>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPushButton>
#include <QSignalSpy>

#include <csignal>
#include <sys/resource.h>

namespace PrintingFilesTest {

using TAMBO::services::PrintoutDesk;

// Files of this process can become no larger while it lives, as on a disk that is full.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        m_Handler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_Before);
        const rlimit limit{bytes, m_Before.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_Before);
        std::signal(SIGXFSZ, m_Handler);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    rlimit m_Before{};
    void (*m_Handler)(int) = nullptr;
};

class PrintingFiles : public PrintingFixture
{
protected:
    QString path(const QString &name) const { return m_Folder.filePath(name); }
    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static void write(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    static void trigger(ZEP::KALMO2 &window, const QString &text)
    {
        for (QAction *action : window.menuBar()->actions().front()->menu()->actions()) {
            if (action->text() == text) {
                action->trigger();
                return;
            }
        }
        ADD_FAILURE() << "no item " << text.toStdString();
    }
    static QLineEdit &nameField(QDialog &dialog)
    {
        auto *field = dialog.findChild<QLineEdit *>("filename");
        EXPECT_NE(field, nullptr);
        return *field;
    }
    static DialogDriver::Handler printTo(const QString &file)
    {
        return [file](QDialog &dialog) {
            nameField(dialog).setText(file);
            for (QPushButton *button : dialog.findChildren<QPushButton *>())
                if (button->text() == QPrintDialog::tr("&Print"))
                    return button->click();
            ADD_FAILURE() << "no button to print with";
        };
    }
    // As if the folder had gone after the dialog looked for it.
    static DialogDriver::Handler printUnchecked(const QString &file)
    {
        return [file](QDialog &dialog) {
            nameField(dialog).setText(file);
            dialog.accept();
        };
    }
    // The toolkit asks before it takes a file that is there.
    static DialogDriver::Handler agree()
    {
        return [](QDialog &dialog) {
            auto &question = dynamic_cast<QMessageBox &>(dialog);
            ASSERT_NE(question.button(QMessageBox::Yes), nullptr);
            question.button(QMessageBox::Yes)->click();
        };
    }
    DialogDriver::Handler keepMessage()
    {
        return [this](QDialog &dialog) {
            m_Message = dynamic_cast<QMessageBox &>(dialog).text();
            dialog.accept();
        };
    }
    // Prints into a new file; gives what was said.
    static QStringList printInto(ZEP::KALMO2 &window, const QString &item, const QString &file)
    {
        DialogDriver dialogs;
        dialogs.expect(printTo(file));
        const MessageRecorder recorder;
        trigger(window, item);
        return recorder.messages();
    }
    static QStringList leftovers()
    {
        return QDir(QString::fromStdString(Config::GetPersonalTmpDir()))
            .entryList({"pages-*"}, QDir::Files);
    }
    // A real printer of the kind that the commands use.
    static std::unique_ptr<QPrinter> a4()
    {
        auto printer = std::make_unique<QPrinter>(QPrinter::ScreenResolution);
        printer->setPageSize(QPageSize(QPageSize::A4));
        printer->setOutputFormat(QPrinter::PdfFormat);
        return printer;
    }
    // A place of the pages in points of the paper.
    static QRectF onPaper(const QRect &place)
    {
        const auto printer = a4();
        const QRect paper = printer->pageLayout().paintRectPixels(printer->resolution());
        const double points = 72.0 / printer->resolution();
        return {(place.x() + paper.x()) * points, (place.y() + paper.y()) * points,
                place.width() * points, place.height() * points};
    }
    static PageLayout layoutOf(const TAMBO::Alignment &alignment)
    {
        const auto printer = a4();
        return {*printer, font(), static_cast<int>(alignment.height()), namesOf(alignment)};
    }
    // The letters of all blocks, by their places.
    static Texts rowsIn(const PrintedFile &file, const TAMBO::Alignment &alignment)
    {
        const PageLayout at = layoutOf(alignment);
        Texts rows(alignment.height());
        std::vector<std::vector<PrintedCharacter>> pages;
        for (int page = 0; page < file.pageCount(); ++page)
            pages.push_back(file.characters(page));
        for (unsigned long col = 0; col < alignment.width(); ++col) {
            const int block = static_cast<int>(col) / at.columns;
            const int place = static_cast<int>(col) % at.columns;
            for (std::size_t row = 0; row < rows.size(); ++row) {
                const QRectF cell =
                    onPaper(at.cell(static_cast<int>(row), place, block % at.blocksPerPage));
                for (const PrintedCharacter &character :
                     pages.at(static_cast<std::size_t>(block / at.blocksPerPage)))
                    if (cell.contains(character.box.center()))
                        rows[row] += character.text.toStdString();
            }
        }
        return rows;
    }

    QTemporaryDir m_Folder;
    QString m_Message;
};

const QStringList kCommands = {"&Print Fat", "&Print Slim", "&Print BW"};

// ---- The dialog

TEST_F(PrintingFiles, TheDialogOffersAFileCalledAfterTheAlignment)
{
    for (const QString &command : kCommands) {
        ZEP::KALMO2 &window = open(alignment({"AC"}, "SeqAli"));
        DialogDriver dialogs;
        dialogs.expect([&](QDialog &shown) {
            auto &dialog = dynamic_cast<QPrintDialog &>(shown);
            EXPECT_EQ(dialog.parentWidget(), &window);
            EXPECT_EQ(nameField(dialog).text(), QDir::currentPath() + "/SeqAli.ps");
            const QPrinter &printer = *dialog.printer();
            EXPECT_EQ(printer.outputFileName(), QDir::currentPath() + "/SeqAli.ps");
            EXPECT_EQ(printer.pageLayout().pageSize().id(), QPageSize::A4);
            EXPECT_EQ(printer.colorMode(), QPrinter::Color);
            EXPECT_EQ(printer.resolution(), a4()->resolution());
            EXPECT_FALSE(dialog.testOption(QAbstractPrintDialog::PrintPageRange));
            dialog.reject();
        });
        const MessageRecorder recorder;
        trigger(window, command);
        EXPECT_EQ(recorder.messages(), QStringList()) << "cancelled";
        EXPECT_EQ(dialogs.titles().size(), 1);
    }
    EXPECT_FALSE(QFile::exists("SeqAli.ps"));
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(PrintingFiles, WithoutAnAlignmentThereIsNoDialog)
{
    const DialogDriver dialogs;
    ZEP::KALMO2 &window = open();
    for (const QString &command : kCommands)
        trigger(window, command);
    EXPECT_EQ(dialogs.titles(), QStringList());
}

TEST_F(PrintingFiles, EveryCommandTellsTheSame)
{
    ZEP::KALMO2 &window = open(alignment({"AC"}));
    for (const QString &command : kCommands) {
        const QString file = path(QString(command).remove('&') + ".pdf");
        const QStringList messages = printInto(window, command, file);
        ASSERT_EQ(messages.size(), 4) << command.toStdString();
        EXPECT_EQ(messages.first(2), (QStringList{"Starting to print...", "Printed section 1."}));
        EXPECT_TRUE(messages[2].startsWith("Printed in "));
        EXPECT_EQ(messages[3], "Printing Ready.");
        EXPECT_TRUE(QFile::exists(file));
    }
    EXPECT_EQ(leftovers(), QStringList());
}

// ---- The files

TEST_F(PrintingFiles, TheEndingOfTheNameChoosesTheKind)
{
    ZEP::KALMO2 &window = open(alignment({"AC"}));
    for (const QString name : {"x.ps", "X.PS"}) {
        printInto(window, "&Print BW", path(name));
        EXPECT_TRUE(PrintedFile(path(name)).isPostScript());
    }
    for (const QString name : {"x.pdf", "x", "x.txt"}) {
        printInto(window, "&Print BW", path(name));
        EXPECT_TRUE(PrintedFile(path(name)).isPdf()) << name.toStdString();
    }
}

TEST_F(PrintingFiles, LettersReadBackFromEveryBlockAreTheAlignment)
{
    Texts rows;
    for (std::size_t row = 0; row < 5; ++row) {
        std::string text = letters(700 + row).substr(row);
        for (std::size_t i = row; i < text.size(); i += 11 - row)
            text[i] = '-';
        rows.push_back(text);
    }
    TAMBO::Alignment &shown = alignment(rows);
    ZEP::KALMO2 &window = open(shown);
    for (const QString name : {"x.pdf", "x.ps"}) {
        printInto(window, "&Print BW", path(name));
        const PrintedFile file(path(name));
        EXPECT_GT(file.pageCount(), 1);
        EXPECT_EQ(rowsIn(file, shown), rows) << name.toStdString();
    }
}

TEST_F(PrintingFiles, TextIsTextInEmbeddedFonts)
{
    ZEP::KALMO2 &window = open(
        alignment({"ACDEFGHIKLMN", "ACDEFGHIKLMN"}, "my alignment", {"first_name", "2nd-name"}));
    for (const QString name : {"x.pdf", "x.ps"}) {
        for (const QString &command : kCommands) {
            const QString target = path(command.right(2) + name);
            printInto(window, command, target);
            const PrintedFile file(target);
            EXPECT_TRUE(file.embedsItsFonts());
            for (const QString text : {"first_name", "2nd-name", "10"})
                EXPECT_TRUE(file.text(0).contains(text)) << file.text(0).toStdString();
            EXPECT_EQ(file.title(), "my alignment");
        }
    }
}

TEST_F(PrintingFiles, NamesAreFoundWholeWhateverTheirLengthAndLetters)
{
    const std::string longName = letters(200);
    for (const std::string &name :
         {std::string("Q"), std::string("abcdefghij"), std::string("abcdefghijk"), longName,
          std::string("Ωμέγα"), std::string("белок"), std::string("Überlänge ßäö"),
          std::string("50% (a\\b)")}) {
        ZEP::KALMO2 &window = open(alignment({"AC"}, "ali", {name}));
        for (const QString file : {"x.pdf", "x.ps"}) {
            QFile::remove(path(file));
            printInto(window, "&Print BW", path(file));
            EXPECT_TRUE(PrintedFile(path(file)).text(0).contains(QString::fromStdString(name)))
                << name << ": " << PrintedFile(path(file)).text(0).toStdString();
        }
    }
}

TEST_F(PrintingFiles, ColorsAreExact)
{
    TAMBO::Alignment &shown = alignment({"AC", "DE"});
    const std::vector<unsigned int> colors = {0xff0000, 0x123456, 0x7f8081, 0xfedcba};
    for (unsigned long i = 0; i < 4; ++i)
        residue(shown, i / 2, i % 2).SetColor(Color(colors[i]));
    ZEP::KALMO2 &window = open(shown);
    const PageLayout at = layoutOf(shown);
    constexpr int kScale = 4;
    for (const QString name : {"x.pdf", "x.ps"}) {
        printInto(window, "&Print Fat", path(name));
        const QImage image = PrintedFile(path(name)).image(0, kScale);
        for (int i = 0; i < 4; ++i) {
            const QRectF cell = onPaper(at.cell(i / 2, i % 2));
            const QPoint corner = (cell.topLeft() * kScale).toPoint() + QPoint(4, 4);
            EXPECT_EQ(image.pixelColor(corner).rgb() & 0xffffffU,
                      colors[static_cast<std::size_t>(i)])
                << name.toStdString() << ' ' << i;
        }
    }
}

TEST_F(PrintingFiles, SlimHasColoredLettersAndBlackAndWhiteHasNot)
{
    TAMBO::Alignment &shown = alignment({"W"});
    residue(shown, 0, 0).SetColor(Color(0xff0000));
    ZEP::KALMO2 &window = open(shown);
    const QRectF cell = onPaper(layoutOf(shown).cell(0, 0));
    const auto colorsIn = [&](const QString &command, const QString &name) {
        printInto(window, command, path(name));
        const QImage image = PrintedFile(path(name)).image(0, 4);
        int red = 0;
        int dark = 0;
        for (int x = int(cell.left() * 4) + 1; x < int(cell.right() * 4); ++x) {
            for (int y = int(cell.top() * 4) + 1; y < int(cell.bottom() * 4); ++y) {
                const QColor color = image.pixelColor(x, y);
                red += color == QColor(255, 0, 0) ? 1 : 0;
                dark += color == QColor(0, 0, 0) ? 1 : 0;
            }
        }
        return std::pair(red, dark);
    };
    const auto slim = colorsIn("&Print Slim", "slim.pdf");
    EXPECT_GT(slim.first, 50);
    EXPECT_EQ(slim.second, 0);
    const auto plain = colorsIn("&Print BW", "bw.pdf");
    EXPECT_EQ(plain.first, 0);
    EXPECT_GT(plain.second, 50);
    const auto fat = colorsIn("&Print Fat", "fat.ps");
    EXPECT_GT(fat.first, 1000);
    EXPECT_EQ(fat.second, 0);
}

TEST_F(PrintingFiles, AFrameHidesNoLetter)
{
    TAMBO::Alignment &shown = alignment({"ACD", "AED"});
    residue(shown, 1, 1).SetSelected(true);
    ZEP::KALMO2 &window = open(shown);
    printInto(window, "&Print Fat", path("x.pdf"));
    const PrintedFile file(path("x.pdf"));
    EXPECT_EQ(rowsIn(file, shown), rowsOf(shown));
    constexpr int kScale = 8;
    const QImage image = file.image(0, kScale);
    const QRectF frame = onPaper(layoutOf(shown).frame(1));
    const double middle = frame.center().y() * kScale;
    for (const double x : {frame.left(), frame.right()})
        EXPECT_EQ(image.pixelColor(QPointF(x * kScale, middle).toPoint()), QColor(Qt::black));
    // Between outline and letter.
    const QPointF inner = (frame.topLeft() + QPointF(1.5, 1.5)) * kScale;
    EXPECT_NE(image.pixelColor(inner.toPoint()), QColor(Qt::black));
}

TEST_F(PrintingFiles, AFileThatIsThereIsReplaced)
{
    ZEP::KALMO2 &window = open(alignment({"AC"}));
    for (const QString name : {"x.pdf", "x.ps"}) {
        write(path(name), "old");
        DialogDriver dialogs;
        dialogs.expect(printTo(path(name)));
        dialogs.expect(agree());
        const MessageRecorder quiet;
        trigger(window, "&Print BW");
        EXPECT_EQ(PrintedFile(path(name)).pageCount(), 1);
    }
    EXPECT_EQ(QDir(m_Folder.path()).entryList(QDir::Files), (QStringList{"x.pdf", "x.ps"}));
}

TEST_F(PrintingFiles, ARefusedPrintWritesNothingAndIsReported)
{
    ZEP::KALMO2 &window = open(alignment(Texts(100, "AC")));
    const QSignalSpy refused(&PrintoutDesk::instance(), &PrintoutDesk::refused);
    const QSignalSpy written(&PrintoutDesk::instance(), &PrintoutDesk::written);
    const QStringList messages = printInto(window, "&Print BW", path("x.pdf"));
    EXPECT_EQ(messages, (QStringList{"Too many sequences to fit in one page.\n"
                                     "Consider smaller font.",
                                     "Printing Ready."}));
    write(path("y.ps"), "old");
    DialogDriver dialogs;
    dialogs.expect(printTo(path("y.ps")));
    dialogs.expect(agree());
    const MessageRecorder quiet;
    trigger(window, "&Print Fat");
    EXPECT_EQ(dialogs.titles().size(), 2);
    EXPECT_EQ(read(path("y.ps")), "old");
    EXPECT_EQ(QDir(m_Folder.path()).entryList(QDir::Files), QStringList{"y.ps"});
    EXPECT_EQ(leftovers(), QStringList());
    ASSERT_EQ(refused.size(), 2);
    EXPECT_EQ(refused[0][0].toString(),
              "Nothing was printed: there are more sequences than lines on a page. A smaller font "
              "helps.");
    EXPECT_TRUE(written.isEmpty());
}

// ---- Where files go

TEST_F(PrintingFiles, TheWorkbenchIsToldWhereTheFileIs)
{
    ZEP::KALMO2 &window = open(alignment({"AC"}));
    const QSignalSpy written(&PrintoutDesk::instance(), &PrintoutDesk::written);
    const LogLines log;
    printInto(window, "&Print BW", path("x.ps"));
    ASSERT_EQ(written.size(), 1);
    EXPECT_EQ(written[0][0].toString(), path("x.ps"));
    EXPECT_EQ(log.texts(), QStringList{"Printed to " + path("x.ps") + " (PostScript)"});
}

TEST_F(PrintingFiles, TheFolderOfTheAlignmentIsOfferedAndThenTheOneLastPrintedTo)
{
    TAMBO::Alignment &shown = alignment({"AC"}, "SeqAli");
    ZEP::KALMO2 &window = open(shown);
    ASSERT_TRUE(QDir(m_Folder.path()).mkdir("home of it"));
    ASSERT_TRUE(QDir(m_Folder.path()).mkdir("other"));
    PrintoutDesk::instance().setFolderOf([&](const TAMBO::Compound &object) {
        EXPECT_EQ(&object, &shown);
        return path("home of it");
    });
    QString offered;
    const auto look = [&](QDialog &dialog) {
        offered = nameField(dialog).text();
        dialog.reject();
    };
    const auto offer = [&] {
        DialogDriver dialogs;
        dialogs.expect(look);
        trigger(window, "&Print BW");
        return offered;
    };
    EXPECT_EQ(offer(), path("home of it/SeqAli.ps"));
    printInto(window, "&Print BW", path("other/x.ps"));
    EXPECT_EQ(offer(), path("other/SeqAli.ps"));
    // A folder that has gone is of no use.
    ASSERT_TRUE(QDir(path("other")).removeRecursively());
    EXPECT_EQ(offer(), path("home of it/SeqAli.ps"));
    PrintoutDesk::instance().setFolderOf(nullptr);
}

TEST_F(PrintingFiles, TheQuestionIsAboutTheFileThatWillBeReplaced)
{
    ZEP::KALMO2 &window = open(alignment({"AC"}, "SeqAli"));
    ASSERT_TRUE(QDir(m_Folder.path()).mkdir("home"));
    ASSERT_TRUE(QDir(m_Folder.path()).mkdir("work"));
    const QByteArray home = qgetenv("HOME");
    const QString before = QDir::currentPath();
    qputenv("HOME", path("home").toLocal8Bit());
    ASSERT_TRUE(QDir::setCurrent(path("work")));
    PrintoutDesk::instance().setFolderOf([&](const auto &) { return m_Folder.path(); });
    for (const QString file : {"home/x.ps", "work/x.ps", "x.ps", "SeqAli.ps"})
        write(path(file), "old");
    // As it is offered, and a name that somebody types without a folder.
    for (const QString &name : {path("SeqAli.ps"), QString("x.ps")}) {
        DialogDriver dialogs;
        dialogs.expect(printTo(name));
        dialogs.expect([&](QDialog &dialog) {
            m_Message = dynamic_cast<QMessageBox &>(dialog).text();
            agree()(dialog);
        });
        const MessageRecorder quiet;
        trigger(window, "&Print BW");
        const QString replaced = path(QFileInfo(name).fileName());
        EXPECT_TRUE(m_Message.startsWith(replaced + ' ')) << m_Message.toStdString();
        EXPECT_TRUE(PrintedFile(replaced).isPostScript());
    }
    for (const QString file : {"home/x.ps", "work/x.ps"})
        EXPECT_EQ(read(path(file)), "old") << file.toStdString();
    QDir::setCurrent(before);
    qputenv("HOME", home);
    PrintoutDesk::instance().setFolderOf(nullptr);
}

// ---- What goes wrong

TEST_F(PrintingFiles, TheDialogRefusesAFolderThatDoesNotExist)
{
    ZEP::KALMO2 &window = open(alignment({"AC"}));
    DialogDriver dialogs;
    dialogs.expect(printTo(path("none/x.ps")));
    dialogs.expect(keepMessage());
    const MessageRecorder recorder;
    trigger(window, "&Print BW");
    EXPECT_EQ(dialogs.titles().size(), 2);
    EXPECT_TRUE(m_Message.contains(path("none/x.ps"))) << m_Message.toStdString();
    EXPECT_EQ(recorder.messages(), QStringList());
    EXPECT_TRUE(QDir(m_Folder.path()).isEmpty());
}

TEST_F(PrintingFiles, AFolderThatIsGoneIsOneMessage)
{
    ZEP::KALMO2 &window = open(alignment({"AC"}));
    for (const QString name : {"none/x.ps", "none/x.pdf"}) {
        DialogDriver dialogs;
        dialogs.expect(printUnchecked(path(name)));
        dialogs.expect(keepMessage());
        const MessageRecorder quiet;
        trigger(window, "&Print BW");
        EXPECT_EQ(dialogs.titles().size(), 2);
        EXPECT_TRUE(m_Message.startsWith(path(name) + " was not written: "))
            << m_Message.toStdString();
    }
    EXPECT_TRUE(QDir(m_Folder.path()).isEmpty());
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(PrintingFiles, AFullDiskIsOneMessageAndTheOldFileStays)
{
    const Texts rows(5, letters(600));
    ZEP::KALMO2 &window = open(alignment(rows));
    // Too little for the pages, and enough for the pages but not for their PostScript, as a whole
    // or for its end.
    for (const rlim_t room : {8000U, 30000U, 36000U, 42000U}) {
        for (const QString name : {"x.ps", "x.pdf"}) {
            if (room != 8000U && name == "x.pdf")
                continue;
            write(path(name), "old");
            DialogDriver dialogs;
            dialogs.expect(printTo(path(name)));
            dialogs.expect(agree());
            dialogs.expect(keepMessage());
            const MessageRecorder quiet;
            const FileSizeLimit limit(room);
            trigger(window, "&Print BW");
            EXPECT_EQ(dialogs.titles().size(), 3) << room << ' ' << name.toStdString();
            EXPECT_TRUE(m_Message.startsWith(path(name) + " was not written: "))
                << m_Message.toStdString();
            EXPECT_EQ(read(path(name)), "old");
        }
    }
    EXPECT_EQ(QDir(m_Folder.path()).entryList(QDir::Files), (QStringList{"x.pdf", "x.ps"}));
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(PrintingFiles, WithoutAPlaceForThePagesThereIsOneMessage)
{
    ZEP::KALMO2 &window = open(alignment({"AC"}));
    const QDir directory(QString::fromStdString(Config::GetPersonalTmpDir()));
    const QString moved = directory.path() + ".moved";
    ASSERT_TRUE(QDir().rename(directory.path(), moved));
    write(directory.path(), "a file");
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", "/dev/null");
    DialogDriver dialogs;
    dialogs.expect(printUnchecked(path("x.ps")));
    dialogs.expect(keepMessage());
    const MessageRecorder quiet;
    trigger(window, "&Print BW");
    qputenv("TMPDIR", before);
    QFile::remove(directory.path());
    ASSERT_TRUE(QDir().rename(moved, directory.path()));
    EXPECT_TRUE(m_Message.startsWith(path("x.ps") + " was not written: "))
        << m_Message.toStdString();
    EXPECT_TRUE(QDir(m_Folder.path()).isEmpty());
}

} // namespace PrintingFilesTest
