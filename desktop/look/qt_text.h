#pragma once

#include "mainwindow/control.h"
#include "platform/files/files.h"

#include <QColor>
#include <QString>

/// Between the program's texts, colours and paths and the toolkit's, which counts characters outside the basic plane as
/// two.
namespace tarvik {

QString to_qt(TextView text);
Text from_qt(const QString& text);
/// A text for a label or a box: CR LF becomes one line break.
QString lines_to_qt(TextView text);

/// Places count from 0 on both sides.
int qt_place(TextView text, std::size_t characters);
std::size_t place_of_qt(const QString& text, int units);

/// Where a file of the program's lies, as the system names it; empty where the system has no such place.
QString real_path(const Files& files, TextView path);

QColor to_qt(Colour colour);

} // namespace tarvik
