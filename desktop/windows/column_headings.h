#pragma once

#include "calendar/attendance/attendance.h"
#include "desktop/look/qt_text.h"
#include "desktop/text_view/columns.h"
#include "mainwindow/mainwindow.h"

#include <algorithm>

/// How the windows name the columns of the document: by its first line.
namespace tarvik {

inline Text first_line(const Pane& pane)
{
    constexpr std::size_t longest_heading_line = 8192;
    Text line = pane.content().slice(Position(), longest_heading_line).str();
    line.resize(std::min(line.find_first_of(U"\r\n"), line.size()));
    return line;
}

/// How many headings the document's first line has.
inline int heading_count(const Form1& form1)
{
    return static_cast<int>(cells_of(first_line(form1.RichTextBox2)).size());
}

/// Whether a view that may have as many columns as the document names its own: that of the attendance.
inline bool has_own_columns(const Pane& view)
{
    return first_line(view).find(arrival_label) != Text::npos;
}

/// The heading that the document's first line gives a column, which counts from 1; empty where there is none.
inline QString column_heading(const Form1& form1, int column)
{
    const Text line = first_line(form1.RichTextBox2);
    for (const Cell& cell : cells_of(line))
        if (cell.column + 1 == static_cast<std::size_t>(std::max(column, 0)))
            return to_qt(TextView(line).substr(cell.start, cell.end - cell.start)).trimmed();
    return {};
}

} // namespace tarvik
