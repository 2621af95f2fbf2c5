# SPDX-License-Identifier: GPL-3.0-or-later
"""What objects look like in a notebook. Nothing of a file gets into the page as it is."""
import html

# More would make the page slow, and nobody reads on.
MOST_ROWS, MOST_COLUMNS = 50, 200


def alignment_html(alignment):
    """The first rows and columns, as a table."""
    if not alignment.exists:
        return f"<p>{html.escape(repr(alignment))}</p>"
    columns = min(alignment.width, MOST_COLUMNS)
    lines = [f"<tr><th style='text-align:left'>{html.escape(row.name)}</th>"
             f"<td style='text-align:left'><code>{html.escape(row[:columns])}</code></td></tr>"
             for row in alignment[:MOST_ROWS]]
    rows = len(alignment)
    shown = "" if rows <= MOST_ROWS and columns == alignment.width else \
        f", of which {min(rows, MOST_ROWS)} x {columns} are shown"
    return (f"<p><b>{html.escape(alignment.name)}</b>: {rows} rows x {alignment.width} columns{shown}</p>"
            f"<table>{''.join(lines)}</table>")


def matrix_html(matrix):
    """Percentages, the darker the higher."""
    count = min(len(matrix), MOST_ROWS)
    names = [html.escape(name) for name in matrix.names[:count]]
    head = "".join(f"<th>{name}</th>" for name in names)
    lines = []
    for i, name in enumerate(names):
        cells = "".join(_cell(matrix.values[i, j]) for j in range(count))
        lines.append(f"<tr><th style='text-align:left'>{name}</th>{cells}</tr>")
    more = "" if count == len(matrix) else f", of which {count} are shown"
    return (f"<p>Identity of {len(matrix)} rows{more}, % of {html.escape(matrix.of)}</p>"
            f"<table><tr><th></th>{head}</tr>{''.join(lines)}</table>")


def _cell(share):
    if share != share:
        return "<td>-</td>"
    light = round(255 - 155 * share)
    return f"<td style='background:rgb({light},{light},255)'>{100 * share:.1f}</td>"
