// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageLibraries.h"

#include <QLibrary>

namespace Pages {

namespace {

// A library by its name and the number of its interface; the first failure is kept.
class Opened
{
public:
    Opened(const char *name, int number, QString &error)
        : m_Library(QString::fromLatin1(name), number), m_Error(error)
    {
        if (!m_Library.load())
            tell();
    }

    template <typename Function> Opened &find(const char *name, Function &function)
    {
        function = reinterpret_cast<Function>(m_Library.resolve(name));
        if (function == nullptr)
            tell();
        return *this;
    }

private:
    void tell()
    {
        if (m_Error.isEmpty())
            m_Error = m_Library.errorString();
    }

    QLibrary m_Library;
    QString &m_Error;
};

} // namespace

PageLibraries::PageLibraries()
{
    Opened("cairo", 2, m_Error)
        .find("cairo_create", cairo_create)
        .find("cairo_destroy", cairo_destroy)
        .find("cairo_status", cairo_status)
        .find("cairo_surface_destroy", cairo_surface_destroy)
        .find("cairo_surface_finish", cairo_surface_finish)
        .find("cairo_surface_show_page", cairo_surface_show_page)
        .find("cairo_surface_status", cairo_surface_status)
        .find("cairo_ps_surface_create_for_stream", cairo_ps_surface_create_for_stream)
        .find("cairo_ps_surface_dsc_comment", cairo_ps_surface_dsc_comment)
        .find("cairo_ps_surface_restrict_to_level", cairo_ps_surface_restrict_to_level)
        .find("cairo_ps_surface_set_size", cairo_ps_surface_set_size);
    Opened("glib-2.0", 0, m_Error)
        .find("g_bytes_new_static", g_bytes_new_static)
        .find("g_bytes_unref", g_bytes_unref);
    Opened("gobject-2.0", 0, m_Error).find("g_object_unref", g_object_unref);
    Opened("poppler-glib", 8, m_Error)
        .find("poppler_document_get_n_pages", poppler_document_get_n_pages)
        .find("poppler_document_get_page", poppler_document_get_page)
        .find("poppler_document_new_from_bytes", poppler_document_new_from_bytes)
        .find("poppler_page_get_size", poppler_page_get_size)
        .find("poppler_page_render_for_printing", poppler_page_render_for_printing);
}

} // namespace Pages
