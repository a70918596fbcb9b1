#pragma once

#include "platform/text/document.h"

#include <cstdint>
#include <vector>

/// Where the lines of a buffer end. A line ends at LF, and at a CR that no LF follows.
namespace tarvik {

/// Number of line ends in a text. A CR at its very end counts, whatever may follow it elsewhere.
std::size_t count_breaks(TextView text);
/// Offset (from 0) behind the `number`-th line end (from 1), which the text must have.
std::size_t behind_break(TextView text, std::size_t number);

/// The same questions for pieces of a large buffer, answered without reading all of it: only the number of line ends
/// before every 4096th character is kept.
class BreakIndex {
public:
    explicit BreakIndex(SharedBuffer buffer);

    const SharedBuffer& buffer() const { return buffer_; }
    /// Line ends that stand wholly before `offset`; a CR directly before it counts, unless LF stands at the offset.
    std::size_t breaks_before(std::size_t offset) const;
    /// Offset behind the `number`-th line end of the buffer, counting from 1.
    std::size_t behind(std::size_t number) const;

private:
    SharedBuffer buffer_;
    std::vector<std::size_t> before_block_;
};

} // namespace tarvik
