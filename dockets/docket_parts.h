#pragma once

#include "runs/tasks.h"

/// What the two dockets share, "An docket" with its fixed cells and "An testdocket" with those of a design.
namespace tarvik {

inline constexpr int longest_short_list = 33; ///< lines that z5 holds; longer lists go to z6

/// The template for the number of devices out of warranty, as a path.
Text docket_template(const Program& program);
/// The first part of a docket's name, marked when the list is longer than z6 is prepared for.
Text marked_for_length(const Program& program, Text name);
/// How many devices came back, and how many of them are within and out of warranty.
void write_counts(const Program& program, Worksheet& sheet);

/// A tick's scan: the key's lines among all devices into allcount, those out of warranty into partcount and the table.
void count_devices(Program& program, TextView key);
/// Splits the table and empties the templates.
void prepare_docket(Program& program);

} // namespace tarvik
