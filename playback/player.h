#pragma once

#include "playback/options.h"

#include <istream>
#include <ostream>

namespace tarvik {

/// Plays a script from its first line to its last: the transcript goes to `out`, failures and missed expectations with
/// the script's line to `errors`. Gives the exit status: 0 when the script reached its end (or the program was closed)
/// and every expectation held, else 1. Throws OptionError when the options ask for what this system does not have.
int play(const Options& options, std::istream& script, std::ostream& out, std::ostream& errors);

/// The names that a script can ask for, one a line.
void list_names(std::ostream& out);

} // namespace tarvik
