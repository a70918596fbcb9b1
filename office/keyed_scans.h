#pragma once

#include "mainwindow/mainwindow.h"

/// Scans of the report files for one key. Each loads its file whole into the document pane, decoded once while the file
/// stays the same, then takes the lines that hold the key as the rows of the table, and gives the number of rows. An
/// empty file is told and the pane's present text is scanned; a missing one throws Failure.
namespace tarvik {

/// True: 3139.txt, all devices. False: 3138.txt, the devices out of warranty.
int query2(Program& program, TextView key, bool all_devices);
/// True: 3137.txt, the return orders. False: 保留.txt.
int query3(Program& program, TextView key, bool return_orders);

} // namespace tarvik
