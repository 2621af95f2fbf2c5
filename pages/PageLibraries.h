// SPDX-License-Identifier: GPL-3.0-or-later
// The functions of the libraries that make PostScript. They bring thirty libraries with them, for
// which no start has to wait, so they are opened when a file is to be written.
#pragma once

#include <QString>

#include <cairo-ps.h>
#include <poppler.h>

namespace Pages {

// Called as the libraries call them. Once open, they stay so.
class PageLibraries
{
public:
    PageLibraries();

    // Empty, or what cannot be opened; nothing may be called then.
    [[nodiscard]] const QString &error() const noexcept { return m_Error; }

    decltype(&::cairo_create) cairo_create = nullptr;
    decltype(&::cairo_destroy) cairo_destroy = nullptr;
    decltype(&::cairo_status) cairo_status = nullptr;
    decltype(&::cairo_surface_destroy) cairo_surface_destroy = nullptr;
    decltype(&::cairo_surface_finish) cairo_surface_finish = nullptr;
    decltype(&::cairo_surface_show_page) cairo_surface_show_page = nullptr;
    decltype(&::cairo_surface_status) cairo_surface_status = nullptr;
    decltype(&::cairo_ps_surface_create_for_stream) cairo_ps_surface_create_for_stream = nullptr;
    decltype(&::cairo_ps_surface_dsc_comment) cairo_ps_surface_dsc_comment = nullptr;
    decltype(&::cairo_ps_surface_restrict_to_level) cairo_ps_surface_restrict_to_level = nullptr;
    decltype(&::cairo_ps_surface_set_size) cairo_ps_surface_set_size = nullptr;
    decltype(&::g_bytes_new_static) g_bytes_new_static = nullptr;
    decltype(&::g_bytes_unref) g_bytes_unref = nullptr;
    decltype(&::g_object_unref) g_object_unref = nullptr;
    decltype(&::poppler_document_get_n_pages) poppler_document_get_n_pages = nullptr;
    decltype(&::poppler_document_get_page) poppler_document_get_page = nullptr;
    decltype(&::poppler_document_new_from_bytes) poppler_document_new_from_bytes = nullptr;
    decltype(&::poppler_page_get_size) poppler_page_get_size = nullptr;
    decltype(&::poppler_page_render_for_printing) poppler_page_render_for_printing = nullptr;

private:
    QString m_Error;
};

} // namespace Pages
