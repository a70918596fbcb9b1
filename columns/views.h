#pragma once

#include "mainwindow/mainwindow.h"
#include "mainwindow/scratch_file.h"

#include <memory>
#include <vector>

namespace tarvik {

/// Lines of a view, each a row text with an added text in front and one behind. The rows are kept as they stood when
/// they were added, so that the view stays right whatever becomes of the table.
class RowView final : public LineSource {
public:
    /// `buffers` are those that the rows lie in.
    explicit RowView(std::vector<SharedBuffer> buffers = {}) : buffers_(std::move(buffers)) {}

    void reserve(std::size_t lines) { lines_.reserve(lines); }
    /// `row` is the line between the TABs of a row text; one without storage is an emptied row and gives nothing.
    void add(TextView row, TextView before = {}, TextView after = {});

    std::size_t line_count() const override { return lines_.size(); }
    void append_line(std::size_t index, Text& target) const override;
    void append_encoded(std::size_t first, std::size_t end, std::string& target) const override;

private:
    struct Line {
        TextView row;
        std::size_t before, after, end; ///< where the added texts begin and end in added_
    };
    std::vector<SharedBuffer> buffers_;
    std::vector<Line> lines_;
    Text added_;
};

/// Writes the view and shows it in the table pane. A view of no lines
/// leaves the pane as it was.
void show_view(Program& program, ScratchFile& file, std::shared_ptr<const LineSource> lines);

} // namespace tarvik
