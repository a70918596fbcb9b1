#pragma once

#include "reading/marking.h"
#include "reading/query_entry.h"

namespace tarvik {

/// Fills the result array of one kind, from index 0 on, with pieces of a buffer that is not copied.
class ResultWriter {
public:
    /// Empties the first 1001 results; those behind stay.
    ResultWriter(Program& program, TextArray& results, const SharedBuffer& buffer);

    /// Counts a match and brings up the result pane.
    void count();
    /// Counts a match and stores its piece, from `begin` up to but not including `end`, both from 0. A `begin` before
    /// the text means its beginning. Gives false when the array has no room left; the match is not counted then.
    bool add(std::ptrdiff_t begin, std::size_t end);

private:
    Program& program_;
    TextArray& results_;
    SharedBuffer buffer_;
    std::size_t next_ = 0;
};

/// Tells that the array of results is full and that those found so far are kept.
void tell_results_full(Program& program, TextView title);

/// Shows the result with this index in the result pane and marks the query in it. Gives whether there is one.
bool show_result(Program& program, const TextArray& results, std::int64_t index, Colour colour);

} // namespace tarvik
