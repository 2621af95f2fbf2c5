// SPDX-License-Identifier: GPL-3.0-or-later
#include "PostScript.h"

#include "FontNames.h"
#include "PageLibraries.h"

#include <memory>

namespace Pages {

namespace {

class Releaser
{
public:
    explicit Releaser(const PageLibraries &libraries) : m_Libraries(&libraries) { }

    void operator()(cairo_t *context) const { m_Libraries->cairo_destroy(context); }
    void operator()(cairo_surface_t *surface) const { m_Libraries->cairo_surface_destroy(surface); }
    void operator()(GBytes *bytes) const { m_Libraries->g_bytes_unref(bytes); }
    void operator()(PopplerDocument *document) const { m_Libraries->g_object_unref(document); }
    void operator()(PopplerPage *page) const { m_Libraries->g_object_unref(page); }

private:
    const PageLibraries *m_Libraries;
};

template <typename Object> using Owned = std::unique_ptr<Object, Releaser>;

template <typename Object> Owned<Object> owned(Object *object, const PageLibraries &libraries)
{
    return Owned<Object>(object, Releaser(libraries));
}

struct PageSize
{
    double width = 0.0;
    double height = 0.0;
};

PageSize sizeOf(PopplerPage &page, const PageLibraries &libraries)
{
    PageSize size;
    libraries.poppler_page_get_size(&page, &size.width, &size.height);
    return size;
}

// The bytes live longer than the document.
Owned<PopplerDocument> openDocument(const QByteArray &pdf, const PageLibraries &libraries)
{
    const Owned<GBytes> bytes = owned(
        libraries.g_bytes_new_static(pdf.constData(), static_cast<gsize>(pdf.size())), libraries);
    return owned(libraries.poppler_document_new_from_bytes(bytes.get(), nullptr, nullptr),
                 libraries);
}

// Hands a file on and counts its pages. The library keeps them in a file for temporary use until
// all are painted, and does not notice when there was no room for it.
class Sink
{
public:
    explicit Sink(QIODevice &target) : m_Names(target) { }

    [[nodiscard]] bool write(const QByteArray &bytes)
    {
        const QByteArray end = "\nshowpage\n";
        m_Seen += bytes;
        m_Pages += m_Seen.count(end);
        m_Seen = m_Seen.endsWith(end) ? QByteArray() : m_Seen.right(end.size() - 1);
        return m_Names.write(bytes);
    }
    [[nodiscard]] bool finish() { return m_Names.finish(); }
    [[nodiscard]] qsizetype pages() const { return m_Pages; }

private:
    FontNames m_Names;
    // The end of what came last, for a mark that comes in two parts.
    QByteArray m_Seen;
    qsizetype m_Pages = 0;
};

cairo_status_t hand(void *sink, const unsigned char *data, unsigned int size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), size);
    return static_cast<Sink *>(sink)->write(bytes) ? CAIRO_STATUS_SUCCESS
                                                   : CAIRO_STATUS_WRITE_ERROR;
}

// A comment is one line of at most 255 bytes; a title may have been a file's name.
QByteArray titleComment(const QString &title)
{
    constexpr qsizetype kLongest = 255;
    QString text = QStringLiteral("%%Title: ") + title.simplified();
    while (text.toUtf8().size() > kLongest)
        text.chop(1);
    return text.toUtf8();
}

} // namespace

QString writePostScript(const QByteArray &pdf, const QString &title, const Progress &progress,
                        QIODevice &target)
{
    const PageLibraries libraries;
    if (!libraries.error().isEmpty())
        return libraries.error();
    const Owned<PopplerDocument> document = openDocument(pdf, libraries);
    const int count =
        document == nullptr ? 0 : libraries.poppler_document_get_n_pages(document.get());
    if (count == 0)
        return QStringLiteral("the pages cannot be read back");
    Sink sink(target);
    const Owned<cairo_surface_t> surface =
        owned(libraries.cairo_ps_surface_create_for_stream(hand, &sink, 1, 1), libraries);
    // What old printers understand, too.
    libraries.cairo_ps_surface_restrict_to_level(surface.get(), CAIRO_PS_LEVEL_2);
    if (!title.isEmpty())
        libraries.cairo_ps_surface_dsc_comment(surface.get(), titleComment(title).constData());
    const Owned<cairo_t> context = owned(libraries.cairo_create(surface.get()), libraries);
    for (int number = 0; number < count; ++number) {
        const Owned<PopplerPage> page =
            owned(libraries.poppler_document_get_page(document.get(), number), libraries);
        if (page == nullptr)
            return QStringLiteral("page %1 cannot be read back").arg(number + 1);
        const PageSize size = sizeOf(*page, libraries);
        libraries.cairo_ps_surface_set_size(surface.get(), size.width, size.height);
        libraries.poppler_page_render_for_printing(page.get(), context.get());
        libraries.cairo_surface_show_page(surface.get());
        if (progress)
            progress(number + 1, count);
    }
    libraries.cairo_surface_finish(surface.get());
    const bool isWhole = libraries.cairo_status(context.get()) == CAIRO_STATUS_SUCCESS &&
                         libraries.cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS;
    if (!isWhole || !sink.finish())
        return QStringLiteral("the conversion failed");
    return sink.pages() == count
               ? QString()
               : QStringLiteral("the pages broke off; is there room for temporary files?");
}

} // namespace Pages
