#pragma once

#include "mainwindow/mainwindow.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

/// What the status line of the main window says.
namespace tarvik {

/// The open document, the table in work and what else decides over the next key. `edited`: the user has changed the
/// pane that is shown.
QString state_text(const Program& program, bool edited);

/// The result of a query in the document that the result pane shows.
struct ShownResult {
    std::int64_t number; ///< from 1
    double page;         ///< of the document, from 0, where it begins
};
std::optional<ShownResult> shown_result(const Program& program);

/// How far the run in progress has come.
QString run_text(Program& program);

/// Where the user lets the runs store, as the system names it; empty where the system has no such place.
QString output_folder(const Program& program);

/// How a run ended.
struct RunEnd {
    QString text;
    QString folder;      ///< where its files really lie; empty when it made none
    QStringList details; ///< files and the keys that made no sheet, a line each
};
/// `wished`: the user has stopped it. `told`: what the last box said, which is why a run stops by itself.
RunEnd run_end(const Program& program, bool wished, QString told);

/// The keys that are commands at present, empty while there are none.
QString key_hint(const Form1& form1);

/// How many headings the document's first line has.
int heading_count(const Form1& form1);
/// Whether a view that may have as many columns as the document names its own: that of the attendance.
bool has_own_columns(const Pane& view);
/// The heading that the document's first line gives a column, which counts from 1; empty where there is none.
QString column_heading(const Form1& form1, int column);

} // namespace tarvik
